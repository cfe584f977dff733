#include "Walker.h"
#include "session/Session.h"
#include "shell/frmMain.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

#include <array>
#include <random>

namespace tessaro {

namespace {

/// Commands that lead out of the program or into one of its own processes, or end it.
bool IsLeftOut(const QString& name) {
    static const std::array kOut = {"mnuFileExit", "mnuFilePrint",    "mnuDBSummReport", "mnu_Help",
                                    "picGo",       "mnuToolsGallery", "mnu_Gallery",     "mnuFileSaveAs",
                                    "mnuFileOpen", "lblLink",         "Toolbar1_print",  "cmdPrint"};
    return std::ranges::any_of(kOut, [&](const char* part) { return name.contains(QLatin1String(part)); });
}

constexpr std::array kKeys = {Qt::Key_Down,  Qt::Key_Up,   Qt::Key_Left,     Qt::Key_Right, Qt::Key_Return,
                              Qt::Key_Space, Qt::Key_Tab,  Qt::Key_PageDown, Qt::Key_End,   Qt::Key_Home,
                              Qt::Key_F3,    Qt::Key_Plus, Qt::Key_Delete,   Qt::Key_Escape};
constexpr std::array kTexts = {"a", "19", "'", "\"", "%", "[", "*", "<b>", "\n", "é", "ف", "  "};

/// One random choice of the monkey: what it hits lies on the window that is in front.
class Hand final {
  public:
    explicit Hand(unsigned seed) : random_(seed) {}

    void Act(QWidget& window) {
        switch (Below(6)) {
        case 0:
        case 1:
            return PressButton(window);
        case 2:
            return ClickSomewhere(window);
        case 3:
            return TypeKey(window);
        case 4:
            return TypeText(window);
        default:
            return TriggerAction(window);
        }
    }
    [[nodiscard]] std::size_t Below(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
    }

  private:
    template <class Widget> Widget* Any(const QWidget& window) {
        QList<Widget*> usable;
        for (Widget* widget : window.findChildren<Widget*>())
            if (widget->isVisible() && widget->isEnabled() && !IsLeftOut(widget->objectName())) usable << widget;
        return usable.isEmpty() ? nullptr
                                : usable.at(static_cast<qsizetype>(Below(static_cast<std::size_t>(usable.size()))));
    }
    void PressButton(const QWidget& window) {
        if (auto* button = Any<QAbstractButton>(window)) button->click();
    }
    void ClickSomewhere(const QWidget& window) {
        auto* widget = Any<QWidget>(window);
        if (!widget || widget->width() < 2 || widget->height() < 2) return;
        const QPoint place(static_cast<int>(Below(static_cast<std::size_t>(widget->width()))),
                           static_cast<int>(Below(static_cast<std::size_t>(widget->height()))));
        Below(4) == 0
            ? QTest::mouseDClick(widget, Qt::LeftButton, {}, place)
            : QTest::mouseClick(widget, Qt::LeftButton, Below(4) == 0 ? Qt::ShiftModifier : Qt::NoModifier, place);
    }
    void TypeKey(QWidget& window) {
        QWidget* target = QApplication::focusWidget() ? QApplication::focusWidget() : &window;
        const auto key = kKeys.at(Below(kKeys.size()));
        QTest::keyClick(target, key, Below(5) == 0 ? Qt::ControlModifier : Qt::NoModifier);
    }
    void TypeText(const QWidget& window) {
        if (auto* field = Any<QLineEdit>(window)) Type(*field, QString::fromUtf8(kTexts.at(Below(kTexts.size()))));
    }
    /// As a keyboard of any language sends it.
    static void Type(QWidget& field, const QString& text) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, text);
        QApplication::sendEvent(&field, &press);
    }
    void TriggerAction(const QWidget& window) {
        QList<QAction*> usable;
        for (QAction* action : window.findChildren<QAction*>())
            if (action->isEnabled() && action->isVisible() && !action->menu() && !IsLeftOut(action->objectName()))
                usable << action;
        if (!usable.isEmpty())
            usable.at(static_cast<qsizetype>(Below(static_cast<std::size_t>(usable.size()))))->trigger();
    }

    std::mt19937 random_;
};

} // namespace

void Walker::NoteStage() {
    static constexpr std::array kStages = {"home", "frmIndicators", "frmTime", "frmAreas", "frmData"};
    if (CurrentStage >= -1 && CurrentStage < 4)
        Reached(QLatin1String(kStages.at(static_cast<std::size_t>(CurrentStage + 1))));
}

void Walker::Monkey(unsigned seed, int seconds) {
    Hand hand(seed);
    QElapsedTimer clock;
    clock.start();
    qint64 acts = 0;
    // It is led through the stages now and then: by chance alone the guard of the data view is seldom passed.
    while (clock.elapsed() < seconds * 1000LL && frame_.isVisible()) {
        if (acts % 150 == 0) Funnel();
        heartbeat_.Doing(QStringLiteral("act %1").arg(acts));
        QWidget* popup = QApplication::activePopupWidget();
        if (popup)
            QTest::keyClick(popup, hand.Below(2) == 0 ? Qt::Key_Escape : Qt::Key_Down);
        else
            hand.Act(frame_);
        QTest::qWait(1);
        NoteStage();
        ++acts;
    }
    QTextStream(stdout) << "acts " << acts << '\n';
}

} // namespace tessaro
