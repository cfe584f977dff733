#include "controls/FileDialogs.h"

#include <gtest/gtest.h>

namespace tessaro {

TEST(FileDialogs, TheChosenKindGivesTheEnding) {
    struct Case {
        const char* file;
        const char* filter;
        const char* expected;
    };
    const Case cases[] = {
        {"/a/DataView.htm", "Web page (*.htm *.html)", "/a/DataView.htm"},
        {"/a/DataView.htm", "Workbook (*.xls)", "/a/DataView.xls"}, // only suggested
        {"/a/View.HTML", "Web page (*.htm *.html)", "/a/View.HTML"},
        {"/a/View", "Text (*.txt)", "/a/View.txt"},
        {"/a/View.xls", "Web page (*.htm *.html)", "/a/View.xls"}, // typed
        {"/a.b/View", "Text (*.txt)", "/a.b/View.txt"},
        {"/a/View", "CSV (*.wide.csv)", "/a/View.wide.csv"},
        {"/a/View.csv", "CSV (*.wide.csv)", "/a/View.wide.csv"},
        {"/a/DataView.htm", "CSV (*.wide.csv)", "/a/DataView.wide.csv"},
        {"/a/View", "All files (*)", "/a/View"},
        {"", "Text (*.txt)", ""},
    };
    for (const Case& test : cases)
        EXPECT_EQ(WithEndingOf(QLatin1String(test.file), QLatin1String(test.filter), QStringLiteral("DataView.htm")),
                  QLatin1String(test.expected))
            << test.file << " as " << test.filter;
}

} // namespace tessaro
