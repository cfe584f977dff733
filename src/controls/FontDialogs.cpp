#include "controls/FontDialogs.h"

#include <QFontDialog>

#include <utility>

namespace tessaro {

namespace {

FontAnswerer& TheAnswerer() {
    static FontAnswerer answerer;
    return answerer;
}

} // namespace

std::optional<QFont> AskForFont(QWidget* parent, const QString& title, const QFont& current) {
    if (TheAnswerer()) return TheAnswerer()(current);
    bool chosen = false;
    const QFont font = QFontDialog::getFont(&chosen, current, parent, title);
    return chosen ? std::optional(font) : std::nullopt;
}

void SetFontAnswerer(FontAnswerer answerer) {
    TheAnswerer() = std::move(answerer);
}

} // namespace tessaro
