#include "map/classes/PaletteFile.h"

#include "map/AnsiText.h"
#include "platform/Files.h"
#include "session/ErrorSink.h"
#include "session/Session.h"

#include <QStringList>

#include <algorithm>

namespace tessaro {

namespace {

constexpr qsizetype kHeadLines = 4;
constexpr qsizetype kLinesOfRow = 9;
constexpr qsizetype kValueStart = 19; ///< where the value of a line begins
constexpr qsizetype kTailRows = 2;    ///< the spacer and the row of missing data
constexpr qint64 kLargestPalette = 1 << 20;
constexpr unsigned kInputPastEnd = 62;
const char* const kWhite = "16777215";

QString OneLine(QString text) {
    return text.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
}

QString Truth(bool value) {
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

QString LinesOf(const PaletteRow& row) {
    const std::pair<const char*, QString> lines[] = {{"Color            : ", row.color},
                                                     {"From             : ", row.from},
                                                     {"To               : ", row.to},
                                                     {"Legend           : ", row.legend},
                                                     {"FontName         : ", row.fontName},
                                                     {"FontSize         : ", row.fontSize},
                                                     {"FontBold         : ", Truth(row.bold)},
                                                     {"FontItalic       : ", Truth(row.italic)},
                                                     {"FontUnderline    : ", Truth(row.underline)}};
    QString text;
    for (const auto& [label, value] : lines)
        text += QLatin1String(label) + OneLine(value) + QStringLiteral("\r\n");
    return text;
}

QString ValueOf(const QString& line) {
    return line.mid(kValueStart).trimmed();
}

bool IsTrue(const QString& value) {
    return value.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0;
}

PaletteRow RowOf(const QStringList& lines, qsizetype first) {
    const auto value = [&](qsizetype line) { return ValueOf(lines[first + line]); };
    return {value(0), value(1),         value(2),         value(3),        value(4),
            value(5), IsTrue(value(6)), IsTrue(value(7)), IsTrue(value(8))};
}

QString ValueIn(const PaletteRow& row, PaletteMode mode) {
    if (mode == PaletteMode::Labels) return row.legend;
    return mode == PaletteMode::Range ? row.from : row.color;
}

bool IsNoClass(const PaletteRow& row, PaletteMode mode) {
    const QString value = ValueIn(row, mode);
    return value.isEmpty() || (mode == PaletteMode::Colors && value == QLatin1String(kWhite));
}

/// True when a spacer and one more row end the records. Some files count the grid's row of headings with the others.
bool EndsWithTail(const PaletteRows& rows) {
    const auto tail = static_cast<std::size_t>(kTailRows);
    if (rows.size() < tail) return false;
    const PaletteRow& spacer = rows[rows.size() - tail];
    return spacer.from.isEmpty() && spacer.to.isEmpty() && spacer.color == QLatin1String(kWhite);
}

void CopyLabel(const PaletteRow& from, PaletteRow& to) {
    to.legend = from.legend;
    to.fontName = from.fontName;
    to.fontSize = from.fontSize;
    to.bold = from.bold;
    to.italic = from.italic;
    to.underline = from.underline;
}

void Copy(const PaletteRow& from, PaletteMode mode, PaletteRow& to) {
    if (mode == PaletteMode::Labels) {
        CopyLabel(from, to);
    } else if (mode == PaletteMode::Range) {
        to.from = from.from;
        to.to = from.to;
    } else {
        to.color = from.color;
    }
}

} // namespace

QByteArray PaletteBytes(const PaletteRows& rows, int charset) {
    QString text = QStringLiteral("[MapWizard Color, Range  and Legend Palette]\r\nNo of Breaks     : %1\r\n \r\n"
                                  "[Labels] | [Range] | [Colors]\r\n")
                       .arg(rows.size());
    for (const PaletteRow& row : rows)
        text += LinesOf(row);
    return AnsiBytes(text, charset);
}

PaletteContents ReadPalette(const QByteArray& bytes, int charset) {
    QString text = TextOfAnsi(bytes, charset);
    QStringList lines = text.remove(QLatin1Char('\r')).split(QLatin1Char('\n'));
    if (lines.back().isEmpty()) lines.pop_back();
    PaletteContents contents;
    for (qsizetype line = kHeadLines; line + kLinesOfRow <= lines.size(); line += kLinesOfRow)
        contents.rows.push_back(RowOf(lines, line));
    bool told = false;
    const int rows = lines.size() > 1 ? ValueOf(lines[1]).toInt(&told) : 0;
    const auto held = static_cast<int>(contents.rows.size());
    contents.complete = told && (held >= rows || (held + 1 == rows && EndsWithTail(contents.rows)));
    return contents;
}

std::vector<int> ApplyPalette(const PaletteContents& file, PaletteMode mode, PaletteRows& grid) {
    std::vector<int> written;
    const auto apply = [&](qsizetype from, qsizetype to) {
        Copy(file.rows[static_cast<std::size_t>(from)], mode, grid[static_cast<std::size_t>(to)]);
        written.push_back(static_cast<int>(to));
    };
    const auto rows = static_cast<qsizetype>(grid.size());
    const auto records = static_cast<qsizetype>(file.rows.size());
    const bool hasTail = file.complete && records >= kTailRows;
    const qsizetype classes = std::min(rows - kTailRows, hasTail ? records - kTailRows : records);
    for (qsizetype row = 0; row < classes && !IsNoClass(file.rows[static_cast<std::size_t>(row)], mode); ++row)
        apply(row, row);
    for (qsizetype back = kTailRows; hasTail && rows >= kTailRows && back > 0; --back)
        if (!ValueIn(file.rows[static_cast<std::size_t>(records - back)], mode).isEmpty())
            apply(records - back, rows - back);
    return written;
}

bool SavePalette(const QString& fileName, const PaletteRows& rows) {
    if (ReplaceFile(fileName, PaletteBytes(rows, FontCharset))) return true;
    ReportError(FileError::NoAccess, QStringLiteral("Path/File access error: ") + fileName,
                QStringLiteral("SavePalette"));
    return false;
}

std::optional<PaletteContents> LoadPalette(const QString& fileName) {
    const auto bytes = ReadWholeFile(fileName, kLargestPalette);
    if (!bytes) {
        ReportError(FileError::NotFound, QStringLiteral("File not found: ") + fileName, QStringLiteral("LoadPalette"));
        return std::nullopt;
    }
    PaletteContents contents = ReadPalette(*bytes, FontCharset);
    if (!contents.complete)
        ReportError(kInputPastEnd, QStringLiteral("Input past end of file: ") + fileName,
                    QStringLiteral("LoadPalette"));
    return contents;
}

} // namespace tessaro
