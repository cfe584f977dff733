#pragma once

#include <string_view>

namespace jet {

/// Whether a text meets a pattern of the operator Like, ignoring case: * any text, ? one character, # one digit,
/// [abc], [a-z], [!a-z] one character of a list or not of it. A "[" without an end stands for itself.
[[nodiscard]] bool IsLike(std::string_view text, std::string_view pattern);

} // namespace jet
