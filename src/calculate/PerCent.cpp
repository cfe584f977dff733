// The sum of some indicators in per cent of the sum of others, area by area.

#include "calculate/Calculations.h"
#include "calculate/LogParts.h"
#include "calculate/Numbers.h"
#include "session/Query.h"
#include "session/Strings.h"
#include "sheets/ValueCells.h"

#include <QSet>

#include <numeric>

namespace tessaro {

namespace {

constexpr int kFirstRow = 13;
constexpr int kElementRow = 8; ///< says which columns are numerators, which denominators

/// One area with the values of all items, the numerators first.
struct AreaSums {
    QString id;
    QString name;
    std::vector<std::optional<double>> values;
    QString time;   ///< of the last row that the detail has for the area
    QString source; ///< likewise
    QString target; ///< the result as text; empty when there is none
};

class PerCent final {
  public:
    PerCent(const CalculationDraft& draft, const DistinctRecords& lists) : draft_(draft), lists_(lists) {
        items_ = draft.items;
        items_.insert(items_.end(), draft.denominators.begin(), draft.denominators.end());
        numerators_ = static_cast<int>(draft.items.size());
    }

    [[nodiscard]] CalculationLog Log() {
        if (!ReadSums()) return Failed(Reason());
        if (areas_.empty()) return Failed(PlainText(QStringLiteral("041")));
        CalculationLog log;
        if (!WriteDetail(log)) return Failed(Reason());
        WriteWorking(log);
        QSet<QString> present;
        for (std::size_t i = 0; i < areas_.size(); ++i) {
            AddResult(log, i);
            present.insert(AreaKey(areas_[i].id));
        }
        RemarkAbsentAreas(log, present);
        return log;
    }

  private:
    // --- Columns of the working sheet. ---

    [[nodiscard]] int Items() const { return static_cast<int>(items_.size()); }
    [[nodiscard]] int ColumnOf(int item) const { return kFirstItemColumn + item + (item < numerators_ ? 0 : 1); }
    [[nodiscard]] int NumeratorTotal() const { return kFirstItemColumn + numerators_; }
    [[nodiscard]] int DenominatorTotal() const { return Target() - 1; }
    [[nodiscard]] int Target() const { return Items() + 5; }

    // --- Reading. ---

    [[nodiscard]] QString Reason() const {
        return ReasonOfFailure(QStringLiteral("CalcTempNew2"),
                               QStringLiteral("Where [Indicator] + '{}' + Subpop In ") + lists_.allPairs);
    }

    bool ReadSums() {
        const ColumnsOfKeys places = PlacesOfItems("CalcTempNew2", items_);
        Records rows = Select(
            QStringLiteral(" Select CT.AreaId, CT.AreaName, CT.[IndicatorgId]+'{}'+SubpopGId, "
                           "Sum(CDbl(CT.DataValue))  FROM CalcTempNew2 AS CT  WHERE CT.[Indicator]+'{}'+CT.[Subpop] "
                           "in %1  GROUP BY AreaId, AreaName, CT.[IndicatorGId]+'{}'+SubpopGId ORDER BY AreaId")
                .arg(lists_.allPairs));
        if (!rows.isOpen()) return false;
        for (; !rows.atEnd(); rows.MoveNext()) {
            const QString id = rows.Text(std::size_t{0});
            if (areas_.empty() || AreaKey(areas_.back().id) != AreaKey(id)) BeginArea(id, rows.Text(std::size_t{1}));
            if (rows.IsNull(3)) continue;
            for (const int item : places.value(rows.Text(std::size_t{2}).toLower()))
                AddValue(areas_.back().values[static_cast<std::size_t>(item)], rows.rows().Get(3).toDouble());
        }
        for (AreaSums& area : areas_)
            area.target = TargetOf(area);
        return true;
    }

    void BeginArea(const QString& id, const QString& name) {
        placeOf_.insert(AreaKey(id), areas_.size());
        areas_.push_back({id, name, std::vector<std::optional<double>>(items_.size()), {}, {}, {}});
    }

    static void AddValue(std::optional<double>& sum, double value) { sum = sum.value_or(0) + value; }

    [[nodiscard]] double Total(const AreaSums& area, int from, int to) const {
        double total = 0;
        for (int item = from; item < to; ++item)
            total += area.values[static_cast<std::size_t>(item)].value_or(0);
        return total;
    }
    [[nodiscard]] double NumeratorsOf(const AreaSums& area) const { return Total(area, 0, numerators_); }
    [[nodiscard]] double DenominatorsOf(const AreaSums& area) const { return Total(area, numerators_, Items()); }

    [[nodiscard]] QString TargetOf(const AreaSums& area) const {
        const double numerators = NumeratorsOf(area);
        const double denominators = DenominatorsOf(area);
        if (numerators == 0 || denominators == 0) return {};
        return ResultText(100 * numerators / denominators, draft_);
    }

    // --- The working sheet. ---

    [[nodiscard]] office::Block HeadingRows() const {
        const auto columns = static_cast<std::size_t>(Target());
        office::Block block(2, std::vector<office::Cell>(columns));
        const auto set = [&](int row, int column, const QString& text) {
            block[static_cast<std::size_t>(row)][static_cast<std::size_t>(column - 1)] = TextCell(text);
        };
        set(0, 1, PlainText(QStringLiteral("Comm_Area Id")));
        set(0, 2, PlainText(QStringLiteral("Comm_Area Name")));
        for (int item = 0; item < Items(); ++item) {
            set(0, ColumnOf(item), items_[static_cast<std::size_t>(item)].indicator);
            set(1, ColumnOf(item), items_[static_cast<std::size_t>(item)].subpop);
        }
        set(0, NumeratorTotal(), PlainText(QStringLiteral("LOG_TOTAL")));
        set(0, DenominatorTotal(), PlainText(QStringLiteral("LOG_TOTAL")));
        set(0, Target(), draft_.indicator);
        set(1, Target(), draft_.subpop);
        return block;
    }

    [[nodiscard]] office::Block ElementRow() const {
        office::Block row(1, std::vector<office::Cell>(static_cast<std::size_t>(Target() - 2)));
        const auto set = [&](int column, const char* key) {
            row[0][static_cast<std::size_t>(column - kFirstItemColumn)] = TextCell(PlainText(QLatin1String(key)));
        };
        set(kFirstItemColumn, "LOG_NUMERATOR");
        set(ColumnOf(numerators_), "LOG_DENOMNATOR");
        set(Target(), "LOG_TARGET");
        return row;
    }

    [[nodiscard]] std::vector<office::Cell> RowOf(const AreaSums& area) const {
        std::vector<office::Cell> row(static_cast<std::size_t>(Target()));
        const auto set = [&](int column, office::Cell cell) {
            row[static_cast<std::size_t>(column - 1)] = std::move(cell);
        };
        const auto nonZero = [](double total) { return total == 0 ? std::nullopt : std::optional(total); };
        set(1, TextCell(area.id));
        set(2, TextCell(area.name));
        for (int item = 0; item < Items(); ++item)
            set(ColumnOf(item), NumberCell(area.values[static_cast<std::size_t>(item)]));
        set(NumeratorTotal(), NumberCell(nonZero(NumeratorsOf(area))));
        set(DenominatorTotal(), NumberCell(nonZero(DenominatorsOf(area))));
        set(Target(), ValueCell(area.target));
        return row;
    }

    [[nodiscard]] QString SumFormula(int from, int to) const {
        QStringList cells;
        for (int item = from; item < to; ++item)
            cells << CellAt(kFirstRow, ColumnOf(item));
        return QStringLiteral("= ") + cells.join(QStringLiteral(" + "));
    }

    void WriteWorking(CalculationLog& log) const {
        office::Block rows;
        for (const AreaSums& area : areas_)
            rows.push_back(RowOf(area));
        log.working = WorkingSheet(HeadingRows(), std::move(rows), kFirstRow);
        log.working.blocks.push_back({kElementRow, kFirstItemColumn, ElementRow()});
        const QString format = QStringLiteral("0.00");
        log.working.formulas = {{NumeratorTotal(), {SumFormula(0, numerators_)}, format, false},
                                {DenominatorTotal(), {SumFormula(numerators_, Items())}, format, false},
                                {Target(),
                                 {QStringLiteral("= (%1 * 100 / %2)")
                                      .arg(CellAt(kFirstRow, NumeratorTotal()), CellAt(kFirstRow, DenominatorTotal()))},
                                 {},
                                 true}};
    }

    // --- The detail sheet. ---

    bool MakeDetailTable() {
        DropWorkingTable("CalcTempNew3");
        return Execute(QStringLiteral("Select *, \"Numerator\" as Numerator Into CalcTempNew3 From CalcTempNew2 pt "
                                      "Where pt.[Indicator] & '{}' & pt.Subpop in %1")
                           .arg(lists_.pairs)) &&
               Execute(QStringLiteral("Insert Into CalcTempNew3 Select *, \"Denominator\" as Numerator From "
                                      "CalcTempNew2 pt Where pt.[Indicator] & '{}' & pt.Subpop in %1")
                           .arg(lists_.denominators));
    }

    // One statement gives the rows of all areas in the order in which one for each area would.
    bool WriteDetail(CalculationLog& log) {
        if (!MakeDetailTable()) return false;
        Records rows =
            Select(QStringLiteral("Select AreaId, AreaName, Numerator, [Indicator], Subpop, TimePeriod, Datavalue, "
                                  "[Unit], [Source] from CalcTempNew3 pt Order By AreaId, Numerator DESC"),
                   jet::CursorType::ForwardOnly);
        if (!rows.isOpen()) return false;
        DetailSheet sheet(Headings({"Comm_Area Id", "Comm_Area Name", "LOG_ELEMENT", "Comm_Indicator", "Subpop",
                                    "Comm_Time", "Comm_Datavalue", "Comm_Unit", "Comm_Source"}));
        AreaSums* area = nullptr;
        for (; !rows.atEnd(); rows.MoveNext()) {
            AreaSums& own = areas_[placeOf_.value(AreaKey(rows.Text(std::size_t{0})))];
            if (area != nullptr && area != &own) AddTargetLine(sheet, *area);
            area = &own;
            AddDetailLine(sheet, rows, own);
        }
        if (area != nullptr) AddTargetLine(sheet, *area);
        log.detail = sheet.Taken();
        log.detail.alignments = {{6, office::Align::Left}, {7, office::Align::Right}};
        return true;
    }

    static void AddDetailLine(DetailSheet& sheet, Records& rows, AreaSums& area) {
        const bool numerator = rows.Text(std::size_t{2}) == QLatin1String("Numerator");
        area.time = rows.Text(std::size_t{5});
        area.source = rows.Text(std::size_t{8});
        sheet.Add(area.id, area.name,
                  {TextCell(PlainText(numerator ? QStringLiteral("LOG_NUMERATOR") : QStringLiteral("LOG_DENOMNATOR"))),
                   TextCell(rows.Text(std::size_t{3})), TextCell(rows.Text(std::size_t{4})), TimeCell(area.time),
                   ValueCell(rows.Text(std::size_t{6})), TextCell(rows.Text(std::size_t{7})), TextCell(area.source)});
    }

    void AddTargetLine(DetailSheet& sheet, const AreaSums& area) const {
        sheet.Add(area.id, area.name,
                  {TextCell(PlainText(QStringLiteral("PERCENT"))), TextCell(draft_.indicator), TextCell(draft_.subpop),
                   TimeCell(area.time), ValueCell(area.target), TextCell(draft_.unit), TextCell(area.source)});
    }

    // --- Results. ---

    [[nodiscard]] QString ReasonFor(const AreaSums& area) const {
        const auto has = [&](int from, int to) {
            return std::any_of(area.values.begin() + from, area.values.begin() + to,
                               [](const auto& value) { return value.has_value(); });
        };
        if (!has(0, numerators_)) return PlainText(QStringLiteral("TS_CalcNoNumerator"));
        if (!has(numerators_, Items())) return PlainText(QStringLiteral("TS_CalcNoDenominator"));
        if (NumeratorsOf(area) == 0) return PlainText(QStringLiteral("TS_CalcZeroNumerator"));
        if (DenominatorsOf(area) == 0) return PlainText(QStringLiteral("TS_CalcZeroDenominator"));
        return PlainText(QStringLiteral("TS_CalcTooLarge"));
    }

    void AddResult(CalculationLog& log, std::size_t place) const {
        const AreaSums& area = areas_[place];
        const QString& value = area.target;
        log.results.push_back({{area.time, area.id, area.name, value, draft_.subpop, area.source},
                               kFirstRow + static_cast<int>(place),
                               Target()});
        if (value.isEmpty()) log.remarks.push_back({area.id, area.name, ReasonFor(area)});
    }

    const CalculationDraft& draft_;
    const DistinctRecords& lists_;
    std::vector<CalculationItem> items_;
    int numerators_ = 0;
    std::vector<AreaSums> areas_;
    QHash<QString, std::size_t> placeOf_;
};

} // namespace

CalculationLog CalculatePerCent(const CalculationDraft& draft, const Progress& progress) {
    if (draft.items.empty() || draft.denominators.empty()) return Failed(PlainText(QStringLiteral("016")));
    const auto lists = SelectDistinctRecords(draft, progress);
    if (!lists) return Failed(ReasonOfFailure(QStringLiteral("_Data")));
    if (lists->pairs.isEmpty() || lists->denominators.isEmpty()) return Failed(PlainText(QStringLiteral("041")));
    return PerCent(draft, *lists).Log();
}

} // namespace tessaro
