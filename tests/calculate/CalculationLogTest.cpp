#include "calculate/CalculationLog.h"

#include "CalculationTest.h"
#include "calculate/Calculation.h"

#include <gtest/gtest.h>

namespace tessaro {

namespace {

const QString kA = QStringLiteral("Poor");
const QString kB = QStringLiteral("Population");

class CalculationLogTest : public test::CalculationTest {
  protected:
    /// A draft of each calculation that takes in the values of Poor.
    static CalculationDraft DraftOf(int type) {
        CalculationDraft draft;
        draft.type = static_cast<CalcType>(type);
        draft.items = {{kA, {}}};
        draft.denominators = {{kB, {}}};
        draft.weights = {{QStringLiteral("100"), true}};
        draft.factors = {{QStringLiteral("Number"), QStringLiteral("2")},
                         {QStringLiteral("Share"), QStringLiteral("3")}};
        draft.targetUnit = QStringLiteral("Halves");
        draft.levels = {true, true, true};
        draft.formula = QStringLiteral("{Poor  ~  Total} + 1");
        return draft;
    }
};

} // namespace

TEST_F(CalculationLogTest, AnUnreadableValueIsNamedWhereverItStands) {
    const QStringList areas{"AFRAGO", "ASICHN", "EURFRA", "OCEAUS"};
    for (const QString& bad : areas) {
        ASSERT_TRUE(Execute(QStringLiteral("DELETE * FROM _Data")));
        for (const QString& area : areas)
            Put({{area, kA, area == bad ? QStringLiteral("1;5") : QStringLiteral("1.5")},
                 {area, kB, QStringLiteral("10")}});
        for (int type = 0; type < kCalculations; ++type) {
            const CalculationLog log = Calculate(DraftOf(type));
            EXPECT_TRUE(log.failure.contains(QStringLiteral("\"1;5\"")) && log.failure.contains(bad))
                << type << ' ' << bad.toStdString() << ": " << log.failure.toStdString();
            EXPECT_EQ(TablesLeft(), QStringList()) << type;
        }
    }
}

TEST_F(CalculationLogTest, AValueThatASecondUnitHidesIsRemarked) {
    Put({{"AFR", kA, "5", "2000", "Total", "Census", "Number"},
         {"AFR", kA, "6", "2000", "Total", "census", "Share"},
         {"AFR", kA, "7", "2001", "Total", "Census", "Share"},
         {"ASI", kA, "8", "2000", "Total", "Survey", "Number"}});
    for (const CalcType type : {CalcType::HundredMinus, CalcType::TransformUnit}) {
        const CalculationLog log = Calculate(DraftOf(static_cast<int>(type)));
        ASSERT_EQ(log.results.size(), 4U) << log.failure.toStdString();
        ASSERT_EQ(log.remarks.size(), 1U);
        EXPECT_EQ(log.remarks.front().first(), QStringLiteral("AFR"));
        EXPECT_TRUE(log.remarks.front().last().startsWith(QStringLiteral("2000")));
    }
}

} // namespace tessaro
