#include "presentation/TableExport.h"

#include "formats/CsvText.h"
#include "formats/ExportKinds.h"
#include "formats/FilesBeside.h"
#include "formats/PageText.h"
#include "formats/ValueFile.h"
#include "session/DisplayValue.h"
#include "session/Query.h"
#include "session/Strings.h"
#include "sheets/PaletteSlots.h"
#include "sheets/ValueCells.h"
#include "view/InView.h"
#include "view/SourcesAndNotes.h"

#include <QFileInfo>
#include <QHash>

#include <algorithm>

namespace tessaro {

namespace {

const QString kTableEnding = QStringLiteral(".table.csv");

/// The decimals of each column of values; none where each number is shown as it is.
std::vector<int> DecimalsOfColumns(const ShownTable& shown) {
    std::vector<int> decimals(static_cast<std::size_t>(shown.table.ColumnCount()), 0);
    if (!shown.options.sameDecimals) return decimals;
    for (const std::vector<PivotCell>& row : shown.table.cells)
        for (std::size_t column = 0; column < row.size(); ++column)
            decimals[column] = std::max(decimals[column], DecimalsOf(row[column].value));
    return decimals;
}

QStringList HeadsOf(const PivotTable& table, QChar between) {
    QStringList heads;
    for (const PivotField field : table.rowFields)
        heads << CaptionOf(field);
    for (const PivotColumn& column : table.columns)
        heads << QString(column.head)
                     .replace(QLatin1Char('\n'),
                              between == QLatin1Char('\n') ? QStringLiteral("\n") : QStringLiteral("; "));
    return heads;
}

/// A cell with a note.
struct NotedCell {
    std::size_t row;
    std::size_t column;
    qint64 footnote;
};

std::vector<NotedCell> NotedCells(const PivotTable& table) {
    std::vector<NotedCell> cells;
    for (std::size_t row = 0; row < table.cells.size(); ++row)
        for (std::size_t column = 0; column < table.cells[row].size(); ++column)
            if (table.cells[row][column].footnote != 0)
                cells.push_back({row, column, table.cells[row][column].footnote});
    return cells;
}

/// The notes of a table with their numbers, as its sheet has them.
class NoteNumbers final {
  public:
    explicit NoteNumbers(const PivotTable& table) {
        for (const NotedCell& cell : NotedCells(table)) {
            if (numbers_.contains(cell.footnote)) continue;
            const int number = static_cast<int>(numbers_.size()) + 1;
            numbers_.insert(cell.footnote, number);
            const QString text = FootnoteText(cell.footnote);
            if (!text.isNull()) notes_.emplace_back(number, text);
        }
    }
    [[nodiscard]] QString Of(qint64 footnote) const {
        return footnote == 0 ? QString() : QString::number(numbers_.value(footnote));
    }
    [[nodiscard]] const std::vector<std::pair<int, QString>>& Notes() const { return notes_; }

  private:
    QHash<qint64, int> numbers_;
    std::vector<std::pair<int, QString>> notes_;
};

/// Heads and rows of the notes: where each belongs to, its value, and its text.
std::vector<QStringList> NoteLines(const PivotTable& table) {
    std::vector<QStringList> lines;
    QHash<qint64, QString> texts;
    const QStringList heads = HeadsOf(table, QLatin1Char(';'));
    for (const NotedCell& cell : NotedCells(table)) {
        if (!texts.contains(cell.footnote)) texts.insert(cell.footnote, FootnoteText(cell.footnote));
        lines.push_back(table.rowTexts[cell.row] +
                        QStringList{heads[table.FieldCount() + static_cast<qsizetype>(cell.column)],
                                    table.cells[cell.row][cell.column].value, texts.value(cell.footnote)});
    }
    return lines;
}

QStringList NoteHeads(const PivotTable& table) {
    QStringList heads = HeadsOf(table, QLatin1Char(';')).mid(0, table.FieldCount());
    for (const char* key : {"TS_MappingColumn", "Comm_Datavalue", "TS_RoleFootnote"})
        heads << PlainText(QLatin1String(key));
    return heads;
}

QStringList TitlesOf(const ShownTable& shown) {
    QStringList titles{shown.options.title, shown.options.subTitle};
    titles.removeAll(QString());
    return titles;
}

/// A cell of a text: one line, without tabs, and no formula.
QString OneLine(const QString& text) {
    return WithoutFormula(text.simplified());
}

QByteArray TextLine(const QStringList& cells) {
    QStringList plain;
    for (const QString& cell : cells)
        plain << OneLine(cell);
    return plain.join(QLatin1Char('\t')).toUtf8() + '\n';
}

QStringList PlainRow(const PivotTable& table, std::size_t row) {
    QStringList cells = table.rowTexts[row];
    for (const PivotCell& cell : table.cells[row])
        cells << cell.value;
    return cells;
}

/// The colour of a value's range; none without colours.
QColor ColorOf(const ShownTable& shown, std::size_t row, std::size_t column) {
    if (!shown.options.addColor) return {};
    const ValueRanges& ranges = shown.options.ranges;
    const ColorRanges* record = ranges.Find(shown.table.IndicatorOf(static_cast<int>(row), static_cast<int>(column)));
    const auto number = NumberOf(shown.table.cells[row][column].value);
    const int slot = record && number ? record->SlotOf(*number) - kFirstRangeSlot : -1;
    return slot >= 0 ? ranges.colors.at(static_cast<std::size_t>(slot)) : QColor();
}

/// What the colours mean, as the sheet lists it.
std::vector<std::pair<QColor, QString>> LegendOf(const TableOptions& options) {
    std::vector<std::pair<QColor, QString>> legend;
    const char* const texts[kRangeCount] = {"Table Color3", "Table Color2", "Table Color1"};
    for (std::size_t i = 0; options.addColor && i < kRangeCount; ++i)
        legend.emplace_back(options.ranges.colors.at(i), PlainText(QLatin1String(texts[i])));
    return legend;
}

QByteArray PageRow(const ShownTable& shown, std::size_t row, const std::vector<int>& decimals,
                   const NoteNumbers& notes) {
    QByteArray line("<tr>");
    for (const QString& text : shown.table.rowTexts[row])
        line += PageCell(WithoutFormula(text), PageCellKind::Head);
    const std::vector<PivotCell>& cells = shown.table.cells[row];
    for (std::size_t column = 0; column < cells.size(); ++column) {
        const QString& value = cells[column].value;
        const bool isNumber = ReadsAsNumber(value);
        const QString text = isNumber ? FiledValue(WithZeros(value, decimals[column])) : WithoutFormula(value);
        line += PageCell(text, isNumber ? PageCellKind::Number : PageCellKind::Text, notes.Of(cells[column].footnote),
                         ColorOf(shown, row, column));
    }
    return line + "</tr>\n";
}

} // namespace

ShowOutcome ReadShownTable(RowsColumns arrangement, const TableOptions& options, ShownTable& shown) {
    const ShowOutcome outcome = PrepareTable(WizardKind::Table, arrangement, shown.table, {});
    if (outcome.result != ShowResult::Built) return outcome;
    if (options.sort) shown.table.SortRows(options.sortColumn, options.sortAscending);
    shown.options = options;
    shown.sources = SourcesOfSelection();
    shown.aboutSource = [texts = TextsOfSources()](const QString& source) { return texts.value(source); };
    return outcome;
}

bool SaveTablePage(const QString& file, const ShownTable& shown) {
    const NoteNumbers notes(shown.table);
    const std::vector<int> decimals = DecimalsOfColumns(shown);
    ValueFile out(file);
    const QString title = shown.options.title.isEmpty() ? PlainText(QStringLiteral("Table")) : shown.options.title;
    out.Write(PageBegin({title, shown.options.subTitle}, {HeadsOf(shown.table, QLatin1Char('\n')),
                                                          shown.table.FieldCount(), shown.table.ColumnCount()}));
    for (std::size_t row = 0; row < shown.table.rowTexts.size(); ++row)
        out.Write(PageRow(shown, row, decimals, notes));
    out.Write(PageEndText({notes.Notes(), shown.sources, shown.aboutSource, LegendOf(shown.options)}));
    return out.Finish();
}

bool SaveTableText(const QString& file, const ShownTable& shown) {
    ValueFile out(file);
    for (const QString& title : TitlesOf(shown))
        out.Write(TextLine({title}));
    out.Write(TextLine({}) + TextLine(HeadsOf(shown.table, QLatin1Char(';'))));
    for (std::size_t row = 0; row < shown.table.rowTexts.size(); ++row)
        out.Write(TextLine(PlainRow(shown.table, row)));
    if (shown.table.HasFootnotes()) {
        out.Write(TextLine({}) + TextLine(NoteHeads(shown.table)));
        for (const QStringList& line : NoteLines(shown.table))
            out.Write(TextLine(line));
    }
    out.Write(TextLine({}) + TextLine({PlainText(QStringLiteral("Comm_Source"))}));
    for (const QString& source : shown.sources)
        out.Write(TextLine({source, shown.aboutSource ? shown.aboutSource(source) : QString()}));
    return out.Finish();
}

bool SaveTableCsv(const QString& file, const ShownTable& shown) {
    ValueFile out(file);
    out.Write(kUtf8Mark + CsvLine(HeadsOf(shown.table, QLatin1Char(';'))));
    for (std::size_t row = 0; row < shown.table.rowTexts.size(); ++row)
        out.Write(CsvLine(PlainRow(shown.table, row)));
    const QString stem = file.chopped(kTableEnding.size());
    QByteArray notes = kUtf8Mark;
    for (const QString& title : TitlesOf(shown))
        notes += CsvLine({title});
    if (shown.table.HasFootnotes()) notes += CsvLine(NoteHeads(shown.table));
    for (const QStringList& line : NoteLines(shown.table))
        notes += CsvLine(line);
    std::vector<NewFile> beside{{stem + QStringLiteral(".sources.csv"), SourcesText(shown.sources, shown.aboutSource)}};
    if (notes.size() > kUtf8Mark.size() || QFileInfo::exists(stem + QStringLiteral(".notes.csv")))
        beside.push_back({stem + QStringLiteral(".notes.csv"), notes});
    return out.Finish(beside);
}

TableValues::TableValues() {
    QHash<qint64, QString> notes;
    for (Records rows = Select(QStringLiteral("SELECT T.TimePeriod, A.AreaId, A.AreaName, IUS.[Indicator], IUS.Unit, "
                                              "IUS.Subpop, IUS.Source, D.Datavalue, D.FootnoteNId") +
                                   InView(joins::kDataList),
                               jet::CursorType::ForwardOnly);
         !rows.atEnd(); rows.MoveNext()) {
        const qint64 note = rows.IsNull(8) ? 0 : rows.Number(8);
        if (note != 0 && !notes.contains(note)) notes.insert(note, FootnoteText(note));
        rows_.push_back({rows.Text(std::size_t{0}), rows.Text(1), rows.Text(2), rows.Text(3), rows.Text(4),
                         rows.Text(5), rows.Text(6), rows.Text(7), notes.value(note)});
    }
}

std::vector<SaveKind> TableKinds() {
    std::vector<SaveKind> kinds = AllKinds();
    const auto wide = std::ranges::find_if(
        kinds, [](const SaveKind& kind) { return kind.endings.front() == QLatin1String(".wide.csv"); });
    const SaveKind asItStands{PlainText(QStringLiteral("TS_FilterTableCsv")),
                              {kTableEnding},
                              {QStringLiteral(".notes.csv"), QStringLiteral(".sources.csv")}};
    kinds.insert(wide, asItStands);
    return kinds;
}

bool IsTableCsvName(const QString& file) {
    return file.endsWith(kTableEnding, Qt::CaseInsensitive);
}

} // namespace tessaro
