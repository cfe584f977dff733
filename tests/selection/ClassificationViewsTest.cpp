#include "selection/ClassificationViews.h"

#include "selection/IndicatorSelection.h"
#include "selection/SelectionDatabase.h"
#include "session/Session.h"

namespace tessaro::test {
namespace {

using namespace selection;

class ClassificationViewsTest : public SelectionDatabaseTest {};

std::string Texts(const std::vector<KeyedNode>& nodes) {
    QStringList texts;
    for (const KeyedNode& node : nodes)
        texts << node.text;
    return texts.join(QLatin1Char('|')).toStdString();
}

std::string UniqueKeys(const std::vector<KeyedItem>& items) {
    std::vector<KeyedItem> unique;
    for (const KeyedItem& item : items)
        if (std::none_of(unique.begin(), unique.end(), [&](const KeyedItem& u) { return u.key == item.key; }))
            unique.push_back(item);
    return Keys(unique);
}

/// A path of ids, one level under another, as node keys.
QStringList Path(const char* ids) {
    QStringList path;
    for (const QString& id : QString::fromLatin1(ids).split(QLatin1Char('>'), Qt::SkipEmptyParts))
        path << NodeKey(id, path.isEmpty() ? 'S' : 'C', static_cast<int>(path.size()) + 1);
    return path;
}

TEST_F(ClassificationViewsTest, FirstLevels) {
    const struct {
        int view;
        const char* all;
        const char* globalOnly;
    } cases[] = {{0, "Economy|Society", "Economy|Society"},
                 {1, "Goal 1", "Goal 1"},
                 {2, "Demand|Supply", "Demand|Supply"},
                 {3, "Women's lives", "Women's lives"},
                 {4, "Asia", "Asia"},
                 {5, "Ministry", "Ministry"},
                 {6, "Convention", "Convention"}};
    for (const auto& c : cases) {
        int counter = 1;
        GlobalLocalFilter = 2;
        EXPECT_EQ(Texts(FirstLevelNodes(c.view, counter)), c.all) << c.view;
        GlobalLocalFilter = 0;
        EXPECT_EQ(Texts(FirstLevelNodes(c.view, counter)), c.globalOnly) << c.view;
        GlobalLocalFilter = 1;
        EXPECT_EQ(Texts(FirstLevelNodes(c.view, counter)), c.view == 2 ? c.all : "") << c.view;
    }
}

TEST_F(ClassificationViewsTest, ChildrenAndWhatTheyHold) {
    const struct {
        int view;
        const char* path;
        const char* children;
        const char* combinations;
    } cases[] = {
        {0, "", "", "I3 I5 I2 I1 I4"},
        {0, "-A", "Money|People", "I3 I5 I2 I1"},
        {0, "-B", "People|Water", "I3 I2 I1 I4"},
        {0, "-B>B2", "", "I4"},
        {1, "", "", "I1 I4"},
        {1, "-G1", "Target a", "I1 I4"},
        {1, "-G1>-G1a", "Measure 1|Measure 2", "I1 I4"},
        {1, "-G1>-G1a>-G1a2", "", "I4"},
        {2, "-C2", "", "I3"},
        {2, "-C1", "", ""},
        {3, "-T'1", "", "I3"},
        {4, "", "", "I3 I2 I1 I4"},
        {4, "1", "Census|Survey \"x\"", "I3 I2 I1 I4"},
        {4, "1>11", "", "I3 I1"},
        {5, "-N1", "Office", "I1"},
        {5, "-N1>-N1a", "", "I1"},
        {6, "-V1>-V1a", "Article", "I2"},
        {6, "-V1>-V1a>-V1a1", "", "I2"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.view) + " " + c.path);
        int counter = 5;
        IndicatorSelectBy = 1;
        EXPECT_EQ(Texts(ChildNodes(c.view, Path(c.path), counter)), c.children);
        EXPECT_EQ(UniqueKeys(AvailableIndicators(FromOf(c.view), WhereOf(c.view, Path(c.path)))), c.combinations);
        IndicatorSelectBy = 0;
        EXPECT_EQ(AvailableIndicators(FromOf(c.view), WhereOf(c.view, Path(c.path))).empty(), *c.combinations == '\0');
    }
}

TEST_F(ClassificationViewsTest, ASourceIsGlobalByItsOwnGId) {
    int counter = 1;
    const auto sources = ChildNodes(4, Path("1"), counter);
    ASSERT_EQ(sources.size(), 2U);
    EXPECT_TRUE(sources[0].global) << "Census";
    EXPECT_FALSE(sources[1].global) << "Survey";
}

TEST_F(ClassificationViewsTest, OneGIdUnderTwoParentsHasTwoKeys) {
    int counter = 1;
    const auto economy = ChildNodes(0, Path("-A"), counter);
    const auto society = ChildNodes(0, Path("-B"), counter);
    ASSERT_EQ(economy.size(), 2U);
    EXPECT_EQ(economy[1].key, QStringLiteral("-B1{[~]}C{[~]}2"));
    EXPECT_EQ(society[0].key, QStringLiteral("-B1{[~]}C{[~]}3"));
    EXPECT_EQ(IdOfNodeKey(society[0].key), QStringLiteral("-B1"));
    EXPECT_TRUE(IsRootKey(QStringLiteral("SEC")));
    EXPECT_FALSE(IsRootKey(society[0].key));
}

TEST_F(ClassificationViewsTest, DataAndSharingNarrowTheList) {
    const auto list = [](int view, const char* path) {
        return UniqueKeys(AvailableIndicators(FromOf(view), WhereOf(view, Path(path))));
    };
    SetDataExistsMode(0);
    EXPECT_EQ(list(0, ""), "I3 I5 I2 I1");
    EXPECT_EQ(list(1, "-G1"), "I1");
    EXPECT_EQ(list(0, "-B>B2"), "");
    SetDataExistsMode(2);
    EXPECT_EQ(list(0, "-B"), "I4");
    EXPECT_EQ(list(4, "1"), "") << "the sources have data, the combination has not: both must lack it";
    SetDataExistsMode(1);
    GlobalLocalFilter = 0;
    EXPECT_EQ(list(0, ""), "I5 I2 I1") << "3 has a local unit, so it is no global combination";
    GlobalLocalFilter = 1;
    EXPECT_EQ(list(0, ""), "") << "4 has a global unit, so it is no local combination";
    IndicatorSelectBy = 0;
    EXPECT_EQ(list(0, ""), "IL3") << "only the indicator counts in this mode";
}

TEST_F(ClassificationViewsTest, TheViewThatOpensFirst) {
    const struct {
        const char* wanted;
        std::vector<int> off;
        int view;
    } cases[] = {{"4", {}, 4},     {"4", {4}, 1}, {"4", {1, 4}, 0}, {"", {}, 1},
                 {"x", {0, 1}, 2}, {"99", {}, 1}, {"-1", {}, 1}};
    for (const auto& c : cases) {
        for (auto& view : IndicatorViews)
            view.wanted = true;
        for (const int off : c.off)
            IndicatorViews[static_cast<std::size_t>(off)].wanted = false;
        IndicatorOpenWith = QString::fromLatin1(c.wanted);
        EXPECT_EQ(FirstView(), c.view) << c.wanted << " without " << c.off.size();
    }
}

} // namespace
} // namespace tessaro::test
