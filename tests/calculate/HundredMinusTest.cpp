#include "CalculationTest.h"

namespace tessaro {

namespace {

class HundredMinusTest : public test::CalculationTest {
  protected:
    static CalculationDraft Draft(const QString& indicator) {
        CalculationDraft draft;
        draft.type = CalcType::HundredMinus;
        draft.items = {{indicator, {}}};
        draft.indicator = QStringLiteral("Rest");
        draft.decimals = QStringLiteral("1");
        return draft;
    }
};

} // namespace

TEST_F(HundredMinusTest, EveryRowOfTheIndicatorGivesOne) {
    const QString name = test::HardName(QLatin1Char('n')), total = QStringLiteral("Total");
    Put({{QStringLiteral("BBB"), name, QStringLiteral("120.25"), QStringLiteral("2001")},
         {QStringLiteral("AAA"), name, QStringLiteral("99.5"), QStringLiteral("1999"), total, QStringLiteral("Census")},
         {QStringLiteral("AAA"), name, QStringLiteral(" 40"), QStringLiteral("1999"), total, QStringLiteral("Survey")},
         {QStringLiteral("AAA"), QStringLiteral("Other"), QStringLiteral("1")}});
    const CalculationLog log = Calculate(Draft(name));
    ASSERT_EQ(log.failure, QString());
    ASSERT_EQ(log.results.size(), 3u);
    EXPECT_EQ(log.results[0].row, (DataEntryRow{"1999", "AAA", "Area AAA", ".5", "Total", "Census"}));
    EXPECT_EQ(log.results[1].row, (DataEntryRow{"1999", "AAA", "Area AAA", "60.0", "Total", "Survey"}));
    EXPECT_EQ(log.results[2].row, (DataEntryRow{"2001", "BBB", "Area BBB", "-20.3", "Total", "Census"}));
    EXPECT_EQ(RowText(log.working, 10),
              (QStringList{"Area ID", "Area name", name, "100 minus", "Subgroup", "Time", "Unit", "Source"}));
    EXPECT_EQ(RowText(log.working, 12),
              (QStringList{"AAA", "Area AAA", "40", "60", "Total", "1999", "Number", "Survey"}));
    ASSERT_EQ(log.working.formulas.size(), 1u);
    EXPECT_EQ(log.working.formulas[0].formulas, std::vector{QStringLiteral("= 100-C11")});
    EXPECT_TRUE(log.working.formulas[0].rounded);
    EXPECT_EQ(log.results[2].sheetRow, 13);
    EXPECT_EQ(log.results[2].sheetColumn, 4);
    EXPECT_EQ(RowText(log.detail, 10),
              (QStringList{"AAA", "Area AAA", "1999", name, "Number", "Total", "Census", "99.5", "0.5"}));
    EXPECT_EQ(RowText(log.detail, 11).mid(0, 3), (QStringList{"", "", "1999"}));
}

TEST_F(HundredMinusTest, BlankValuesStayOutAndUnreadableOnesStop) {
    const QString name = QStringLiteral("A");
    Put({{QStringLiteral("AAA"), name, QStringLiteral(" ")},
         {QStringLiteral("BBB"), name, QStringLiteral("1e-300")},
         {QStringLiteral("CCC"), name, QString()}});
    const CalculationLog log = Calculate(Draft(name));
    EXPECT_EQ(ResultsOf(log), (std::map<QString, QString>{{QStringLiteral("AAA"), {}},
                                                          {QStringLiteral("BBB"), QStringLiteral("100.0")},
                                                          {QStringLiteral("CCC"), {}}}));
    EXPECT_EQ(RemarksOf(log).at(QStringLiteral("AAA")), QStringLiteral("The value is blank"));
    EXPECT_EQ(log.working.formulas[0].formulas, (std::vector<QString>{{}, QStringLiteral("= 100-C12"), {}}));
    Put({{QStringLiteral("DDD"), name, QStringLiteral("n/a"), QStringLiteral("1980")}});
    EXPECT_TRUE(Calculate(Draft(name)).failure.contains(QStringLiteral("\"n/a\" of A ~ Total in Area DDD [DDD], 1980")))
        << Calculate(Draft(name)).failure.toStdString();
    EXPECT_NE(Calculate(Draft(QStringLiteral("None"))).failure, QString());
}

} // namespace tessaro
