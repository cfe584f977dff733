#include "platform/Rights.h"

#include "platform/Apart.h"
#include "platform/Files.h"
#include "platform/Home.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessaro {
namespace {

using namespace std::chrono_literals;

mode_t ModeOf(const QString& path) {
    struct stat info {};
    return ::lstat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_mode & 07777 : 0;
}

/// A home of this test, and a process of its own for the umask.
class RightsTest : public testing::Test {
  protected:
    RightsTest() { qputenv("TESSARO_HOME", QFile::encodeName(home_.path())); }
    [[nodiscard]] QString Own(const QString& name = {}) const { return home_.filePath("Tessaro" + name); }
    QTemporaryDir home_;
};

TEST_F(RightsTest, OursIsPrivateAndTheUsersFilesAreAsTheUserMakesThem) {
    const QString mine = home_.filePath("mine");
    EXPECT_TRUE(RunApart(
        [&] {
            ::umask(002);
            KeepFilesPrivate();
            bool good = MakePrivateFolder(Own("/TessaroCache")) && ReplaceFile(Own("/Pref.ini"), "x");
            good = CopyFileOver(Own("/Pref.ini"), mine) && ReplaceFile(home_.filePath("page"), "x") && good;
            QFile log(Own("/log"));
            return log.open(QIODevice::WriteOnly) && good && CopyPassingFile(mine, Own("/copy")) &&
                   CopyFileOver(mine, Own("/copy2"));
        },
        10s));
    EXPECT_EQ(ModeOf(Own("/TessaroCache")), 0700);
    for (const char* name : {"/Pref.ini", "/log", "/copy", "/copy2"})
        EXPECT_EQ(ModeOf(Own(QLatin1String(name))), 0600) << name;
    EXPECT_EQ(ModeOf(mine), 0664);
    EXPECT_EQ(ModeOf(home_.filePath("page")), 0664);
}

TEST_F(RightsTest, NarrowsWhatIsThereAndFollowsNoLinks) {
    const QString outside = home_.filePath("outside");
    ASSERT_TRUE(ReplaceFile(outside, "x"));
    ASSERT_TRUE(QDir().mkpath(Own("/a/b")));
    ASSERT_TRUE(ReplaceFile(Own("/a/b/.hidden"), "x"));
    ASSERT_TRUE(QFile::link(outside, Own("/a/link")));
    for (const char* name : {"", "/a", "/a/b", "/a/b/.hidden"})
        ASSERT_EQ(::chmod(QFile::encodeName(Own(QLatin1String(name))).constData(), 0777), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(outside).constData(), 0666), 0);
    NarrowRights(Own());
    for (const char* name : {"", "/a", "/a/b", "/a/b/.hidden"})
        EXPECT_EQ(ModeOf(Own(QLatin1String(name))), 0700) << name;
    EXPECT_EQ(ModeOf(outside), 0666);
}

TEST_F(RightsTest, AnotherUsersFolderIsNotOurs) {
    if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can give a folder away";
    ASSERT_TRUE(QDir().mkpath(Own()));
    ASSERT_EQ(::chown(QFile::encodeName(Own()).constData(), 65534, 65534), 0);
    EXPECT_FALSE(MakePrivateFolder(Own()));
    EXPECT_FALSE(MakePrivateFolder("/proc/sys/none"));
}

} // namespace
} // namespace tessaro
