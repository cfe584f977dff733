// One indicator in another unit, by a factor for each unit that its data have.

#include "calculate/Calculations.h"
#include "calculate/LogParts.h"
#include "calculate/Numbers.h"
#include "session/DisplayValue.h"
#include "session/Query.h"
#include "session/Strings.h"
#include "sheets/ValueCells.h"
#include "view/DataFilters.h"

namespace tessaro {

namespace {

constexpr int kFirstRow = kHeadRow + 1;
constexpr int kResultColumn = 6;
constexpr int kTimeColumn = 8;

/// TUnitWiz, with the factors and products of all rows. The tiny numbers make its two new columns hold fractions.
bool MakeTable(const CalculationDraft& draft) {
    DropWorkingTable("TUnitWiz");
    if (!Execute(
            QStringLiteral("Select *, 0.00000000001 as Conv_Factor, 0.00000000001 as Target_Unit Into TUnitWiz From "
                           "_Data d1 Where d1.[Indicator] = %1")
                .arg(Quoted(draft.items.front().indicator))))
        return false;
    return std::ranges::all_of(draft.factors, [](const ConversionFactor& each) {
        const QString factor = NumberText(NumberTyped(each.factor).value_or(0));
        return Execute(
            QStringLiteral("UPDATE TUnitWiz SET Target_Unit = DataValue * %1, Conv_Factor = %1 Where Unit = %2")
                .arg(factor, Quoted(each.unit)));
    });
}

/// Units of the indicator that have no factor.
QStringList UnitsWithoutFactor(const CalculationDraft& draft) {
    QStringList units;
    Records rows = Select(QStringLiteral("SELECT Distinct [Unit] From _Data Where [Indicator] = ") +
                          Quoted(draft.items.front().indicator));
    for (; !rows.atEnd(); rows.MoveNext())
        units << rows.Text(std::size_t{0}).trimmed();
    for (const ConversionFactor& each : draft.factors)
        units.removeIf(
            [&](const QString& unit) { return unit.compare(each.unit.trimmed(), Qt::CaseInsensitive) == 0; });
    return units;
}

std::vector<office::Cell> WorkingHeadings(const CalculationDraft& draft) {
    std::vector<office::Cell> headings =
        Headings({"Comm_Area Id", "Comm_Area Name", "Comm_Unit", "Comm_Datavalue", "TRANSFORM TARGET CONVERSION"});
    headings.push_back(TextCell(draft.targetUnit));
    for (office::Cell& cell : Headings({"Subpop", "Comm_Time", "Comm_Source"}))
        headings.push_back(std::move(cell));
    return headings;
}

bool ReadRows(const CalculationDraft& draft, CalculationLog& log, office::Block& rows) {
    Records records = Select(QStringLiteral(" SELECT AreaId, AreaName, [Unit], Datavalue, Conv_Factor, Target_unit, "
                                            "Subpop, TimePeriod, [Source]  FROM TUnitWiz"),
                             jet::CursorType::ForwardOnly);
    if (!records.isOpen()) return false;
    for (; !records.atEnd(); records.MoveNext()) {
        const auto text = [&](std::size_t field) { return records.Text(field); };
        const auto number = [&](std::size_t field) {
            return records.IsNull(field) ? std::nullopt : std::optional(records.rows().Get(field).toDouble());
        };
        const auto product = number(5);
        const QString value = ResultText(product, draft);
        log.results.push_back({{text(7), text(0), text(1), value, text(6), text(8)},
                               kFirstRow + static_cast<int>(rows.size()),
                               kResultColumn});
        if (value.isEmpty())
            log.remarks.push_back(
                {text(0), text(1),
                 PlainText(product ? QStringLiteral("TS_CalcTooLarge") : QStringLiteral("TS_CalcBlank"))});
        rows.push_back({TextCell(text(0)), TextCell(text(1)), TextCell(text(2)), ValueCell(text(3)),
                        NumberCell(number(4)), NumberCell(product), TextCell(text(6)), TimeCell(text(7)),
                        TextCell(text(8))});
    }
    return true;
}

} // namespace

CalculationLog CalculateTransformUnit(const CalculationDraft& draft) {
    if (draft.items.empty()) return Failed(PlainText(QStringLiteral("016")));
    const bool allRead = std::ranges::all_of(
        draft.factors, [](const ConversionFactor& each) { return NumberTyped(each.factor).value_or(0) != 0; });
    if (!allRead || !UnitsWithoutFactor(draft).isEmpty()) return Failed(PlainText(QStringLiteral("111")));
    CalculationLog log;
    office::Block rows;
    if (!MakeTable(draft) || !ReadRows(draft, log, rows))
        return Failed(ReasonOfFailure(QStringLiteral("_Data"),
                                      QStringLiteral("Where [Indicator] = ") + Quoted(draft.items.front().indicator)));
    if (rows.empty()) return Failed(PlainText(QStringLiteral("041")));
    log.working = WorkingSheet({WorkingHeadings(draft)}, std::move(rows), kFirstRow);
    log.working.alignments = {AsTexts(kTimeColumn)};
    log.detail = DetailOfIndicator(draft.items.front().indicator);
    return log;
}

} // namespace tessaro
