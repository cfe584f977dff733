// What is missing to 100: every row of one indicator.

#include "calculate/Calculations.h"
#include "calculate/LogParts.h"
#include "session/DisplayValue.h"
#include "session/Query.h"
#include "session/Strings.h"
#include "sheets/ValueCells.h"

#include <QSet>

namespace tessaro {

namespace {

constexpr int kFirstRow = kHeadRow + 1;
constexpr int kValueColumn = 3;
constexpr int kResultColumn = 4;
constexpr int kTimeColumn = 6;

std::optional<double> Complement(const QString& value) {
    const auto number = NumberOf(value);
    return number ? std::optional(100 - *number) : std::nullopt;
}

std::vector<office::Cell> WorkingHeadings(const CalculationDraft& draft) {
    std::vector<office::Cell> headings = Headings({"Comm_Area Id", "Comm_Area Name"});
    headings.push_back(TextCell(draft.items.front().indicator));
    for (office::Cell& cell : Headings({"HMINUS", "Subpop", "Comm_Time", "Comm_Unit", "Comm_Source"}))
        headings.push_back(std::move(cell));
    return headings;
}

// A blank value has no complement; one that can't be read stops the calculation.
bool ReadRows(const CalculationDraft& draft, CalculationLog& log, office::Block& rows) {
    Records records = Select(QStringLiteral("Select AreaId, AreaName, DataValue, Subpop, TimePeriod, [Unit], [Source] "
                                            "From _Data Where [Indicator] = %1 Order By AreaId")
                                 .arg(Quoted(draft.items.front().indicator)),
                             jet::CursorType::ForwardOnly);
    if (!records.isOpen()) return false;
    for (; !records.atEnd(); records.MoveNext()) {
        const auto text = [&](std::size_t field) { return records.Text(field); };
        const QString value = text(2);
        const auto result = Complement(value);
        if (!result && !value.trimmed().isEmpty()) return false;
        log.results.push_back({{text(4), text(0), text(1), ResultText(result, draft), text(3), text(6)},
                               kFirstRow + static_cast<int>(rows.size()),
                               kResultColumn});
        if (!result) log.remarks.push_back({text(0), text(1), PlainText(QStringLiteral("TS_CalcBlank"))});
        rows.push_back({TextCell(text(0)), TextCell(text(1)), ValueCell(value), ValueCell(log.results.back().row.value),
                        TextCell(text(3)), TimeCell(text(4)), TextCell(text(5)), TextCell(text(6))});
    }
    return true;
}

/// One formula that is filled down; where there are blank values, one for each row that has another.
std::vector<QString> Formulas(const CalculationLog& log) {
    const auto formula = [](int row) { return QStringLiteral("= 100-") + CellAt(row, kValueColumn); };
    if (log.remarks.empty()) return {formula(kFirstRow)};
    std::vector<QString> formulas;
    for (const LogResult& result : log.results)
        formulas.push_back(result.row.value.isEmpty() ? QString() : formula(result.sheetRow));
    return formulas;
}

} // namespace

CalculationLog CalculateHundredMinus(const CalculationDraft& draft) {
    if (draft.items.empty()) return Failed(PlainText(QStringLiteral("016")));
    CalculationLog log;
    office::Block rows;
    if (!ReadRows(draft, log, rows))
        return Failed(
            ReasonOfFailure(QStringLiteral("_Data"), QStringLiteral("Where Trim(Datavalue) <> '' And [Indicator] = ") +
                                                         Quoted(draft.items.front().indicator)));
    if (rows.empty()) return Failed(PlainText(QStringLiteral("041")));
    log.working = WorkingSheet({WorkingHeadings(draft)}, std::move(rows), kFirstRow);
    log.working.alignments = {AsTexts(kTimeColumn)};
    log.working.formulas = {{kResultColumn, Formulas(log), {}, true}};
    log.detail = DetailOfIndicator(draft.items.front().indicator, QStringLiteral("HMINUS"),
                                   [](const QString& value) { return NumberCell(Complement(value)); });
    return log;
}

} // namespace tessaro
