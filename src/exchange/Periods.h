#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaro {

/// What a whole date ("2001-05-01") says of a period: some files have the first day of each month or year.
enum class DateTells { Day, Month, Year };

/// A period as databases name it, from the forms that files have: years (2001), months (2001.05, 2001-05, 2001M05, May
/// 2001), quarters (2001.Q1, 2001-Q1, Q1 2001), halves, weeks, days in the order of ISO, and ranges of years and months
/// ("2001-2005", "2001/02"). Nothing for other texts, days in other orders among them: nobody knows which part of
/// 03/04/2001 is the month.
[[nodiscard]] std::optional<std::string> ReadPeriod(std::string_view text);
/// A period without the part of a day ("2001.05.01") that its date doesn't tell; others as they are.
[[nodiscard]] std::string WithoutDay(std::string period, DateTells dates);
/// What whole dates of a column tell: years when all of several are a first of January or last of December, months
/// when all begin or end one. Texts that are no such dates don't count; the day when there are none.
[[nodiscard]] DateTells FindDateTells(const std::vector<std::string>& texts);
/// True for a day that a spreadsheet may have made of a period: 01/05/2001, 5.1.2001.
[[nodiscard]] bool LooksLikeDay(std::string_view text);

} // namespace tessaro
