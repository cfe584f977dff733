#include "session/Settings.h"

#include "platform/Cipher.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/ProductSettings.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/SettingsFile.h"
#include "session/Startup.h"
#include "session/UserPreferences.h"
#include "session/WritableTree.h"
#include "support/Locales.h"
#include "support/SampleApplication.h"
#include "support/TestSession.h"

#include <QDir>
#include <QFile>
#include <QLocale>

namespace tessaro::test {
namespace {

class SettingsTest : public SessionTest {
  protected:
    void SetUp() override {
        AppPath = JoinPath({Folder(), "Application"});
        MakeSampleApplication(AppPath);
    }
    [[nodiscard]] static QString TsIni() { return JoinPath({AppPath, "TS.ini"}); }
    [[nodiscard]] static QString PrefIni() { return JoinPath({CacheFolder, "Pref.ini"}); }
    /// Rewrites Pref.ini, plain, with other values.
    static void ChangePreferences(const QList<std::pair<QString, QString>>& values) {
        auto file = ReadSettingsFile(PrefIni(), "USER PREFERENCES");
        ASSERT_TRUE(file.has_value());
        for (const auto& [key, value] : values)
            file->ini.Write("USER PREFERENCES", key, value);
        ASSERT_TRUE(ReplaceFile(PrefIni(), file->ini.Contents()));
    }
    [[nodiscard]] static QString Stored(const QString& key) {
        const auto file = ReadSettingsFile(PrefIni(), "USER PREFERENCES");
        return file ? file->ini.Read("USER PREFERENCES", key) : QStringLiteral("unreadable");
    }
};

TEST_F(SettingsTest, WithoutTsIniTheProgramEndsWithMessage002) {
    QFile::remove(TsIni());
    EXPECT_EQ(Initialize(), StartResult::EndProgram);
    EXPECT_EQ(messages, QStringList{"002"});
}

TEST_F(SettingsTest, ADamagedTsIniEndsTheProgramAndStaysAsItIs) {
    for (const QByteArray& damaged :
         {QByteArray(), QByteArray(4096, '\x81'), QByteArray("[DECRYPTED]\nhello"), QByteArray("12345678")}) {
        messages.clear();
        ASSERT_TRUE(ReplaceFile(TsIni(), damaged));
        EXPECT_EQ(Initialize(), StartResult::EndProgram);
        EXPECT_EQ(messages, QStringList{"002"});
        EXPECT_EQ(ReadWholeFile(TsIni()), damaged);
    }
}

TEST_F(SettingsTest, APlainTsIniIsReadAndLeftEnciphered) {
    ASSERT_TRUE(ReadInfoINIFile());
    EXPECT_TRUE(IsFileEnciphered(TsIni()));
    ForgetSettings();
    const auto enciphered = ReadWholeFile(TsIni());
    ASSERT_TRUE(ReadInfoINIFile());
    EXPECT_EQ(Setting("product name"), QString("Sample"));
    EXPECT_EQ(ReadWholeFile(TsIni()), enciphered); // only a plain one is written
}

TEST_F(SettingsTest, ReadsEachFormOfValue) {
    ASSERT_TRUE(ReadInfoINIFile());
    EXPECT_TRUE(SettingFlag("USE DEFAULT FONT SIZE"));
    EXPECT_FALSE(SettingFlag("SHOW ON STARTUP OPTION")); // missing
    EXPECT_EQ(SettingNumber("DEFAULT FONT SIZE"), 10);
    EXPECT_EQ(SettingColor("APP SEL BG COLOR"), QColor(10, 90, 160));
    EXPECT_FALSE(SettingColor("DEFAULT FONT").isValid());
    EXPECT_FALSE(SettingColor("no such key").isValid());
    EXPECT_TRUE(SettingOption("INDICATOR_SECTOR").offered);
    EXPECT_EQ(SettingOption("INDICATOR_SECTOR").name, QString("SECTORS"));
    EXPECT_FALSE(SettingOption("INDICATOR_INSTITUTIONS").offered);
    EXPECT_EQ(SettingOption("no such key").name, QString());
}

TEST_F(SettingsTest, MakesTheWritableTreeAndSeedsItOnce) {
    ASSERT_TRUE(ReadInfoINIFile());
    EXPECT_EQ(CacheFolder, JoinPath({Folder(), "Tessaro/TessaroCache/Sample 1.0"}));
    for (const QString& folder : {TempFolder, DataCacheFolder, FavoritesFolder})
        EXPECT_TRUE(FolderExists(folder)) << folder.toStdString();
    for (const char* name : {"Pref.ini", "UserSelections.mdb", "InfoSel.mdb"})
        EXPECT_TRUE(FileExists(JoinPath({CacheFolder, name}))) << name;
    ASSERT_TRUE(ReplaceFile(PrefIni(), "mine"));
    LocalizeApp();
    EXPECT_EQ(ReadWholeFile(PrefIni()), QByteArray("mine"));
}

TEST_F(SettingsTest, ADamagedSelectionFileIsPutAside) {
    ASSERT_TRUE(ReadInfoINIFile());
    const QString path = JoinPath({CacheFolder, "UserSelections.mdb"});
    const auto good = ReadWholeFile(path);
    ASSERT_TRUE(ReplaceFile(path, QByteArray(5000, 'z')));
    LocalizeApp();
    EXPECT_EQ(ReadWholeFile(path), good);
    EXPECT_EQ(ReadWholeFile(path + ".damaged"), QByteArray(5000, 'z'));
}

TEST_F(SettingsTest, ASelectionFileOfAnEarlierVersionIsWidenedAndKeepsItsRows) {
    ASSERT_TRUE(ReadInfoINIFile());
    const QString path = JoinPath({CacheFolder, "UserSelections.mdb"});
    const auto good = ReadWholeFile(path);
    const std::string longId(255, 'i');
    const auto rows = [&](const char* sql) {
        return Select(QLatin1String(sql), jet::CursorType::Static, CreateTheConnection(path).get())
            .rows()
            .GetString(-1, "|", ";");
    };
    {
        const auto file = CreateTheConnection(path);
        for (const char* sql :
             {"DROP TABLE _SelIUSNId",
              "CREATE TABLE _SelIUSNId (IUSNId LONG, UnitGId TEXT(60), SourceNId LONG, Deleted "
              "YESNO, RowNId COUNTER PRIMARY KEY, Gone TEXT(5))",
              "INSERT INTO _SelIUSNId (IUSNId, UnitGId, SourceNId, Deleted, RowNId, Gone) VALUES (7, 'It''s', 2, True, "
              "41, 'x')",
              "INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) VALUES (3, '2000')"})
            ASSERT_TRUE(Execute(QLatin1String(sql), file.get())) << sql;
    }
    LocalizeApp();
    EXPECT_EQ(rows("SELECT IUSNId, UnitGId, SourceNId, Deleted, RowNId FROM _SelIUSNId"), "7|It's|2|-1|41;");
    EXPECT_EQ(rows("SELECT TimePeriodNId, TimePeriod FROM _SelTimePeriod"), "3|2000;");
    EXPECT_TRUE(Execute(
        QStringLiteral("INSERT INTO _SelIUSNId (IUSNId, UnitGId) VALUES (8, '%1')").arg(QString::fromStdString(longId)),
        CreateTheConnection(path).get()));
    EXPECT_EQ(rows("SELECT Max(RowNId), Count(*) FROM _SelIUSNId"), "42|2;");
    EXPECT_EQ(QDir(CacheFolder).entryList({"UserSelections.mdb?*"}), QStringList());
    // A current one is left alone.
    const auto made = ReadWholeFile(path);
    LocalizeApp();
    EXPECT_EQ(ReadWholeFile(path), made);
    EXPECT_NE(made, good);
}

TEST_F(SettingsTest, PreferencesSurviveARunAndRestEnciphered) {
    ASSERT_EQ(Initialize(), StartResult::GoOn);
    EXPECT_TRUE(IsFileEnciphered(PrefIni()));
    EXPECT_EQ(Language, QString("English [en]"));
    EXPECT_TRUE(ViewGridLines);
    Language = QString::fromUtf8("Français [fr]");
    ViewGridLines = false;
    GlobalColor = 255;
    IndicatorViews[0].wanted = false;
    IndicatorViews[3].wanted = true;
    DataExistsMode = 2;
    CurrentDatabase = "/somewhere/x.mdb";
    ASSERT_TRUE(SavePrefINIFile());
    EXPECT_TRUE(IsFileEnciphered(PrefIni()));
    EXPECT_EQ(Stored("INDICATOR_SECTOR"), QString("True")); // sectors can't be switched off
    EXPECT_EQ(Stored("DEFAULT LANGUAGE"), QString("[en]"));
    EXPECT_EQ(Stored("LAST MDB FILE USED"), QString("/somewhere/x.mdb"));

    ResetSession();
    AppPath = JoinPath({Folder(), "Application"});
    ASSERT_EQ(Initialize(), StartResult::GoOn);
    EXPECT_EQ(Language, QString::fromUtf8("Français [fr]"));
    EXPECT_FALSE(ViewGridLines);
    EXPECT_EQ(GlobalColor, 255);
    EXPECT_TRUE(IndicatorViews[3].wanted);
    EXPECT_EQ(IndicatorViews[3].key, QString("INDICATOR_THEMES"));
    EXPECT_EQ(DataExistsCriterion, QString("DataExists = False "));
    EXPECT_EQ(CurrentDatabase, QString()); // that file is gone
    EXPECT_EQ(GlobalLocalFilter, 2);
}

TEST_F(SettingsTest, ResolvesWhatStandsForSomethingElse) {
    ASSERT_EQ(Initialize(), StartResult::GoOn);
    const QString database = JoinPath({AppPath, "Data/Sample.mdb"});
    QDir().mkpath(JoinPath({Folder(), "Mine"}));
    ChangePreferences({{"SOUND FILE", "default"},
                       {"GALLARY_CUSTOM_FOLDER", JoinPath({Folder(), "Mine"})},
                       {"LAST MDB FILE USED", database},
                       {"INDICATOR_GOALS", "True"},
                       {"INDICATOR_OPEN_WITH", "  "},
                       {"DATA_EXISTS", "1"},
                       {"VIEW GRID LINES", "perhaps"}});
    const bool before = ViewGridLines;
    ReadPrefINIFile();
    EXPECT_EQ(SoundFile, JoinPath({AppPath, "Sounds/theme.wav"}));
    EXPECT_EQ(GalleryCustomFolder, JoinPath({Folder(), "Mine"}));
    EXPECT_EQ(CurrentDatabase, database);
    EXPECT_EQ(IndicatorOpenWith, QString("1"));
    EXPECT_EQ(DataExistsCriterion, QString());
    EXPECT_EQ(ViewGridLines, before); // a text that is no boolean leaves the variable

    QDir().rmdir(JoinPath({Folder(), "Mine"}));
    ReadPrefINIFile();
    EXPECT_EQ(GalleryCustomFolder, JoinPath({AppPath, "Gallery/Presentations"}));
}

TEST_F(SettingsTest, DamagedPreferencesGiveWayToTheTemplate) {
    ASSERT_TRUE(ReadInfoINIFile());
    ASSERT_TRUE(ReplaceFile(PrefIni(), QByteArray(333, '\x07')));
    ReadPrefINIFile();
    EXPECT_EQ(Language, QString("English [en]"));
    EXPECT_EQ(ReadWholeFile(PrefIni() + ".damaged"), QByteArray(333, '\x07'));
}

TEST_F(SettingsTest, AFailedSaveTellsAndLosesNothing) {
    ASSERT_EQ(Initialize(), StartResult::GoOn);
    const QString real = CacheFolder;
    CacheFolder = "/proc/sys";
    EXPECT_FALSE(SavePrefINIFile());
    EXPECT_EQ(messages, QStringList{"TS_FolderNotWritable"});
    CacheFolder = real;
    EXPECT_EQ(Stored("LANGUAGE"), QString("English [en]"));
}

TEST_F(SettingsTest, TheStartEmptiesTempFolderAndTheExitItsMapFolder) {
    ASSERT_TRUE(ReadInfoINIFile());
    ASSERT_TRUE(ReplaceFile(TempFolder + "/left.xls", "x"));
    ASSERT_EQ(Initialize(), StartResult::GoOn);
    EXPECT_TRUE(QDir(TempFolder).isEmpty());
    EXPECT_EQ(VisitedStages, QStringList{QString()});
    EXPECT_TRUE(SelectionChanged);
    EXPECT_TRUE(SilentErrors);
    QDir().mkpath(MapFilesFolder);
    ASSERT_TRUE(ReplaceFile(TempFolder + "/kept.xls", "x"));
    ShutDown();
    EXPECT_EQ(QDir(TempFolder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{"kept.xls"});
    EXPECT_FALSE(StringTable.isOpen());
}

TEST_F(SettingsTest, WhatOneLocaleHasWrittenEveryOtherReads) {
    ASSERT_TRUE(ReadInfoINIFile());
    ReadPrefINIFile();
    const QLocale before;
    const struct { const char *writes, *reads; } cases[] = {{"ar_EG", "C"}, {"de_DE", "ar_EG"}, {"C", "fa_IR"}};
    for (const auto& c : cases) {
        const CommaLocale german;
        ASSERT_TRUE(german.works());
        QLocale::setDefault(QLocale(QLatin1String(c.writes)));
        GlobalColor = 16711935;
        ProductFontSize = 1250;
        DataExistsMode = 2;
        EXPECT_TRUE(SavePrefINIFile());
        EXPECT_EQ(Stored("GLOBAL COLOR"), "16711935") << c.writes;
        QLocale::setDefault(QLocale(QLatin1String(c.reads)));
        GlobalColor = DataExistsMode = ProductFontSize = 0;
        ReadPrefINIFile();
        EXPECT_EQ(GlobalColor, 16711935) << c.reads;
        EXPECT_EQ(ProductFontSize, 1250) << c.reads;
        EXPECT_EQ(DataExistsMode, 2) << c.reads;
        EXPECT_EQ(SettingColor("APP BG COLOR").isValid(), true) << c.reads;
    }
    QLocale::setDefault(before);
}

} // namespace
} // namespace tessaro::test
