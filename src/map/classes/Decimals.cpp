#include "map/classes/Decimals.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace tessaro {

namespace {

constexpr int kDigits = 15;
constexpr int kMostDecimals = 30;

/// digits * 10^power, the digits being a whole number of at most 15 digits.
struct Written {
    std::int64_t digits = 0;
    int power = 0;
};

Written Write(double value) {
    std::array<char, 40> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific, kDigits - 1);
    std::string digits(text.data(), end.ptr);
    const std::size_t mark = digits.find('e');
    const int exponent = std::stoi(digits.substr(mark + 1));
    digits.erase(mark);
    digits.erase(digits.find('.'), 1);
    return {std::stoll(digits), exponent - (kDigits - 1)};
}

double Read(const Written& number) {
    const std::string text = std::to_string(number.digits) + "e" + std::to_string(number.power);
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::int64_t PowerOfTen(int power) {
    std::int64_t result = 1;
    for (int i = 0; i < power; ++i)
        result *= 10;
    return result;
}

/// What is kept of a number, and what is dropped of it in parts of `whole`.
struct Split {
    std::int64_t kept;
    std::int64_t dropped; ///< has the sign of the number
    std::int64_t whole;
};

bool HalfEven(const Split& split) {
    const std::int64_t twice = 2 * std::abs(split.dropped);
    return twice > split.whole || (twice == split.whole && split.kept % 2 != 0);
}

bool HalfUp(const Split& split) {
    return 2 * std::abs(split.dropped) >= split.whole;
}

bool Down(const Split& split) {
    return split.dropped < 0;
}

/// `movesOn` tells whether the kept digits go one further from zero.
double Rounded(double value, int decimals, bool (*movesOn)(const Split&)) {
    if (!std::isfinite(value)) return value;
    const int places = std::clamp(decimals, 0, kMostDecimals);
    const Written written = Write(value);
    const int drop = -written.power - places;
    if (drop <= 0) return Read(written);
    // All digits of a number go at 10^15; a smaller one has the same share of the last place: nearly none.
    const std::int64_t whole = PowerOfTen(std::min(drop, kDigits + 2));
    const Split split{written.digits / whole, written.digits % whole, whole};
    const std::int64_t sign = written.digits < 0 ? -1 : 1;
    return Read({split.kept + (movesOn(split) ? sign : 0), -places});
}

} // namespace

double AsWritten(double value) {
    return std::isfinite(value) ? Read(Write(value)) : value;
}

double RoundHalfEven(double value, int decimals) {
    return Rounded(value, decimals, &HalfEven);
}

double RoundHalfUp(double value, int decimals) {
    return Rounded(value, decimals, &HalfUp);
}

double RoundDown(double value, int decimals) {
    return Rounded(value, decimals, &Down);
}

double CutToDecimals(double value, int decimals) {
    return decimals < 1 ? RoundDown(value, 0) : RoundHalfUp(value, decimals);
}

double StepOfDecimals(int decimals) {
    return Read({1, -std::clamp(decimals, 0, kMostDecimals)});
}

} // namespace tessaro
