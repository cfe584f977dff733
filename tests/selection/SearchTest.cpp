#include "selection/Search.h"

#include "controls/KeyedListModel.h"
#include "selection/ClassificationViews.h"
#include "selection/IndicatorSelection.h"
#include "selection/SelectionDatabase.h"
#include "session/Session.h"

namespace tessaro::test {
namespace {

class SearchTest : public SelectionDatabaseTest {
  protected:
    /// The keys that the list shows: an indicator of two sectors comes twice from the statement.
    static std::string Indicators(int view, const char* text) {
        KeyedListModel list;
        list.SetItems(selection::AvailableIndicators(selection::FromOf(view),
                                                     selection::SearchIndicatorsWhere(view, QString::fromUtf8(text))));
        return Keys(list.Items());
    }
    static std::string Areas(const char* text) { return Keys(selection::SearchAreas(QString::fromUtf8(text))); }
};

TEST_F(SearchTest, FindsIndicatorsOfTheViewByAPartOfTheName) {
    const struct {
        const char* text;
        int view;
        const char* found;
    } cases[] = {
        {"no such", 0, ""},     {"%", 0, ""},      {"*", 0, ""},          {"POPUL", 0, "I2 I1"},
        {"n's \"sch", 0, "I3"}, {"'", 0, "I3"},    {"[rate]", 0, "I3"},   {"колод", 0, "I4"},
        {"source", 0, "I5"},    {"source", 3, ""}, {"children", 3, "I3"}, {"population", 6, "I2"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Indicators(c.view, c.text), c.found) << c.text << " in view " << c.view;
}

TEST_F(SearchTest, TheOptionsNarrowTheIndicators) {
    SetDataExistsMode(2);
    EXPECT_EQ(Indicators(0, "o"), "") << "neither marked class has data missing for a Latin name";
    EXPECT_EQ(Indicators(0, "Колодцы"), "I4");
    SetDataExistsMode(0);
    EXPECT_EQ(Indicators(0, "Колодцы"), "");
    GlobalLocalFilter = 1;
    SetDataExistsMode(1);
    EXPECT_EQ(Indicators(0, "a"), "") << "no combination is local throughout";
    IndicatorSelectBy = 0;
    EXPECT_EQ(Indicators(0, "о"), "IL3");
}

TEST_F(SearchTest, FindsAreasOfAllLevelsByName) {
    const struct {
        const char* text;
        const char* found;
    } cases[] = {
        {"atlantis", ""}, {"IND", "A2"}, {"quoted", "A7 A8"}, {"d'iv", "A3"}, {"[len", "A6"}, {"دل", "A4"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Areas(c.text), c.found) << c.text;
    const std::vector<KeyedItem> found = selection::SearchAreas(QStringLiteral("d'ivoire"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().cells, (QStringList{QStringLiteral("Côte d'Ivoire"), QStringLiteral("ASICIV")}))
        << "in the columns of the list, so that it can be added";
    GlobalLocalFilter = 1;
    EXPECT_EQ(Areas("i"), "A3");
    GlobalLocalFilter = 0;
    EXPECT_EQ(Areas("d'ivoire"), "");
    GlobalLocalFilter = 2;
    SetDataExistsMode(2);
    EXPECT_EQ(Areas("e"), "A5 A6");
}

} // namespace
} // namespace tessaro::test
