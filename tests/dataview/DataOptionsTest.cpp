#include "dataview/DataOptions.h"

#include "session/Query.h"
#include "support/SelectionTest.h"

namespace tessaro::test {

namespace {

/// Combinations 1 to 4 of two indicators, two units and two subgroups; each with the sources 1 and 2, rows 1 to 8.
class DataOptionsTest : public SelectionTest {
  protected:
    DataOptionsTest() {
        SelectTimes(1);
        SelectAreas(1);
        for (int ius = 1; ius <= 4; ++ius) {
            for (int source = 1; source <= 2; ++source) {
                Run(QStringLiteral(
                        "INSERT INTO _SelIUSNId (IUSNId, IndicatorGId, [Indicator], UnitGId, Unit, SubpopGId, "
                        "Subpop, SourceNId, Source, RecommendedSource, Deleted) VALUES (%1, '-I_%2', 'Ind %2', "
                        "'U''%3', 'Unit %3', 'S%4', 'Group %4', %5, 'Source %5', %6, False)")
                        .arg(ius)
                        .arg(1 + ius / 3)
                        .arg(1 + ius % 2)
                        .arg(1 + ius / 4)
                        .arg(source)
                        .arg(source == 1 ? QStringLiteral("True") : QStringLiteral("False")));
                AddData(1, 1, ius, QStringLiteral("'%1'").arg(ius), source);
            }
        }
        for (const OptionList list : {OptionList::Sources, OptionList::Units, OptionList::Subpops})
            items.push_back(options.LoadDataInto_SOURCES_UNIT_SUBPOPS(list));
    }
    static QStringList Keys(const std::vector<KeyedItem>& list) {
        QStringList keys;
        for (const KeyedItem& item : list)
            keys << item.key;
        keys.sort();
        return keys;
    }
    /// "iusNId/source" of all pairs taken out, by a statement of its own.
    static QString TakenOut() {
        QStringList rows;
        Records found = Select(QStringLiteral(
            "SELECT IUSNId, SourceNId FROM _SelIUSNId WHERE [Deleted] = True ORDER BY IUSNId, SourceNId"));
        for (; !found.atEnd(); found.MoveNext())
            rows << QStringLiteral("%1/%2").arg(found.Text(std::size_t{0}), found.Text(std::size_t{1}));
        return rows.join(QLatin1Char(' '));
    }

    DataOptions options;
    std::vector<std::vector<KeyedItem>> items;
};

TEST_F(DataOptionsTest, ListsWhatHasDataWithItsKeys) {
    EXPECT_EQ(Keys(items[0]),
              (QStringList{"IS_1_1", "IS_1_2", "IS_2_1", "IS_2_2", "IS_3_1", "IS_3_2", "IS_4_1", "IS_4_2"}));
    EXPECT_EQ(Keys(items[1]), (QStringList{"IU_-I_1_U'1", "IU_-I_1_U'2", "IU_-I_2_U'1", "IU_-I_2_U'2"}));
    EXPECT_EQ(Keys(items[2]), (QStringList{"IS_-I_1_S1", "IS_-I_2_S1", "IS_-I_2_S2"}));
    for (const KeyedItem& item : items[0])
        EXPECT_EQ(item.marked, item.key.endsWith(QLatin1String("_1"))) << item.key.toStdString();
    EXPECT_EQ(items[0].front().globalCells, 1) << "the indicator's identifier begins with a minus, the others don't";

    Run(QStringLiteral("DELETE * FROM Data WHERE IUSNId = 1 AND SourceNId = 2"));
    EXPECT_EQ(options.LoadDataInto_SOURCES_UNIT_SUBPOPS(OptionList::Sources).size(), 7U);
}

TEST_F(DataOptionsTest, TakesOutAndPutsBackByEachPanel) {
    struct Case {
        OptionList list;
        const char* key;
        const char* takenOut;
    };
    for (const Case& c : {Case{OptionList::Sources, "IS_3_2", "3/2"}, Case{OptionList::Units, "IU_-I_1_U'2", "1/1 1/2"},
                          Case{OptionList::Subpops, "IS_-I_2_S1", "3/1 3/2"}}) {
        EXPECT_TRUE(options.RemoveIndicatorFromSel(c.list, {QLatin1String(c.key)}));
        EXPECT_EQ(TakenOut(), QLatin1String(c.takenOut)) << c.key;
        EXPECT_TRUE(options.AnythingTakenOut());
        EXPECT_TRUE(options.AddIndicatorToSel(c.list, {QLatin1String(c.key)}));
        EXPECT_EQ(TakenOut(), QString()) << c.key;
        EXPECT_FALSE(options.AnythingTakenOut());
    }
}

TEST_F(DataOptionsTest, ARowBelongsToThePanelThatTookItOutFirst) {
    ASSERT_TRUE(
        options.RemoveIndicatorFromSel(OptionList::Sources, {QStringLiteral("IS_1_1"), QStringLiteral("IS_1_2")}));
    ASSERT_TRUE(options.RemoveIndicatorFromSel(OptionList::Units, {QStringLiteral("IU_-I_1_U'2")}));
    EXPECT_EQ(options.SourceDeletedRows(), QStringLiteral("1,2,"));
    EXPECT_EQ(options.UnitDeletedRows(), QString());
    ASSERT_TRUE(options.AddIndicatorToSel(OptionList::Units, {QStringLiteral("IU_-I_1_U'2")}));
    EXPECT_EQ(TakenOut(), QStringLiteral("1/1 1/2")) << "restoring the unit changes nothing";
    ASSERT_TRUE(options.AddIndicatorToSel(OptionList::Sources, {QStringLiteral("IS_1_1")}));
    EXPECT_EQ(TakenOut(), QStringLiteral("1/2"));
}

TEST_F(DataOptionsTest, AllTakenOutComesBackItemByItemButNotWhatAnotherPanelHolds) {
    ASSERT_TRUE(options.RemoveIndicatorFromSel(OptionList::Sources, {QStringLiteral("IS_2_1")}));
    ASSERT_TRUE(options.RemoveAllFromSel(OptionList::Units));
    EXPECT_EQ(TakenOut().split(QLatin1Char(' ')).size(), 8);
    ASSERT_TRUE(options.AddIndicatorToSel(OptionList::Units, Keys(items[1])));
    EXPECT_EQ(TakenOut(), QStringLiteral("2/1"));
    EXPECT_EQ(options.UnitDeletedRows(), QString());
    options.Reset();
    EXPECT_EQ(options.SourceDeletedRows(), QString());
}

TEST_F(DataOptionsTest, AFailingStatementChangesNothing) {
    Run(QStringLiteral("DROP TABLE _SelIUSNId"));
    EXPECT_FALSE(options.RemoveIndicatorFromSel(OptionList::Sources, {QStringLiteral("IS_1_1")}));
    EXPECT_FALSE(options.RemoveAllFromSel(OptionList::Sources));
    EXPECT_FALSE(options.AnythingTakenOut());
}

} // namespace

} // namespace tessaro::test
