#pragma once

#include "jet/values/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace jet {

/// A value by a mask of the dialect's Format: digits (0 # . , % "text" \x and up to three sections parted by ;),
/// 0.00E+00, > and < for capitals and small letters, "Standard", "Fixed", "Percent", "Scientific", "General Number",
/// "Yes/No", "True/False", or a date pattern (yyyy mm dd hh nn ss …). Rounds half away from zero, always with "." and
/// ",". A value that doesn't suit the mask comes back as its text.
[[nodiscard]] std::string Format(const Value& value, std::string_view mask);

/// The number that Format's text reads as; nothing when it reads as none. Faster than by way of the text.
[[nodiscard]] std::optional<double> FormattedNumber(const Value& value, std::string_view mask);

} // namespace jet
