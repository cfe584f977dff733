#include "controls/KeyedTreeModel.h"

#include "support/TimeBound.h"

#include <QAbstractItemModelTester>
#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

KeyedNode Node(const QString& key, bool mayHaveChildren = false) {
    return {key, key.toLower(), false, mayHaveChildren};
}

TEST(KeyedTreeModelTest, AsksForChildrenOnce) {
    KeyedTreeModel model;
    QStringList asked;
    model.SetLoader([&](const QString& key) {
        asked << key;
        return key == QStringLiteral("A") ? std::vector<KeyedNode>{Node(QStringLiteral("A1"), true)}
                                          : std::vector<KeyedNode>{};
    });
    model.AddNodes({}, {Node(QStringLiteral("A"), true), Node(QStringLiteral("B"))});
    const QModelIndex a = model.IndexOfKey(QStringLiteral("A"));
    EXPECT_TRUE(model.hasChildren(a)) << "an arrow before anyone has asked";
    EXPECT_FALSE(model.hasChildren(model.IndexOfKey(QStringLiteral("B"))));
    model.fetchMore(a);
    model.LoadChildren(QStringLiteral("A"));
    EXPECT_EQ(asked, QStringList{QStringLiteral("A")});
    EXPECT_EQ(model.rowCount(a), 1);
    model.LoadChildren(QStringLiteral("A1"));
    EXPECT_FALSE(model.hasChildren(model.IndexOfKey(QStringLiteral("A1")))) << "the arrow goes when nothing is found";
    EXPECT_EQ(model.ParentKey(QStringLiteral("A1")), QStringLiteral("A"));
    EXPECT_EQ(model.ParentKey(QStringLiteral("A")), QString());
}

TEST(KeyedTreeModelTest, PassesOverKeysItHasAndParentsItLacks) {
    KeyedTreeModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.AddNodes({}, {Node(QStringLiteral("A")), Node(QStringLiteral("B"))});
    model.AddNodes(QStringLiteral("A"), {Node(QStringLiteral("B")), Node(QStringLiteral("C"))});
    model.AddNodes(QStringLiteral("nowhere"), {Node(QStringLiteral("D"))});
    EXPECT_EQ(model.Count(), 3);
    EXPECT_EQ(model.KeyAt(model.index(0, 0, model.IndexOfKey(QStringLiteral("A")))), QStringLiteral("C"));
    model.Clear();
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_FALSE(model.IndexOfKey(QStringLiteral("A")).isValid());
}

TEST(KeyedTreeModelTest, ALoaderMayMakeTheTreeGrowWhileItRuns) {
    KeyedTreeModel model;
    model.SetLoader([&](const QString& key) {
        std::vector<KeyedNode> others;
        for (int n = 0; n < 1000; ++n)
            others.push_back(Node(QStringLiteral("other%1").arg(n)));
        model.AddNodes({}, std::move(others));
        return std::vector<KeyedNode>{Node(key + QStringLiteral("child"))};
    });
    model.AddNodes({}, {Node(QStringLiteral("A"), true)});
    model.LoadChildren(QStringLiteral("A"));
    EXPECT_EQ(model.rowCount(model.IndexOfKey(QStringLiteral("A"))), 1);
    EXPECT_EQ(model.Count(), 1002);
}

TEST(KeyedTreeModelTest, FiftyThousandNodesDoNotStall) {
    KeyedTreeModel model;
    model.SetLoader([](const QString&) {
        std::vector<KeyedNode> nodes;
        for (int n = 0; n < 50000; ++n)
            nodes.push_back(Node(QStringLiteral("N%1").arg(n), true));
        return nodes;
    });
    model.AddNodes({}, {Node(QStringLiteral("root"), true)});
    QElapsedTimer clock;
    clock.start();
    model.LoadChildren(QStringLiteral("root"));
    EXPECT_EQ(model.IndexOfKey(QStringLiteral("N49999")).row(), 49999);
    EXPECT_LT(clock.elapsed(), test::TimeBound(500));
}

} // namespace
} // namespace tessaro
