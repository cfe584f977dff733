#include "formats/PageText.h"

#include "session/LanguageName.h"
#include "session/Session.h"
#include "session/Strings.h"

#include <QColor>

#include <algorithm>

namespace tessaro {

namespace {

constexpr auto kStyle =
    R"(:root{color-scheme:light dark;--back:#fff;--text:#1c2430;--soft:#5a6675;--line:#d5dbe3;--head:#eef2f7;
--stripe:#f8fafc;--note:#b3261e;--global:%1}
@media (prefers-color-scheme:dark){:root{--back:#161a20;--text:#e4e8ee;--soft:#a2adba;--line:#38414d;--head:#252c36;
--stripe:#1b2028;--note:#ff9a92;--global:%2}}
*{box-sizing:border-box}
body{font:14px/1.45 %3,'Noto Sans','Noto Sans Arabic',sans-serif;margin:0;padding:24px;background:var(--back);color:var(--text)}
h1{font-size:1.5em;margin:0 0 4px}
h2{font-size:1.1em;margin:24px 0 8px}
.sub{color:var(--soft);margin:0 0 4px}
table{border-collapse:collapse;margin-top:16px}
th,td{border:1px solid var(--line);padding:4px 10px;text-align:start;vertical-align:top}
thead th{background:var(--head);position:sticky;top:0;vertical-align:bottom;white-space:pre-line}
tbody th{font-weight:normal}
tbody tr:nth-child(even){background:var(--stripe)}
.n{text-align:right;padding-right:1.6em;font-variant-numeric:tabular-nums;white-space:nowrap;direction:ltr}
thead .v{text-align:right;padding-right:1.6em}
.g{color:var(--global)}
sup{color:var(--note);line-height:0;margin-inline-start:.25em}
.n sup{position:absolute;margin:.6em 0 0 .15em}
.c,td[style]{print-color-adjust:exact;-webkit-print-color-adjust:exact}
td[style] sup{color:inherit}
.legend{list-style:none;margin:12px 0 0;padding:0}
.legend span{display:inline-block;width:1.6em;height:1em;margin-inline-end:.4em;border:1px solid var(--line);vertical-align:-.1em}
.notes,.sources{max-width:60em;margin:0;padding:0}
.notes{list-style:none}
.notes sup{margin:0 0 0 .4em}
dt{font-weight:600}
dd{margin:0 0 8px;color:var(--soft);white-space:pre-line}
@page{margin:15mm}
@media print{:root{--back:#fff;--text:#000;--soft:#333;--line:#999;--head:#eee;--stripe:#fff;--note:#000}
body{font-size:9pt;padding:0}
thead{display:table-header-group}
thead th{position:static;print-color-adjust:exact;-webkit-print-color-adjust:exact}
tr,dt,li{break-inside:avoid}
h2,dt{break-after:avoid}}
)";

QByteArray Escaped(const QString& text) {
    return text.toHtmlEscaped().toUtf8();
}

/// The colour of shared items on a dark ground: the same, but not darker than the text can be read.
QColor OnDark(const QColor& color) {
    constexpr int least = 175; // of 255
    return QColor::fromHsl(std::max(color.hslHue(), 0), color.hslSaturation(), std::max(color.lightness(), least));
}

QByteArray Style() {
    const QColor global = ColorFromNumber(GlobalColor);
    return QString::fromLatin1(kStyle)
        .arg(global.name(), OnDark(global).name(),
             QLatin1Char('\'') + QString(ProductFont).remove(QLatin1Char('\'')).toHtmlEscaped() + QLatin1Char('\''))
        .toUtf8();
}

/// The style of a cell on a colour; dark grounds get light texts.
QByteArray OnGround(const QColor& ground) {
    constexpr int bright = 128; // of 255
    if (!ground.isValid()) return {};
    return " style=\"background:" + ground.name().toLatin1() +
           (qGray(ground.rgb()) < bright ? ";color:#fff\"" : ";color:#000\"");
}

QByteArray LegendOf(const PageEnd& end) {
    QByteArray list("<ul class=\"legend\">\n");
    for (const auto& [color, text] : end.legend)
        list += "<li><span class=\"c\" style=\"background:" + color.name().toLatin1() + "\"></span> " + Escaped(text) +
                "</li>\n";
    return list + "</ul>\n";
}

QByteArray SourcesOf(const PageEnd& end) {
    QByteArray list = "<h2>" + Escaped(GetText(QStringLiteral("TS_OptionSources"))) + "</h2>\n<dl class=\"sources\">\n";
    for (const QString& source : end.sources)
        list += "<dt>" + Escaped(source) + "</dt>\n<dd>" +
                Escaped(end.aboutSource ? end.aboutSource(source) : QString()) + "</dd>\n";
    return list + "</dl>\n";
}

QByteArray NotesOf(const PageEnd& end) {
    QByteArray list = "<h2>" + Escaped(GetText(QStringLiteral("FootNotes"))) + "</h2>\n<ul class=\"notes\">\n";
    for (const auto& [number, text] : end.notes)
        list += "<li><sup>" + QByteArray::number(number) + "</sup> " + Escaped(text) + "</li>\n";
    return list + "</ul>\n";
}

} // namespace

QByteArray PageBegin(const PageTitles& titles, const PageHeads& heads) {
    const QString code = CodeOfLanguage(Language);
    const bool rightToLeft = RightToLeft || LanguageIsRightToLeft();
    QByteArray page = "<!DOCTYPE html>\n<html lang=\"" + (code.isEmpty() ? QByteArray("en") : Escaped(code)) +
                      "\" dir=\"" + (rightToLeft ? "rtl" : "ltr") +
                      "\">\n<head>\n<meta charset=\"utf-8\">\n<meta name=\"viewport\" "
                      "content=\"width=device-width\">\n<title>" +
                      Escaped(titles.documentTitle.isEmpty() ? titles.title : titles.documentTitle) +
                      "</title>\n<style>\n" + Style() + "</style>\n</head>\n<body>\n<h1>" + Escaped(titles.title) +
                      "</h1>\n";
    if (!titles.subTitle.isEmpty()) page += "<p class=\"sub\">" + Escaped(titles.subTitle) + "</p>\n";
    page += "<table>\n<thead>\n<tr>";
    for (qsizetype i = 0; i < heads.heads.size(); ++i) {
        const bool isValue = i >= heads.firstValue && i < heads.firstValue + heads.valueCount;
        page += (isValue ? "<th scope=\"col\" class=\"v\">" : "<th scope=\"col\">") + Escaped(heads.heads[i]) + "</th>";
    }
    return page + "</tr>\n</thead>\n<tbody>\n";
}

QByteArray PageCell(const QString& text, PageCellKind kind, const QString& mark, const QColor& ground) {
    static const char* const begins[] = {"<td", "<td class=\"n\"", "<td class=\"g\"", "<th scope=\"row\""};
    QByteArray cell = begins[static_cast<int>(kind)] + OnGround(ground) + '>' + Escaped(text);
    if (!mark.isEmpty()) cell += "<sup>" + Escaped(mark) + "</sup>";
    return cell + (kind == PageCellKind::Head ? "</th>" : "</td>");
}

QByteArray PageEndText(const PageEnd& end) {
    QByteArray text("</tbody>\n</table>\n");
    if (!end.legend.empty()) text += LegendOf(end);
    if (!end.notes.empty()) text += NotesOf(end);
    if (!end.sources.isEmpty()) text += SourcesOf(end);
    return text + "</body>\n</html>\n";
}

} // namespace tessaro
