#include "shell/AddressBar.h"

#include "support/TestSession.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QCompleter>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTest>
#include <QWheelEvent>

namespace tessaro {

class AddressBarTest : public test::SessionTest {
  protected:
    AddressBarTest() {
        bar.SetItems({QStringLiteral("Local://One.mdb"), QStringLiteral("Local://Two.mdb")});
        bar.Show(QStringLiteral("local://ONE.mdb"));
        box = bar.findChild<QComboBox*>(QStringLiteral("cmbAddress"));
        QObject::connect(&bar, &AddressBar::Entered, &bar, [this] { ++entered; });
    }
    void Press(int key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(box, &event);
    }

    AddressBar bar;
    QComboBox* box = nullptr;
    int entered = 0;
};

TEST_F(AddressBarTest, ShowingIsNoChoice) {
    EXPECT_EQ(bar.Text(), QStringLiteral("Local://One.mdb"));
    bar.Show(QStringLiteral("no item"));
    EXPECT_EQ(bar.Text(), QStringLiteral("no item"));
    bar.ShowAsItem(QStringLiteral("/a/path/Three.mdb"));
    bar.ShowAsItem(QStringLiteral("/A/PATH/three.mdb"));
    EXPECT_EQ(bar.Items().size(), 3) << "one file is one item, whatever its case";
    EXPECT_EQ(entered, 0);
}

TEST_F(AddressBarTest, EnterAsksOnce) {
    box->setEditText(QStringLiteral("Local://Two.mdb"));
    Press(Qt::Key_Return);
    EXPECT_EQ(entered, 1);
    Press(Qt::Key_Enter);
    EXPECT_EQ(entered, 2);
}

TEST_F(AddressBarTest, EnterIsNotLostOnTheSuggestions) {
    bar.show();
    box->setEditText({});
    QTest::keyClicks(box->lineEdit(), QStringLiteral("two"));
    QAbstractItemView* suggestions = box->completer()->popup();
    suggestions->show();
    suggestions->setCurrentIndex({});
    QTest::keyClick(suggestions, Qt::Key_Return);
    EXPECT_EQ(entered, 1);
    EXPECT_EQ(bar.Text(), QStringLiteral("two"));
    EXPECT_FALSE(suggestions->isVisible());
    suggestions->show();
    suggestions->setCurrentIndex(suggestions->model()->index(0, 0));
    QTest::keyClick(suggestions, Qt::Key_Return);
    EXPECT_EQ(entered, 2) << "once, for the one chosen";
    EXPECT_EQ(bar.Text(), QStringLiteral("Local://Two.mdb"));
}

TEST_F(AddressBarTest, LeavingTheFieldAsksNothing) {
    box->setEditText(QStringLiteral("Local://Two.mdb"));
    QFocusEvent leave(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(box, &leave);
    EXPECT_EQ(entered, 0);
}

TEST_F(AddressBarTest, TheWheelOpensNothing) {
    QWheelEvent wheel({5, 5}, {5, 5}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(box, &wheel);
    EXPECT_EQ(bar.Text(), QStringLiteral("Local://One.mdb"));
    EXPECT_EQ(entered, 0);
}

TEST_F(AddressBarTest, ItemsComeAndGoUnderTheTextThatStands) {
    box->setEditText(QStringLiteral("typed"));
    bar.AddItem(QStringLiteral("Local://Three.mdb"));
    EXPECT_EQ(bar.Text(), QStringLiteral("typed"));
    bar.Show(QStringLiteral("Local://Two.mdb"));
    bar.RemoveItem(QStringLiteral("Local://One.mdb"));
    EXPECT_EQ(bar.Text(), QStringLiteral("Local://Two.mdb"));
    EXPECT_EQ(box->currentIndex(), 0);
    bar.RemoveItem(QStringLiteral("Local://nowhere.mdb"));
    EXPECT_EQ(bar.Items().size(), 2);
    bar.SetItems({});
    EXPECT_TRUE(bar.Items().isEmpty());
    EXPECT_EQ(entered, 0);
}

} // namespace tessaro
