#include "platform/Paths.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

class PathsTest : public testing::Test {
  protected:
    void Make(const QString& relative) const {
        const QString path = folder_.filePath(relative);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("x");
    }
    [[nodiscard]] QString In(const QString& relative) const { return folder_.filePath(relative); }
    QTemporaryDir folder_;
};

TEST(JoinPathTest, TakesBothSeparatorsAndNeverDoublesThem) {
    struct {
        QStringList parts;
        const char* joined;
    } const cases[] = {
        {{"/usr/share", "Bin", "x.mdb"}, "/usr/share/Bin/x.mdb"},
        {{"\\usr\\share", "\\Bin\\TEMPLATE"}, "/usr/share/Bin/TEMPLATE"},
        {{"/usr/", "/Bin//", "x"}, "/usr/Bin/x"},
        {{"/usr", "", "x"}, "/usr/x"},
        {{"", "TS.ini"}, "/TS.ini"}, // without an application folder everything lies in the root
        {{"Data", "x"}, "Data/x"},
        {{}, ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(JoinPath(c.parts).toStdString(), c.joined);
}

TEST_F(PathsTest, FindsEachComponentWhateverItsCase) {
    Make("Bin/Template/InfoSel.mdb");
    const QString real = In("Bin/Template/InfoSel.mdb");
    for (const char* spelling :
         {"Bin/Template/InfoSel.mdb", "bin\\TEMPLATE\\Infosel.mdb", "BIN//template/INFOSEL.MDB"}) {
        EXPECT_EQ(FindPath(In(QString::fromLatin1(spelling))), real) << spelling;
        EXPECT_TRUE(FileExists(In(QString::fromLatin1(spelling)))) << spelling;
    }
    EXPECT_TRUE(FolderExists(In("bin\\template")));
    EXPECT_FALSE(FileExists(In("bin/template")));
    EXPECT_FALSE(FileExists(QString()));
}

TEST_F(PathsTest, KeepsTheSpellingOfWhatIsToBeMade) {
    Make("Bin/x");
    EXPECT_EQ(FindPath(In("BIN/New Folder/File.TXT")), In("Bin/New Folder/File.TXT"));
}

TEST_F(PathsTest, PrefersTheExactSpellingWhenBothExist) {
    Make("a/File");
    Make("a/file");
    EXPECT_EQ(FindPath(In("a/file")), In("a/file"));
    EXPECT_EQ(FindPath(In("a/File")), In("a/File"));
}

TEST(PathPartsTest, CutsAtEitherSeparator) {
    struct {
        const char *path, *folder, *name;
    } const cases[] = {
        {"C:\\Data\\x.mdb", "C:/Data", "x.mdb"}, {"/x.mdb", "/", "x.mdb"}, {"x.mdb", "", "x.mdb"}, {"a/b/", "a/b", ""}};
    for (const auto& c : cases) {
        EXPECT_EQ(FolderOf(QString::fromLatin1(c.path)).toStdString(), c.folder) << c.path;
        EXPECT_EQ(FileNameOf(QString::fromLatin1(c.path)).toStdString(), c.name) << c.path;
    }
    EXPECT_TRUE(SamePath("/A\\b/", "/a/B"));
    EXPECT_FALSE(SamePath("/a/b", "/a/bc"));
}

TEST_F(PathsTest, WritesWhereItMayAndReadsTheUsersCopyFirst) {
    Make("App/Gallery/picture");
    Make("Cache/x");
    const QString app = In("App");
    const QString cache = In("Cache");
    EXPECT_EQ(WritablePlace(app + "/gallery/New/f", app, cache), In("App/Gallery/New/f"));
    EXPECT_TRUE(QDir(In("App/Gallery/New")).exists());
    EXPECT_EQ(ReadablePlace(app + "/Gallery/picture", app, cache), In("App/Gallery/picture"));
    Make("Cache/Gallery/picture");
    EXPECT_EQ(ReadablePlace(app + "\\GALLERY\\picture", app, cache), In("Cache/Gallery/picture"));
    EXPECT_EQ(ReadablePlace(In("Other/f"), app, cache), In("Other/f"));
}

TEST_F(PathsTest, GoesBelowTheCacheFolderWhereTheApplicationFolderTakesNoWrites) {
    Make("Cache/x");
    const QString app = QStringLiteral("/proc/sys"); // takes no new files from anybody, the administrator included
    if (QFileInfo(app).isWritable()) GTEST_SKIP() << "this machine lets files be made there";
    EXPECT_EQ(WritablePlace(app + "/Palettes/p.plf", app, In("Cache")), In("Cache/Palettes/p.plf"));
    EXPECT_TRUE(QDir(In("Cache/Palettes")).exists());
}

TEST_F(PathsTest, ListsFilesSortedAndNothingOfAFolderThatIsMissing) {
    Make("d/b.mdb");
    Make("d/A.mdb");
    Make("d/Table 10.Xls");
    Make("d/table 2.xls");
    Make("d/sub/c.mdb");
    EXPECT_EQ(FilesOf(In("D")), (QStringList{"A.mdb", "b.mdb", "table 2.xls", "Table 10.Xls"}));
    EXPECT_TRUE(FilesOf(In("missing")).isEmpty());
    EXPECT_TRUE(FilesOf(QString()).isEmpty());
}

} // namespace
} // namespace tessaro
