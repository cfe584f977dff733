#include "calculate/CalculationLog.h"

#include "calculate/Calculations.h"
#include "calculate/LogParts.h"
#include "calculate/WorkingTables.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"

namespace tessaro {

namespace {

CalculationLog Calculated(const CalculationDraft& draft, const Progress& progress) {
    switch (draft.type) {
    case CalcType::PerCent:
        return CalculatePerCent(draft, progress);
    case CalcType::HundredMinus:
        return CalculateHundredMinus(draft);
    case CalcType::Formula:
        return CalculateFormula(draft, progress);
    case CalcType::CompositeIndex:
        return CalculateCompositeIndex(draft, progress);
    case CalcType::TransformUnit:
        return CalculateTransformUnit(draft);
    case CalcType::Subtotal:
        return CalculateSubtotal(draft, progress);
    }
    return {};
}

/// "Where" for the rows of `_Data` that a calculation works on.
QString RowsOf(const CalculationDraft& draft) {
    QStringList indicators;
    for (const auto* items : {&draft.items, &draft.denominators})
        for (const CalculationItem& item : *items)
            indicators << item.indicator;
    return indicators.isEmpty() ? QString() : QStringLiteral("Where [Indicator] In ") + BracketedList(indicators);
}

/// Adds a remark for each result that another one of the same time, area, subgroup and source comes before, such as
/// that of a second unit.
void RemarkSecondResults(CalculationLog& log) {
    QSet<QString> known;
    for (const LogResult& result : log.results) {
        const QString key = KeyOf(result.row);
        if (!result.row.value.isEmpty() && known.contains(key))
            log.remarks.push_back({result.row.areaId, result.row.areaName,
                                   FilledText(QStringLiteral("TS_CalcSecond"), {result.row.timePeriod})});
        else if (!result.row.value.isEmpty())
            known.insert(key);
    }
}

} // namespace

QString KeyOf(const DataEntryRow& row) {
    const QString parts[] = {row.timePeriod, row.areaId, row.areaName, row.subpop, row.source};
    QString key;
    for (const QString& part : parts)
        key += part.trimmed().toLower() + QChar(0x1F);
    return key;
}

CalculationLog Calculate(const CalculationDraft& draft, const Progress& progress) {
    ErrorTrap trap("Calculate");
    CalculationLog log;
    // Statements are trapped where they are run; rows that are read one by one can still fail on the way.
    if (!trap.Try([&] { log = Calculated(draft, progress); }))
        log = Failed(ReasonOfFailure(QStringLiteral("_Data"), RowsOf(draft)));
    RemarkSecondResults(log);
    DropAllWorkingTables();
    return log;
}

} // namespace tessaro
