#include "calculate/CalculationSteps.h"

#include "calculate/Numbers.h"
#include "session/DisplayValue.h"

#include <QLocale>
#include <QStringList>

#include <cmath>
#include <numeric>

namespace tessaro {

namespace {

constexpr double kAllWeights = 100;
constexpr double kMostDecimals = 15;
constexpr qsizetype kMostCharacters = 255; ///< that the columns of names hold

StepProblem CheckIndicators(const CalculationDraft& draft) {
    if (draft.items.empty()) return {QStringLiteral("016"), "lstAvailable_Step1"};
    return {};
}

StepProblem CheckDenominators(const CalculationDraft& draft) {
    if (draft.denominators.empty()) return {QStringLiteral("016"), "lstAvailable_Step1"};
    return {};
}

StepProblem CheckWeights(const CalculationDraft& draft) {
    for (std::size_t row = 0; row < draft.weights.size(); ++row)
        if (!NumberTyped(draft.weights[row].weight)) return {QStringLiteral("102"), "grdW", static_cast<int>(row)};
    if (SumOfWeights(draft.weights) != kAllWeights) return {QStringLiteral("104"), "grdW"};
    return {};
}

StepProblem CheckUnitFactors(const CalculationDraft& draft) {
    if (draft.targetUnit.trimmed().isEmpty()) return {QStringLiteral("110"), "rtbTUnit"};
    if (draft.targetUnit.size() > kMostCharacters) return {QStringLiteral("047"), "rtbTUnit"};
    for (std::size_t row = 0; row < draft.factors.size(); ++row)
        if (NumberTyped(draft.factors[row].factor).value_or(0) == 0)
            return {QStringLiteral("111"), "grdUnit", static_cast<int>(row)};
    return {};
}

StepProblem CheckLevels(const CalculationDraft& draft) {
    for (const bool wanted : draft.levels)
        if (wanted) return {};
    return {QStringLiteral("106"), "chkLevel_0"};
}

/// ValidateTextField: a field must not be blank, nor longer than its column.
StepProblem CheckField(const QString& text, const char* blankKey, const char* control) {
    if (text.trimmed().isEmpty()) return {QLatin1String(blankKey), control};
    if (text.trimmed().size() > kMostCharacters) return {QStringLiteral("047"), control};
    return {};
}

StepProblem CheckScale(const CalculationDraft& draft) {
    const auto least = NumberTyped(draft.scaleMin);
    const auto most = NumberTyped(draft.scaleMax);
    if (!least) return {QStringLiteral("018"), "txtScaleMin"};
    if (!most) return {QStringLiteral("018"), "txtScaleMax"};
    if (*least >= *most) return {QStringLiteral("105"), "txtScaleMin"};
    return {};
}

StepProblem CheckSaveAs(const CalculationDraft& draft) {
    struct Field {
        const QString& text;
        const char* blankKey;
        const char* control;
        bool asked = true;
    };
    const Field fields[] = {{draft.sector, "014", "cmbSector"},
                            {draft.indicatorClass, "015", "cmbClass"},
                            {draft.indicator, "016", "cmbIndicator"},
                            {draft.unit, "017", "txtUnit", AsksForUnit(draft.type)},
                            {draft.subpop, "020", "cmbSubpop", AsksForSubpop(draft.type)}};
    for (const Field& field : fields) {
        if (!field.asked) continue;
        const StepProblem problem = CheckField(field.text, field.blankKey, field.control);
        if (!problem.key.isEmpty()) return problem;
    }
    const auto decimals = NumberTyped(draft.decimals);
    if (!decimals) return {QStringLiteral("018"), "txtDecimals"};
    if (*decimals < 0 || *decimals > kMostDecimals || *decimals != std::floor(*decimals))
        return {QStringLiteral("TS_DecimalsLimit"), "txtDecimals"};
    return draft.type == CalcType::CompositeIndex ? CheckScale(draft) : StepProblem();
}

constexpr CalculationStepEntry kSaveAs{PageKind::SaveAs, "TS_PageSaveAs", CheckSaveAs};
constexpr CalculationStepEntry kLog{PageKind::Log, "TS_PagePreviewCalculations"};
constexpr CalculationStepEntry kDataEntry{PageKind::DataEntry, "TS_PagePreviewDataEntry"};
constexpr CalculationStepEntry kIndicators{PageKind::Indicators, "TS_PageIndicator", CheckIndicators};
constexpr CalculationStepEntry kNone;

const CalculationStepTable kSteps[kCalculations] = {
    {{{PageKind::Indicators, "TS_PageNumerator", CheckIndicators},
      {PageKind::Denominators, "TS_PageDenominator", CheckDenominators},
      kSaveAs,
      kLog,
      kDataEntry}},
    {{kIndicators, kNone, kSaveAs, kLog, kDataEntry}},
    {{{PageKind::Formula, "TS_PageIndicator"}, kNone, kSaveAs, kLog, kDataEntry}},
    {{kIndicators, {PageKind::Weights, "TS_PageWeights", CheckWeights}, kSaveAs, kLog, kDataEntry}},
    {{kIndicators, {PageKind::UnitFactors, "TS_PageConversionFactors", CheckUnitFactors}, kSaveAs, kLog, kDataEntry}},
    {{kIndicators, {PageKind::Levels, "TS_PageLevels", CheckLevels}, kNone, kLog, kDataEntry}},
};

} // namespace

const CalculationStepTable& StepsOf(CalcType type) {
    return kSteps[static_cast<int>(type)];
}

bool AsksForUnit(CalcType type) {
    return type != CalcType::TransformUnit && type != CalcType::Subtotal;
}

// Of the others each row keeps the subgroup that it has in the data.
bool AsksForSubpop(CalcType type) {
    return type == CalcType::PerCent || type == CalcType::CompositeIndex || type == CalcType::Formula;
}

bool TakesOneIndicator(CalcType type) {
    return type == CalcType::HundredMinus || type == CalcType::TransformUnit || type == CalcType::Subtotal;
}

bool OffersSubpops(CalcType type) {
    return type == CalcType::PerCent || type == CalcType::CompositeIndex;
}

double SumOfWeights(const std::vector<IndexWeight>& weights) {
    return std::accumulate(weights.begin(), weights.end(), 0.0, [](double sum, const IndexWeight& one) {
        return sum + NumberTyped(one.weight).value_or(0);
    });
}

namespace {

/// The hundredths are shared out: the last ones get what is left over.
std::vector<IndexWeight> WeightsOf(int count, int parts, int decimals) {
    std::vector<IndexWeight> weights;
    const QLocale locale(QLocale::c());
    for (int i = 0; i < count; ++i) {
        const int share = parts / count + (i >= count - parts % count ? 1 : 0);
        weights.push_back({locale.toString(share / std::pow(10, decimals), 'f', decimals)});
    }
    return weights;
}

} // namespace

QStringList EvenWeights(int count) {
    QStringList texts;
    if (count < 1) return texts;
    // Fractions that are no doubles may add up to a little more or less; whole numbers never do.
    for (int decimals = kAllWeights / count == std::floor(kAllWeights / count) ? 0 : 2; decimals >= 0; --decimals) {
        const int parts = static_cast<int>(kAllWeights * std::pow(10, decimals));
        const std::vector<IndexWeight> weights = WeightsOf(count, parts, decimals);
        if (decimals > 0 && SumOfWeights(weights) != kAllWeights) continue;
        for (const IndexWeight& one : weights)
            texts << InDigitsOf(QLocale(), QString(one.weight).replace(QLatin1Char('.'), QLocale().decimalPoint()));
        break;
    }
    return texts;
}

} // namespace tessaro
