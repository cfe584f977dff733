// Several indicators in one index: scores from 0 to 1, their mean by weights, stretched to a scale.

#include "calculate/Calculations.h"
#include "calculate/IndexRanks.h"
#include "calculate/LogParts.h"
#include "calculate/Numbers.h"
#include "session/DisplayValue.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Strings.h"
#include "sheets/ValueCells.h"
#include "view/DataFilters.h"

#include <cmath>
#include <numeric>

namespace tessaro {

namespace {

constexpr int kFirstIndicatorRow = kHeadRow; ///< of the rows with name, weight and direction
constexpr int kWeightColumn = 2;
constexpr int kFlagColumn = 3;
/// The first sheet of the template. It gets another name once all is written, which the formulas then follow.
const QString kTemplateSheet = QStringLiteral("Sheet1");

/// A value that an area has, or what stands in.
struct IndexValue {
    std::optional<double> number;
    bool isMean = false;
    bool isBlank = false;
};

struct IndexArea {
    QString id;
    QString name;
    std::vector<IndexValue> values;
    IndexScores scores;
    double scaled = 0;
    QString time; ///< the latest of the area's rows
    QString source;
};

class CompositeIndex final {
  public:
    explicit CompositeIndex(const CalculationDraft& draft) : draft_(draft) {
        for (const IndexWeight& weight : draft.weights)
            weights_.push_back(NumberTyped(weight.weight).value_or(0));
        sheet_ = {kTemplateSheet, kFirstIndicatorRow, kWeightColumn, ValueColumn(0) + 1, IndexColumn()};
    }

    [[nodiscard]] CalculationLog Log(const DistinctRecords& lists) {
        const QString table = QStringLiteral("CalcTempNew2");
        const QString ofItems = QStringLiteral("Where [Indicator] + '{}' + Subpop In ") + lists.pairs;
        if (!ReadAreas() || !ReadValues() || !FillGaps()) return Failed(ReasonOfFailure(table, ofItems));
        if (areas_.empty()) return Failed(PlainText(QStringLiteral("041")));
        if (!Score()) return Failed(PlainText(QStringLiteral("TS_CalcTooLarge")));
        Scale();
        CalculationLog log;
        if (!WriteDetail(log)) return Failed(ReasonOfFailure(table, ofItems));
        WriteWorking(log);
        AddResults(log);
        AddRanks(log);
        return log;
    }

  private:
    [[nodiscard]] std::size_t Items() const { return draft_.items.size(); }
    [[nodiscard]] int AreaHeadRow() const { return kFirstIndicatorRow + static_cast<int>(Items()) + 1; }
    [[nodiscard]] int FirstRow() const { return AreaHeadRow() + 2; }
    [[nodiscard]] int LastRow() const { return FirstRow() + static_cast<int>(areas_.size()) - 1; }
    [[nodiscard]] static int ValueColumn(std::size_t item) { return kFirstItemColumn + 2 * static_cast<int>(item); }
    [[nodiscard]] int IndexColumn() const { return ValueColumn(Items()); }
    [[nodiscard]] int ScaledColumn() const { return IndexColumn() + 1; }

    // --- Reading. ---

    bool ReadAreas() {
        Records rows = Select(QStringLiteral("Select distinct AreaId, AreaName From CalcTempNew2 Order By AreaId"));
        for (; !rows.atEnd(); rows.MoveNext()) {
            const QString id = rows.Text(std::size_t{0});
            if (placeOf_.contains(AreaKey(id))) continue;
            placeOf_.insert(AreaKey(id), areas_.size());
            areas_.push_back({id, rows.Text(std::size_t{1}), std::vector<IndexValue>(Items()), {}, 0, {}, {}});
        }
        return rows.isOpen();
    }

    // One statement gives the rows of all areas; as for one alone, the first row of an item counts.
    bool ReadValues() {
        Records rows = Select(QStringLiteral("Select AreaId, [Indicator], Subpop, DataValue From CalcTempNew2"),
                              jet::CursorType::ForwardOnly);
        for (; !rows.atEnd(); rows.MoveNext()) {
            IndexArea& area = areas_[placeOf_.value(AreaKey(rows.Text(std::size_t{0})))];
            for (std::size_t item = 0; item < Items(); ++item) {
                IndexValue& value = area.values[item];
                if (value.number || !IsOfItem(draft_.items[item], rows.Text(std::size_t{1}), rows.Text(std::size_t{2})))
                    continue;
                const QString text = rows.Text(std::size_t{3});
                value = {NumberOf(ToDotDecimal(text)), false, text.trimmed().isEmpty()};
                if (!value.number) return false;
            }
        }
        return rows.isOpen();
    }

    /// The mean of the other areas for each value that is missing; nothing where no area has one.
    bool FillGaps() {
        for (std::size_t item = 0; item < Items(); ++item) {
            const bool complete = std::ranges::all_of(
                areas_, [&](const IndexArea& area) { return area.values[item].number.has_value(); });
            if (complete) continue;
            Records rows = Select(MeanStatement(draft_.items[item]));
            if (!rows.isOpen()) return false;
            if (rows.atEnd() || rows.IsNull(0)) continue;
            const double mean = rows.rows().Get(0).toDouble();
            for (IndexArea& area : areas_)
                if (!area.values[item].number) area.values[item] = {mean, true, false};
        }
        return true;
    }

    [[nodiscard]] static QString MeanStatement(const CalculationItem& item) {
        const QString ofIndicator =
            QStringLiteral("Select Avg(CDbl(DataValue)) From CalcTempNew2 Where [Indicator] = ") +
            Quoted(item.indicator);
        return item.subpop.isEmpty() ? ofIndicator
                                     : ofIndicator + QStringLiteral(" And Subpop = ") + Quoted(item.subpop);
    }

    // --- Computing, as the formulas of the sheet do. ---

    /// False when the values of an item lie so far apart that their distance is no number.
    bool Score() {
        for (std::size_t item = 0; item < Items(); ++item) {
            const auto [low, high] = RangeOf(item);
            if (!std::isfinite(high - low)) return false;
            for (IndexArea& area : areas_) {
                const double value = area.values[item].number.value_or(0);
                const bool highIsGood = draft_.weights[item].highIsGood;
                area.scores.scores.push_back(high - low == 0 ? 1
                                             : highIsGood    ? (value - low) / (high - low)
                                                             : (value - high) / (low - high));
            }
        }
        const double all = std::accumulate(weights_.begin(), weights_.end(), 0.0);
        for (IndexArea& area : areas_)
            area.scores.index =
                std::inner_product(weights_.begin(), weights_.end(), area.scores.scores.begin(), 0.0) / all;
        return true;
    }

    /// The lowest and the highest value of an item, as sheets take them: 0 where there is none.
    [[nodiscard]] std::pair<double, double> RangeOf(std::size_t item) const {
        std::vector<double> numbers;
        for (const IndexArea& area : areas_)
            if (area.values[item].number) numbers.push_back(*area.values[item].number);
        if (numbers.empty()) return {0, 0};
        const auto [low, high] = std::ranges::minmax(numbers);
        return {low, high};
    }

    void Scale() {
        const double bottom = NumberTyped(draft_.scaleMin).value_or(0);
        const double top = NumberTyped(draft_.scaleMax).value_or(0);
        const auto index = [](const IndexArea& area) { return area.scores.index; };
        const double low = index(*std::ranges::min_element(areas_, {}, index));
        const double high = index(*std::ranges::max_element(areas_, {}, index));
        for (IndexArea& area : areas_)
            area.scaled = high - low == 0 ? top : bottom + (index(area) - low) / (high - low) * (top - bottom);
    }

    // --- The working sheet. ---

    [[nodiscard]] office::Block IndicatorRows() const {
        office::Block rows{Headings({"Comm_Indicator", "INDEX GRID WEIGHT", "INDEX GRID HIGH"})};
        for (std::size_t item = 0; item < Items(); ++item)
            rows.push_back({TextCell(NameOf(draft_.items[item])), weights_[item], draft_.weights[item].highIsGood});
        return rows;
    }

    [[nodiscard]] office::Block HeadingRows() const {
        const auto columns = static_cast<std::size_t>(ScaledColumn());
        office::Block block(2, std::vector<office::Cell>(columns));
        block[0][0] = TextCell(PlainText(QStringLiteral("Comm_Area Id")));
        block[0][1] = TextCell(PlainText(QStringLiteral("Comm_Area Name")));
        for (std::size_t item = 0; item < Items(); ++item) {
            block[0][2 + 2 * item] = TextCell(draft_.items[item].indicator);
            block[1][2 + 2 * item] = TextCell(draft_.items[item].subpop);
            block[0][3 + 2 * item] = TextCell(PlainText(QStringLiteral("INDEX_SCORE")));
        }
        block[0][columns - 2] = TextCell(PlainText(QStringLiteral("LOG_INDEX")));
        block[0][columns - 1] = TextCell(draft_.indicator);
        block[1][columns - 1] = TextCell(draft_.subpop);
        return block;
    }

    [[nodiscard]] std::vector<office::Cell> RowOf(const IndexArea& area) const {
        std::vector<office::Cell> row{TextCell(area.id), TextCell(area.name)};
        for (std::size_t item = 0; item < Items(); ++item) {
            const IndexValue& value = area.values[item];
            row.push_back(value.number ? office::Cell(*value.number) : office::Cell(QStringLiteral("M")));
            row.push_back(NumberCell(area.scores.scores[item]));
        }
        row.push_back(NumberCell(area.scores.index));
        row.push_back(ValueCell(ResultText(area.scaled, draft_)));
        return row;
    }

    [[nodiscard]] QString ScoreFormula(std::size_t item) const {
        const int column = ValueColumn(item);
        return QStringLiteral(
                   "= IF((Max(%1) - Min(%1)) = 0,1,IF(%2,(%3 - Min(%1)) / (Max(%1) - Min(%1)), (%3 - Max(%1)) / "
                   "(Min(%1) - Max(%1))))")
            .arg(FixedRange(column, FirstRow(), LastRow()),
                 FixedCellAt(kFirstIndicatorRow + static_cast<int>(item), kFlagColumn), CellAt(FirstRow(), column));
    }

    [[nodiscard]] QString IndexFormula() const {
        QStringList terms;
        QStringList weights;
        for (std::size_t item = 0; item < Items(); ++item) {
            weights << FixedCellAt(kFirstIndicatorRow + static_cast<int>(item), kWeightColumn);
            terms << CellAt(FirstRow(), ValueColumn(item) + 1) + QLatin1Char('*') + weights.back();
        }
        return QStringLiteral("= (%1) / (%2)")
            .arg(terms.join(QStringLiteral(" + ")), weights.join(QStringLiteral(" + ")));
    }

    [[nodiscard]] QString ScaledFormula() const {
        return QStringLiteral(
                   "= IF((Max(%1) - Min(%1)) = 0, $B$8,$B$7 + ( (%2 - Min(%1)) / (Max(%1) - Min(%1)) ) * ($B$8 - "
                   "$B$7))")
            .arg(FixedRange(IndexColumn(), FirstRow(), LastRow()), CellAt(FirstRow(), IndexColumn()));
    }

    // The ranges and the weights are the same for every row, so their addresses are fixed.
    void WriteWorking(CalculationLog& log) const {
        LogSheet& sheet = log.working;
        office::Block rows;
        for (const IndexArea& area : areas_)
            rows.push_back(RowOf(area));
        sheet.headRow = AreaHeadRow();
        sheet.firstRow = FirstRow();
        sheet.lastRow = LastRow();
        sheet.lastColumn = ScaledColumn();
        sheet.textColumns = {1, 2};
        sheet.blocks = {{kFirstIndicatorRow - 1, 1, IndicatorRows()},
                        {AreaHeadRow(), 1, HeadingRows()},
                        {FirstRow(), 1, std::move(rows)}};
        const QString format = QStringLiteral("0.00");
        for (std::size_t item = 0; item < Items(); ++item)
            sheet.formulas.push_back({ValueColumn(item) + 1, {ScoreFormula(item)}, format, false});
        sheet.formulas.push_back({IndexColumn(), {IndexFormula()}, format, false});
        sheet.formulas.push_back({ScaledColumn(), {ScaledFormula()}, QStringLiteral("General"), true});
    }

    // --- The detail sheet. ---

    bool WriteDetail(CalculationLog& log) {
        std::vector<office::Cell> headings = Headings({"Comm_Area Id", "Comm_Area Name", "Comm_Indicator", "Subpop",
                                                       "Comm_Time", "Comm_Datavalue", "Comm_Unit", "Comm_Source"});
        headings.push_back(TextCell(draft_.indicator));
        DetailSheet sheet(std::move(headings));
        Records rows =
            Select(QStringLiteral("Select AreaId, AreaName, [Indicator], Subpop, TimePeriod, Datavalue, [Unit], "
                                  "[Source] from CalcTempNew2 pt Order By AreaId"),
                   jet::CursorType::ForwardOnly);
        for (; !rows.atEnd(); rows.MoveNext()) {
            IndexArea& area = areas_[placeOf_.value(AreaKey(rows.Text(std::size_t{0})))];
            const QString time = rows.Text(std::size_t{4});
            const bool first = area.time.isNull();
            if (first || time.compare(area.time, Qt::CaseInsensitive) >= 0) {
                area.time = time;
                area.source = rows.Text(std::size_t{7});
            }
            std::vector<office::Cell> cells{TextCell(rows.Text(std::size_t{2})),
                                            TextCell(rows.Text(std::size_t{3})),
                                            TimeCell(time),
                                            ValueCell(rows.Text(std::size_t{5})),
                                            TextCell(rows.Text(std::size_t{6})),
                                            TextCell(rows.Text(std::size_t{7}))};
            if (first) cells.push_back(ValueCell(ResultText(area.scaled, draft_)));
            sheet.Add(area.id, area.name, std::move(cells));
        }
        log.detail = sheet.Taken();
        log.detail.alignments = {AsTexts(5)};
        return rows.isOpen();
    }

    // --- Results. ---

    void AddRemark(CalculationLog& log, const IndexArea& area, const char* key, bool IndexValue::*which) const {
        QStringList names;
        for (std::size_t item = 0; item < Items(); ++item)
            if (area.values[item].*which) names << NameOf(draft_.items[item]);
        if (names.isEmpty()) return;
        log.remarks.push_back({area.id, area.name, FilledText(QLatin1String(key), {names.join(QStringLiteral(", "))})});
    }

    void AddResults(CalculationLog& log) const {
        for (const IndexArea& area : areas_) {
            const int row = FirstRow() + static_cast<int>(log.results.size());
            log.results.push_back(
                {{area.time, area.id, area.name, ResultText(area.scaled, draft_), draft_.subpop, area.source},
                 row,
                 ScaledColumn()});
            AddRemark(log, area, "TS_CalcMeanUsed", &IndexValue::isMean);
            AddRemark(log, area, "TS_CalcBlankAsZero", &IndexValue::isBlank);
            if (log.results.back().row.value.isEmpty())
                log.remarks.push_back({area.id, area.name, PlainText(QStringLiteral("TS_CalcTooLarge"))});
        }
    }

    void AddRanks(CalculationLog& log) const {
        std::vector<RankedArea> ranked;
        for (std::size_t place = 0; place < areas_.size(); ++place)
            ranked.push_back(
                {areas_[place].id, areas_[place].name, FirstRow() + static_cast<int>(place), areas_[place].scores});
        QStringList names;
        for (const CalculationItem& item : draft_.items)
            names << NameOf(item);
        AddRankSheet(log, std::move(ranked), names, weights_, sheet_);
    }

    const CalculationDraft& draft_;
    std::vector<double> weights_;
    IndexSheet sheet_;
    std::vector<IndexArea> areas_;
    QHash<QString, std::size_t> placeOf_;
};

/// The key of what is wrong with the weights or the scale; nullptr when nothing is.
const char* FaultOf(const CalculationDraft& draft) {
    if (draft.items.empty()) return "016";
    if (draft.weights.size() != draft.items.size()) return "102";
    double sum = 0;
    for (const IndexWeight& weight : draft.weights) {
        const auto number = NumberTyped(weight.weight);
        if (!number) return "102";
        sum += *number;
    }
    if (sum != 100) return "104";
    const auto bottom = NumberTyped(draft.scaleMin);
    const auto top = NumberTyped(draft.scaleMax);
    if (!bottom || !top) return "018";
    return *bottom < *top ? nullptr : "105";
}

} // namespace

CalculationLog CalculateCompositeIndex(const CalculationDraft& draft, const Progress& progress) {
    if (const char* fault = FaultOf(draft)) return Failed(PlainText(QLatin1String(fault)));
    const auto lists = SelectDistinctRecords(draft, progress);
    if (!lists) return Failed(ReasonOfFailure(QStringLiteral("_Data")));
    if (lists->pairs.isEmpty()) return Failed(PlainText(QStringLiteral("041")));
    return CompositeIndex(draft).Log(*lists);
}

} // namespace tessaro
