#pragma once

#include <string>
#include <string_view>

struct sqlite3;

/// Comparison and order of texts, ignoring case.
namespace jet {

/// True when two texts differ in nothing but case.
[[nodiscard]] bool EqualFolded(std::string_view a, std::string_view b);
/// The text with all differences of case removed; two texts for which EqualFolded is true have the same.
[[nodiscard]] std::string Folded(std::string_view text);
/// True when every byte is below 128.
[[nodiscard]] bool IsAscii(std::string_view text);
[[nodiscard]] constexpr char LowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}
/// Case changed over the whole of Unicode, independent of the user's language.
[[nodiscard]] std::string UpperCased(std::string_view text);
[[nodiscard]] std::string LowerCased(std::string_view text);

/// Order of two texts as collation JETTEXT / JETVALUE has it: negative, 0, positive.
[[nodiscard]] int CompareText(std::string_view a, std::string_view b);
[[nodiscard]] int CompareValueText(std::string_view a, std::string_view b);
/// Registers JETTEXT and JETVALUE.
void RegisterCollations(sqlite3* database);

} // namespace jet
