#include "CalculationTest.h"

namespace tessaro {

namespace {

const QString kOdd = QStringLiteral("a=b\nc  ~  d 'e' \"f\" {g} | h%20 العربية\r\n=");

CalculationDraft FullDraft(CalcType type) {
    CalculationDraft draft;
    draft.type = type;
    draft.showSubpop = true;
    draft.items = {{kOdd, kOdd}, {QStringLiteral("x"), {}}, {{}, QStringLiteral("|")}};
    draft.denominators = {{QStringLiteral("="), kOdd}};
    draft.weights = {{QStringLiteral("33,3"), true}, {kOdd, false}};
    draft.factors = {{kOdd, QStringLiteral("0.5")}};
    draft.targetUnit = kOdd;
    draft.levels = {true, false, true};
    draft.levels.back() = true;
    draft.formula = QStringLiteral("{") + kOdd + QStringLiteral("} * 100");
    draft.sector = kOdd;
    draft.indicatorClass = kOdd;
    draft.indicator = QStringLiteral(" blanks ");
    draft.unit = kOdd;
    draft.subpop = kOdd;
    draft.decimals.clear();
    draft.scaleMin = QStringLiteral("-1,5");
    draft.scaleMax = QStringLiteral("1e3");
    draft.saveWithDataView = true;
    return draft;
}

} // namespace

TEST(CalculationDraftTest, ComesBackFromItsLines) {
    for (int type = 0; type < kCalculations; ++type) {
        const CalculationDraft full = FullDraft(static_cast<CalcType>(type));
        EXPECT_EQ(ReadCalculationDraft(DraftText(full)), full) << DraftText(full).toStdString();
    }
    EXPECT_EQ(ReadCalculationDraft(DraftText({})), CalculationDraft{});
    EXPECT_EQ(ReadCalculationDraft({}), CalculationDraft{});
    EXPECT_EQ(ReadCalculationDraft(QStringLiteral("of another version=1\n")), CalculationDraft{});
}

TEST(CalculationDraftTest, RefusesWhatItCannotRead) {
    for (const char* line : {"calculation=median", "item=a", "item=a|b|c", "weight=5|medium", "weight=5", "factor=",
                             "levels=0", "levels=11", "levels=one", "subgroups shown=maybe", "=x", "no value"})
        EXPECT_FALSE(ReadCalculationDraft(QString::fromLatin1(line))) << line;
}

} // namespace tessaro
