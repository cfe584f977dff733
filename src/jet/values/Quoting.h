#pragma once

#include <string>
#include <string_view>

namespace jet {

/// A name or a text as SQLite text has it: "name" or 'text', its own quotes doubled.
[[nodiscard]] std::string QuotedName(std::string_view name);
[[nodiscard]] std::string QuotedText(std::string_view text);

} // namespace jet
