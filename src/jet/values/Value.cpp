#include "jet/values/Value.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace jet {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

bool IsFalse(std::string_view text) {
    constexpr std::string_view kWord = "false";
    return std::ranges::equal(text, kWord,
                              [](char a, char b) { return a == b || (a >= 'A' && a <= 'Z' && a + ('a' - 'A') == b); });
}

std::string_view Trimmed(std::string_view text) {
    if (!text.empty() && text.front() > ' ' && text.back() > ' ') return text;
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Most values have a few digits, a point and nothing else. Both parts of the division are exact then, so that its
// result is the double nearest to the text, as the full reading has it. Nothing for any other text.
std::optional<double> ReadShortNumber(std::string_view text) {
    constexpr std::size_t kMostDigits = 15;
    constexpr std::array<double, kMostDigits + 1> Powers = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                            1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const bool negative = text.starts_with('-');
    if (negative) text.remove_prefix(1);
    if (text.size() > kMostDigits + 1) return std::nullopt;
    std::int64_t whole = 0;
    std::size_t decimals = 0;
    bool afterPoint = false;
    for (const char c : text) {
        if (c == '.' && !afterPoint) {
            afterPoint = true;
            continue;
        }
        if (c < '0' || c > '9') return std::nullopt;
        whole = whole * 10 + (c - '0');
        decimals += afterPoint ? 1 : 0;
    }
    const std::size_t digits = text.size() - (afterPoint ? 1 : 0);
    if (digits == 0 || digits > kMostDigits) return std::nullopt;
    const double number = static_cast<double>(whole) / Powers[decimals];
    return negative ? -number : number;
}

} // namespace

std::optional<double> ReadNumber(std::string_view text) {
    text = Trimmed(text);
    if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
    if (text.empty()) return std::nullopt;
    // from_chars also reads "inf" and "nan", which are words here
    const char lead = text.front() == '-' && text.size() > 1 ? text[1] : text.front();
    if (lead != '.' && (lead < '0' || lead > '9')) return std::nullopt;
    if (const auto number = ReadShortNumber(text)) return number;
    double number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (end != text.data() + text.size()) return std::nullopt;
    if (failure == std::errc::result_out_of_range) {
        const bool tooSmall = text.find("e-") != std::string_view::npos || text.find("E-") != std::string_view::npos;
        return tooSmall ? std::optional<double>(0.0) : std::nullopt;
    }
    if (failure != std::errc{}) return std::nullopt;
    return number;
}

std::int64_t ToWhole(double number) {
    if (std::isnan(number)) return 0;
    const double rounded = std::nearbyint(number);
    if (rounded >= 9223372036854775808.0) return std::numeric_limits<std::int64_t>::max();
    if (rounded < -9223372036854775808.0) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(rounded);
}

std::int64_t Value::toInteger() const {
    switch (type()) {
    case Type::Null:
        return 0;
    case Type::Integer:
        return std::get<std::int64_t>(held_);
    case Type::Double:
        return ToWhole(std::get<double>(held_));
    case Type::Text:
        break;
    }
    const std::string& text = std::get<std::string>(held_);
    std::int64_t whole = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), whole);
    if (failure == std::errc{} && end == text.data() + text.size()) return whole;
    return ToWhole(ReadNumber(text).value_or(0));
}

double Value::toDouble() const {
    switch (type()) {
    case Type::Null:
        return 0;
    case Type::Integer:
        return static_cast<double>(std::get<std::int64_t>(held_));
    case Type::Double:
        return std::get<double>(held_);
    case Type::Text:
        break;
    }
    return ReadNumber(std::get<std::string>(held_)).value_or(0);
}

bool Value::toBoolean() const {
    if (type() != Type::Text) return toDouble() != 0;
    const std::string_view text = Trimmed(std::get<std::string>(held_));
    if (text.empty() || IsFalse(text)) return false;
    return ReadNumber(text).value_or(-1) != 0;
}

std::string Value::toText() const {
    switch (type()) {
    case Type::Null:
        return {};
    case Type::Integer:
        return std::to_string(std::get<std::int64_t>(held_));
    case Type::Double:
        return ShortestText(std::get<double>(held_));
    case Type::Text:
        break;
    }
    return std::get<std::string>(held_);
}

std::string ShortestText(double number) {
    if (number == 0) return "0"; // also for a negative zero
    if (std::isnan(number)) return "NaN";
    if (std::isinf(number)) return number < 0 ? "-Inf" : "Inf";
    char text[64];
    const double size = std::fabs(number);
    const auto format = size >= 1e-15 && size < 1e15 ? std::chars_format::fixed : std::chars_format::scientific;
    const auto [end, failure] = std::to_chars(text, text + sizeof text, number, format);
    if (failure != std::errc{}) return "0";
    for (char* c = text; c != end; ++c)
        if (*c == 'e') *c = 'E';
    return {text, end};
}

std::string DecimalText(double number) {
    constexpr int kDigits = 15;
    if (number == 0 || !std::isfinite(number)) return ShortestText(number);
    std::array<char, 64> text{};
    char* const end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::general, kDigits).ptr;
    std::replace(text.data(), end, 'e', 'E');
    return {text.data(), end};
}

} // namespace jet
