#include "jet/values/Format.h"

#include "jet/values/Catalogue.h"
#include "jet/values/Collation.h"
#include "jet/values/Dates.h"
#include "jet/values/Error.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <vector>

namespace jet {

namespace {

struct Piece {
    char kind = 0; // 0, #, ., or L for literal text
    std::string text;
};

// One section of a mask, taken apart.
struct Section {
    std::vector<Piece> pieces;
    int whole = 0;    // places before the point
    int decimals = 0; // places after it
    int leastWhole = 0;
    int leastDecimals = 0;
    bool grouped = false;
    bool percent = false;
    bool hasPoint = false;
};

void TakePlace(Section& section, char c) {
    section.pieces.push_back({c, {}});
    int& places = section.hasPoint ? section.decimals : section.whole;
    int& least = section.hasPoint ? section.leastDecimals : section.leastWhole;
    ++places;
    if (section.hasPoint && c == '0') least = places;
    if (!section.hasPoint && (c == '0' || least > 0)) ++least;
}

Section Parse(std::string_view mask) {
    Section section;
    for (std::size_t i = 0; i < mask.size(); ++i) {
        const char c = mask[i];
        if (c == '0' || c == '#') {
            TakePlace(section, c);
        } else if (c == '.' && !section.hasPoint) {
            section.hasPoint = true;
            section.pieces.push_back({'.', {}});
        } else if (c == ',') {
            section.grouped = true;
        } else if (c == '"') {
            const std::size_t end = std::min(mask.find('"', i + 1), mask.size());
            section.pieces.push_back({'L', std::string(mask.substr(i + 1, end - i - 1))});
            i = end;
        } else if (c == '\\' && i + 1 < mask.size()) {
            section.pieces.push_back({'L', std::string(1, mask[++i])});
        } else {
            section.percent = section.percent || c == '%';
            section.pieces.push_back({'L', std::string(1, c)});
        }
    }
    return section;
}

struct Digits {
    std::string whole;
    std::string decimals;
    [[nodiscard]] bool zero() const { return (whole + decimals).find_first_not_of('0') == std::string::npos; }
};

// Rounds the shortest decimal text, half away from zero, as people do on paper.
Digits RoundedDigits(double number, std::size_t decimals) {
    std::array<char, 400> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), std::fabs(number), std::chars_format::fixed).ptr;
    const std::string_view all(text.data(), static_cast<std::size_t>(end - text.data()));
    const std::size_t point = std::min(all.find('.'), all.size());
    std::string joined = "0" + std::string(all.substr(0, point));
    const std::size_t wholeLength = joined.size();
    if (point < all.size()) joined += all.substr(point + 1);
    const std::size_t wanted = wholeLength + decimals;
    const bool up = joined.size() > wanted && joined[wanted] >= '5';
    joined.resize(wanted, '0');
    for (std::size_t i = wanted; up && i-- > 0;) {
        if (joined[i] != '9') {
            ++joined[i];
            break;
        }
        joined[i] = '0';
    }
    Digits digits{joined.substr(0, wholeLength), joined.substr(wholeLength)};
    digits.whole.erase(0, std::min(digits.whole.find_first_not_of('0'), digits.whole.size()));
    return digits;
}

std::string Grouped(const std::string& whole) {
    std::string text;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        if (i > 0 && (whole.size() - i) % 3 == 0) text += ',';
        text += whole[i];
    }
    return text;
}

std::string Fill(const Section& section, double number, bool sign) {
    Digits digits = RoundedDigits(section.percent ? number * 100 : number, static_cast<std::size_t>(section.decimals));
    const bool negative = sign && number < 0 && !digits.zero();
    const auto least = static_cast<std::size_t>(section.leastWhole);
    if (digits.whole.size() < least) digits.whole.insert(0, least - digits.whole.size(), '0');
    while (digits.decimals.size() > static_cast<std::size_t>(section.leastDecimals) && digits.decimals.back() == '0')
        digits.decimals.pop_back();
    if (section.grouped) digits.whole = Grouped(digits.whole);
    std::string text = negative ? "-" : "";
    bool wholeDone = false;
    bool decimalsDone = false;
    bool afterPoint = false;
    const auto give = [&text](const std::string& part, bool& done) {
        if (!done) text += part;
        done = true;
    };
    for (const Piece& piece : section.pieces) {
        if (piece.kind == 'L') {
            text += piece.text;
        } else if (piece.kind == '.') {
            give(digits.whole, wholeDone);
            text += '.';
            afterPoint = true;
        } else if (afterPoint) {
            give(digits.decimals, decimalsDone);
        } else {
            give(digits.whole, wholeDone);
        }
    }
    return text;
}

std::vector<std::string_view> Sections(std::string_view mask) {
    std::vector<std::string_view> sections;
    std::size_t start = 0;
    bool quoted = false;
    for (std::size_t i = 0; i <= mask.size(); ++i) {
        if (i < mask.size() && mask[i] == '"') quoted = !quoted;
        if (i < mask.size() && (mask[i] != ';' || quoted)) continue;
        sections.push_back(mask.substr(start, i - start));
        start = i + 1;
    }
    return sections;
}

struct Part {
    bool empty = true;
    Section section;
};

std::vector<Part> Parts(std::string_view mask) {
    std::vector<Part> parts;
    for (const std::string_view each : Sections(mask))
        parts.push_back({each.empty(), Parse(each)});
    return parts;
}

std::string FormatNumber(double number, const std::vector<Part>& parts) {
    if (number < 0 && parts.size() > 1 && !parts[1].empty) return Fill(parts[1].section, number, false);
    if (number == 0 && parts.size() > 2 && !parts[2].empty) return Fill(parts[2].section, number, false);
    return Fill(parts[0].section, number, true);
}

/// "1.50E+03": more decimals than a double can have are zeros.
std::string Scientific(double number, std::size_t decimals) {
    constexpr std::size_t kMostDecimals = 300;
    std::array<char, kMostDecimals + 16> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::scientific,
                                       static_cast<int>(std::min(decimals, kMostDecimals)));
    std::string result(text.data(), written.ptr);
    const std::size_t power = result.find('e');
    result[power] = 'E';
    return result.insert(power, decimals - std::min(decimals, kMostDecimals), '0');
}

std::optional<std::string> FormatNamed(double number, std::string_view name) {
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 4> masks = {
        {{"Standard", "#,##0.00"}, {"Fixed", "0.00"}, {"Percent", "0.00%"}, {"Currency", "#,##0.00"}}};
    for (const auto& [each, mask] : masks)
        if (SameName(each, name)) return FormatNumber(number, Parts(mask));
    if (name.empty() || SameName(name, "General Number")) return ShortestText(number);
    if (SameName(name, "Yes/No")) return number != 0 ? "Yes" : "No";
    if (SameName(name, "True/False")) return number != 0 ? "True" : "False";
    if (SameName(name, "On/Off")) return number != 0 ? "On" : "Off";
    if (SameName(name, "Scientific")) return Scientific(number, 2);
    return std::nullopt;
}

/// "0.00E+00": decimals before the E, a sign after it (with "E-" for negative powers only), places of the power.
std::optional<std::string> FormatScientific(double number, std::string_view mask) {
    const std::size_t power = std::min(mask.find("E+"), std::min(mask.find("E-"), mask.find("e+")));
    if (power == std::string_view::npos || mask.find(';') != std::string_view::npos) return std::nullopt;
    const std::string_view places = mask.substr(power + 2);
    const std::size_t point = std::min(mask.find('.'), power);
    const bool plain = mask.substr(0, power).find_first_not_of("0#.") == std::string_view::npos;
    if (!plain || places.empty() || places.find_first_not_of("0#") != std::string_view::npos) return std::nullopt;
    const std::size_t decimals = point == power ? 0 : power - point - 1;
    const std::string written = Scientific(number, decimals);
    const std::size_t at = written.find('E');
    std::string digits = written.substr(at + 2);
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    if (digits.size() < places.size()) digits.insert(0, places.size() - digits.size(), '0');
    const bool negative = written[at + 1] == '-';
    const std::string sign = negative ? "-" : mask[power + 1] == '+' ? "+" : "";
    return written.substr(0, at) + mask[power] + sign + digits;
}

// A mask taken apart. A statement formats each of its rows by the same one, so the last is kept.
struct Mask {
    explicit Mask(std::string_view mask)
        : text(mask), date(IsDateMask(mask)), named(mask.find_first_of("0#") == std::string_view::npos),
          scientific(mask.find_first_of("Ee") != std::string_view::npos), parts(Parts(mask)) {}

    std::string text;
    bool date;
    bool named;      ///< may be a name; none has a place for a digit
    bool scientific; ///< may write a power of ten
    std::vector<Part> parts;
};

const Mask& Prepared(std::string_view mask) {
    constexpr std::size_t kLongestMask = 10'000;
    if (mask.size() > kLongestMask) FailTooLong();
    static thread_local std::optional<Mask> last;
    if (!last || last->text != mask) last.emplace(mask);
    return *last;
}

// True when the mask writes nothing but digits and has places for all that the number has. A number that comes back
// from at most 15 digits has those as its shortest text.
bool KeepsNumber(double number, const Mask& mask) {
    if (mask.date || mask.named || mask.scientific || mask.parts.size() != 1) return false;
    const Section& section = mask.parts.front().section;
    const auto literal = [](const Piece& piece) { return piece.kind == 'L'; };
    if (section.grouped || section.percent || section.leastWhole < 1 || section.decimals > 15) return false;
    if (std::ranges::any_of(section.pieces, literal)) return false;
    double power = 1;
    for (int i = 0; i < section.decimals; ++i)
        power *= 10;
    const double digits = std::nearbyint(number * power);
    return number != 0 && std::fabs(digits) < 1e15 && digits / power == number;
}

} // namespace

std::optional<double> FormattedNumber(const Value& value, std::string_view mask) {
    const auto number = value.type() == Value::Type::Text ? ReadNumber(value.toText()) : value.toDouble();
    if (number && !value.isNull() && KeepsNumber(*number, Prepared(mask))) return number;
    return ReadNumber(Format(value, mask));
}

std::string Format(const Value& value, std::string_view mask) {
    if (value.isNull()) return {};
    if (mask == ">") return UpperCased(value.toText());
    if (mask == "<") return LowerCased(value.toText());
    const Mask& prepared = Prepared(mask);
    if (prepared.date) {
        const auto date = ReadDate(value);
        return date ? FormatDate(*date, mask) : value.toText();
    }
    std::optional<double> number = value.toDouble();
    if (value.type() == Value::Type::Text) number = ReadNumber(value.toText());
    if (!number || !std::isfinite(*number)) return value.toText();
    if (prepared.named)
        if (auto named = FormatNamed(*number, mask)) return *named;
    if (prepared.scientific)
        if (auto written = FormatScientific(*number, mask)) return *written;
    return FormatNumber(*number, prepared.parts);
}

} // namespace jet
