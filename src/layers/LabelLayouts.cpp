#include "layers/LabelLayouts.h"

#include <QTransform>

namespace tessaro {

namespace {

QString OneLine(QString text) {
    for (QChar& c : text)
        if (c == u'\n' || c == u'\r' || c == u'\t' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = u' ';
    return text;
}

} // namespace

void LabelLayouts::SetFont(const QFont& font) {
    if (font == font_) return;
    font_ = font;
    layouts_.clear();
}

const QStaticText& LabelLayouts::Of(std::size_t label, const QString& text) {
    if (label >= layouts_.size()) layouts_.resize(label + 1);
    Layout& layout = layouts_[label];
    if (layout.text == text && !text.isEmpty()) return layout.letters;
    layout.text = text;
    layout.letters = QStaticText(OneLine(text));
    layout.letters.setTextFormat(Qt::PlainText);
    layout.letters.setPerformanceHint(QStaticText::AggressiveCaching);
    layout.letters.prepare(QTransform(), font_);
    return layout.letters;
}

} // namespace tessaro
