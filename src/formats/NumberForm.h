#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaro {

/// How a file writes its numbers.
struct NumberForm {
    char decimal = '.';
    char thousands = '\0'; ///< '.', ',', '\'' or ' ' (which stands for every blank); '\0' for none

    bool operator==(const NumberForm&) const = default;
};

/// The form of numbers by looking at some texts. A sign that could be either is taken for one of thousands when all
/// numbers have it before their last three digits.
[[nodiscard]] NumberForm FindNumberForm(const std::vector<std::string>& texts);
/// The number that a text holds, as values are stored: digits and ".", every digit kept. Blanks around it, signs, "%",
/// exponents and digits of other scripts are understood. Nothing for a text that is no number of this form.
[[nodiscard]] std::optional<std::string> ReadNumberIn(std::string_view text, const NumberForm& form);
/// True for what statistical offices write where there is no value: "", "..", "-", ":", "n/a", "NaN" and the like.
[[nodiscard]] bool MeansNoValue(std::string_view text);

} // namespace tessaro
