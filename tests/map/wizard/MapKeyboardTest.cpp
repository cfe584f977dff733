#include "controls/OfficeHost.h"
#include "map/classes/ClassesPage.h"
#include "map/wizard/MapWizardTest.h"
#include "support/DisplayKeys.h"

#include <QKeySequence>

namespace tessaro::test {

namespace {

/// A map in one language, from the theme to the gallery, with keys alone.
class MapKeyboardTest : public MapWizardTest, public testing::WithParamInterface<const char*> {
  protected:
    void SetUp() override {
        MapWizardTest::SetUp();
        if (!OfficeHost::CanHost()) GTEST_SKIP() << "no X11 display";
        InstallMapTemplates();
        UseLanguage(QLatin1String(GetParam()));
        QApplication::setLayoutDirection(LanguageIsRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    }
    void TearDown() override {
        QApplication::setLayoutDirection(Qt::LeftToRight);
        MapWizardTest::TearDown();
    }

    static bool HasFocus(const char* control) {
        const QWidget* focus = QApplication::focusWidget();
        return focus && focus->objectName() == QLatin1String(control) && focus->isVisible();
    }
    void GoTo(const char* control) {
        keys_.Until(
            control, [control] { return HasFocus(control); }, "Tab");
    }
    void Press(const char* control, const QStringList& keys) {
        GoTo(control);
        keys_.When(
            control, [control] { return HasFocus(control); }, keys);
    }
    /// Next by its access key; where that is no Latin letter, by Tab and the space bar.
    void GoOnFrom(int step) {
        const auto* next = Find<QPushButton>("CmdNext");
        const QString letters = QKeySequence::mnemonic(next->text()).toString().toLower();
        const bool typed = !letters.isEmpty() && letters.back().unicode() < 128;
        if (!typed) GoTo("CmdNext");
        keys_.When("Next", [=, this] { return wizard_->Step() == step && next->isEnabled(); },
                   {typed ? letters : QStringLiteral("space")});
        keys_.When("the next page", [=, this] { return wizard_->Step() > step; }, {});
    }

    Keys keys_;
};

} // namespace

TEST_P(MapKeyboardTest, LeadsToTheGallery) {
    Open();
    wizard_->activateWindow();
    const double full = Map().Extent().Width();
    const KeyWatch watch;
    keys_.When("the window", [this] { return wizard_->isActiveWindow(); }, {});
    keys_.Until(
        "a first key", [&watch] { return watch.HasSeenOne(); }, "shift");
    Press("lv1", {QStringLiteral("Down")});
    keys_.When("an outlined area", [this] { return !Map().Outlined().empty(); }, {});
    Press("Map1", {QStringLiteral("plus")});
    keys_.When("a closer view", [this, full] { return Map().Extent().Width() < full; }, {});
    GoOnFrom(1);
    Press("txtBreakCount", {QStringLiteral("ctrl+a"), QStringLiteral(":3")});
    Press("cmdApply", {QStringLiteral("space")});
    keys_.When("three classes", [this] { return wizard_->Classes().Table().classes.size() == 3; }, {});
    GoTo("grdClassBreaks");
    GoOnFrom(2);
    Press("txtMapTitle", {QStringLiteral("ctrl+a"), QStringLiteral(":By keys")});
    // Of buttons that exclude each other Tab finds the chosen one, and the arrows the others.
    Press("SSRibLayout_0", {LanguageIsRightToLeft() ? QStringLiteral("Left") : QStringLiteral("Right")});
    keys_.When("the next layout", [] { return HasFocus("SSRibLayout_1"); }, {QStringLiteral("space")});
    keys_.When("the layout", [this] { return wizard_->Draft().layout == MapLayout::Vertical; }, {});
    GoOnFrom(3);
    keys_.When("the workbook", [this] { return Find<OfficeHost>("fraExcel")->IsOpen(); }, {});
    GoTo("CmdNext");
    keys_.When("Save", [] { return HasFocus("CmdNext"); }, {QStringLiteral("space")});
    EXPECT_TRUE(QTest::qWaitFor([this] { return !saved_.isEmpty() || !keys_.Stuck().isEmpty(); }, 240000));
    keys_.Stop();
    EXPECT_EQ(keys_.Stuck().toStdString(), "");
    ASSERT_EQ(saved_.size(), 1);
    EXPECT_EQ(saved_.front().FileTitle, QStringLiteral("By keys"));
}

INSTANTIATE_TEST_SUITE_P(All, MapKeyboardTest, testing::Values("en", "fr", "ar"),
                         [](const auto& language) { return std::string(language.param); });

} // namespace tessaro::test
