#include "WizardTest.h"
#include "controls/MessageBox.h"
#include "controls/OfficeHost.h"
#include "support/DisplayKeys.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFileDialog>
#include <QKeySequence>

namespace tessaro {

namespace {

using test::Keys;
using test::KeyWatch;
using test::Q;

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
