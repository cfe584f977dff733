#include "platform/Cipher.h"

#include "platform/Files.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

TEST(CipherTest, FillsTheLastBlockAndTakesTheFillingOffAgain) {
    for (int length = 0; length <= 24; ++length) {
        const QByteArray plain(length, 'q');
        const QByteArray blocks = Encipher(plain);
        EXPECT_EQ(blocks.size(), (length / 8 + 1) * 8) << length;
        EXPECT_EQ(Decipher(blocks), plain) << length;
    }
}

TEST(CipherTest, AWholeNumberOfBlocksGainsABlockOfEights) {
    const QByteArray whole(16, 'x');
    const QByteArray eights(8, '\x08');
    // Blocks stand alone, so the last one equals the first block of a text of eights.
    EXPECT_EQ(Encipher(whole).right(8), Encipher(eights).left(8));
}

TEST(CipherTest, EqualBlocksGiveEqualBlocks) {
    const QByteArray blocks = Encipher(QByteArray("same txtsame txt"));
    EXPECT_EQ(blocks.left(8), blocks.mid(8, 8));
    EXPECT_NE(blocks.left(8), QByteArray("same txt"));
}

TEST(CipherTest, AFillingNumberOutOfRangeCountsAsNone) {
    const QByteArray text("ABCDEFGHIJKLMNOP"); // ends in 'P', no filling number
    const QByteArray blocks = Encipher(text).left(16);
    EXPECT_EQ(Decipher(blocks), text);
}

TEST(CipherTest, SurvivesWhatIsNoBlocks) {
    EXPECT_EQ(Decipher(QByteArray()), QByteArray());
    EXPECT_EQ(Decipher(QByteArray("short")), QByteArray());
    const QByteArray blocks = Encipher(QByteArray("0123456789"));
    EXPECT_EQ(Decipher(blocks + "abc"), QByteArray("0123456789"));
}

TEST(CipherTest, KnowsAPlainFileByItsFirstLine) {
    struct {
        const char* contents;
        bool enciphered;
    } const cases[] = {
        {"[DECRYPTED]\r\n[Product]\r\n", false},
        {"[decrypted]\n", false},
        {"[Decrypted]", false},
        {"\xEF\xBB\xBF[DECRYPTED]\n", false},
        {"", true},
        {"[Product]\n", true},
        {"\n[DECRYPTED]\n", true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(IsEnciphered(QByteArray(c.contents)), c.enciphered) << c.contents;
}

TEST(CipherFileTest, TurnsAFileIntoBlocksAndBackAndLeavesNoWorkFile) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("TS.ini");
    const QByteArray plain("[DECRYPTED]\nkey=value\n");
    ASSERT_TRUE(ReplaceFile(path, plain));
    ASSERT_TRUE(CipherFile(path, CipherMode::Encipher));
    EXPECT_TRUE(IsFileEnciphered(path));
    ASSERT_TRUE(CipherFile(path, CipherMode::Decipher));
    EXPECT_EQ(ReadWholeFile(path), plain);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"TS.ini"});
    EXPECT_FALSE(CipherFile(folder.filePath("missing"), CipherMode::Encipher));
}

TEST(FilesTest, AFailedReplacementLeavesTheOldFile) {
    EXPECT_FALSE(ReplaceFile("/proc/version", "x"));
    EXPECT_FALSE(ReplaceFile("/nowhere/at/all", "x"));
    EXPECT_FALSE(CopyFileOver("/nowhere/at/all", "/tmp/never-made"));
    EXPECT_FALSE(CopyPassingFile("/nowhere/at/all", "/tmp/never-made"));
    EXPECT_FALSE(QFile::exists("/tmp/never-made"));
}

TEST(FilesTest, ACopyOfAReadOnlyTemplateCanBeWritten) {
    const QTemporaryDir folder;
    const QString source = folder.filePath("template");
    ASSERT_TRUE(ReplaceFile(source, "contents"));
    QFile::setPermissions(source, QFile::ReadOwner);
    ASSERT_TRUE(CopyFileOver(source, folder.filePath("copy")));
    EXPECT_TRUE(QFile::permissions(folder.filePath("copy")) & QFile::WriteOwner);
    EXPECT_EQ(ReadWholeFile(folder.filePath("copy")), QByteArray("contents"));
}

TEST(FilesTest, EmptyingAFolderDoesNotFollowLinks) {
    const QTemporaryDir folder;
    const QString kept = folder.filePath("kept");
    QDir().mkpath(kept);
    ASSERT_TRUE(ReplaceFile(kept + "/file", "x"));
    QDir().mkpath(folder.filePath("Temp/a/b"));
    ASSERT_TRUE(QFile::link(kept, folder.filePath("Temp/link")));
    ASSERT_TRUE(EmptyFolder(folder.filePath("Temp")));
    EXPECT_TRUE(QDir(folder.filePath("Temp")).isEmpty());
    EXPECT_TRUE(QFile::exists(kept + "/file"));
}

} // namespace
} // namespace tessaro
