#include "calculate/CalculationSteps.h"

#include "calculate/Choices.h"
#include "session/DisplayValue.h"

#include <QLocale>

#include <functional>
#include <gtest/gtest.h>
#include <numeric>

namespace tessaro {

namespace {

QString Q(const char* text) {
    return QString::fromUtf8(text);
}

CalculationDraft Complete(CalcType type) {
    CalculationDraft draft;
    draft.type = type;
    draft.items = {{Q("A"), {}}, {Q("B"), {}}};
    draft.denominators = {{Q("C"), {}}};
    draft.weights = {{Q("30"), true}, {Q("70"), false}};
    draft.targetUnit = Q("Tons");
    draft.factors = {{Q("kg"), Q("0.001")}, {Q("lb"), Q("-2")}};
    draft.levels[1] = true;
    draft.sector = Q("S");
    draft.indicatorClass = Q("C");
    draft.indicator = Q("I");
    draft.unit = Q("U");
    draft.subpop = Q("T");
    return draft;
}

} // namespace

TEST(CalculationStepsTest, EachCalculationHasItsPages) {
    using enum PageKind;
    const PageKind expected[kCalculations][kCalculationSteps] = {{Indicators, Denominators, SaveAs, Log, DataEntry},
                                                                 {Indicators, None, SaveAs, Log, DataEntry},
                                                                 {Formula, None, SaveAs, Log, DataEntry},
                                                                 {Indicators, Weights, SaveAs, Log, DataEntry},
                                                                 {Indicators, UnitFactors, SaveAs, Log, DataEntry},
                                                                 {Indicators, Levels, None, Log, DataEntry}};
    for (int type = 0; type < kCalculations; ++type)
        for (std::size_t step = 0; step < kCalculationSteps; ++step)
            EXPECT_EQ(StepsOf(static_cast<CalcType>(type))[step].page, expected[type][step]) << type << ' ' << step;
}

TEST(CalculationStepsTest, AStepIsLeftOnlyWhenItsEntriesAreGood) {
    struct Case {
        CalcType type;
        CalculationStep step;
        std::function<void(CalculationDraft&)> spoil;
        const char* key; ///< nullptr: the step may be left
        const char* control = nullptr;
        int row = 0;
    };
    using Draft = CalculationDraft;
    const QString longText(256, QLatin1Char('x'));
    const Case cases[] = {
        {CalcType::PerCent, SelectionStep, [](Draft&) {}, nullptr},
        {CalcType::PerCent, SelectionStep, [](Draft& d) { d.items.clear(); }, "016", "lstAvailable_Step1"},
        {CalcType::PerCent, SecondStep, [](Draft& d) { d.denominators.clear(); }, "016", "lstAvailable_Step1"},
        {CalcType::CompositeIndex, SecondStep, [](Draft&) {}, nullptr},
        {CalcType::CompositeIndex, SecondStep, [](Draft& d) { d.weights[1].weight.clear(); }, "102", "grdW", 1},
        {CalcType::CompositeIndex, SecondStep, [](Draft& d) { d.weights[0].weight = Q("many"); }, "102", "grdW"},
        {CalcType::CompositeIndex, SecondStep, [](Draft& d) { d.weights[0].weight = Q("30.5"); }, "104", "grdW"},
        {CalcType::CompositeIndex, SecondStep,
         [](Draft& d) {
             d.weights[0].weight = Q("99.99");
             d.weights[1].weight = Q("0.01");
         },
         99.99 + 0.01 == 100.0 ? nullptr : "104", "grdW"},
        {CalcType::TransformUnit, SecondStep, [](Draft&) {}, nullptr},
        {CalcType::TransformUnit, SecondStep, [](Draft& d) { d.targetUnit = Q("  "); }, "110", "rtbTUnit"},
        {CalcType::TransformUnit, SecondStep, [&](Draft& d) { d.targetUnit = longText; }, "047", "rtbTUnit"},
        {CalcType::TransformUnit, SecondStep, [](Draft& d) { d.factors[1].factor = Q("0"); }, "111", "grdUnit", 1},
        {CalcType::TransformUnit, SecondStep, [](Draft& d) { d.factors[0].factor.clear(); }, "111", "grdUnit", 0},
        {CalcType::Subtotal, SecondStep, [](Draft&) {}, nullptr},
        {CalcType::Subtotal, SecondStep, [](Draft& d) { d.levels = {}; }, "106", "chkLevel_0"},
        {CalcType::PerCent, SaveAsStep, [](Draft&) {}, nullptr},
        {CalcType::PerCent, SaveAsStep, [](Draft& d) { d.sector = Q(" "); }, "014", "cmbSector"},
        {CalcType::PerCent, SaveAsStep, [](Draft& d) { d.indicatorClass.clear(); }, "015", "cmbClass"},
        {CalcType::PerCent, SaveAsStep, [](Draft& d) { d.indicator.clear(); }, "016", "cmbIndicator"},
        {CalcType::PerCent, SaveAsStep, [&](Draft& d) { d.indicator = longText; }, "047", "cmbIndicator"},
        {CalcType::PerCent, SaveAsStep, [](Draft& d) { d.unit.clear(); }, "017", "txtUnit"},
        {CalcType::TransformUnit, SaveAsStep, [](Draft& d) { d.unit.clear(); }, nullptr},
        {CalcType::PerCent, SaveAsStep, [](Draft& d) { d.subpop.clear(); }, "020", "cmbSubpop"},
        {CalcType::HundredMinus, SaveAsStep, [](Draft& d) { d.subpop.clear(); }, nullptr},
        {CalcType::PerCent, SaveAsStep, [](Draft& d) { d.decimals = Q("two"); }, "018", "txtDecimals"},
        {CalcType::PerCent, SaveAsStep, [](Draft& d) { d.decimals = Q("16"); }, "TS_DecimalsLimit", "txtDecimals"},
        {CalcType::PerCent, SaveAsStep, [](Draft& d) { d.scaleMin = Q("x"); }, nullptr},
        {CalcType::CompositeIndex, SaveAsStep, [](Draft& d) { d.scaleMin = Q("x"); }, "018", "txtScaleMin"},
        {CalcType::CompositeIndex, SaveAsStep, [](Draft& d) { d.scaleMax.clear(); }, "018", "txtScaleMax"},
        {CalcType::CompositeIndex, SaveAsStep, [](Draft& d) { d.scaleMin = Q("100"); }, "105", "txtScaleMin"}};
    for (const Case& c : cases) {
        CalculationDraft draft = Complete(c.type);
        c.spoil(draft);
        const StepProblem problem = StepsOf(c.type)[c.step].check(draft);
        const int number = static_cast<int>(&c - cases);
        EXPECT_EQ(problem.key, c.key ? Q(c.key) : QString()) << number;
        if (!c.key) continue;
        EXPECT_STREQ(problem.control, c.control) << number;
        EXPECT_EQ(problem.row, c.row) << number;
    }
}

TEST(CalculationStepsTest, EvenWeightsMakeExactlyAHundred) {
    EXPECT_TRUE(EvenWeights(0).isEmpty());
    for (int count = 1; count <= 250; ++count) {
        std::vector<IndexWeight> weights;
        for (const QString& text : EvenWeights(count))
            weights.push_back({text});
        ASSERT_EQ(static_cast<int>(weights.size()), count);
        EXPECT_EQ(SumOfWeights(weights), 100.0) << count;
    }
    EXPECT_EQ(EvenWeights(4), QStringList(4, InDigitsOf(QLocale(), Q("25"))));
}

TEST(CalculationStepsTest, SubgroupsComeAndGoWithTheChoice) {
    const std::vector<CalculationItem> pairs = {{Q("A"), Q("F")}, {Q("A"), Q("M")}, {Q("B"), Q("T")}};
    const std::vector<CalculationItem> both = {{Q("A"), {}}, {Q("B"), {}}};
    EXPECT_EQ(WithSubpops({{Q("A"), {}}}, true, pairs), (std::vector<CalculationItem>{pairs[0], pairs[1]}));
    EXPECT_EQ(WithSubpops(pairs, false, pairs), both);
    EXPECT_EQ(WithSubpops({pairs[2]}, true, pairs), (std::vector<CalculationItem>{pairs[2]}));
}

TEST(CalculationStepsTest, WeightsAndFactorsStayWithTheirNames) {
    CalculationDraft draft = Complete(CalcType::CompositeIndex);
    const std::vector<CalculationItem> before = draft.items;
    draft.items = {{Q("B"), {}}, {Q("N"), {}}};
    KeepWeights(draft, before);
    EXPECT_EQ(draft.weights, (std::vector<IndexWeight>{{Q("70"), false}, {}}));
    KeepFactors(draft, {Q("lb"), Q("t")});
    EXPECT_EQ(draft.factors, (std::vector<ConversionFactor>{{Q("lb"), Q("-2")}, {Q("t"), {}}}));
}

TEST(CalculationStepsTest, SuggestedNamesGiveWayToTheUsers) {
    CalculationDraft draft;
    draft.sector = Q("Mine");
    TakeSuggestions(draft, {}, {Q("Health"), Q("Care"), Q("Index"), Q("U"), Q("T")});
    EXPECT_EQ(draft.sector, Q("Mine"));
    EXPECT_EQ(draft.indicatorClass, Q("Care"));
    TakeSuggestions(draft, {Q("Health"), Q("Care"), Q("Index"), Q("U"), Q("T")},
                    {Q("Water"), Q("Wells"), Q("Index"), Q("V"), Q("F")});
    EXPECT_EQ(draft.sector, Q("Mine"));
    EXPECT_EQ(draft.indicatorClass, Q("Wells"));
    EXPECT_EQ(draft.unit, Q("V"));
}

} // namespace tessaro
