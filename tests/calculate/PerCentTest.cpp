#include "CalculationTest.h"

#include <random>

namespace tessaro {

namespace {

class PerCentTest : public test::CalculationTest {
  protected:
    static CalculationDraft Draft(const QStringList& numerators, const QStringList& denominators) {
        CalculationDraft draft;
        draft.showSubpop = true;
        for (const QString& name : numerators)
            draft.items.push_back({name, QStringLiteral("Total")});
        for (const QString& name : denominators)
            draft.denominators.push_back({name, QStringLiteral("Total")});
        draft.indicator = QStringLiteral("Share");
        draft.subpop = QStringLiteral("Total");
        draft.unit = QStringLiteral("Percent");
        draft.decimals = QStringLiteral("2");
        return draft;
    }
};

const QString kA = QStringLiteral("A"), kB = QStringLiteral("B"), kC = QStringLiteral("C");

} // namespace

TEST_F(PerCentTest, EmptyAndZeroTotalsLeaveAnAreaOut) {
    Put({{QStringLiteral("AAA"), kA, QStringLiteral("1")},
         {QStringLiteral("AAA"), kB, QStringLiteral("200")},
         {QStringLiteral("BBB"), kA, QStringLiteral("5")},
         {QStringLiteral("CCC"), kA, QStringLiteral("0")},
         {QStringLiteral("CCC"), kB, QStringLiteral("8")},
         {QStringLiteral("DDD"), kB, QStringLiteral("8")},
         {QStringLiteral("EEE"), kA, QStringLiteral("3")},
         {QStringLiteral("EEE"), kB, QStringLiteral("0")},
         {QStringLiteral("FFF"), kC, QStringLiteral("3")},
         {QStringLiteral("GGG"), kA, QStringLiteral("1e300")},
         {QStringLiteral("GGG"), kB, QStringLiteral("1e-300")},
         {QStringLiteral("HHH"), kA, QStringLiteral("-2")},
         {QStringLiteral("HHH"), kB, QStringLiteral("4")}});
    const CalculationLog log = Calculate(Draft({kA}, {kB}));
    ASSERT_EQ(log.failure, QString());
    const std::map<QString, QString> expected = {{QStringLiteral("AAA"), QStringLiteral(".50")},
                                                 {QStringLiteral("BBB"), {}},
                                                 {QStringLiteral("CCC"), {}},
                                                 {QStringLiteral("DDD"), {}},
                                                 {QStringLiteral("EEE"), {}},
                                                 {QStringLiteral("GGG"), {}},
                                                 {QStringLiteral("HHH"), QStringLiteral("-50.00")}};
    EXPECT_EQ(ResultsOf(log), expected);
    const std::map<QString, QString> reasons = {
        {QStringLiteral("BBB"), QStringLiteral("No value of a denominator")},
        {QStringLiteral("CCC"), QStringLiteral("The numerators add up to 0")},
        {QStringLiteral("DDD"), QStringLiteral("No value of a numerator")},
        {QStringLiteral("EEE"), QStringLiteral("The denominators add up to 0")},
        {QStringLiteral("FFF"), QStringLiteral("No value of the chosen indicators")},
        {QStringLiteral("GGG"), QStringLiteral("The result is beyond the range of numbers")}};
    EXPECT_EQ(RemarksOf(log), reasons);
    EXPECT_EQ(TablesLeft(), QStringList());
    // Row by row: id, name, A, total, B, total, target.
    EXPECT_EQ(RowText(log.working, 13), (QStringList{"AAA", "Area AAA", "1", "1", "200", "200", "0.5"}));
    EXPECT_EQ(RowText(log.working, 14), (QStringList{"BBB", "Area BBB", "5", "5", "", "", ""}));
    EXPECT_EQ(RowText(log.working, 15), (QStringList{"CCC", "Area CCC", "0", "", "8", "8", ""}));
    EXPECT_EQ(log.results[0].sheetRow, 13);
    EXPECT_EQ(log.results[0].sheetColumn, 7);
}

TEST_F(PerCentTest, TheSheetHasItsCellsWhereTheyAreLookedFor) {
    Put({{QStringLiteral("AAA"), kA, QStringLiteral("1")},
         {QStringLiteral("AAA"), kB, QStringLiteral("2"), QStringLiteral("2001"), QStringLiteral("Total"),
          QStringLiteral("Survey")},
         {QStringLiteral("AAA"), kC, QStringLiteral("6")},
         {QStringLiteral("BBB"), kC, QStringLiteral("7")}});
    const CalculationLog log = Calculate(Draft({kA, kB}, {kC}));
    ASSERT_EQ(log.failure, QString());
    EXPECT_EQ(Text(log.working, 8, 3), QStringLiteral("Numerator"));
    EXPECT_EQ(Text(log.working, 8, 6), QStringLiteral("Denominator"));
    EXPECT_EQ(Text(log.working, 8, 8), QStringLiteral("Result"));
    EXPECT_EQ(RowText(log.working, 10),
              (QStringList{"Area ID", "Area name", "A", "B", "Total", "C", "Total", "Share"}));
    EXPECT_EQ(RowText(log.working, 11), (QStringList{"", "", "Total", "Total", "", "Total", "", "Total"}));
    EXPECT_EQ(log.working.firstRow, 13);
    EXPECT_EQ(log.working.lastRow, 14);
    ASSERT_EQ(log.working.formulas.size(), 3u);
    EXPECT_EQ(log.working.formulas[0].formulas, std::vector{QStringLiteral("= C13 + D13")});
    EXPECT_EQ(log.working.formulas[1].formulas, std::vector{QStringLiteral("= F13")});
    EXPECT_EQ(log.working.formulas[2].formulas, std::vector{QStringLiteral("= (E13 * 100 / G13)")});
    EXPECT_EQ(log.working.formulas[2].column, 8);
    EXPECT_TRUE(log.working.formulas[2].rounded);
    const auto& detail = log.detail;
    EXPECT_EQ(RowText(detail, 9), (QStringList{"Area ID", "Area name", "Element", "Indicator", "Subgroup", "Time",
                                               "Data value", "Unit", "Source"}));
    EXPECT_EQ(RowText(detail, 10).mid(0, 5), (QStringList{"AAA", "Area AAA", "Numerator", "A", "Total"}));
    EXPECT_EQ(RowText(detail, 11).mid(0, 7), (QStringList{"", "", "Numerator", "B", "Total", "2001", "2"}));
    EXPECT_EQ(RowText(detail, 12).mid(2, 2), (QStringList{"Denominator", "C"}));
    EXPECT_EQ(RowText(detail, 13),
              (QStringList{"", "", "Per cent", "Share", "Total", "2000", "50", "Percent", "Census"}));
    EXPECT_EQ(RowText(detail, 14).mid(0, 3), (QStringList{"BBB", "Area BBB", "Denominator"}));
    EXPECT_EQ(log.results[0].row, (DataEntryRow{"2000", "AAA", "Area AAA", "50.00", "Total", "Census"}));
}

TEST_F(PerCentTest, NamesOfAnyKindAndLongIdsComeThrough) {
    const QString a = test::HardName(QLatin1Char('p')), b = test::HardName(QLatin1Char('q'));
    Put({{QStringLiteral("ASIINDDEL001"), a, QStringLiteral(" 3 ")},
         {QStringLiteral("ASIINDDEL001"), b, QStringLiteral("4")}});
    const CalculationLog log = Calculate(Draft({a}, {b}));
    ASSERT_EQ(log.failure, QString());
    EXPECT_EQ(ResultsOf(log), (std::map<QString, QString>{{QStringLiteral("ASIINDDEL001"), QStringLiteral("75.00")}}));
}

TEST_F(PerCentTest, TwoSourcesAndUnitsGiveOneValue) {
    const QString asi = QStringLiteral("ASI"), total = QStringLiteral("Total"), year = QStringLiteral("2000");
    Put({{asi, kA, QStringLiteral("1"), year, total, QStringLiteral("Census"), QStringLiteral("Number")},
         {asi, kA, QStringLiteral("2"), year, total, QStringLiteral("Survey"), QStringLiteral("Number")},
         {asi, kA, QStringLiteral("3"), year, total, QStringLiteral("Survey"), QStringLiteral("Percent")},
         {asi, kB, QStringLiteral("10"), QStringLiteral("1990")}});
    EXPECT_EQ(ResultsOf(Calculate(Draft({kA}, {kB}))).at(asi), QStringLiteral("30.00"));
}

TEST_F(PerCentTest, WholeItemsAddUpTheirSubgroups) {
    const QString asi = QStringLiteral("ASI"), year = QStringLiteral("2000");
    Put({{asi, kA, QStringLiteral("1"), year, QStringLiteral("Urban")},
         {asi, kA, QStringLiteral("2"), year, QStringLiteral("Rural")},
         {asi, kB, QStringLiteral("12"), year, QStringLiteral("Total")}});
    CalculationDraft draft = Draft({kA}, {kB});
    draft.showSubpop = false;
    draft.items[0].subpop.clear();
    draft.denominators[0].subpop.clear();
    const CalculationLog log = Calculate(draft);
    EXPECT_EQ(ResultsOf(log).at(asi), QStringLiteral("25.00"));
    EXPECT_EQ(Text(log.working, 13, 3), QStringLiteral("3"));
}

TEST_F(PerCentTest, SaysWhichValueCannotBeRead) {
    for (const char* value : {"n/a", "1,5", ""}) {
        Execute(QStringLiteral("DELETE * FROM _Data"));
        Put({{QStringLiteral("AAA"), kB, QStringLiteral("1")},
             {QStringLiteral("BBB"), kA, QString::fromLatin1(value), QStringLiteral("1999")}});
        const CalculationLog log = Calculate(Draft({kA}, {kB}));
        EXPECT_TRUE(log.failure.contains(
            QStringLiteral("\"%1\" of A ~ Total in Area BBB [BBB], 1999").arg(QString::fromLatin1(value))))
            << log.failure.toStdString();
        EXPECT_TRUE(log.results.empty());
        EXPECT_EQ(TablesLeft(), QStringList());
    }
}

TEST_F(PerCentTest, WithoutDataThereIsAReason) {
    EXPECT_NE(Calculate(Draft({kA}, {kB})).failure, QString());
    EXPECT_NE(Calculate(Draft({}, {kB})).failure, QString());
    EXPECT_NE(Calculate(Draft({kA}, {})).failure, QString());
    EXPECT_EQ(TablesLeft(), QStringList());
}

TEST_F(PerCentTest, RandomDataGiveWhatPlainArithmeticGives) {
    std::mt19937 random(11);
    const QStringList names{kA, kB, kC, QStringLiteral("D")};
    std::map<QString, std::map<QString, double>> values;
    std::vector<test::DataRow> rows;
    for (int area = 0; area < 60; ++area)
        for (const QString& name : names) {
            if (random() % 5 == 0) continue;
            const QString id = QStringLiteral("A%1").arg(area, 2, 10, QLatin1Char('0'));
            const double value = static_cast<double>(random() % 10000) / 7;
            rows.push_back({id, name, QString::number(value, 'g', 17)});
            values[id][name] = value;
        }
    Put(rows);
    CalculationDraft draft = Draft({kA, kB}, {kC, QStringLiteral("D")});
    draft.decimals.clear();
    const CalculationLog log = Calculate(draft);
    ASSERT_EQ(log.results.size(), values.size());
    for (const auto& [id, text] : ResultsOf(log)) {
        auto& own = values[id];
        const double numerators = own[kA] + own[kB];
        const double denominators = own[kC] + own[QStringLiteral("D")];
        if (numerators == 0 || denominators == 0)
            EXPECT_EQ(text, QString()) << id.toStdString();
        else
            test::ExpectClose(100 * numerators / denominators, text);
    }
}

} // namespace tessaro
