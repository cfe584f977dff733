#include "calculate/CalculationLog.h"

#include "calculate/Calculations.h"
#include "calculate/LogParts.h"
#include "session/ErrorSink.h"

namespace tessaro {

CalculationLog Calculate(const CalculationDraft& draft, const Progress& progress) {
    const ErrorTrap trap("Calculate");
    CalculationLog log;
    switch (draft.type) {
    case CalcType::PerCent:
        log = CalculatePerCent(draft, progress);
        break;
    case CalcType::HundredMinus:
        log = CalculateHundredMinus(draft);
        break;
    case CalcType::Formula:
        log = CalculateFormula(draft, progress);
        break;
    case CalcType::CompositeIndex:
        log = CalculateCompositeIndex(draft, progress);
        break;
    case CalcType::TransformUnit:
        log = CalculateTransformUnit(draft);
        break;
    case CalcType::Subtotal:
        log = CalculateSubtotal(draft, progress);
        break;
    }
    DropAllWorkingTables();
    return log;
}

} // namespace tessaro
