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
        {"Jan 2001", "2001.01"},
        {"Sept-2001", "2001.09"},
        {"2001 décembre", "2001.12"},
        {"févr. 2001", "2001.02"},
        {"май 2001", "2001.05"},
        {"مارس 2001", "2001.03"},
        {"Wheat 2001", nullptr},
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

TEST(PeriodsTest, SeesWhatWholeDatesTell) {
    const std::pair<std::vector<std::string>, DateTells> cases[] = {
        {{}, DateTells::Day},
        {{"2001", "2001-05", "x"}, DateTells::Day},
        {{"2001-05-01", "2001-06-01", "2002"}, DateTells::Month},
        {{"2001-05-31", "2004-02-29"}, DateTells::Month},
        {{"2001-05-01", "2001-05-02"}, DateTells::Day},
        {{"2001-01-01", "2002-01-01"}, DateTells::Year},
        {{"2001-12-31", "2002-12-31"}, DateTells::Year},
        {{"2001-01-01", "2001-01-01"}, DateTells::Month},
        {{"2001-02-31"}, DateTells::Day},
    };
    for (const auto& [texts, dates] : cases)
        EXPECT_EQ(FindDateTells(texts), dates) << (texts.empty() ? "" : texts.front());
    EXPECT_EQ(WithoutDay("2001.05.01", DateTells::Month), "2001.05");
    EXPECT_EQ(WithoutDay("2001.05.01", DateTells::Year), "2001");
    EXPECT_EQ(WithoutDay("2001.05.01", DateTells::Day), "2001.05.01");
    EXPECT_EQ(WithoutDay("2001-2005", DateTells::Year), "2001-2005");
}

} // namespace
} // namespace tessaro::test
