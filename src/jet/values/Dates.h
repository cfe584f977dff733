#pragma once

#include "jet/values/Value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Dates: reading, writing, calendar.
namespace jet {

/// A moment as seconds since the start of 1970, without a time zone. In files it is the text "yyyy-mm-dd hh:nn:ss".
using Moment = std::int64_t;

/// Reads "yyyy-mm-dd", "m/d/yyyy", either with a time behind, a time alone (of 30 December 1899, day 0 of the old
/// engine), or a number of days since that day. Nothing for anything else.
[[nodiscard]] std::optional<Moment> ReadDate(const Value& value);
/// The text of files: without the time when that is midnight.
[[nodiscard]] std::string DateText(Moment moment);
/// True for a Format mask that writes dates: yyyy yy y mmmm mmm mm m dddd ddd dd d hh h nn n ss s q ww w AM/PM, "Short
/// Date" …
[[nodiscard]] bool IsDateMask(std::string_view mask);
[[nodiscard]] std::string FormatDate(Moment moment, std::string_view mask);

} // namespace jet
