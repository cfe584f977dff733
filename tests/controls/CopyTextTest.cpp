#include "controls/CopyText.h"

#include "controls/DataTable.h"
#include "controls/KeyedList.h"
#include "controls/KeyedTree.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

QString Copied(QWidget& control) {
    QApplication::clipboard()->setText(QStringLiteral("before"));
    return CopyFromControl(&control) ? QApplication::clipboard()->text() : QStringLiteral("(not taken)");
}

TEST(CopyTextTest, LeavesAloneWhatHasNoText) {
    QPushButton button;
    DataTable grid;
    KeyedTree emptyTree;
    KeyedList emptyList;
    EXPECT_FALSE(CopyFromControl(nullptr));
    EXPECT_EQ(Copied(button), QStringLiteral("(not taken)"));
    EXPECT_EQ(Copied(grid), QStringLiteral("(not taken)")) << "a grid copies blocks by itself";
    EXPECT_EQ(Copied(emptyTree), QStringLiteral("before"));
    EXPECT_EQ(Copied(emptyList), QStringLiteral("before"));
}

TEST(CopyTextTest, CopiesRowsAsTabSeparatedLines) {
    KeyedList list;
    list.SetColumns({QStringLiteral("a"), QStringLiteral("b")});
    list.Items().SetItems({{QStringLiteral("1"), {QStringLiteral("x"), QStringLiteral("y")}, 0},
                           {QStringLiteral("2"), {QStringLiteral("z"), QStringLiteral("w")}, 0}});
    list.selectAll();
    EXPECT_EQ(Copied(list).trimmed(), QStringLiteral("x\ty\nz\tw"));
    QTreeWidget tree;
    tree.setColumnCount(2);
    tree.setSelectionMode(QAbstractItemView::ExtendedSelection);
    tree.addTopLevelItem(new QTreeWidgetItem({QStringLiteral("one\nline"), QStringLiteral("1")}));
    tree.addTopLevelItem(new QTreeWidgetItem({QStringLiteral("two"), QStringLiteral("2")}));
    tree.setCurrentItem(tree.topLevelItem(1));
    EXPECT_EQ(Copied(tree), QStringLiteral("two\t2"));
    tree.topLevelItem(0)->setSelected(true);
    EXPECT_EQ(Copied(tree), QStringLiteral("one line\t1\ntwo\t2")) << "in the order shown";
    QLineEdit field(QStringLiteral("field"));
    field.selectAll();
    EXPECT_EQ(Copied(field), QStringLiteral("field"));
}

TEST(CopyTextTest, ATreeCopiesTheOpenBranch) {
    KeyedTree tree;
    tree.Nodes().AddNodes({}, {{QStringLiteral("A"), QStringLiteral("Asia"), false, false},
                               {QStringLiteral("E"), QStringLiteral("Europe"), false, false}});
    tree.Nodes().AddNodes(QStringLiteral("A"), {{QStringLiteral("I"), QStringLiteral("India"), false, false}});
    tree.Nodes().AddNodes(QStringLiteral("I"), {{QStringLiteral("D"), QStringLiteral("Delhi"), false, false}});
    tree.ShowKey(QStringLiteral("A"));
    EXPECT_EQ(Copied(tree), QStringLiteral("Asia"));
    tree.expand(tree.Nodes().IndexOfKey(QStringLiteral("A")));
    EXPECT_EQ(Copied(tree), QStringLiteral("Asia\n\tIndia")) << "what is closed isn't shown";
    tree.expand(tree.Nodes().IndexOfKey(QStringLiteral("I")));
    QTest::keyClick(&tree, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("Asia\n\tIndia\n\t\tDelhi"));
}

} // namespace
} // namespace tessaro
