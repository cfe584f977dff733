#include "platform/IniFile.h"

#include <gtest/gtest.h>

namespace tessaro {
namespace {

TEST(IniFileTest, ReadsIgnoringCaseAndGivesNothingForWhatIsMissing) {
    const IniFile ini = IniFile::Parse("[DECRYPTED]\r\n[Folder Location]\r\nData Folder = My Data \r\nEmpty=\r\n");
    EXPECT_EQ(ini.Read("FOLDER LOCATION", "data folder"), QString("My Data"));
    EXPECT_EQ(ini.Read("Folder Location", "Empty"), QString());
    EXPECT_EQ(ini.Read("Folder Location", "Other"), QString());
    EXPECT_EQ(ini.Read("Other", "Data Folder"), QString());
    EXPECT_TRUE(ini.ReadUncut("Other", "Data Folder").isNull());
    EXPECT_FALSE(ini.ReadUncut("Folder Location", "Empty").isNull());
    EXPECT_TRUE(ini.HasSection("decrypted"));
}

TEST(IniFileTest, CutsAValueAt255Characters) {
    const QString letters(300, QChar(0x00E9)); // two bytes each: characters are counted, not bytes
    const IniFile ini = IniFile::Parse("[s]\nk=" + letters.toUtf8() + "\nshort=" + letters.left(255).toUtf8() + "\n");
    EXPECT_EQ(ini.Read("s", "k"), letters.left(255));
    EXPECT_EQ(ini.Read("s", "short"), letters.left(255));
    EXPECT_EQ(ini.ReadUncut("s", "k"), letters);
}

TEST(IniFileTest, AChangeKeepsEverythingElse) {
    IniFile ini =
        IniFile::Parse("[DECRYPTED]\n; a remark\n[USER PREFERENCES]\nLANGUAGE=English [en]\nFOREIGN=1\n[Other]\nx=y\n");
    ini.Write("user preferences", "language", QString::fromUtf8("Français [fr]"));
    ini.Write("USER PREFERENCES", "MUTE", "True");
    const QByteArray contents = ini.Contents();
    EXPECT_TRUE(contents.startsWith("[DECRYPTED]")) << contents.constData();
    EXPECT_TRUE(contents.contains("; a remark"));
    const IniFile again = IniFile::Parse(contents);
    EXPECT_EQ(again.Read("USER PREFERENCES", "LANGUAGE"), QString::fromUtf8("Français [fr]"));
    EXPECT_EQ(again.Read("USER PREFERENCES", "FOREIGN"), QString("1"));
    EXPECT_EQ(again.Read("USER PREFERENCES", "MUTE"), QString("True"));
    EXPECT_EQ(again.Read("Other", "x"), QString("y"));
}

TEST(IniFileTest, AValueCannotBreakOutOfItsLine) {
    IniFile ini = IniFile::Parse("[s]\n");
    ini.Write("s", "k", "a\r\n[t]\nx=1");
    const IniFile again = IniFile::Parse(ini.Contents());
    EXPECT_FALSE(again.HasSection("t"));
    EXPECT_EQ(again.Read("s", "k"), QString("a [t] x=1"));
}

TEST(IniFileTest, SurvivesWhatIsNoIni) {
    for (const QByteArray& contents :
         {QByteArray(), QByteArray("\0\0\0", 3), QByteArray("[unclosed\nk=v"), QByteArray("=\n[]\n=v\n"),
          QByteArray(5000, '\xFF'), QByteArray("k=before any section\n[s]\nk=v\0w\n", 31)}) {
        const IniFile ini = IniFile::Parse(contents);
        EXPECT_EQ(ini.Read("nowhere", "nothing"), QString());
        (void)ini.Contents();
    }
}

} // namespace
} // namespace tessaro
