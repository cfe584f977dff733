#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessaro {

/// A period as databases name it, from the forms that files have: years (2001), months (2001.05, 2001-05, 2001M05),
/// quarters (2001.Q1, 2001-Q1, Q1 2001), halves, weeks, days in the order of ISO, and ranges of years and months
/// ("2001-2005", "2001/02"). Nothing for other texts, days in other orders among them: nobody knows which part of
/// 03/04/2001 is the month.
[[nodiscard]] std::optional<std::string> ReadPeriod(std::string_view text);
/// True for a day that a spreadsheet may have made of a period: 01/05/2001, 5.1.2001.
[[nodiscard]] bool LooksLikeDay(std::string_view text);

} // namespace tessaro
