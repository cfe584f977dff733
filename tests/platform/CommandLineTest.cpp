#include "platform/CommandLine.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

TEST(CommandLineTest, TheValueRunsToTheNextSwitch) {
    struct {
        const char *line, *value;
    } const cases[] = {
        {"/aD:\\Programs\\Indicators", "D:\\Programs\\Indicators"},
        {"/aC:\\P /x", "C:\\P"},
        {"  /AC:\\My Programs  ", "C:\\My Programs"},
        {"/x /a\\usr\\share\\tessaro", "\\usr\\share\\tessaro"},
        {"/a", ""},
        {"/a/usr/share", ""},
        {"", ""},
        {"   ", ""},
        {"no switch at all", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CommandLineValue(QString::fromLatin1(c.line), "/a").toStdString(), c.value) << c.line;
}

TEST(CommandLineTest, AFolderLosesItsFinalSeparatorOnlyWhenItExists) {
    const QTemporaryDir folder;
    QString spelt = folder.path();
    spelt.replace('/', '\\');
    EXPECT_EQ(CommandLineValue("/a" + spelt + "\\", "/a", SwitchAttribute::Directory), spelt);
    EXPECT_EQ(CommandLineValue("/a" + spelt, "/a", SwitchAttribute::Directory), spelt);
    EXPECT_EQ(CommandLineValue("/a\\no\\such\\folder\\", "/a", SwitchAttribute::Directory),
              QString("\\no\\such\\folder\\"));
    EXPECT_EQ(CommandLineValue("/a" + spelt + "\\", "/a"), spelt + "\\");
}

} // namespace
} // namespace tessaro
