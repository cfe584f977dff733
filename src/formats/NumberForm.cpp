#include "formats/NumberForm.h"

#include "jet/values/Value.h"

#include <QString>

#include <algorithm>
#include <array>

namespace tessaro {

namespace {

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.remove_suffix(1);
    return text;
}

/// The sign in ASCII that stands for a letter in numbers; 0 for one that has none.
char PlainSign(QChar c) {
    if (c.isDigit()) return static_cast<char>('0' + c.digitValue());
    if (c.isSpace()) return ' ';
    switch (c.unicode()) {
    case 0x2212: // minus
    case 0x2013:
        return '-';
    case 0x066B: // Arabic decimal sign
        return '.';
    case 0x066C: // Arabic sign of thousands
        return ',';
    case 0x2019:
        return '\'';
    case 0x066A:
        return '%';
    default:
        return c.unicode() < 128 ? static_cast<char>(c.unicode()) : '\0';
    }
}

/// A number's text in plain signs; marks that don't show are left out.
std::string Plain(std::string_view text) {
    if (std::ranges::all_of(text, [](char c) { return static_cast<signed char>(c) > 0; }))
        return std::string(Trimmed(text));
    std::string plain;
    const QString letters = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    for (const QChar c : letters)
        if (c.category() != QChar::Other_Format) plain += PlainSign(c);
    return std::string(Trimmed(plain));
}

bool IsThousandsSign(char c, const NumberForm& form) {
    return form.thousands != '\0' && c == form.thousands;
}

/// The whole part without its signs of thousands: each has three digits behind it, or two where a group of three ends
/// the number (as lakhs are written). False when they stand elsewhere.
bool TakeWhole(std::string_view whole, const NumberForm& form, std::string& number) {
    std::size_t group = 0;
    bool grouped = false;
    for (const char c : whole) {
        if (IsDigit(c)) {
            number += c;
            ++group;
        } else if (IsThousandsSign(c, form)) {
            if (group == 0 || group > 3 || (grouped && group < 2)) return false;
            grouped = true;
            group = 0;
        } else {
            return false;
        }
    }
    return !grouped || group == 3;
}

bool TakeFraction(std::string_view fraction, std::string& number) {
    if (!std::ranges::all_of(fraction, IsDigit)) return false;
    if (!fraction.empty()) number.append(".").append(fraction);
    return true;
}

/// Digits, decimal sign and exponent, without sign and blanks.
std::optional<std::string> ReadUnsigned(std::string_view text, const NumberForm& form) {
    const std::size_t exponent = std::min(text.find_first_of("eE"), text.size());
    const std::string_view mantissa = text.substr(0, exponent);
    const std::size_t point = std::min(mantissa.find(form.decimal), mantissa.size());
    std::string number;
    if (!TakeWhole(mantissa.substr(0, point), form, number)) return std::nullopt;
    const std::string_view fraction = mantissa.substr(std::min(point + 1, mantissa.size()));
    if (number.empty() && fraction.empty()) return std::nullopt;
    if (number.empty()) number = "0";
    if (!TakeFraction(fraction, number)) return std::nullopt;
    return number.append(text.substr(exponent));
}

/// What a text with one of the signs '.' and ',' (or both) says of them.
struct Votes {
    int decimal = 0;
    int thousands = 0;
    int either = 0;
};

void Vote(std::string_view number, char sign, char other, Votes& votes) {
    const auto count = std::ranges::count(number, sign);
    if (count == 0) return;
    const std::size_t last = number.rfind(sign);
    const std::size_t otherLast = number.rfind(other);
    const std::size_t behind = number.size() - last - 1;
    if (otherLast != std::string_view::npos)
        ++(last > otherLast && count == 1 ? votes.decimal : votes.thousands);
    else if (count > 1)
        ++votes.thousands;
    else if (behind != 3 || last == 0 || last > 3 || number.front() == '0')
        ++votes.decimal;
    else
        ++votes.either;
}

bool LooksLikeNumber(std::string_view text) {
    return !text.empty() && std::ranges::any_of(text, IsDigit) &&
           std::ranges::all_of(text, [](char c) { return IsDigit(c) || std::string_view(".,' ").find(c) < 4; });
}

} // namespace

NumberForm FindNumberForm(const std::vector<std::string>& texts) {
    Votes point;
    Votes comma;
    int blanks = 0;
    int apostrophes = 0;
    for (const std::string& text : texts) {
        std::string number = Plain(text);
        if (!number.empty() && (number.front() == '-' || number.front() == '+')) number.erase(0, 1);
        if (!LooksLikeNumber(number)) continue;
        blanks += number.find(' ') != std::string::npos ? 1 : 0;
        apostrophes += number.find('\'') != std::string::npos ? 1 : 0;
        Vote(number, '.', ',', point);
        Vote(number, ',', '.', comma);
    }
    NumberForm form;
    const bool commaIsDecimal = comma.decimal > point.decimal ||
                                (comma.decimal == point.decimal && point.thousands > comma.thousands + comma.either);
    form.decimal = commaIsDecimal ? ',' : '.';
    const Votes& other = commaIsDecimal ? point : comma;
    if (other.thousands + other.either > 0)
        form.thousands = commaIsDecimal ? '.' : ',';
    else if (blanks + apostrophes > 0)
        form.thousands = blanks >= apostrophes ? ' ' : '\'';
    return form;
}

std::optional<std::string> ReadNumberIn(std::string_view text, const NumberForm& form) {
    std::string number = Plain(text);
    if (!number.empty() && number.back() == '%') number.pop_back();
    std::string_view rest = Trimmed(number);
    const bool negative = !rest.empty() && rest.front() == '-';
    if (negative || (!rest.empty() && rest.front() == '+')) rest = Trimmed(rest.substr(1));
    std::optional<std::string> read = ReadUnsigned(rest, form);
    if (read && negative) read->insert(0, 1, '-');
    // What is left are exponents, and numbers beyond what a double holds.
    return read && jet::ReadNumber(*read) ? read : std::nullopt;
}

bool MeansNoValue(std::string_view text) {
    static constexpr std::array<std::string_view, 16> marks{"..",   "...", "-",    "--", ":", ".", "n/a", "na",
                                                            "n.a.", "nan", "null", "x",  "c", "…", "–",   "#n/a"};
    const std::string_view trimmed = Trimmed(text);
    if (trimmed.empty()) return true;
    if (trimmed.size() > 5) return false;
    std::string lower(trimmed);
    std::ranges::transform(lower, lower.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    return std::ranges::find(marks, lower) != marks.end();
}

} // namespace tessaro
