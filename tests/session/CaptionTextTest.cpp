#include "session/CaptionText.h"

#include <gtest/gtest.h>

namespace tessaro::test {

namespace {

/// Names of files and of rows that become captions of menus and buttons.
TEST(CaptionTextTest, ANameIsReadAsItStands) {
    for (const char* name : {"Health & Education", "&", "A&B", "&&", "R&D & more&", "plain", ""}) {
        const CaptionText read = ReadCaption(CaptionOfName(QLatin1String(name)));
        EXPECT_EQ(read.plain, QLatin1String(name));
        EXPECT_EQ(read.letter, -1) << name;
    }
}

} // namespace

} // namespace tessaro::test
