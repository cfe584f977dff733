#include "CalculationTest.h"

#include <QLocale>

#include <random>

namespace tessaro {

namespace {

const QString kA = QStringLiteral("A"), kB = QStringLiteral("B"), kTotal = QStringLiteral("Total");

class CompositeIndexTest : public test::CalculationTest {
  protected:
    static CalculationDraft Draft(const std::vector<std::pair<QString, IndexWeight>>& items) {
        CalculationDraft draft;
        draft.type = CalcType::CompositeIndex;
        draft.showSubpop = true;
        for (const auto& [name, weight] : items) {
            draft.items.push_back({name, kTotal});
            draft.weights.push_back(weight);
        }
        draft.indicator = QStringLiteral("Index");
        draft.subpop = kTotal;
        draft.decimals = QStringLiteral("2");
        return draft;
    }
    static CalculationDraft AB() {
        return Draft({{kA, {QStringLiteral("30"), true}}, {kB, {QStringLiteral("70"), false}}});
    }
};

} // namespace

TEST_F(CompositeIndexTest, ScoresAreWeighedAndStretched) {
    Put({{QStringLiteral("AAA"), kA, QStringLiteral("10")},
         {QStringLiteral("AAA"), kB, QStringLiteral("4"), QStringLiteral("2001"), kTotal, QStringLiteral("Survey")},
         {QStringLiteral("BBB"), kA, QStringLiteral("20")},
         {QStringLiteral("BBB"), kB, QStringLiteral("2")},
         {QStringLiteral("CCC"), kA, QStringLiteral("30")}});
    const CalculationLog log = Calculate(AB());
    ASSERT_EQ(log.failure, QString());
    // A: 0, .5, 1; B, where low is good: 0, 1, .5 (the mean 3). Means: 0, .85, .65.
    EXPECT_EQ(RowText(log.working, 9).mid(0, 3), (QStringList{"Indicator", "Weight", "High is good"}));
    EXPECT_EQ(RowText(log.working, 10).mid(0, 3), (QStringList{"A ~ Total", "30", "TRUE"}));
    EXPECT_EQ(RowText(log.working, 11).mid(0, 3), (QStringList{"B ~ Total", "70", "FALSE"}));
    EXPECT_EQ(RowText(log.working, 13),
              (QStringList{"Area ID", "Area name", "A", "Score", "B", "Score", "Index", "Index"}));
    EXPECT_EQ(log.working.firstRow, 15);
    EXPECT_EQ(RowText(log.working, 15), (QStringList{"AAA", "Area AAA", "10", "0", "4", "0", "0", "0"}));
    EXPECT_EQ(RowText(log.working, 16).mid(2, 6), (QStringList{"20", "0.5", "2", "1", "0.85", "100"}));
    EXPECT_EQ(RowText(log.working, 17).mid(2, 4), (QStringList{"30", "1", "3", "0.5"}));
    EXPECT_EQ(Text(log.working, 17, 8), QStringLiteral("76.47"));
    const std::map<QString, QString> expected = {{QStringLiteral("AAA"), QStringLiteral(".00")},
                                                 {QStringLiteral("BBB"), QStringLiteral("100.00")},
                                                 {QStringLiteral("CCC"), QStringLiteral("76.47")}};
    EXPECT_EQ(ResultsOf(log), expected);
    EXPECT_EQ(log.results[0].row, (DataEntryRow{"2001", "AAA", "Area AAA", ".00", "Total", "Survey"}));
    EXPECT_EQ(log.results[2].sheetRow, 17);
    EXPECT_EQ(log.results[2].sheetColumn, 8);
    EXPECT_EQ(RemarksOf(log), (std::map<QString, QString>{
                                  {QStringLiteral("CCC"),
                                   QStringLiteral("No value; the mean of the other areas stands in: B ~ Total")}}));
    const std::vector<std::pair<int, QString>> formulas = {
        {4,
         QStringLiteral(
             "= IF((Max($C$15:$C$17) - Min($C$15:$C$17)) = 0,1,IF($C$10,(C15 - Min($C$15:$C$17)) / (Max($C$15:$C$17) - "
             "Min($C$15:$C$17)), (C15 - Max($C$15:$C$17)) / (Min($C$15:$C$17) - Max($C$15:$C$17))))")},
        {6,
         QStringLiteral(
             "= IF((Max($E$15:$E$17) - Min($E$15:$E$17)) = 0,1,IF($C$11,(E15 - Min($E$15:$E$17)) / (Max($E$15:$E$17) - "
             "Min($E$15:$E$17)), (E15 - Max($E$15:$E$17)) / (Min($E$15:$E$17) - Max($E$15:$E$17))))")},
        {7, QStringLiteral("= (D15*$B$10 + F15*$B$11) / ($B$10 + $B$11)")},
        {8, QStringLiteral("= IF((Max($G$15:$G$17) - Min($G$15:$G$17)) = 0, $B$8,$B$7 + ( (G15 - Min($G$15:$G$17)) / "
                           "(Max($G$15:$G$17) - Min($G$15:$G$17)) ) * ($B$8 - $B$7))")}};
    ASSERT_EQ(log.working.formulas.size(), formulas.size());
    for (std::size_t i = 0; i < formulas.size(); ++i) {
        EXPECT_EQ(log.working.formulas[i].column, formulas[i].first);
        EXPECT_EQ(log.working.formulas[i].formulas, std::vector{formulas[i].second});
        EXPECT_EQ(log.working.formulas[i].rounded, i == 3);
    }
    EXPECT_EQ(RowText(log.detail, 10).mid(0, 9),
              (QStringList{"AAA", "Area AAA", "A", "Total", "2000", "10", "Number", "Census", "0"}));
    EXPECT_EQ(TablesLeft(), QStringList());
}

TEST_F(CompositeIndexTest, RanksMoveWithTheWeights) {
    Put({{QStringLiteral("AAA"), kA, QStringLiteral("0")},
         {QStringLiteral("AAA"), kB, QStringLiteral("0")},
         {QStringLiteral("BBB"), kA, QStringLiteral("100")},
         {QStringLiteral("BBB"), kB, QStringLiteral("95")},
         {QStringLiteral("CCC"), kA, QStringLiteral("40")},
         {QStringLiteral("CCC"), kB, QStringLiteral("100")}});
    CalculationDraft draft = Draft({{kA, {QStringLiteral("5"), true}}, {kB, {QStringLiteral("95"), true}}});
    const CalculationLog log = Calculate(draft);
    ASSERT_TRUE(log.ranks);
    const LogSheet& ranks = *log.ranks;
    EXPECT_EQ(ranks.printedColumns, 9) << "the ranks, not what they are of";
    EXPECT_EQ(RowText(ranks, ranks.headRow),
              (QStringList{"Area ID", "Area name", "Rank now", "Best rank", "Worst rank", "A ~ Total: weight +10",
                           "A ~ Total: weight −10", "B ~ Total: weight +10", "B ~ Total: weight −10", "", "Index",
                           "A ~ Total: weight +10", "A ~ Total: weight −10", "B ~ Total: weight +10",
                           "B ~ Total: weight −10"}));
    // Means: C .97, B .9525. A +10: (97 + 4) / 110 against (95.25 + 10) / 110; A goes down by its 5 points alone.
    EXPECT_EQ(RowText(ranks, 5).mid(0, 9), (QStringList{"CCC", "Area CCC", "1", "1", "2", "2", "1", "1", "1"}));
    EXPECT_EQ(RowText(ranks, 6).mid(0, 9), (QStringList{"BBB", "Area BBB", "2", "1", "2", "1", "2", "2", "2"}));
    test::ExpectClose((97 + 4) / 110.0, Text(ranks, 5, 12));
    test::ExpectClose(1, Text(ranks, 5, 13));
    test::ExpectClose((97 - 10) / 90.0, Text(ranks, 5, 15));
    const auto formulas = [&](int column) {
        const auto found = std::ranges::find(ranks.formulas, column, &LogFormulas::column);
        return found == ranks.formulas.end() ? std::vector<QString>{} : found->formulas;
    };
    EXPECT_EQ(formulas(3),
              (std::vector<QString>{"= RANK(K5,$K$5:$K$7)", "= RANK(K6,$K$5:$K$7)", "= RANK(K7,$K$5:$K$7)"}));
    EXPECT_EQ(formulas(4), (std::vector<QString>{"= MIN(C5,F5:I5)", "= MIN(C6,F6:I6)", "= MIN(C7,F7:I7)"}));
    ASSERT_EQ(formulas(9).size(), 3u);
    EXPECT_EQ(formulas(9)[1], QStringLiteral("= RANK(O6,$O$5:$O$7)"));
    ASSERT_EQ(formulas(13).size(), 3u);
    EXPECT_EQ(formulas(11)[0], QStringLiteral("= 'Sheet1'!G17"));
    EXPECT_EQ(formulas(12)[1], QStringLiteral("= (K6 * SUM('Sheet1'!$B$10:$B$11) + 'Sheet1'!D16 * 10) / "
                                              "(SUM('Sheet1'!$B$10:$B$11) + 10)"));
    EXPECT_EQ(formulas(13)[0],
              QStringLiteral("= (K5 * SUM('Sheet1'!$B$10:$B$11) - 'Sheet1'!D17 * MIN(10,'Sheet1'!$B$10)) / "
                             "(SUM('Sheet1'!$B$10:$B$11) - MIN(10,'Sheet1'!$B$10))"));
}

TEST_F(CompositeIndexTest, EqualValuesGiveTheTopOfTheScale) {
    Put({{QStringLiteral("AAA"), kA, QStringLiteral("7")}, {QStringLiteral("AAA"), kB, QStringLiteral("1e300")}});
    CalculationDraft draft = AB();
    draft.scaleMin = QStringLiteral("0");
    draft.scaleMax = QStringLiteral("0") + QLocale::system().decimalPoint() + QStringLiteral("75");
    const CalculationLog log = Calculate(draft);
    EXPECT_EQ(ResultsOf(log), (std::map<QString, QString>{{QStringLiteral("AAA"), QStringLiteral(".75")}}));
    EXPECT_FALSE(log.ranks);
}

TEST_F(CompositeIndexTest, WhatNoAreaHasIsMarked) {
    Put({{QStringLiteral("AAA"), kA, QStringLiteral("1")},
         {QStringLiteral("BBB"), kA, QStringLiteral("2")},
         {QStringLiteral("BBB"), kB, QStringLiteral("2"), QStringLiteral("2000"), QStringLiteral("Female")},
         {QStringLiteral("CCC"), kA, QStringLiteral(" ")}});
    const CalculationLog log = Calculate(AB());
    ASSERT_EQ(log.failure, QString());
    EXPECT_EQ(RowText(log.working, 15).mid(2, 4), (QStringList{"1", "0.5", "M", "1"}));
    EXPECT_EQ(RemarksOf(log), (std::map<QString, QString>{
                                  {QStringLiteral("CCC"), QStringLiteral("A blank value counts as 0: A ~ Total")}}));
}

TEST_F(CompositeIndexTest, RefusesWeightsScalesAndValues) {
    Put({{QStringLiteral("AAA"), kA, QStringLiteral("1")}, {QStringLiteral("AAA"), kB, QStringLiteral("2")}});
    const auto failure = [&](const QString& a, const QString& b, const QString& low, const QString& high) {
        CalculationDraft draft = Draft({{kA, {a, true}}, {kB, {b, true}}});
        draft.scaleMin = low;
        draft.scaleMax = high;
        return Calculate(draft).failure;
    };
    const QString none, x = QStringLiteral("x"), zero = QStringLiteral("0"), hundred = QStringLiteral("100");
    const struct {
        QString a, b, low, high;
        const char* key;
    } cases[] = {
        {none, hundred, zero, hundred, "102"},    {x, hundred, zero, hundred, "102"},
        {hundred, hundred, zero, hundred, "104"}, {zero, hundred, x, hundred, "018"},
        {zero, hundred, hundred, hundred, "105"}, {QStringLiteral("99.999"), zero, zero, hundred, "104"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(failure(c.a, c.b, c.low, c.high), PlainText(QString::fromLatin1(c.key)));
    EXPECT_EQ(failure(QStringLiteral("99.99"), QStringLiteral("0.01"), zero, hundred), QString());
    Put({{QStringLiteral("BBB"), kA, QStringLiteral("n/a")}});
    EXPECT_TRUE(
        failure(zero, hundred, zero, hundred).contains(QStringLiteral("\"n/a\" of A ~ Total in Area BBB [BBB]")));
    EXPECT_EQ(TablesLeft(), QStringList());
}

TEST_F(CompositeIndexTest, ValuesTooFarApartAreRefused) {
    Put({{QStringLiteral("AAA"), kA, QStringLiteral("1.7e308")},
         {QStringLiteral("BBB"), kA, QStringLiteral("-1.7e308")},
         {QStringLiteral("AAA"), kB, QStringLiteral("2")}});
    EXPECT_EQ(Calculate(AB()).failure, PlainText(QStringLiteral("TS_CalcTooLarge")));
    EXPECT_EQ(TablesLeft(), QStringList());
}

TEST_F(CompositeIndexTest, RandomDataGiveWhatTheDefinitionGives) {
    std::mt19937 random(23);
    const std::vector<std::pair<QString, IndexWeight>> items = {{kA, {QStringLiteral("12.5"), true}},
                                                                {kB, {QStringLiteral("37.5"), false}},
                                                                {QStringLiteral("C"), {QStringLiteral("50"), true}}};
    std::map<QString, std::map<QString, double>> values;
    std::vector<test::DataRow> rows;
    for (int area = 0; area < 150; ++area)
        for (const auto& [name, weight] : items) {
            const QString id = QStringLiteral("A%1").arg(area, 3, 10, QLatin1Char('0'));
            if (area > 0 && random() % 7 == 0) continue;
            values[name][id] = static_cast<double>(random() % 100000) / 13;
            rows.push_back({id, name, QString::number(values[name][id], 'g', 17)});
        }
    Put(rows);
    CalculationDraft draft = Draft(items);
    draft.decimals.clear();
    draft.scaleMin = QStringLiteral("-5");
    const CalculationLog log = Calculate(draft);
    ASSERT_GT(log.results.size(), 140u);
    std::map<QString, double> means;
    for (const auto& [name, weight] : items) {
        auto& own = values[name];
        double low = own.begin()->second, high = low, sum = 0;
        for (const auto& [id, value] : own) {
            low = std::min(low, value);
            high = std::max(high, value);
            sum += value;
        }
        for (const LogResult& result : log.results) {
            const auto found = own.find(result.row.areaId);
            const double value = found == own.end() ? sum / static_cast<double>(own.size()) : found->second;
            const double score = weight.highIsGood ? (value - low) / (high - low) : (high - value) / (high - low);
            means[result.row.areaId] += score * weight.weight.toDouble() / 100;
        }
    }
    const auto order = [](const auto& a, const auto& b) { return a.second < b.second; };
    const double low = std::min_element(means.begin(), means.end(), order)->second;
    const double high = std::max_element(means.begin(), means.end(), order)->second;
    for (const auto& [id, text] : ResultsOf(log))
        test::ExpectClose(-5 + (means[id] - low) / (high - low) * 105, text);
    EXPECT_EQ(log.ranks->lastRow - log.ranks->firstRow, 99);
}

} // namespace tessaro
