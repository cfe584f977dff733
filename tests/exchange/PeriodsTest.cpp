#include "exchange/Periods.h"

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

TEST(PeriodsTest, ReadsTheFormsOfPeriods) {
    constexpr std::pair<const char*, const char*> cases[] = {
        {"2001", "2001"},
        {" 1999 ", "1999"},
        {"2001-2005", "2001-2005"},
        {"2001 – 2005", "2001-2005"},
        {"2001/02", "2001-2002"},
        {"1999/00", "1999-2000"},
        {"2001-05", "2001.05"},
        {"2001.05", "2001.05"},
        {"2001M05", "2001.05"},
        {"2001-M12", "2001.12"},
        {"2001-Q1", "2001.Q1"},
        {"2001q4", "2001.Q4"},
        {"Q1 2001", "2001.Q1"},
        {"2001-S2", "2001.S2"},
        {"2001-W07", "2001.W07"},
        {"2001-05-12", "2001.05.12"},
        {"2001-05-12T00:00:00", "2001.05.12"},
        {"2001-A1", "2001"},
        {"2001.01-2001.06", "2001.01-2001.06"},
        // None of these:
        {"01/05/2001", nullptr},
        {"2001-13", nullptr},
        {"2001/05/45", nullptr},
        {"2001/07", "2001.07"},
        {"2001-Q5", nullptr},
        {"37012", nullptr},
        {"0999", nullptr},
        {"2500", nullptr},
        {"last year", nullptr},
        {"", nullptr},
    };
    for (const auto& [text, period] : cases)
        EXPECT_EQ(ReadPeriod(text).value_or("none"), period != nullptr ? period : "none") << text;
    EXPECT_TRUE(LooksLikeDay("01/05/2001"));
    EXPECT_TRUE(LooksLikeDay("5.1.2001 00:00"));
    EXPECT_FALSE(LooksLikeDay("2001-05-01"));
}

} // namespace
} // namespace tessaro::test
