#include "shell/Preferences.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Settings.h"
#include "session/Startup.h"
#include "session/Strings.h"
#include "session/UserPreferences.h"
#include "support/TestSession.h"

#include <QDir>
#include <QFile>

namespace tessaro {

class PreferencesTest : public test::SessionTest {
  protected:
    void SetUp() override { StartSample(); }

    QString LanguageFileOf(const QString& name) const { return JoinPath({AppPath, QStringLiteral("Languages"), name}); }
    static bool IsListed(const QString& label) {
        for (const LanguageFile& file : std::as_const(LanguageFiles))
            if (file.label == label) return true;
        return false;
    }
};

TEST_F(PreferencesTest, WhatIsTakenOverComesBackFromTheDisk) {
    Preferences p = Preferences::OfSession();
    p.language = QStringLiteral("Français [fr]");
    p.font = QStringLiteral("Noto Sans");
    p.fontSize = 14;
    p.fontStyle = 3;
    p.collapseTree = !p.collapseTree;
    p.autoSelectForm = !p.autoSelectForm;
    p.gridLines = !p.gridLines;
    p.systemNumbers = !p.systemNumbers;
    p.footnotes = !p.footnotes;
    p.showGlobalColor = !p.showGlobalColor;
    p.globalColor = 255;
    p.dataExists = 2;
    p.sound = QStringLiteral("/somewhere/else.wav");
    p.mute = !p.mute;
    p.views = {true, false, true, false, true, false, true};
    p.openWith = 4;
    p.byCombination = !p.byCombination;
    p.TakeIntoSession();
    ASSERT_TRUE(SavePrefINIFile());
    QFile file(JoinPath({CacheFolder, QStringLiteral("Pref.ini")}));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_FALSE(file.readAll().contains("USER PREFERENCES")) << "the file rests enciphered";
    ASSERT_NE(Preferences(), Preferences::OfSession());
    const QString path = AppPath;
    ResetSession();
    AppPath = path;
    ASSERT_EQ(Initialize(), StartResult::GoOn);
    EXPECT_EQ(Preferences::OfSession(), p);
}

TEST_F(PreferencesTest, SectorsStayOnAndTheFirstViewIsOneThatIsOn) {
    struct Case {
        int openWith;
        bool on;
        const char* written;
    };
    for (const Case& c : {Case{0, false, "0"}, Case{1, true, "1"}, Case{5, false, "0"}, Case{99, false, "0"}}) {
        Preferences p = Preferences::OfSession();
        p.views = {};
        if (c.openWith < 7) p.views.at(static_cast<std::size_t>(c.openWith)) = c.on;
        p.openWith = c.openWith;
        p.TakeIntoSession();
        EXPECT_TRUE(IndicatorViews[0].wanted);
        EXPECT_EQ(IndicatorOpenWith, QLatin1String(c.written)) << c.openWith;
    }
}

TEST_F(PreferencesTest, AnEmptyLanguageBecomesEnglish) {
    Preferences p = Preferences::OfSession();
    p.language.clear();
    p.TakeIntoSession();
    EXPECT_EQ(Language, QStringLiteral("en"));
}

TEST_F(PreferencesTest, TellsWhatAChangeConcerns) {
    const Preferences before = Preferences::OfSession();
    struct Case {
        const char* what;
        std::function<void(Preferences&)> change;
        bool lists, views;
    };
    const Case cases[] = {
        {"nothing", [](Preferences&) {}, false, false},
        {"font", [](Preferences& p) { p.fontSize += 2; }, false, false},
        {"grid lines", [](Preferences& p) { p.gridLines = !p.gridLines; }, false, false},
        {"language", [](Preferences& p) { p.language += QLatin1Char('x'); }, true, false},
        {"content", [](Preferences& p) { p.dataExists = 2 - p.dataExists; }, true, false},
        {"colour", [](Preferences& p) { ++p.globalColor; }, true, false},
        {"colour shown", [](Preferences& p) { p.showGlobalColor = !p.showGlobalColor; }, true, false},
        {"views", [](Preferences& p) { p.views[3] = !p.views[3]; }, false, true},
        {"combinations", [](Preferences& p) { p.byCombination = !p.byCombination; }, false, true},
    };
    for (const Case& c : cases) {
        Preferences now = before;
        c.change(now);
        EXPECT_EQ(now.ChangesLists(before), c.lists) << c.what;
        EXPECT_EQ(now.ChangesIndicatorViews(before), c.views) << c.what;
    }
}

TEST_F(PreferencesTest, ALanguageBringsItsFont) {
    const LanguageFace face = FaceOfLanguage(QStringLiteral("Français [fr]"));
    EXPECT_EQ(face.font, QStringLiteral("Noto Sans"));
    EXPECT_EQ(face.size, 10);
    EXPECT_TRUE(FaceOfLanguage(QStringLiteral("Nobody's [xx]")).font.isEmpty());
}

TEST_F(PreferencesTest, SoundsAreNamedByTheFolderOfTheProduct) {
    const QString folder = JoinPath({AppPath, QStringLiteral("Sounds")});
    ASSERT_TRUE(QDir().mkpath(folder));
    for (const char* name : {"wave.wav", "Sea.MP3", "readme.txt"})
        ASSERT_TRUE(QFile(JoinPath({folder, QLatin1String(name)})).open(QIODevice::WriteOnly));
    EXPECT_EQ(Sounds(), (QStringList{QStringLiteral("Sea.MP3"), QStringLiteral("wave.wav")}));
    EXPECT_EQ(PathOfSound(QStringLiteral("wave.wav")), JoinPath({folder, QStringLiteral("wave.wav")}));
    EXPECT_EQ(NameOfSound(JoinPath({folder, QStringLiteral("wave.wav")})), QStringLiteral("wave.wav"));
    for (const char* path : {"", "/elsewhere/wave.wav"}) {
        EXPECT_EQ(PathOfSound(QLatin1String(path)), QLatin1String(path));
        EXPECT_EQ(NameOfSound(QLatin1String(path)), QLatin1String(path));
    }
}

TEST_F(PreferencesTest, ImportsOnlyLanguageDatabases) {
    const QString good = LanguageFileOf(QStringLiteral("TS_Français [fr].mdb"));
    const auto file = [this](const char* name) { return Folder() + QLatin1Char('/') + QString::fromUtf8(name); };
    ASSERT_TRUE(QFile::copy(good, file("TS_Breton.mdb")));
    ASSERT_TRUE(QFile::copy(good, file("Breton [br].mdb")));
    ASSERT_TRUE(QFile(file("TS_Junk [jk].mdb")).open(QIODevice::WriteOnly));
    for (const char* name : {"TS_Breton.mdb", "Breton [br].mdb", "TS_Junk [jk].mdb", "TS_Missing [mi].mdb"})
        EXPECT_FALSE(ImportLanguageFile(file(name))) << name;
    EXPECT_EQ(messages.size(), 4);
    EXPECT_EQ(LanguageFiles.size(), 2);
    ASSERT_TRUE(QFile::copy(good, file("TS_Breton [br].mdb")));
    EXPECT_TRUE(ImportLanguageFile(file("TS_Breton [br].mdb")));
    EXPECT_TRUE(IsListed(QStringLiteral("Breton [br]")));
    EXPECT_FALSE(FileOfLanguage(QStringLiteral("Breton [br]")).isEmpty());
    EXPECT_TRUE(FileExists(LanguageFileOf(QStringLiteral("TS_Breton [br].mdb")))) << "beside the others";
}

TEST_F(PreferencesTest, DamagedLanguageFilesAreRefusedWithAMessage) {
    const QString good = LanguageFileOf(QStringLiteral("TS_Français [fr].mdb"));
    QFile whole(good);
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray bytes = whole.readAll();
    const auto noisy = [&bytes] {
        QByteArray noise = bytes;
        for (qsizetype at = noise.size() / 4; at < noise.size() * 3 / 4; ++at)
            noise[at] = static_cast<char>(at * 31 + at / 7);
        return noise;
    };
    const auto changed = [&](const char* sql) {
        const QString copy = Folder() + QStringLiteral("/changed.mdb");
        QFile::remove(copy);
        EXPECT_TRUE(QFile::copy(good, copy));
        CreateTheConnection(copy)->Execute(sql);
        QFile file(copy);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    QByteArray otherEncoding = changed("UPDATE Strings SET [Francais fr] = 'Reglages: XXX'");
    otherEncoding.replace("XXX", "\xE9t\xE9");
    const std::pair<const char*, QByteArray> files[] = {
        {"cut off", bytes.left(bytes.size() / 2)},
        {"noise in the middle", noisy()},
        {"another encoding", otherEncoding},
        {"no texts", changed("DELETE * FROM Strings")},
        {"no such column", changed("UPDATE LangMaster SET LangID = 'Klingon tlh'")},
        {"nothing", QByteArray()},
    };
    const QString file = Folder() + QStringLiteral("/TS_Bad [bd].mdb");
    for (const auto& [name, contents] : files) {
        messages.clear();
        ASSERT_TRUE(ReplaceFile(file, contents));
        EXPECT_FALSE(ImportLanguageFile(file)) << name;
        EXPECT_EQ(messages.size(), 1) << name;
        EXPECT_FALSE(IsListed(QStringLiteral("Bad [bd]"))) << name;
    }
    EXPECT_TRUE(ReadWholeFile(LogFile()).value_or(QByteArray()).contains("refused as a language file"));
}

TEST_F(PreferencesTest, ATakenLanguageFileIsAskedFor) {
    const QString name = QStringLiteral("TS_Français [fr].mdb");
    const QString other = Folder() + QLatin1Char('/') + name;
    ASSERT_TRUE(QFile::copy(LanguageFileOf(QStringLiteral("TS_English [en].mdb")), other));
    const auto contents = [&] {
        QFile file(LanguageFileOf(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    const QByteArray before = contents();
    answers = {MessageCode::No};
    EXPECT_FALSE(ImportLanguageFile(other));
    EXPECT_EQ(contents(), before);
    answers = {MessageCode::Yes};
    EXPECT_TRUE(ImportLanguageFile(other));
    EXPECT_NE(contents(), before);
    EXPECT_EQ(messages, (QStringList{QStringLiteral("285"), QStringLiteral("285")}));
}

} // namespace tessaro
