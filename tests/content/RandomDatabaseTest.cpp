#include "RandomDatabase.h"

#include "RandomNames.h"
#include "content/FlagChecks.h"
#include "database/Database.h"
#include "support/PlainReader.h"
#include "support/TestSession.h"

#include <gtest/gtest.h>
#include <set>

namespace tessaro::content {

using test::PlainReader;

namespace {

class RandomDatabaseTest : public test::SessionTest {
  protected:
    std::string Make(const char* name, const RandomDatabaseSize& size) {
        const std::string path = Folder().toStdString() + "/" + name;
        MakeRandomDatabase(path, size);
        return path;
    }
    static RandomDatabaseSize Small() {
        RandomDatabaseSize size;
        size.areas = 100;
        size.ius = 13;
        size.periods = 7;
        size.sources = 3;
        size.languages = {"en", "fr"};
        return size;
    }
};

} // namespace

TEST_F(RandomDatabaseTest, RefusesNumbersThatMakeNoDatabase) {
    const auto with = [](auto change) {
        RandomDatabaseSize size = Small();
        change(size);
        return ProblemOf(size);
    };
    EXPECT_EQ(with([](RandomDatabaseSize&) {}), "");
    EXPECT_NE(with([](RandomDatabaseSize& s) { s.areas = 0; }), "");
    EXPECT_NE(with([](RandomDatabaseSize& s) { s.sources = -1; }), "");
    EXPECT_NE(with([](RandomDatabaseSize& s) { s.areas = 2'000'000; }), "");
    EXPECT_NE(with([](RandomDatabaseSize& s) { s.rows = s.MostRows() + 1; }), "");
    EXPECT_NE(with([](RandomDatabaseSize& s) {
                  s.languages = {};
                  s.languages.emplace_back("e'n");
              }),
              "");
    EXPECT_NE(with([](RandomDatabaseSize& s) { s.languages = {"en", "en"}; }), "");
}

TEST_F(RandomDatabaseTest, HasExactlyTheRowsThatWereAskedFor) {
    struct Case {
        std::int64_t rows;
        std::int64_t expected;
    };
    for (const Case& c : {Case{-1, 100 * 13 * 7}, Case{0, 0}, Case{1, 1}, Case{777, 777}, Case{20'000, 20'000}}) {
        RandomDatabaseSize size = Small();
        size.rows = c.rows;
        const std::string path = Make("rows.mdb", size);
        const PlainReader reader(path);
        EXPECT_EQ(reader.Number("SELECT count(*) FROM Data"), c.expected);
        EXPECT_EQ(
            reader.Number("SELECT count(*) FROM (SELECT DISTINCT AreaNId, IUSNId, TimePeriodNId, SourceNId FROM Data)"),
            c.expected);
        EXPECT_EQ(reader.Number(
                      "SELECT count(*) FROM (SELECT DISTINCT IUSNId, SourceNId FROM Data) D JOIN Indicator_Source S "
                      "ON S.IUSNId = D.IUSNId AND S.SourceNId = D.SourceNId"),
                  reader.Number("SELECT count(*) FROM Indicator_Source"));
        EXPECT_EQ(test::WrongFlags(reader, {"en", "fr"}), std::vector<std::string>{}) << c.rows;
        EXPECT_FALSE(InValidFile(QString::fromStdString(path)));
    }
}

TEST_F(RandomDatabaseTest, MakesATreeOfFourLevels) {
    for (const int areas : {1, 3, 39, 100, 500}) {
        RandomDatabaseSize size = Small();
        size.areas = areas;
        size.rows = 1;
        const PlainReader reader(Make("areas.mdb", size));
        EXPECT_EQ(reader.Number("SELECT count(DISTINCT AreaID) FROM Area_en"), areas);
        EXPECT_EQ(reader.Number("SELECT count(*) FROM Area_en WHERE AreaLevel <> length(AreaID) / 3"), 0);
        EXPECT_EQ(
            reader.Number("SELECT count(*) FROM Area_en WHERE AreaLevel > 1 AND substr(AreaID, 1, length(AreaID) - 3) "
                          "NOT IN (SELECT AreaID FROM Area_en)"),
            0)
            << areas;
        if (areas >= 100) {
            EXPECT_EQ(reader.Number("SELECT max(AreaLevel) FROM Area_en"), 4);
        }
    }
}

TEST_F(RandomDatabaseTest, IsTheSameForTheSameSeedOnly) {
    RandomDatabaseSize size = Small();
    const char* rows = "SELECT * FROM Data ORDER BY RowNId";
    const auto first = PlainReader(Make("first.mdb", size)).Rows(rows);
    EXPECT_EQ(PlainReader(Make("again.mdb", size)).Rows(rows), first);
    size.seed = 2;
    EXPECT_NE(PlainReader(Make("other.mdb", size)).Rows(rows), first);
}

TEST(RandomNames, TellManyItemsApart) {
    std::set<std::string> keys;
    std::set<std::string> indicators;
    for (int i = 0; i < 1000; ++i) {
        keys.insert(ThreeCharacters(i));
        indicators.insert(IndicatorName(i));
    }
    EXPECT_EQ(keys.size(), 1000U);
    EXPECT_EQ(indicators.size(), 1000U);
    EXPECT_EQ(ThreeCharacters(36 * 36 + 35), "10Z");
}

} // namespace tessaro::content
