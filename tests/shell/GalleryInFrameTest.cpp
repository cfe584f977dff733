#include "gallery/frmGALMain.h"
#include "platform/ShellOpen.h"
#include "session/Session.h"
#include "shell/FrameTest.h"

#include <QAbstractButton>
#include <QAction>
#include <QDir>
#include <QUrl>

namespace tessaro {

namespace {

/// The gallery within the frame: the ways in and out.
class GalleryInFrameTest : public test::FrameTest {
  protected:
    void Choose(const char* entry) { window->findChild<QAction*>(QLatin1String(entry))->trigger(); }
    [[nodiscard]] bool Offers(const char* entry) const {
        return window->findChild<QAction*>(QLatin1String(entry))->isEnabled();
    }
    [[nodiscard]] bool GalleryIsShown() const { return Screen() == QLatin1String("frmGALMain"); }
};

} // namespace

TEST_F(GalleryInFrameTest, OpensFromTheHomePageWithoutADatabaseAndReturnsThere) {
    ASSERT_TRUE(Start());
    Click(QStringLiteral("lbl_FP_GALL_1"));
    ASSERT_TRUE(GalleryIsShown());
    EXPECT_FALSE(Offers("mnuFilePrint"));
    Click(QStringLiteral("Toolbar1_0")); // back
    EXPECT_EQ(Screen(), QStringLiteral("frmSplash"));
    EXPECT_FALSE(Find(QStringLiteral("Toolbar1_0"))->isEnabled());
    Choose("mnu_Gallery_Options_0");
    ASSERT_TRUE(GalleryIsShown());
    Click(QStringLiteral("Toolbar1_4")); // home
    EXPECT_EQ(Screen(), QStringLiteral("frmSplash"));
}

TEST_F(GalleryInFrameTest, AStageWaitsBelowIt) {
    ASSERT_TRUE(StartInStages());
    const QStringList visited = VisitedStages;
    Choose("mnu_Gallery_Options_0");
    ASSERT_TRUE(GalleryIsShown());
    EXPECT_EQ(CurrentStage, 0);
    EXPECT_EQ(VisitedStages, visited); // it is no stage
    EXPECT_FALSE(Offers("mnuViewFilters"));
    Choose("mnu_Gallery_Options_0"); // twice is once
    EXPECT_EQ(window->findChildren<frmGALMain*>().size(), 1);
    Click(QStringLiteral("picBannerButtons_0")); // the stage that was in front
    EXPECT_EQ(Screen(), QStringLiteral("frmIndicators"));
    Choose("mnu_Gallery_Options_0");
    Click(QStringLiteral("Toolbar1_0"));
    EXPECT_EQ(Screen(), QStringLiteral("frmIndicators"));
    Choose("mnu_Gallery_Options_0");
    Click(QStringLiteral("picBannerButtons_1"));
    EXPECT_EQ(Screen(), QStringLiteral("frmTime"));
}

TEST_F(GalleryInFrameTest, ADatabaseThatIsOpenedTakesItDown) {
    ASSERT_TRUE(StartInStages());
    Choose("mnu_Gallery_Options_0");
    window->Databases().LoadNewMDB(SampleDatabase());
    EXPECT_EQ(Screen(), QStringLiteral("frmIndicators"));
}

TEST_F(GalleryInFrameTest, StaysThroughAChangeOfLanguageWithoutADatabase) {
    ASSERT_TRUE(Start());
    Choose("mnu_Gallery_Options_0");
    window->Settings().ChangeLanguage(QStringLiteral("Français [fr]"));
    EXPECT_TRUE(GalleryIsShown());
    window->close();
}

TEST_F(GalleryInFrameTest, StaysThroughAChangeOfLanguageOverAStage) {
    ASSERT_TRUE(StartInStages());
    Choose("mnu_Gallery_Options_0");
    window->Settings().ChangeLanguage(QStringLiteral("Français [fr]"));
    ASSERT_TRUE(GalleryIsShown());
    Click(QStringLiteral("Toolbar1_0"));
    EXPECT_NE(Screen(), QLatin1String("frmGALMain"));
    window->close();
}

TEST_F(GalleryInFrameTest, TheImagesOpenOnTheDesktop) {
    ASSERT_TRUE(Start());
    QList<QUrl> opened;
    SetShellOpener([&](const QUrl& url) {
        opened << url;
        return true;
    });
    QDir().mkpath(Application() + QStringLiteral("/Graphics"));
    Choose("mnu_Gallery_Options_2");
    Click(QStringLiteral("lbl_FP_GALL_2"));
    SetShellOpener({});
    ASSERT_EQ(opened.size(), 2);
    EXPECT_TRUE(QDir(opened.front().toLocalFile()).exists());
    EXPECT_EQ(Screen(), QStringLiteral("frmSplash"));
}

} // namespace tessaro
