#include "exchange/ImportReport.h"

#include "formats/CsvText.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/Messages.h"
#include "session/Strings.h"
#include "session/TempFiles.h"
#include "sheets/ListSheet.h"
#include "sheets/UnfinishedFile.h"
#include "sheets/ValueCells.h"

#include <QFileInfo>

namespace tessaro {

namespace {

QString Plain(const char* key) {
    return PlainText(QLatin1String(key));
}

/// A reason below the count of all. Spreadsheets look at the first sign to see from which side a text is read.
QString Indented(const QString& text) {
    return (text.isRightToLeft() ? QString(QChar(0x200F)) : QString()) + QStringLiteral("   ") + text;
}

/// What is shown of a text that is too long.
QString Beginning(const QString& text) {
    constexpr qsizetype shown = 80;
    return text.size() > shown ? text.left(shown) + QChar(0x2026) : text;
}

/// A table whose rows are at hand.
ImportTable TableOf(const char* nameKey, const QStringList& heads, QList<QStringList> rows, QList<int> numbers) {
    const auto count = static_cast<std::size_t>(rows.size());
    return {Plain(nameKey),
            heads,
            count,
            [rows = std::move(rows)](std::size_t row) { return rows[static_cast<qsizetype>(row)]; },
            {},
            std::move(numbers)};
}

/// A last row for what a list doesn't hold.
QStringList MoreRow(std::int64_t all, std::size_t listed) {
    return {{},
            FilledText(QStringLiteral("TS_ReportMore"), {QString::number(all - static_cast<std::int64_t>(listed))})};
}

ImportTable Additions(const CheckedImport& checked) {
    const ImportAdditions made = checked.Additions();
    QList<QStringList> rows;
    const auto add = [&](Role role, const QStringList& names) {
        for (const QString& name : names)
            rows << QStringList{CaptionOf(role), name};
    };
    add(Role::Indicator, made.indicators);
    add(Role::Unit, made.units);
    add(Role::Subgroup, made.subgroups);
    add(Role::Source, made.sources);
    add(Role::Time, made.periods);
    add(Role::AreaName, made.areas);
    if (made.footnotes > 0) rows << QStringList{CaptionOf(Role::Footnote), QString::number(made.footnotes)};
    return TableOf("TS_ReportMade", {Plain("TS_ReportKind"), Plain("TS_ReportName")}, std::move(rows), {});
}

ImportTable Changed(const CheckedImport& checked) {
    const std::size_t listed = checked.changed.size();
    const bool more = checked.counts.changed > static_cast<std::int64_t>(listed);
    return {Plain("TS_ReportChanged"),
            {Plain("TS_ReportRow"), Plain("TS_ReportWhat"), Plain("TS_ReportBefore"), Plain("TS_ReportNow")},
            listed + (more ? 1 : 0),
            [&checked, listed](std::size_t row) -> QStringList {
                if (row == listed) return MoreRow(checked.counts.changed, listed);
                const ChangedValue& one = checked.changed[row];
                return {QString::number(one.row), one.what, one.before, one.now};
            },
            {},
            {0}};
}

ImportTable Refused(const CheckedImport& checked) {
    const std::size_t listed = checked.refused.size();
    const bool more = checked.counts.refused > static_cast<std::int64_t>(listed);
    return {Plain("TS_ReportRefused"),
            {Plain("TS_ReportRow"), Plain("TS_ReportColumn"), Plain("TS_ReportWhy"), Plain("TS_ReportText")},
            listed + (more ? 1 : 0),
            [&checked, listed](std::size_t row) -> QStringList {
                if (row == listed) return MoreRow(checked.counts.refused, listed);
                const RefusedValue& one = checked.refused[row];
                const bool hasColumn =
                    one.why != Refusal::Double && one.why != Refusal::BadRow && one.why != Refusal::RaggedRow;
                return {QString::number(one.row), hasColumn ? QString::number(one.column + 1) : QString(),
                        TextOf(one.why), one.why == Refusal::TooLong ? Beginning(one.text) : one.text};
            },
            {},
            {0, 1}};
}

ImportTable UnknownAreas(const CheckedImport& checked) {
    QList<QStringList> rows;
    for (const UnknownArea& area : checked.unknownAreas)
        rows << QStringList{area.text, QString::number(area.values), area.nearest.join(QStringLiteral("; "))};
    return TableOf("TS_ReportAreas", {CaptionOf(Role::AreaName), Plain("TS_ReportValues"), Plain("TS_ReportNearest")},
                   std::move(rows), {1});
}

bool SaveText(const std::vector<ImportTable>& tables, const QString& file) {
    QByteArray text("\xEF\xBB\xBF");
    for (const ImportTable& table : tables) {
        if (table.rows == 0) continue;
        text += CsvLine({table.name}) + CsvLine(table.heads);
        for (std::size_t row = 0; row < table.rows; ++row)
            text += CsvLine(table.row(row));
        text += "\r\n";
    }
    return ReplaceFile(file, text);
}

ListRow CellsOf(const ImportTable& table, std::size_t number) {
    const QStringList texts = table.row(number);
    ListRow row;
    for (qsizetype column = 0; column < texts.size(); ++column) {
        const bool isNumber = table.numbers.contains(static_cast<int>(column));
        row.cells.push_back(isNumber ? ValueCell(texts[column]) : TextCell(texts[column]));
    }
    return row;
}

bool SaveWorkbook(const std::vector<ImportTable>& tables, const QString& file) {
    const UnfinishedFile work(GetFreeFileName(QStringLiteral("Import")));
    office::Workbook book = office::SpreadsheetApplication::Instance().NewWorkbook(static_cast<int>(tables.size()));
    int number = 0;
    for (const ImportTable& table : tables) {
        office::Worksheet sheet = book.Sheet(++number);
        sheet.SetName(table.name);
        std::size_t next = 0;
        WriteList(book, sheet, {.name = table.name, .heads = table.heads, .next = [&]() -> std::optional<ListRow> {
                                    if (next == table.rows) return std::nullopt;
                                    return CellsOf(table, next++);
                                }});
    }
    book.ActivateSheet(1);
    book.SaveAs(work.Path());
    book.Close(false);
    return CopyFileOver(work.Path(), file);
}

} // namespace

QList<QStringList> CountsInWords(const CheckedImport& checked) {
    const ImportCounts& counts = checked.counts;
    const ImportAdditions made = checked.Additions();
    const auto number = [](std::int64_t count) { return QString::number(count); };
    QList<QStringList> rows{
        {Plain("TS_CountRows"), number(counts.rows)},   {Plain("TS_CountNew"), number(counts.fresh)},
        {Plain("TS_CountSame"), number(counts.same)},   {Plain("TS_CountChanged"), number(counts.changed)},
        {Plain("TS_CountEmpty"), number(counts.empty)}, {Plain("TS_CountRefused"), number(counts.refused)}};
    for (int why = 0; why < kRefusals; ++why)
        if (const std::int64_t count = counts.by[static_cast<std::size_t>(why)]; count > 0)
            rows << QStringList{Indented(TextOf(static_cast<Refusal>(why))), number(count)};
    const std::pair<Role, qsizetype> additions[] = {
        {Role::Indicator, made.indicators.size()}, {Role::Unit, made.units.size()},
        {Role::Subgroup, made.subgroups.size()},   {Role::Source, made.sources.size()},
        {Role::Time, made.periods.size()},         {Role::AreaName, made.areas.size()}};
    for (const auto& [role, count] : additions)
        if (count > 0)
            rows << QStringList{FilledText(QStringLiteral("TS_CountMade"), {CaptionOf(role)}), number(count)};
    return rows;
}

std::vector<ImportTable> ReportOf(const CheckedImport& checked) {
    return {TableOf("TS_ReportSummary", {FileNameOf(checked.file), Plain("Count")}, CountsInWords(checked), {1}),
            Refused(checked), Changed(checked), Additions(checked), UnknownAreas(checked)};
}

bool SaveReport(const CheckedImport& checked, const QString& file) {
    const std::vector<ImportTable> tables = ReportOf(checked);
    const bool isWorkbook = QFileInfo(file).suffix().compare(QLatin1String("xls"), Qt::CaseInsensitive) == 0;
    return isWorkbook ? SaveWorkbook(tables, file) : SaveText(tables, file);
}

} // namespace tessaro
