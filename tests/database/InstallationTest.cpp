#include "database/DataExists.h"
#include "database/Database.h"
#include "database/Links.h"
#include "platform/Paths.h"
#include "session/Addresses.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "support/TestSession.h"

#include <chrono>

namespace tessaro::test {
namespace {

/// The application folder as the build made it, read by the program's own start.
class InstallationTest : public SessionTest {
  protected:
    void SetUp() override { StartInstallation(); }
};

TEST_F(InstallationTest, StartsWithItsSettingsAndFolders) {
    EXPECT_TRUE(messages.isEmpty()) << messages.join(' ').toStdString();
    for (const char* key : {"PRODUCT NAME", "PRODUCT VERSION", "DEFAULT DATABASE", "DEFAULT FONT", "ENG_LNG",
                            "CAPTION FOR LOCAL ADDRESS"})
        EXPECT_FALSE(Setting(key).isEmpty()) << key;
    for (const char* key : {"Data Folder", "Common Graphics Folder", "Gallery Folder", "Help Folder", "Tour Folder"})
        EXPECT_TRUE(FolderExists(JoinPath({AppPath, Setting(key)}))) << key;
    for (const char* key : {"APP BG COLOR", "APP SEL BG COLOR", "TABLE_COLOR_1", "LBL MIDDLE COLOR"})
        EXPECT_TRUE(SettingColor(key).isValid()) << key;
}

TEST_F(InstallationTest, EveryLanguageHasEveryMessage) {
    const QString base = Language;
    ASSERT_GE(LanguageFiles.size(), 5);
    for (const LanguageFile& file : std::as_const(LanguageFiles)) {
        Language = file.label;
        ReadTranslateFile();
        for (const char* key :
             {"002", "025", "026", "034", "046", "048", "285", "316", "OK BUTTON", "Yes", "No", "mnu_File"})
            EXPECT_FALSE(LookupString(key).isEmpty()) << file.label.toStdString() << ' ' << key;
    }
    Language = base;
}

TEST_F(InstallationTest, TheDefaultDatabaseOpensQuicklyInEveryLanguage) {
    const QString path = DefaultDatabaseFile();
    ASSERT_FALSE(path.isEmpty());
    for (const LanguageFile& file : std::as_const(LanguageFiles)) {
        Language = file.label;
        const auto start = std::chrono::steady_clock::now();
        ASSERT_TRUE(OpenDatabaseFile(path));
        const auto time = std::chrono::steady_clock::now() - start;
        RecordProperty("open_ms_" + SuffixOfLanguage(Language).toStdString(),
                       static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count()));
        EXPECT_LT(time, std::chrono::seconds(2));
        EXPECT_TRUE(LanguageInDatabase) << file.label.toStdString();
        EXPECT_FALSE(Select("SELECT TOP 1 AreaName FROM Area").isEmpty()) << file.label.toStdString();
    }
}

TEST_F(InstallationTest, TheDefaultDatabaseIsMarkedAsItsDataSays) {
    const QString path = Folder() + "/copy.mdb";
    jet::Database::Copy(DefaultDatabaseFile().toStdString(), path.toStdString());
    const auto connection = CreateTheConnection(path);
    const auto marks = [&] {
        QStringList counts;
        for (const char* table : {"Indicator_Unit_Subpop", "Sector", "Goal", "Institution", "Convention", "TimePeriod",
                                  "Source_en", "CF_en", "Theme_en", "Area_en", "Area_ru"})
            counts << Select(
                          QStringLiteral("SELECT Count(*) FROM [%1] WHERE DataExists = True").arg(QLatin1String(table)),
                          jet::CursorType::Static, connection.get())
                          .Joined();
        return counts;
    };
    const QStringList before = marks();
    const auto start = std::chrono::steady_clock::now();
    MarkDataExists(path);
    const auto time = std::chrono::steady_clock::now() - start;
    RecordProperty("mark_ms", static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count()));
    EXPECT_LT(time, std::chrono::seconds(20));
    EXPECT_EQ(marks(), before);
}

} // namespace
} // namespace tessaro::test
