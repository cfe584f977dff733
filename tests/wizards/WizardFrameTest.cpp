#include "wizards/WizardFrame.h"

#include "controls/ArrowPointer.h"
#include "support/TestSession.h"

#include <QGuiApplication>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTest>

namespace tessaro {

namespace {

/// Three steps, of which the last is done in a window of its own.
class Wizard final : public WizardFrame {
  public:
    Wizard() {
        SetTitle(QStringLiteral("Test"));
        AddStep(new QWidget, QStringLiteral("One"));
        AddStep(new QWidget, QStringLiteral("Two"));
        AddStep(nullptr, QStringLiteral("Three"));
        Begin();
    }
    /// Number of the name above the pages that is marked; 0 unless it is just one.
    [[nodiscard]] int Marked() const {
        int marked = 0;
        const auto labels = findChild<QWidget*>(QStringLiteral("picSteps"))->findChildren<QLabel*>();
        for (int n = 0; n < labels.size(); ++n)
            if (labels.at(n)->font().bold()) marked = marked == 0 ? n + 1 : -1;
        return marked;
    }
    void Press(const char* button) const { findChild<QPushButton*>(QLatin1String(button))->click(); }

    std::function<bool()> last = [] { return true; };

  protected:
    bool GoForward(int step) override { return step < 3 || last(); }
};

/// Two pages, the work on the last one; it writes down what it is asked for.
class Recorder final : public WizardFrame {
  public:
    explicit Recorder(test::FakeFrame& frame) : frame_(frame) {
        SetTitle(QStringLiteral("Test"));
        AddStep(new QWidget, QStringLiteral("One"));
        AddStep(new QWidget, QStringLiteral("Two"));
        auto* button = new QPushButton(QStringLiteral("Log"));
        button->setObjectName(QStringLiteral("cmdLog"));
        AddButton(button);
        Begin();
    }
    void Press(const char* button) const { findChild<QPushButton*>(QLatin1String(button))->click(); }

    QStringList calls;
    bool finishes = false;

  protected:
    bool GoForward(int /*step*/) override { return true; }
    void GoBack(int left, int entered) override { calls << QStringLiteral("back %1 %2").arg(left).arg(entered); }
    void PageShown(int step) override { calls << QStringLiteral("page %1").arg(step); }
    void Start() override {
        calls << QStringLiteral("start %1").arg(frame_.busy);
        Press("CmdNext"); // closed meanwhile
    }
    bool Finish() override {
        calls << QStringLiteral("finish %1").arg(frame_.busy);
        return finishes;
    }

  private:
    test::FakeFrame& frame_;
};

class WizardFrameTest : public test::SessionTest {
  protected:
    void SetUp() override { StartSample(); }
};

} // namespace

TEST_F(WizardFrameTest, AStepInAWindowOfItsOwnIsMarkedWhileItLasts) {
    Wizard wizard;
    wizard.Press("CmdNext");
    EXPECT_EQ(wizard.Marked(), 2);
    int during = 0;
    QString caption;
    wizard.last = [&] {
        during = wizard.Marked();
        caption = wizard.windowTitle();
        return false;
    };
    wizard.Press("CmdNext");
    EXPECT_EQ(during, 3);
    EXPECT_TRUE(caption.contains(QLocale().toString(3)) && !caption.contains(QLocale().toString(2)))
        << caption.toStdString();
    EXPECT_EQ(wizard.Step(), 2);
    EXPECT_EQ(wizard.Marked(), 2);
}

TEST_F(WizardFrameTest, AWizardHearsOfItsStartItsPagesAndItsEnd) {
    Recorder wizard(frame);
    EXPECT_EQ(wizard.calls, QStringList{QStringLiteral("page 1")});
    wizard.show();
    EXPECT_EQ(wizard.calls.size(), 1); // not before it has been painted
    ASSERT_TRUE(QTest::qWaitFor([&] { return wizard.calls.size() > 1; }, 5000));
    wizard.repaint();
    QTest::qWait(10);
    wizard.Press("CmdFinish"); // goes to the last page, no further
    wizard.Press("CmdBack");
    wizard.Press("CmdNext");
    wizard.Press("CmdFinish");
    EXPECT_EQ(wizard.Step(), 2);
    wizard.finishes = true;
    wizard.Press("CmdFinish");
    EXPECT_EQ(wizard.Step(), WizardFrame::kDoneStep);
    EXPECT_EQ(wizard.result(), QDialog::Accepted);
    EXPECT_EQ(wizard.calls, (QStringList{QStringLiteral("page 1"), QStringLiteral("start 1"), QStringLiteral("page 2"),
                                         QStringLiteral("back 2 1"), QStringLiteral("page 1"), QStringLiteral("page 2"),
                                         QStringLiteral("finish 1"), QStringLiteral("finish 1")}));
    EXPECT_EQ(frame.busy, 0);
}

TEST_F(WizardFrameTest, OwnButtonsStandWhereTheBottomRowBegins) {
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        Recorder wizard(frame);
        wizard.setLayoutDirection(direction);
        wizard.show();
        const auto left = [&](const char* name) {
            return wizard.findChild<QWidget*>(QLatin1String(name))->mapTo(&wizard, QPoint()).x();
        };
        const bool mirrored = direction == Qt::RightToLeft;
        EXPECT_EQ(left("cmdLog") < left("StatusBar1"), !mirrored);
        EXPECT_EQ(left("StatusBar1") < left("CmdCancel"), !mirrored);
        EXPECT_LT(wizard.findChild<QWidget*>(QStringLiteral("cmdLog"))->width(), 200);
    }
}

TEST_F(WizardFrameTest, OverADialogInTheMidstOfWorkThePointerIsAnArrow) {
    const auto shape = [] {
        const QCursor* cursor = QGuiApplication::overrideCursor();
        return cursor ? cursor->shape() : Qt::BlankCursor; // blank: none is set
    };
    {
        const ArrowPointer arrow;
        EXPECT_EQ(shape(), Qt::BlankCursor);
    }
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    {
        const ArrowPointer arrow;
        EXPECT_EQ(shape(), Qt::ArrowCursor);
    }
    EXPECT_EQ(shape(), Qt::WaitCursor);
    QGuiApplication::restoreOverrideCursor();
    EXPECT_EQ(shape(), Qt::BlankCursor);
}

} // namespace tessaro
