#include "controls/CopyText.h"

#include "controls/DataTable.h"
#include "controls/KeyedList.h"
#include "controls/KeyedTree.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
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

TEST(CopyTextTest, TheKeyCopiesWholeRowsOfAnyView) {
    QTableWidget table(2, 3);
    for (int row = 0; row < 2; ++row)
        for (int column = 0; column < 2; ++column)
            table.setItem(row, column, new QTableWidgetItem(QStringLiteral("%1.%2").arg(row).arg(column)));
    auto* picture = new QTableWidgetItem;
    picture->setData(Qt::AccessibleTextRole, QStringLiteral("a picture"));
    table.setItem(0, 2, picture);
    QListWidget list;
    list.addItems({QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("third")});
    list.setSelectionMode(QAbstractItemView::ExtendedSelection);
    const auto pressed = [](QWidget& view) {
        QApplication::clipboard()->setText(QStringLiteral("before"));
        QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
        return QApplication::clipboard()->text();
    };
    {
        QObject owner;
        CopyByKey(owner);
        table.setCurrentCell(0, 1);
        EXPECT_EQ(pressed(table), QStringLiteral("0.0\t0.1\ta picture"));
        table.selectAll();
        EXPECT_EQ(pressed(table), QStringLiteral("0.0\t0.1\ta picture\n1.0\t1.1\t"));
        list.item(2)->setSelected(true);
        list.item(0)->setSelected(true);
        EXPECT_EQ(pressed(list), QStringLiteral("first\nthird"));
        table.editItem(table.item(1, 1)); // its field copies what is marked in it
        auto* field = table.findChild<QLineEdit*>();
        ASSERT_NE(field, nullptr);
        field->setSelection(0, 1);
        EXPECT_EQ(pressed(*field), QStringLiteral("1"));
    }
}

} // namespace
} // namespace tessaro
