#include "metadata/SheetText.h"

#include "metadata/SheetMarkup.h"
#include "session/Strings.h"

#include <QTextDocument>

#include <algorithm>
#include <cstdlib>

namespace tessaro::metadata {

namespace {

constexpr qsizetype kDeepest = 100;
constexpr qsizetype kMostTables = 6; ///< nested in one another

bool IsOneOf(const QString& tag, std::initializer_list<const char*> tags) {
    return std::any_of(tags.begin(), tags.end(), [&](const char* one) { return tag == QLatin1String(one); });
}

/// Elements without an end tag.
bool IsSingle(const QString& tag) {
    return IsOneOf(tag, {"br", "hr", "img", "wbr"});
}

/// Elements that load other files, or that belong to forms.
bool IsLeftOut(const QString& tag) {
    return IsOneOf(tag, {"link", "meta", "base", "input", "iframe", "frame", "object", "embed", "source"});
}

bool StartsLine(const QString& tag) {
    return IsOneOf(tag, {"br", "p", "div", "li", "tr", "h1", "h2", "h3", "h4", "h5", "h6", "hr", "dt", "dd", "pre"});
}

/// HTML allows some end tags to be left out: an element of `opened` closes the last open one of `closes`, unless an
/// element of `within` was opened after that.
struct ImpliedEnd {
    std::initializer_list<const char*> opened, closes, within;
};

const ImpliedEnd kImpliedEnds[] = {
    {{"p", "div", "table", "ul", "ol", "h1", "h2", "h3", "h4", "h5", "h6", "pre", "blockquote", "hr", "dl"},
     {"p"},
     {"td", "th", "li", "div", "blockquote", "dd"}},
    {{"li"}, {"li"}, {"ul", "ol"}},
    {{"dt", "dd"}, {"dt", "dd"}, {"dl"}},
    {{"td", "th"}, {"td", "th"}, {"table", "tr"}},
    {{"tr", "thead", "tbody", "tfoot"}, {"tr", "thead", "tbody", "tfoot"}, {"table"}},
};

QString EscapedText(QString text) {
    return text.replace(QLatin1Char('<'), QLatin1String("&lt;")).replace(QLatin1Char('>'), QLatin1String("&gt;"));
}

/// The columns or rows that a cell spans, as its attributes say; a large number makes as many columns. Numbers beyond
/// any bound are cut, so that their sum can't overflow.
qsizetype CoveredBy(const MarkupPiece& piece) {
    constexpr qlonglong kMost = 1'000'000;
    qsizetype covered = 0;
    for (const auto& [name, value] : piece.attributes)
        if (name.endsWith(QLatin1String("span"), Qt::CaseInsensitive))
            covered += std::clamp<qlonglong>(std::max(value.toLongLong(), -(value.toLongLong() + 1)), 0, kMost);
    return covered;
}

QString TagText(const MarkupPiece& piece) {
    QString text = QLatin1Char('<') + piece.tag;
    for (const auto& [name, value] : piece.attributes) {
        if (!std::all_of(name.begin(), name.end(), [](QChar c) { return c.isLetterOrNumber() || c == u'-'; })) continue;
        text += QLatin1Char(' ') + name + QLatin1String("=\"") +
                EscapedText(value).replace(QLatin1Char('"'), QLatin1String("&quot;")) + QLatin1Char('"');
    }
    return text + QLatin1Char('>');
}

/// Writes markup again with every element closed inside its parent, until a bound is exceeded.
class SheetTextWriter final {
  public:
    explicit SheetTextWriter(const SheetBounds& left) : left_(left) {}
    /// False when the bounds are exceeded.
    bool Take(const MarkupPiece& piece) {
        if (piece.tag.isEmpty())
            TakeText(piece.text);
        else if (piece.closing)
            Close(piece.tag);
        else if (!IsLeftOut(piece.tag))
            Open(piece);
        return left_.characters >= 0 && left_.work >= 0 && open_.size() <= kDeepest && tables_ <= kMostTables;
    }
    QString Finish() {
        CloseDownTo(0);
        return html_;
    }
    [[nodiscard]] const SheetBounds& Left() const { return left_; }

  private:
    void TakeText(const QString& text) {
        left_.characters -= text.size();
        html_ += EscapedText(text);
    }
    void Open(const MarkupPiece& piece) {
        for (const ImpliedEnd& end : kImpliedEnds)
            if (IsOneOf(piece.tag, end.opened)) CloseImplied(end);
        html_ += TagText(piece);
        left_.work -= (qsizetype{1} << std::clamp<qsizetype>(tables_ - 1, 0, kMostTables)) + CoveredBy(piece);
        if (IsSingle(piece.tag)) return;
        open_ << piece.tag;
        if (piece.tag == QLatin1String("table")) ++tables_;
    }
    void CloseImplied(const ImpliedEnd& end) {
        for (qsizetype place = open_.size() - 1; place >= 0; --place) {
            if (IsOneOf(open_.at(place), end.closes)) return CloseDownTo(place);
            if (IsOneOf(open_.at(place), end.within) || open_.at(place) == QLatin1String("table")) return;
        }
    }
    void Close(const QString& tag) {
        const qsizetype place = open_.lastIndexOf(tag);
        if (place >= 0) CloseDownTo(place);
    }
    void CloseDownTo(qsizetype place) {
        while (open_.size() > place) {
            const QString tag = open_.takeLast();
            if (tag == QLatin1String("table")) --tables_;
            html_ += QLatin1String("</") + tag + QLatin1Char('>');
        }
    }

    SheetBounds left_;
    QString html_;
    QStringList open_;
    qsizetype tables_ = 0;
};

/// The plain text of markup, line by line, up to the bounds.
QString PlainTextOf(const QString& sheet, SheetBounds& left) {
    QString html;
    MarkupScanner scanner(sheet);
    while (!scanner.atEnd() && left.characters > 0 && left.work > 0) {
        const MarkupPiece piece = scanner.Next();
        const QString text = piece.text.left(left.characters);
        left.characters -= text.size();
        html += EscapedText(text);
        if (!StartsLine(piece.tag) || html.endsWith(QLatin1String("<br>"))) continue;
        html += QLatin1String("<br>");
        --left.work;
    }
    return html;
}

/// The bounds of one sheet when `left` is left for all.
SheetBounds BoundsOfOne(const SheetBounds& left) {
    const SheetBounds one;
    return {std::min(one.characters, left.characters), std::min(one.source, left.source),
            std::min(one.work, left.work)};
}

void TakeFrom(SheetBounds& left, const SheetBounds& before, const SheetBounds& after) {
    left.characters -= before.characters - std::max<qsizetype>(after.characters, 0);
    left.work -= before.work - std::max<qsizetype>(after.work, 0);
}

/// The sheet as clean markup; empty when it exceeds its bounds.
QString WithinBounds(const QString& sheet, SheetBounds& left) {
    const SheetBounds bounds = BoundsOfOne(left);
    if (sheet.size() > bounds.source) return {};
    SheetTextWriter writer(bounds);
    MarkupScanner scanner(sheet);
    while (!scanner.atEnd())
        if (!writer.Take(scanner.Next())) return {};
    TakeFrom(left, bounds, writer.Left());
    return writer.Finish();
}

} // namespace

QString SheetAsHtml(const QString& sheet, SheetBounds& left) {
    if (sheet.isEmpty()) return {};
    const SheetBounds bounds = BoundsOfOne(left);
    const bool isMarkup = Qt::mightBeRichText(sheet);
    QString html;
    if (isMarkup)
        html = WithinBounds(sheet, left);
    else if (sheet.size() <= bounds.characters)
        html = Qt::convertFromPlainText(sheet, Qt::WhiteSpaceNormal);
    if (!isMarkup) left.characters -= std::min(sheet.size(), bounds.characters);
    left.source -= std::min(sheet.size(), left.source);
    if (!html.isEmpty()) return html;
    const QString note =
        QLatin1String("<p><i>") + GetText(QStringLiteral("TS_SheetAsText")).toHtmlEscaped() + QLatin1String("</i></p>");
    if (!isMarkup) return note + Qt::convertFromPlainText(sheet.left(bounds.characters), Qt::WhiteSpaceNormal);
    SheetBounds after = bounds;
    const QString text = PlainTextOf(sheet, after);
    TakeFrom(left, bounds, after);
    return note + QLatin1String("<p>") + text + QLatin1String("</p>");
}

} // namespace tessaro::metadata
