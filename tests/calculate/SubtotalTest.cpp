#include "CalculationTest.h"

#include <random>

namespace tessaro {

namespace {

const QString kA = QStringLiteral("Wells"), kTotal = QStringLiteral("Total");

class SubtotalTest : public test::CalculationTest {
  protected:
    static CalculationDraft Draft(std::initializer_list<int> levels) {
        CalculationDraft draft;
        draft.type = CalcType::Subtotal;
        draft.items = {{kA, {}}};
        for (const int level : levels)
            draft.levels[static_cast<std::size_t>(level - 1)] = true;
        return draft;
    }
    /// The results as "area subgroup" with their values.
    static std::map<QString, QString> Sums(const CalculationLog& log) {
        std::map<QString, QString> sums;
        for (const LogResult& result : log.results) {
            const QString key = result.row.areaId + QLatin1Char(' ') + result.row.subpop;
            EXPECT_FALSE(sums.contains(key)) << "twice: " << key.toStdString();
            sums[key] = result.row.value;
            EXPECT_EQ(Text(log.working, result.sheetRow, result.sheetColumn), result.row.value) << key.toStdString();
        }
        return sums;
    }
};

} // namespace

TEST_F(SubtotalTest, ChildrenAreAddedUpLevelByLevel) {
    Put({{QStringLiteral("ASIINDDEL"), kA, QStringLiteral("1.5")},
         {QStringLiteral("ASIINDGOA"), kA, QStringLiteral("2"), QStringLiteral("1999"), kTotal,
          QStringLiteral("Survey")},
         {QStringLiteral("ASIINDGOA"), kA, QStringLiteral("100"), QStringLiteral("1990")},
         {QStringLiteral("ASICHNXYZ"), kA, QStringLiteral("4")},
         {QStringLiteral("ASICHNXYZ"), kA, QStringLiteral("1"), QStringLiteral("2000"), QStringLiteral("Female")},
         {QStringLiteral("EUR"), kA, QStringLiteral("50")},
         {QStringLiteral("ASIINDDEL"), QStringLiteral("Other"), QStringLiteral("7")}});
    const CalculationLog log = Calculate(Draft({1, 2}));
    ASSERT_EQ(log.failure, QString());
    const std::map<QString, QString> expected = {{QStringLiteral("ASI Total"), QStringLiteral("7.5")},
                                                 {QStringLiteral("ASI Female"), QStringLiteral("1")},
                                                 {QStringLiteral("ASIIND Total"), QStringLiteral("3.5")},
                                                 {QStringLiteral("ASICHN Total"), QStringLiteral("4")},
                                                 {QStringLiteral("ASICHN Female"), QStringLiteral("1")}};
    EXPECT_EQ(Sums(log), expected);
    EXPECT_EQ(RowText(log.working, 10), (QStringList{"Area ID", "Area name", "Female", "Total"}));
    EXPECT_EQ(RowText(log.working, 11), (QStringList{"ASI", "Asia", "1", "7.5"}));
    const auto india =
        std::ranges::find(log.results, QStringLiteral("ASIIND"), [](const LogResult& r) { return r.row.areaId; });
    EXPECT_EQ(india->row, (DataEntryRow{"2000", "ASIIND", "India", "3.5", "Total", "Census"})) << "of the first child";
    const auto remarks = RemarksOf(log);
    EXPECT_EQ(remarks.at(QStringLiteral("ASIIND")),
              QStringLiteral("Total: the parts are of different times (1999: Area ASIINDGOA; 2000: Area ASIINDDEL)"));
    EXPECT_TRUE(remarks.contains(QStringLiteral("ASI")));
    EXPECT_FALSE(remarks.contains(QStringLiteral("ASICHN")));
    EXPECT_EQ(log.detail.lastRow - log.detail.firstRow, 4);
    EXPECT_EQ(TablesLeft(), QStringList());
    EXPECT_EQ(Sums(Calculate(Draft({2}))).size(), 3u);
    const CalculationLog deepest = Calculate(Draft({3}));
    EXPECT_EQ(deepest.failure, QString());
    EXPECT_TRUE(deepest.results.empty()) << "only parents have sub-totals";
    EXPECT_NE(Calculate(Draft({})).failure, QString());
}

TEST_F(SubtotalTest, AChildCountsOnceWhereLevelsAreMixed) {
    // India has a value of its own besides that of its part; China has parts alone.
    Put({{QStringLiteral("ASIINDDEL"), kA, QStringLiteral("1")},
         {QStringLiteral("ASIIND"), kA, QStringLiteral("10")},
         {QStringLiteral("ASICHNXYZ001"), kA, QStringLiteral("5")}});
    const std::map<QString, QString> expected = {{QStringLiteral("ASI Total"), QStringLiteral("15")},
                                                 {QStringLiteral("ASIIND Total"), QStringLiteral("1")},
                                                 {QStringLiteral("ASICHN Total"), QStringLiteral("5")},
                                                 {QStringLiteral("ASICHNXYZ Total"), QStringLiteral("5")}};
    EXPECT_EQ(Sums(Calculate(Draft({1, 2, 3, 4}))), expected);
}

TEST_F(SubtotalTest, RandomTreesAddUpAsByRecursion) {
    std::mt19937 random(3);
    std::vector<test::DataRow> rows;
    std::map<QString, double> expected;
    for (int i = 0; i < 300; ++i) {
        const auto part = [&] { return QStringLiteral("Q0%1").arg(random() % 4); };
        test::DataRow row{part() + part() + part() + part(), kA,
                          QString::number(static_cast<double>(random() % 1000) / 8)};
        const bool known = std::ranges::any_of(rows, [&](const test::DataRow& each) { return each.area == row.area; });
        if (known) continue;
        for (int length = 3; length < 12; length += 3)
            expected[row.area.left(length)] += row.value.toDouble();
        rows.push_back(row);
    }
    Put(rows);
    const CalculationLog log = Calculate(Draft({1, 2, 3}));
    ASSERT_EQ(log.results.size(), expected.size());
    for (const auto& [area, sum] : ResultsOf(log))
        test::ExpectClose(expected[area], sum);
}

TEST_F(SubtotalTest, SumsBeyondTheRangeOfNumbersAreTold) {
    const QString big = QStringLiteral("1.7e308");
    Put({{QStringLiteral("ASIINDDEL"), kA, big},
         {QStringLiteral("ASICHNXYZ"), kA, big},
         {QStringLiteral("EURFRAPAR"), kA, QStringLiteral("2")}});
    const CalculationLog log = Calculate(Draft({1}));
    ASSERT_EQ(log.failure, QString());
    EXPECT_EQ(Sums(log), (std::map<QString, QString>{{QStringLiteral("EUR Total"), QStringLiteral("2")}}));
    EXPECT_EQ(RemarksOf(log).size(), 1u);
    EXPECT_TRUE(RemarksOf(log).contains(QStringLiteral("ASI")));
    Put({{QStringLiteral("ASIINDGOA"), kA, big}}); // now no statement can add up the parts of India
    EXPECT_EQ(Calculate(Draft({1})).failure, PlainText(QStringLiteral("TS_CalcTooLarge")));
    EXPECT_EQ(TablesLeft(), QStringList());
}

TEST_F(SubtotalTest, SaysWhichValueCannotBeRead) {
    Put({{QStringLiteral("ASIIND"), kA, QStringLiteral("x")}});
    EXPECT_TRUE(Calculate(Draft({1})).failure.contains(QStringLiteral("\"x\"")));
    EXPECT_EQ(TablesLeft(), QStringList());
}

} // namespace tessaro
