// A formula of the user over indicators, area by area.

#include "calculate/Calculations.h"
#include "calculate/FormulaParser.h"
#include "calculate/FormulaText.h"
#include "calculate/LogParts.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Strings.h"
#include "sheets/ValueCells.h"
#include "view/DataFilters.h"

namespace tessaro {

namespace {

constexpr int kFirstRow = 13; ///< two rows of headings stand above

/// One area with the values of the references.
struct AreaValues {
    QString id;
    QString name;
    std::vector<std::optional<double>> values;
    FormulaValue result;
    QString time; ///< the latest of the area's rows
    QString source;
};

class Formula final {
  public:
    Formula(const CalculationDraft& draft, const ParsedFormula& formula)
        : draft_(draft), formula_(formula), items_(formula.References()) {
        QStringList pairs;
        for (const CalculationItem& item : items_)
            pairs << PairKey(item.indicator, item.subpop);
        pairs_ = BracketedList(pairs);
    }

    [[nodiscard]] CalculationLog Log(const Progress& progress) {
        const QString table = QStringLiteral("FormulaTempNew2");
        if (!CreateFormulaTables(pairs_, progress)) return Failed(ReasonOfFailure(QStringLiteral("_Data")));
        if (!ReadValues()) return Failed(ReasonOfFailure(table));
        if (areas_.empty()) return Failed(PlainText(QStringLiteral("041")));
        for (AreaValues& area : areas_)
            area.result = formula_.Evaluate(area.values);
        CalculationLog log;
        if (!KeepResults() || !WriteDetail(log)) return Failed(ReasonOfFailure(table));
        WriteWorking(log);
        AddResults(log);
        return log;
    }

  private:
    [[nodiscard]] int Items() const { return static_cast<int>(items_.size()); }
    [[nodiscard]] int Target() const { return kFirstItemColumn + Items(); }

    // --- Reading. ---

    bool ReadValues() {
        const ColumnsOfKeys places = PlacesOfItems("FormulaTempNew2", items_);
        if (places.isEmpty()) return true;
        Records rows =
            Select(QStringLiteral(
                       "TRANSFORM Sum(CDbl(DataValue)) SELECT FT.AreaId, FT.AreaName FROM FormulaTempNew2 FT  WHERE "
                       "FT.[IndicatorGId] & '{}' & FT.[SubpopGId] in %1  GROUP BY FT.AreaId, FT.AreaName ORDER BY "
                       "FT.AreaId PIVOT FT.IndicatorGId & '{}' & FT.SubpopGId ")
                       .arg(BracketedList(places.keys())));
        if (!rows.isOpen()) return false;
        std::vector<QList<int>> placesOfFields;
        for (std::size_t field = 0; field < rows.rows().FieldCount(); ++field)
            placesOfFields.push_back(places.value(QString::fromStdString(rows.rows().Field(field).name).toLower()));
        for (; !rows.atEnd(); rows.MoveNext()) {
            AreaValues area{rows.Text(std::size_t{0}), rows.Text(std::size_t{1}), {}, {}, {}, {}};
            area.values.resize(items_.size());
            for (std::size_t field = 2; field < placesOfFields.size(); ++field)
                for (const int place : placesOfFields[field])
                    if (!rows.IsNull(field)) {
                        auto& value = area.values[static_cast<std::size_t>(place)];
                        value = value.value_or(0) + rows.rows().Get(field).toDouble();
                    }
            placeOf_.insert(AreaKey(area.id), areas_.size());
            areas_.push_back(std::move(area));
        }
        return true;
    }

    // The results also stand in the table, Null where there is none. The index lets each area find its rows.
    bool KeepResults() const {
        if (!Execute(QStringLiteral("CREATE INDEX FormulaArea ON FormulaTempNew2 (AreaId)"))) return false;
        std::vector<QString> updates;
        for (const AreaValues& area : areas_) {
            const QString value = area.result.number ? NumberText(*area.result.number) : QStringLiteral("Null");
            updates.push_back(QStringLiteral("Update FormulaTempNew2 set Formula = %1 Where AreaID = %2")
                                  .arg(value, Quoted(area.id)));
        }
        return ExecuteTogether(updates);
    }

    // --- The sheets. ---

    [[nodiscard]] office::Block HeadingRows() const {
        office::Block block(2, std::vector<office::Cell>(static_cast<std::size_t>(Target())));
        block[0][0] = TextCell(PlainText(QStringLiteral("Comm_Area Id")));
        block[0][1] = TextCell(PlainText(QStringLiteral("Comm_Area Name")));
        for (std::size_t item = 0; item < items_.size(); ++item) {
            block[0][item + 2] = TextCell(items_[item].indicator);
            block[1][item + 2] = TextCell(items_[item].subpop);
        }
        block[0].back() = TextCell(draft_.indicator);
        block[1].back() = TextCell(draft_.subpop);
        return block;
    }

    void WriteWorking(CalculationLog& log) const {
        office::Block rows;
        LogFormulas formulas{Target(), {}, {}, true};
        for (const AreaValues& area : areas_) {
            const int row = kFirstRow + static_cast<int>(rows.size());
            std::vector<office::Cell> cells{TextCell(area.id), TextCell(area.name)};
            QStringList addresses;
            for (int item = 0; item < Items(); ++item) {
                cells.push_back(NumberCell(area.values[static_cast<std::size_t>(item)]));
                addresses << CellAt(row, kFirstItemColumn + item);
            }
            cells.push_back(ValueCell(ResultText(area.result.number, draft_)));
            rows.push_back(std::move(cells));
            formulas.formulas.push_back(area.result.number ? formula_.SheetFormula(addresses) : QString());
        }
        log.working = WorkingSheet(HeadingRows(), std::move(rows), kFirstRow);
        log.working.formulas.push_back(std::move(formulas));
    }

    // One statement gives the rows of all areas in the order in which one for each area would.
    bool WriteDetail(CalculationLog& log) {
        std::vector<office::Cell> headings = Headings({"Comm_Area Id", "Comm_Area Name", "Comm_Time", "Comm_Indicator",
                                                       "Comm_Unit", "Subpop", "Comm_Source", "Comm_Datavalue"});
        headings.push_back(TextCell(draft_.indicator));
        DetailSheet sheet(std::move(headings));
        Records rows =
            Select(QStringLiteral("Select AreaId, AreaName, TimePeriod, [Indicator], [Unit], Subpop, [Source], "
                                  "Datavalue, Formula From FormulaTempNew2 Where [Indicator] + '{}' + Subpop In "
                                  "%1 Order By AreaId")
                       .arg(pairs_),
                   jet::CursorType::ForwardOnly);
        for (; !rows.atEnd(); rows.MoveNext()) {
            AreaValues& area = areas_[placeOf_.value(AreaKey(rows.Text(std::size_t{0})))];
            const QString time = rows.Text(std::size_t{2});
            const bool first = area.time.isNull();
            if (first || time.compare(area.time, Qt::CaseInsensitive) >= 0) {
                area.time = time;
                area.source = rows.Text(std::size_t{6});
            }
            std::vector<office::Cell> cells{TimeCell(time)};
            for (std::size_t field = 3; field < 7; ++field)
                cells.push_back(TextCell(rows.Text(field)));
            cells.push_back(ValueCell(rows.Text(std::size_t{7})));
            if (first && !rows.IsNull(8)) cells.push_back(ValueCell(ResultText(rows.rows().Get(8).toDouble(), draft_)));
            sheet.Add(area.id, area.name, std::move(cells));
        }
        log.detail = sheet.Taken();
        log.detail.alignments = {AsTexts(3)};
        return rows.isOpen();
    }

    // --- Results. ---

    [[nodiscard]] QString ReasonFor(const FormulaValue& result) const {
        const QString missing =
            result.missing < 0 ? QString() : NameOf(items_[static_cast<std::size_t>(result.missing)]);
        return FilledText(QLatin1String(result.reasonKey), {missing});
    }

    void AddResults(CalculationLog& log) const {
        QSet<QString> present;
        for (const AreaValues& area : areas_) {
            const int row = kFirstRow + static_cast<int>(log.results.size());
            log.results.push_back(
                {{area.time, area.id, area.name, ResultText(area.result.number, draft_), draft_.subpop, area.source},
                 row,
                 Target()});
            if (!area.result.number) log.remarks.push_back({area.id, area.name, ReasonFor(area.result)});
            present.insert(AreaKey(area.id));
        }
        RemarkAbsentAreas(log, present);
    }

    const CalculationDraft& draft_;
    const ParsedFormula& formula_;
    const std::vector<CalculationItem>& items_;
    QString pairs_;
    std::vector<AreaValues> areas_;
    QHash<QString, std::size_t> placeOf_;
};

} // namespace

CalculationLog CalculateFormula(const CalculationDraft& draft, const Progress& progress) {
    FormulaFault fault;
    const auto formula =
        ParsedFormula::Parse(draft.formula, ReadFormulaSubject().items, ParsedFormula::Braces::AreBrackets, fault);
    if (formula && !formula->References().empty()) return Formula(draft, *formula).Log(progress);
    if (formula) fault.reason = PlainText(QStringLiteral("TS_FormulaNoReference"));
    return Failed(PlainText(QStringLiteral("109")) + QLatin1Char('\n') + fault.reason);
}

} // namespace tessaro
