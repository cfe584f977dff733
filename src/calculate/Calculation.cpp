#include "calculate/Calculation.h"

namespace tessaro {

const CalculationNames& NamesOf(CalcType type) {
    static constexpr CalculationNames kNames[kCalculations] = {
        {"PERCENT", "TS_WizardPercent", "Per cent (", "011"},
        {"HMINUS", "TS_Wizard100Minus", "100 Minus (", "012"},
        {"FORMULA", "TS_WizardFormula", "Formula (", "011"},
        {"COMPOSITE INDEX", "TS_WizardIndex", "Composite Index (", "011"},
        {"TRANSFORM", "TS_WizardTransform", "Transform unit (", "011"},
        {"SUBTOTAL", "TS_WizardSubtotal", "Sub total (", "011"},
    };
    return kNames[static_cast<int>(type)];
}

} // namespace tessaro
