#include "WizardTest.h"
#include "controls/MessageBox.h"
#include "controls/OfficeHost.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QKeySequence>
#include <QProcess>
#include <QScreen>
#include <QTimer>

#include <deque>
#include <functional>

namespace tessaro {

namespace {

using test::Q;

constexpr int kTick = 20;        ///< milliseconds between looks
constexpr int kPatience = 60000; ///< milliseconds until what doesn't come is given up
constexpr int kMostKeys = 80;    ///< on the way to a control

/// Presses keys on the display one after the other, each when the one before has had its effect. Works on while forms
/// run event loops of their own.
class Keys final {
  public:
    using Condition = std::function<bool()>;

    Keys() {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
        timer_.start(kTick);
    }
    // A key whose release is lost stays down on the display, and the next program's press of it is none.
    ~Keys() {
        timer_.stop();
        pressing_.waitForFinished();
    }
    Keys(const Keys&) = delete;
    Keys& operator=(const Keys&) = delete;

    /// Waits for a condition, then presses keys ("Return", "alt+n", or with a leading ":" a text to type).
    void When(const char* what, Condition condition, const QStringList& keys) {
        steps_.push_back({Q(what), std::move(condition), keys, {}});
    }
    /// Presses a key again and again until a condition holds.
    void Until(const char* what, Condition condition, const char* key) {
        steps_.push_back({Q(what), std::move(condition), {}, Q(key)});
    }
    [[nodiscard]] bool AreDone() const {
        return steps_.empty() && queue_.empty() && pressing_.state() == QProcess::NotRunning;
    }
    /// Where the walk has got stuck; empty while it goes on.
    [[nodiscard]] QString Stuck() const { return stuck_; }
    void Stop() { timer_.stop(); }

  private:
    struct Step {
        QString what;
        Condition condition;
        QStringList keys;
        QString repeated;
    };

    void Look() {
        if (pressing_.state() != QProcess::NotRunning) return;
        if (!stuck_.isEmpty())
            if (QWidget* dialog = QApplication::activeModalWidget()) dialog->close();
        if (!queue_.empty()) return Press(std::exchange(queue_.front(), {}), true);
        if (steps_.empty() || !stuck_.isEmpty()) return;
        Step& step = steps_.front();
        if (step.condition()) {
            for (const QString& key : step.keys)
                queue_.push_back(key);
            steps_.pop_front();
            pressed_ = 0;
            waiting_.restart();
        } else if (!step.repeated.isEmpty() && pressed_ < kMostKeys) {
            if (pressed_ > 0 && QApplication::focusWidget() == before_ && waiting_.elapsed() < 1000) return;
            before_ = QApplication::focusWidget();
            ++pressed_;
            waiting_.restart();
            Press(step.repeated, false);
        } else if (!waiting_.isValid() || waiting_.elapsed() > kPatience) {
            if (waiting_.isValid()) GiveUp(step.what);
            waiting_.restart();
        }
    }
    void GiveUp(const QString& what) {
        stuck_ = what;
        if (const QString folder = qEnvironmentVariable("TESSARO_PICTURES"); !folder.isEmpty())
            QGuiApplication::primaryScreen()->grabWindow(0).save(folder + Q("/stuck.png"));
    }
    void Press(const QString& key, bool fromQueue) {
        if (fromQueue) queue_.pop_front();
        if (key.startsWith(QLatin1Char(':')))
            pressing_.start(QStringLiteral("xdotool"), {Q("type"), Q("--delay"), Q("15"), key.mid(1)});
        else
            pressing_.start(QStringLiteral("xdotool"), {Q("key"), key});
    }

    QTimer timer_;
    QProcess pressing_;
    std::deque<Step> steps_;
    std::deque<QString> queue_;
    QElapsedTimer waiting_;
    QWidget* before_ = nullptr;
    int pressed_ = 0;
    QString stuck_;
};

/// Whether a key has come to any window of the program.
class KeyWatch final : public QObject {
  public:
    KeyWatch() { qApp->installEventFilter(this); }
    [[nodiscard]] bool HasSeenOne() const { return seen_; }
    bool eventFilter(QObject* watched, QEvent* event) override {
        seen_ = seen_ || event->type() == QEvent::KeyPress;
        return QObject::eventFilter(watched, event);
    }

  private:
    bool seen_ = false;
};

struct Walk {
    CalcType type;
    const char* language;
};

/// One calculation in one language, from the first page to the database, with keys alone.
class KeyboardTest : public test::WizardTest, public testing::WithParamInterface<Walk> {
  protected:
    void SetUp() override {
        WizardTest::SetUp();
        if (!OfficeHost::CanHost()) GTEST_SKIP() << "no X11 display";
        // The sub-total has no page for names: it takes sector and class from the indicator's place among the classes.
        ASSERT_TRUE(Execute(Q("Update _Data Set IndicatorGId = '-LIT' Where [Indicator] = 'Literacy'")));
        UseLanguage(Q(GetParam().language));
        QApplication::setLayoutDirection(LanguageIsRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
        SetMessageAnswerer(AskWithMessageBox);
    }
    void TearDown() override {
        QApplication::setLayoutDirection(Qt::LeftToRight);
        WizardTest::TearDown();
    }

    [[nodiscard]] Keys::Condition At(CalculationStep step, const char* control = nullptr) {
        return [this, step, control] {
            const QWidget* focus = QApplication::focusWidget();
            return form_->CurrentStep() == step && focus && focus->window() == form_ && form_->isActiveWindow() &&
                   (!control || focus->objectName() == QLatin1String(control));
        };
    }
    static bool HasFocus(const char* control) {
        const QWidget* focus = QApplication::focusWidget();
        return focus && focus->objectName() == QLatin1String(control) && focus->isVisible();
    }
    void GoTo(const char* control) {
        keys_->Until(
            control, [control] { return HasFocus(control); }, "Tab");
    }
    /// Next by its access key, or by Tab and the space bar. A letter that the display's keyboard lacks can't be
    /// pressed.
    void GoOn() {
        const auto* next = form_->findChild<QPushButton*>(Q("cmdNavigators_2"));
        const QString letters = QKeySequence::mnemonic(next->text()).toString().toLower();
        if (!letters.isEmpty() && letters.back().unicode() < 128)
            return keys_->When("an access key", [next] { return next->isEnabled(); }, {letters});
        GoTo("cmdNavigators_2");
        keys_->When("Next", [next] { return next->isEnabled(); }, {Q("space")});
    }

    void FillFirstPage(CalcType type) {
        if (type == CalcType::Formula) {
            keys_->When("the formula", At(SelectionStep, "txtFormula"), {Q(":popul")});
            keys_->When("names", [this] { return NamesAreOffered(); }, {Q("Return"), Q(": * 2")});
            return GoOn();
        }
        keys_->When("the list", At(SelectionStep, "lstAvailable_Step1"), {});
        const std::size_t wanted = type == CalcType::CompositeIndex ? 2 : 1;
        for (std::size_t chosen = 1; chosen <= wanted; ++chosen)
            keys_->Until(
                "what is chosen", [this, chosen] { return form_->Draft().items.size() >= chosen; }, "Return");
        GoOn();
    }
    [[nodiscard]] bool NamesAreOffered() const {
        const QWidget* names = QApplication::activePopupWidget();
        return names && names->isVisible();
    }

    void FillSecondPage(CalcType type) {
        switch (type) {
        case CalcType::PerCent:
            keys_->When("denominators", At(SecondStep, "lstAvailable_Step1"), {Q("End"), Q("Return")});
            keys_->When("one chosen", [this] { return form_->Draft().denominators.size() == 1; }, {});
            break;
        case CalcType::CompositeIndex:
            keys_->When("weights", At(SecondStep, "grdW"), {Q(":30"), Q("Return"), Q(":70"), Q("Return")});
            break;
        case CalcType::TransformUnit:
            keys_->When("unit", At(SecondStep, "rtbTUnit"), {Q(":Thousands")});
            GoTo("grdUnit");
            keys_->When("factors", [] { return HasFocus("grdUnit"); }, {Q(":1000"), Q("Return")});
            break;
        case CalcType::Subtotal:
            keys_->When("levels", At(SecondStep, "chkLevel_0"), {Q("space"), Q("Tab"), Q("space")});
            keys_->When("two levels", [this] { return form_->Draft().levels[0] && form_->Draft().levels[1]; }, {});
            break;
        default:
            return;
        }
        GoOn();
    }

    void FillNames(CalcType type) {
        if (type == CalcType::Subtotal) return;
        keys_->When("names", At(SaveAsStep), {Q("ctrl+a"), Q(":Result")});
        for (const char* box : {"cmbSector", "cmbClass"}) {
            GoTo(box);
            keys_->When(box, [box] { return HasFocus(box); }, {Q("ctrl+a"), Q(":Named")});
        }
        GoOn();
    }

    void SeeWorkbooks() {
        const auto isShown = [this] {
            const auto* host = form_->findChild<OfficeHost*>(Q("fraExcel"));
            return host && host->IsOpen();
        };
        keys_->When("the log", [=, this] { return At(LogStep)() && isShown(); }, {});
        GoOn();
        keys_->When("the result", [=, this] { return At(DataEntryStep, "cmdNavigators_3")() && isShown(); },
                    {Q("Return")});
        const QString target = Folder() + Q("/by keys.mdb");
        keys_->When(
            "the file dialog",
            [] { return qobject_cast<QFileDialog*>(QApplication::activeModalWidget()) && HasFocus("fileNameEdit"); },
            {Q("ctrl+a"), Q(":") + target, Q("Return")});
        keys_->When("the question",
                    [this] {
                        const QWidget* box = QApplication::activeModalWidget();
                        return box && box != form_ && !qobject_cast<const QFileDialog*>(box) && box->isActiveWindow() &&
                               !form_->BuiltFile().isEmpty();
                    },
                    {Q("Return")});
    }

    frmCalculates* form_ = nullptr;
    Keys* keys_ = nullptr;
};

/// One language for each calculation; all with TESSARO_ALL_WALKS.
std::vector<Walk> Walks() {
    const std::vector<const char*> languages{"en", "fr", "ar"};
    std::vector<Walk> walks;
    for (int type = 0; type < kCalculations; ++type)
        for (std::size_t i = 0; i < languages.size(); ++i)
            if (qEnvironmentVariableIsSet("TESSARO_ALL_WALKS") ||
                i == static_cast<std::size_t>(type) % languages.size())
                walks.push_back({static_cast<CalcType>(type), languages[i]});
    return walks;
}

} // namespace

TEST_P(KeyboardTest, LeadsToTheDatabase) {
    const CalcType type = GetParam().type;
    frmCalculates form(type);
    Keys keys;
    form_ = &form;
    keys_ = &keys;
    Open(form);
    form.activateWindow();
    // A window that has just come may miss its first keys.
    const KeyWatch watch;
    keys.When("the window", [&form] { return form.isActiveWindow(); }, {});
    keys.Until(
        "a first key", [&watch] { return watch.HasSeenOne(); }, "shift");
    FillFirstPage(type);
    FillSecondPage(type);
    FillNames(type);
    SeeWorkbooks();
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return (keys.AreDone() && !form.isVisible()) || !keys.Stuck().isEmpty(); }, 240000));
    keys.Stop();
    EXPECT_EQ(keys.Stuck().toStdString(), "");
    EXPECT_FALSE(form.isVisible());
    EXPECT_FALSE(form.BuiltFile().isEmpty());
    EXPECT_TRUE(form.OpensResult());
}

INSTANTIATE_TEST_SUITE_P(All, KeyboardTest, testing::ValuesIn(Walks()), [](const auto& walk) {
    return std::string(NamesOf(walk.param.type).titleKey) + "_" + walk.param.language;
});

} // namespace tessaro
