#include "controls/WizardFrame.h"

#include "controls/ArrowPointer.h"
#include "support/TestSession.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>

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
    EXPECT_TRUE(caption.contains(QLatin1Char('3')) && !caption.contains(QLatin1Char('2'))) << caption.toStdString();
    EXPECT_EQ(wizard.Step(), 2);
    EXPECT_EQ(wizard.Marked(), 2);
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
