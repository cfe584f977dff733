#include "controls/KeyedListModel.h"

#include "support/TimeBound.h"

#include <QElapsedTimer>
#include <QMimeData>
#include <QPersistentModelIndex>
#include <QSignalSpy>

#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace tessaro {
namespace {

KeyedItem Item(const char* key, const char* first, const char* second = "") {
    return {QString::fromUtf8(key), {QString::fromUtf8(first), QString::fromUtf8(second)}, 0};
}

QString Order(const KeyedListModel& model) {
    QStringList keys;
    for (int row = 0; row < model.rowCount(); ++row)
        keys << model.ItemAt(row).key;
    return keys.join(QLatin1Char(' '));
}

std::vector<KeyedItem> ManyItems(int count) {
    std::vector<KeyedItem> items;
    std::mt19937 random(7);
    for (int n = 0; n < count; ++n) {
        const QString name = QStringLiteral("Share of households %1 wíth água").arg(random() % 100000);
        items.push_back({QStringLiteral("I%1").arg(n), {name, QStringLiteral("Per cent"), QStringLiteral("Total")}, 0});
    }
    return items;
}

TEST(KeyedListModelTest, KeepsTheFirstOfTwoItemsWithOneKey) {
    KeyedListModel model;
    model.SetItems({Item("I1", "one"), Item("I2", "two"), Item("I1", "another one")});
    EXPECT_EQ(model.Count(), 2);
    EXPECT_EQ(model.AddItems({Item("I2", "again"), Item("I3", "three"), Item("I3", "three again")}), 1);
    EXPECT_EQ(model.Count(), 3);
    EXPECT_EQ(model.ItemAt(model.RowOfKey(QStringLiteral("I2"))).cells[0], QStringLiteral("two"));
}

TEST(KeyedListModelTest, AKeyThatWasRemovedMayComeBack) {
    KeyedListModel model;
    model.SetItems({Item("I1", "one"), Item("I2", "two")});
    model.RemoveKeys({QStringLiteral("I1"), QStringLiteral("no such key")});
    EXPECT_EQ(Order(model).toStdString(), "I2");
    EXPECT_EQ(model.AddItems({Item("I1", "one")}), 1);
}

TEST(KeyedListModelTest, SortsAsPeopleReadAndPutsNewItemsInTheirPlace) {
    KeyedListModel model;
    model.SetColumns({QStringLiteral("A"), QStringLiteral("B")});
    model.SetItems({Item("d", "Zoo"), Item("a", "apple", "2"), Item("b", "Apple", "1"), Item("c", "Éclair")});
    EXPECT_EQ(Order(model).toStdString(), "b a c d")
        << "case and accents come after the letter; ties go by the next cell";
    model.AddItems({Item("e", "banana")});
    EXPECT_EQ(Order(model).toStdString(), "b a e c d");
    model.sort(0, Qt::DescendingOrder);
    EXPECT_EQ(Order(model).toStdString(), "d c e a b");
    model.AddItems({Item("f", "cat")});
    EXPECT_EQ(Order(model).toStdString(), "d c f e a b");
    model.SetItems({Item("x", "2"), Item("y", "10")});
    EXPECT_EQ(Order(model).toStdString(), "x y") << "filling the list anew sorts upwards, numbers by value";
}

TEST(KeyedListModelTest, AGivenOrderStaysUntilAHeadIsClicked) {
    KeyedListModel model;
    model.SetItemsInOrder({Item("b", "b"), Item("a", "a")});
    model.AddItems({Item("c", "0")});
    EXPECT_EQ(Order(model).toStdString(), "b a c");
    model.sort(0, Qt::AscendingOrder);
    EXPECT_EQ(Order(model).toStdString(), "c a b");
}

TEST(KeyedListModelTest, SortingTakesTheHighlightsAlong) {
    KeyedListModel model;
    model.SetItems({Item("a", "a"), Item("b", "b"), Item("c", "c")});
    const QPersistentModelIndex marked(model.index(0, 0));
    model.sort(0, Qt::DescendingOrder);
    EXPECT_EQ(marked.row(), 2);
    EXPECT_EQ(marked.data(Qt::UserRole).toString(), QStringLiteral("a"));
}

TEST(KeyedListModelTest, TheFilterHidesAndNothingElse) {
    KeyedListModel model;
    model.SetItems({Item("1", "Water", "Urban"), Item("2", "Water", "Rural"), Item("3", "Schools", "Urban")});
    const struct {
        const char* filter;
        const char* shown;
    } cases[] = {{"water", "2 1"}, {"URBAN", "3 1"}, {"wat urb", "1"}, {"x", ""}, {"  ", "3 2 1"}, {"", "3 2 1"}};
    for (const auto& c : cases) {
        model.SetFilter(QString::fromLatin1(c.filter));
        EXPECT_EQ(Order(model).toStdString(), c.shown) << c.filter;
        EXPECT_EQ(model.Count(), 3) << c.filter;
    }
    model.SetFilter(QStringLiteral("urban"));
    model.AddItems({Item("4", "Hospitals", "Urban"), Item("5", "Hospitals", "Rural")});
    EXPECT_EQ(Order(model).toStdString(), "4 3 1");
    EXPECT_EQ(model.RowOfKey(QStringLiteral("5")), -1);
    model.RemoveKeys({QStringLiteral("3")});
    EXPECT_EQ(Order(model).toStdString(), "4 1");
    ASSERT_EQ(model.ShownItems().size(), 2U);
    EXPECT_EQ(model.ShownItems().back().key, QStringLiteral("1"));
    EXPECT_EQ(model.Items().size(), 4U);
    model.SetFilter({});
    EXPECT_EQ(model.rowCount(), 4);
}

TEST(KeyedListModelTest, PaintsSharedCellsOnly) {
    KeyedListModel model;
    model.SetColumns({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")});
    KeyedItem item = Item("a", "x", "y");
    item.globalCells = 2;
    model.SetItems({item});
    EXPECT_FALSE(model.index(0, 1).data(Qt::ForegroundRole).isValid()) << "no colour is set";
    model.SetGlobalColor(Qt::blue);
    EXPECT_FALSE(model.index(0, 0).data(Qt::ForegroundRole).isValid());
    EXPECT_EQ(model.index(0, 1).data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::blue));
    EXPECT_EQ(model.index(0, 2).data(Qt::DisplayRole).toString(), QString()) << "a cell that the item doesn't have";
}

TEST(KeyedListModelTest, CarriesKeysAndTabSeparatedText) {
    KeyedListModel model;
    model.SetColumns({QStringLiteral("A"), QStringLiteral("B")});
    model.SetItems({Item("I1", "a", "x"), Item("I2", "b", "y"), Item("I3", "c", "z")});
    const std::unique_ptr<QMimeData> data(
        model.mimeData({model.index(2, 0), model.index(2, 1), model.index(0, 0), model.index(0, 1)}));
    EXPECT_EQ(data->text(), QStringLiteral("a\tx\nc\tz\n"));
    EXPECT_EQ(data->data(QString::fromLatin1(KeyedListModel::kMimeType)), QByteArray("I1\nI3"));
}

TEST(KeyedListModelTest, TellsItsCountOncePerBatch) {
    KeyedListModel model;
    QSignalSpy counts(&model, &KeyedListModel::CountChanged);
    model.AddItems({Item("1", "a"), Item("2", "b")});
    model.AddItems({Item("1", "a")});
    EXPECT_EQ(counts.count(), 1) << "nothing new, nothing told";
}

TEST(KeyedListModelTest, MovesChosenRowsPastTheOthersAndNoFurtherThanTheEnd) {
    struct Case {
        QSet<QString> keys;
        int step;
        const char* order;
    };
    for (const Case& c : {Case{{"c"}, -1, "a c b d"}, Case{{"b"}, 1, "a c b d"}, Case{{"a"}, -1, "a b c d"},
                          Case{{"d"}, 1, "a b c d"}, Case{{"a", "b"}, -1, "a b c d"}, Case{{"b", "c"}, 1, "a d b c"},
                          Case{{"b", "d"}, -1, "b a d c"}, Case{{"b"}, 2, "a b c d"}, Case{{}, 1, "a b c d"}}) {
        KeyedListModel model;
        model.SetItemsInOrder({Item("a", "4"), Item("b", "3"), Item("c", "2"), Item("d", "1")});
        model.MoveKeys(c.keys, c.step);
        EXPECT_EQ(Order(model), QLatin1String(c.order));
    }
}

TEST(KeyedListModelTest, FiftyThousandItemsDoNotStall) {
    KeyedListModel model;
    model.SetColumns({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")});
    std::vector<KeyedItem> items = ManyItems(50000);
    const std::vector<KeyedItem> copy = items;
    QElapsedTimer clock;
    const auto timed = [&](const char* what, qint64 limit, const auto& call) {
        clock.start();
        call();
        const qint64 spent = clock.elapsed();
        ::testing::Test::RecordProperty(what, static_cast<int>(spent));
        EXPECT_LT(spent, test::TimeBound(limit)) << what;
    };
    timed("fill", 1000, [&] { model.SetItems(std::move(items)); });
    timed("sort", 1000, [&] { model.sort(1, Qt::DescendingOrder); });
    timed("filter", 200, [&] { model.SetFilter(QStringLiteral("9 água")); });
    timed("unfilter", 200, [&] { model.SetFilter({}); });
    timed("add what is there", 200, [&] { EXPECT_EQ(model.AddItems(copy), 0); });
    QSet<QString> half;
    for (std::size_t n = 0; n < copy.size(); n += 2)
        half.insert(copy[n].key);
    timed("remove half", 200, [&] { model.RemoveKeys(half); });
    EXPECT_EQ(model.Count(), 25000);
}

} // namespace
} // namespace tessaro
