#include "controls/KeyedList.h"
#include "controls/KeyedTree.h"
#include "controls/Theme.h"
#include "controls/ThemeSetup.h"
#include "support/TestSession.h"

#include <QApplication>
#include <QHelpEvent>
#include <QImage>
#include <QLabel>
#include <QTest>
#include <QToolTip>

namespace tessaro::test {
namespace {

constexpr int kPictureSide = 300;

/// Names that hold markup with a picture; a widget that takes them as markup grows to the picture's size.
class PlainTextTest : public SessionTest {
  protected:
    PlainTextTest() {
        StartSample();
        theme::Apply(*static_cast<QApplication*>(QApplication::instance()));
        QImage picture(kPictureSide, kPictureSide, QImage::Format_RGB32);
        picture.fill(Qt::red);
        const QString file = Folder() + QStringLiteral("/picture.png");
        EXPECT_TRUE(picture.save(file));
        name_ = QStringLiteral("<img src='%1'>").arg(file);
    }
    ~PlainTextTest() override { QToolTip::hideText(); }

    /// The tool tip that is on the screen.
    static QLabel* Tip() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->inherits("QTipLabel") && widget->isVisible()) return qobject_cast<QLabel*>(widget);
        return nullptr;
    }
    /// Points at the first item of a view for long enough.
    static void PointAtFirst(QAbstractItemView& view) {
        view.resize(300, 200);
        view.show();
        (void)QTest::qWaitForWindowExposed(&view);
        const QPoint place = view.visualRect(view.model()->index(0, 0)).center();
        QHelpEvent help(QEvent::ToolTip, place, view.viewport()->mapToGlobal(place));
        QApplication::sendEvent(view.viewport(), &help);
    }
    void ExpectPlainTip() const {
        const QLabel* tip = Tip();
        ASSERT_NE(tip, nullptr);
        EXPECT_EQ(tip->textFormat(), Qt::PlainText);
        EXPECT_EQ(tip->text(), name_);
        EXPECT_LT(tip->height(), kPictureSide / 2);
    }

    QString name_;
};

TEST_F(PlainTextTest, LabelsShowMarkupAsItStands) {
    QLabel label(name_);
    label.show();
    EXPECT_LT(label.sizeHint().height(), kPictureSide / 2);
    label.setText(name_ + name_);
    EXPECT_LT(label.sizeHint().height(), kPictureSide / 2) << "also what comes later";
    QLabel ours(QStringLiteral("<b>ours</b>"));
    ours.setTextFormat(Qt::RichText);
    ours.show();
    EXPECT_EQ(ours.textFormat(), Qt::RichText) << "unless markup is asked for";
}

TEST_F(PlainTextTest, ToolTipsOfListsAndTreesShowMarkupAsItStands) {
    KeyedList list;
    list.SetColumns({QStringLiteral("Name")});
    list.Items().SetItems({{QStringLiteral("I1"), {name_}, 0}});
    PointAtFirst(list);
    ExpectPlainTip();
    QToolTip::hideText();
    KeyedTree tree;
    tree.Nodes().AddNodes({}, {{QStringLiteral("n"), name_, false, false}});
    PointAtFirst(tree);
    ExpectPlainTip();
}

TEST_F(PlainTextTest, ToolTipsOfLongNamesAreCut) {
    const QString longName(60000, QLatin1Char('x'));
    KeyedList list;
    list.SetColumns({QStringLiteral("Name")});
    list.Items().SetItems({{QStringLiteral("I1"), {longName}, 0}});
    EXPECT_EQ(list.model()->index(0, 0).data(Qt::ToolTipRole).toString().size(), 1001);
    EXPECT_EQ(list.model()->index(0, 0).data().toString().size(), 1000);
    EXPECT_EQ(list.Items().ItemAt(0).cells.front(), longName) << "the item keeps it whole";
    list.Items().SetItems({{QStringLiteral("I1"), {QStringLiteral("a\r\nb\tc")}, 0}});
    EXPECT_EQ(list.model()->index(0, 0).data().toString(), QStringLiteral("a  b c")) << "on one line";
}

} // namespace
} // namespace tessaro::test
