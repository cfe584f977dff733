#include "calculate/LogParts.h"

#include "calculate/Numbers.h"
#include "office/ColumnLetters.h"
#include "office/Range.h"
#include "session/DisplayValue.h"
#include "session/Log.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Strings.h"
#include "sheets/ValueCells.h"
#include "view/DataFilters.h"

#include <algorithm>
#include <cmath>

namespace tessaro {

QString CellAt(int row, int column) {
    return office::ColumnLetters(column) + QString::number(row);
}

QString FixedCellAt(int row, int column) {
    return QLatin1Char('$') + office::ColumnLetters(column) + QLatin1Char('$') + QString::number(row);
}

QString FixedRange(int column, int firstRow, int lastRow) {
    return FixedCellAt(firstRow, column) + QLatin1Char(':') + FixedCellAt(lastRow, column);
}

std::vector<office::Cell> Headings(const QStringList& keys) {
    std::vector<office::Cell> cells;
    for (const QString& key : keys)
        cells.push_back(TextCell(PlainText(key)));
    return cells;
}

office::Cell NumberCell(const std::optional<double>& number) {
    return number && std::isfinite(*number) ? office::Cell(*number) : office::Cell();
}

office::Cell TimeCell(const QString& timePeriod) {
    const int year = timePeriod.toInt();
    return QString::number(year) == timePeriod ? office::Cell(double(year)) : TextCell(timePeriod);
}

std::pair<int, office::Align> AsTexts(int column) {
    return {column, LanguageIsRightToLeft() ? office::Align::Right : office::Align::Left};
}

QString ResultText(const std::optional<double>& result, const CalculationDraft& draft) {
    if (!result || !std::isfinite(*result)) return {};
    return FormatToDecimals(NumberText(*result), draft.decimals);
}

LogSheet WorkingSheet(office::Block headings, office::Block rows, int firstRow) {
    LogSheet sheet;
    sheet.headRow = kHeadRow;
    sheet.lastColumn = static_cast<int>(headings.front().size());
    if (!rows.empty()) {
        sheet.firstRow = firstRow;
        sheet.lastRow = firstRow + static_cast<int>(rows.size()) - 1;
    }
    sheet.textColumns = {1, 2};
    sheet.blocks.push_back({kHeadRow, 1, std::move(headings)});
    if (!rows.empty()) sheet.blocks.push_back({firstRow, 1, std::move(rows)});
    return sheet;
}

office::Cell LogSheet::Value(int row, int column) const {
    for (const LogBlock& block : blocks) {
        const int r = row - block.row;
        const int c = column - block.column;
        if (r < 0 || c < 0 || r >= static_cast<int>(block.cells.size())) continue;
        const auto& cells = block.cells[static_cast<std::size_t>(r)];
        if (c < static_cast<int>(cells.size())) return cells[static_cast<std::size_t>(c)];
    }
    return {};
}

DetailSheet::DetailSheet(std::vector<office::Cell> headings) : headings_(std::move(headings)) {}

void DetailSheet::Add(const QString& areaId, const QString& areaName, std::vector<office::Cell> cells) {
    const bool isNew = rows_.empty() || AreaKey(areaId) != areaId_;
    areaId_ = AreaKey(areaId);
    std::vector<office::Cell> row(headings_.size());
    if (isNew) {
        row[0] = TextCell(areaId);
        row[1] = TextCell(areaName);
    }
    std::move(cells.begin(), cells.end(), row.begin() + 2);
    rows_.push_back(std::move(row));
}

LogSheet DetailSheet::Taken() {
    LogSheet sheet;
    sheet.headRow = kDetailHeadRow;
    sheet.lastColumn = static_cast<int>(headings_.size());
    sheet.textColumns = {1, 2};
    if (!rows_.empty()) {
        sheet.firstRow = kDetailHeadRow + 1;
        sheet.lastRow = kDetailHeadRow + static_cast<int>(rows_.size());
    }
    sheet.blocks.push_back({kDetailHeadRow, 1, {std::move(headings_)}});
    if (!rows_.empty()) sheet.blocks.push_back({sheet.firstRow, 1, std::move(rows_)});
    return sheet;
}

// One statement gives the rows of all areas in the order in which one for each area would.
LogSheet DetailOfIndicator(const QString& indicator, const QString& resultHeading,
                           const std::function<office::Cell(const QString&)>& result) {
    QStringList keys{"Comm_Area Id", "Comm_Area Name", "Comm_Time",   "Comm_Indicator",
                     "Comm_Unit",    "Subpop",         "Comm_Source", "Comm_Datavalue"};
    if (result) keys << resultHeading;
    DetailSheet sheet(Headings(keys));
    Records rows = Select(QStringLiteral("Select AreaId, AreaName, TimePeriod, [Indicator], [Unit], Subpop, [Source], "
                                         "Datavalue From _Data Where [Indicator] = %1 Order By AreaId")
                              .arg(Quoted(indicator)),
                          jet::CursorType::ForwardOnly);
    for (; !rows.atEnd(); rows.MoveNext()) {
        std::vector<office::Cell> cells{TimeCell(rows.Text(2))};
        for (std::size_t field = 3; field < 7; ++field)
            cells.push_back(TextCell(rows.Text(field)));
        const QString value = rows.Text(std::size_t{7});
        cells.push_back(ValueCell(value));
        if (result) cells.push_back(result(value));
        sheet.Add(rows.Text(std::size_t{0}), rows.Text(std::size_t{1}), std::move(cells));
    }
    LogSheet taken = sheet.Taken();
    taken.alignments = {AsTexts(3)};
    return taken;
}

CalculationLog Failed(const QString& reason) {
    CalculationLog log;
    log.failure = reason;
    return log;
}

QString ReasonOfFailure(const QString& table, const QString& where) {
    Records rows =
        Select(QStringLiteral("Select Datavalue, [Indicator], Subpop, AreaName, AreaId, TimePeriod From %1 %2")
                   .arg(table, where),
               jet::CursorType::ForwardOnly);
    double sum = 0;
    for (; !rows.atEnd(); rows.MoveNext()) {
        const QString value = rows.Text(std::size_t{0});
        if (const auto number = NumberOf(value)) {
            sum += std::abs(*number);
            continue;
        }
        const QString item = NameOf({rows.Text(std::size_t{1}), rows.Text(std::size_t{2})});
        const QString area =
            rows.Text(std::size_t{3}) + QStringLiteral(" [") + rows.Text(std::size_t{4}) + QLatin1Char(']');
        return FilledText(QStringLiteral("TS_CalcUnreadable"), {value, item, area, rows.Text(std::size_t{5})});
    }
    if (!std::isfinite(sum)) return PlainText(QStringLiteral("TS_CalcTooLarge"));
    return FilledText(QStringLiteral("TS_CalcFailed"), {LogFile()});
}

bool IsOfItem(const CalculationItem& item, const QString& indicator, const QString& subpop) {
    const auto same = [](const QString& a, const QString& b) {
        return a.trimmed().compare(b.trimmed(), Qt::CaseInsensitive) == 0;
    };
    return same(item.indicator, indicator) && (item.subpop.isEmpty() || same(item.subpop, subpop));
}

QString NameOf(const CalculationItem& item) {
    return item.subpop.isEmpty() ? item.indicator : item.indicator + QStringLiteral(" ~ ") + item.subpop;
}

ColumnsOfKeys PlacesOfItems(const char* table, const std::vector<CalculationItem>& items) {
    ColumnsOfKeys places;
    Records rows = Select(QStringLiteral("Select Distinct [Indicator], Subpop, IndicatorGId, SubpopGId From %1")
                              .arg(QLatin1String(table)));
    for (; !rows.atEnd(); rows.MoveNext())
        for (std::size_t i = 0; i < items.size(); ++i)
            if (IsOfItem(items[i], rows.Text(std::size_t{0}), rows.Text(std::size_t{1})))
                places[PairKey(rows.Text(std::size_t{2}), rows.Text(std::size_t{3})).toLower()] << static_cast<int>(i);
    return places;
}

void RemarkAbsentAreas(CalculationLog& log, const QSet<QString>& present) {
    Records rows = Select(QStringLiteral("Select distinct AreaId,AreaName From _Data;"));
    for (; !rows.atEnd(); rows.MoveNext())
        if (!present.contains(AreaKey(rows.Text(std::size_t{0}))))
            log.remarks.push_back(
                {rows.Text(std::size_t{0}), rows.Text(std::size_t{1}), PlainText(QStringLiteral("TS_CalcNoValues"))});
}

} // namespace tessaro
