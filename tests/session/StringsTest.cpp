#include "session/Strings.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Session.h"
#include "support/TestSession.h"

#include <QDir>

namespace tessaro::test {
namespace {

class StringsTest : public SessionTest {
  protected:
    void SetUp() override { StartSample(); }
    static void Put(const QString& relative) {
        const QString path = JoinPath({AppPath, relative});
        QDir().mkpath(FolderOf(path));
        ASSERT_TRUE(ReplaceFile(path, "x"));
    }
};

TEST_F(StringsTest, ListsLanguageFilesByNameInAnyCase) {
    Put("Languages/ts_Русский.MDB");
    Put("Languages/TS_a_b.mdb");
    Put("Languages/TS.mdb");
    Put("Languages/other_x.mdb");
    Put("Languages/TS_x.txt");
    FillLanguageArray();
    QStringList labels;
    for (const LanguageFile& file : std::as_const(LanguageFiles))
        labels << file.label;
    labels.sort();
    EXPECT_EQ(labels,
              (QStringList{"English [en]", QString::fromUtf8("Français [fr]"), "a", QString::fromUtf8("Русский")}));
    EXPECT_EQ(FileOfLanguage("ENGLISH [EN]"), JoinPath({AppPath, "Languages/TS_English [en].mdb"}));
    EXPECT_EQ(FileOfLanguage("Klingon"), QString());
}

TEST_F(StringsTest, LooksUpTheSameKeyAgainAndAgainIgnoringCase) {
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(LookupString("ADDRESS"), QString("Address"));
        EXPECT_EQ(LookupString("address"), QString("Address"));
        EXPECT_EQ(LookupString("no such key"), QString());
    }
    EXPECT_EQ(GetText("ADDRESS"), QString("Address"));
    EXPECT_EQ(GetText("ADDRESS", true), QString("ADDRESS"));
}

TEST_F(StringsTest, AFinalEllipsisTurnsAllOfThemIntoDots) {
    EXPECT_EQ(LookupString("Comm_Browse"), QString("Browse... and open..."));
}

TEST_F(StringsTest, AnotherLanguageBringsItsTextsAndTheBaseBesideThem) {
    Language = QString::fromUtf8("Français [fr]");
    ReadTranslateFile();
    EXPECT_EQ(LookupString("ADDRESS"), QString("Adresse"));
    EXPECT_EQ(LangID, QString("Francais fr"));
    EXPECT_EQ(Locale, 1036);
    EXPECT_EQ(StringTable.FieldCount(), 4U);
    Language = "English [en]";
    ReadTranslateFile();
    EXPECT_EQ(LookupString("ADDRESS"), QString("Address"));
    EXPECT_EQ(StringTable.FieldCount(), 3U);
}

TEST_F(StringsTest, ALanguageWithoutAFileLeavesTheOldTextsAndIsLogged) {
    Language = "Klingon [tlh]";
    ReadTranslateFile();
    EXPECT_EQ(LookupString("ADDRESS"), QString("Address"));
    EXPECT_TRUE(ReadWholeFile(LogFile()).value_or(QByteArray()).contains("Klingon"));
}

TEST_F(StringsTest, ADamagedLanguageFileLeavesTheOldTexts) {
    Language = QString::fromUtf8("Français [fr]");
    ASSERT_TRUE(ReplaceFile(FileOfLanguage(Language), "no database"));
    ReadTranslateFile();
    EXPECT_EQ(LookupString("ADDRESS"), QString("Address"));
}

TEST_F(StringsTest, PicturesAndDocumentsComeInTheLanguageOrTheBase) {
    Put("Graphics/[fr]_ButtonData.jpg");
    Put("Graphics/[en]_ButtonAreas.jpg");
    Put("Graphics/home.gif");
    Put("Graphics/home.svg");
    Put("Graphics/plain.gif");
    Put("Help/Help English en.html");
    Language = QString::fromUtf8("Français [fr]");
    EXPECT_EQ(LocalizedImageName("ButtonData.jpg"), QString("[fr]_ButtonData.jpg"));
    EXPECT_EQ(LocalizedImageName("ButtonAreas.jpg"), QString("[en]_ButtonAreas.jpg"));
    EXPECT_EQ(LocalizedImageName("missing.jpg"), QString("[en]_missing.jpg"));
    EXPECT_EQ(PictureFile("\\HOME.gif"), JoinPath({AppPath, "Graphics/home.svg"}));
    EXPECT_EQ(PictureFile("plain.GIF"), JoinPath({AppPath, "Graphics/plain.gif"}));
    EXPECT_EQ(PictureFile("missing.gif"), QString());
    EXPECT_EQ(LocalizedFileName("Help", "Help", ".html"), JoinPath({AppPath, "Help/Help English en.html"}));
    Put(QString::fromUtf8("Help/Help Français fr.html"));
    EXPECT_EQ(LocalizedFileName("Help", "Help", ".html"),
              JoinPath({AppPath, QString::fromUtf8("Help/Help Français fr.html")}));
    EXPECT_EQ(LocalizedFileName("Help", "Tour", ".pps"), QString());
}

} // namespace
} // namespace tessaro::test
