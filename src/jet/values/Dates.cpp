#include "jet/values/Dates.h"

#include "jet/values/Catalogue.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <vector>

namespace jet {

namespace {

constexpr std::int64_t kDaySeconds = 86400;
constexpr std::int64_t kDayZero = -25569; // 30 December 1899, counted from 1970

struct Fields {
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    unsigned weekday = 0; // 0 is Sunday
};

Fields FieldsOf(Moment moment) {
    std::int64_t days = moment / kDaySeconds;
    std::int64_t rest = moment % kDaySeconds;
    if (rest < 0) {
        rest += kDaySeconds;
        --days;
    }
    const std::chrono::sys_days date{std::chrono::days(days)};
    const std::chrono::year_month_day civil(date);
    return {static_cast<int>(civil.year()),         static_cast<unsigned>(civil.month()),
            static_cast<unsigned>(civil.day()),     static_cast<int>(rest / 3600),
            static_cast<int>(rest / 60 % 60),       static_cast<int>(rest % 60),
            std::chrono::weekday(date).c_encoding()};
}

// The runs of digits of a text and the characters between them.
struct Parts {
    std::vector<int> numbers;
    std::string marks;
};

std::optional<Parts> Split(std::string_view text) {
    Parts parts;
    for (std::size_t i = 0; i < text.size();) {
        int number = 0;
        const auto [end, failure] = std::from_chars(text.data() + i, text.data() + text.size(), number);
        if (text[i] == '-' || failure != std::errc{} || parts.numbers.size() == 6) return std::nullopt;
        parts.numbers.push_back(number);
        i = static_cast<std::size_t>(end - text.data());
        if (i < text.size()) parts.marks += text[i++] == 'T' ? ' ' : text[i - 1];
    }
    return parts;
}

std::optional<std::int64_t> DaysOf(int year, int month, int day) {
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    if (year < 100 || year > 9999 || month < 1 || day < 1 || !date.ok()) return std::nullopt;
    return std::chrono::sys_days(date).time_since_epoch().count();
}

/// Takes the word off the end of the text, with the blanks before it.
bool EndsWithWord(std::string_view& text, std::string_view word) {
    if (text.size() <= word.size() || !SameName(text.substr(text.size() - word.size()), word)) return false;
    text.remove_suffix(word.size());
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return true;
}

std::optional<Moment> ReadDateText(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    const bool morning = EndsWithWord(text, "AM");
    const bool afternoon = !morning && EndsWithWord(text, "PM");
    auto parts = Split(text);
    if (!parts || parts->numbers.size() < 2) return std::nullopt;
    std::vector<int>& numbers = parts->numbers;
    std::int64_t days = kDayZero;
    std::size_t time = 0;
    if (parts->marks[0] != ':') {
        if (numbers.size() < 3) return std::nullopt;
        const bool yearFirst = parts->marks.starts_with("--") || parts->marks.starts_with("//");
        const bool american = parts->marks.starts_with("//") && numbers[0] < 100;
        if (!yearFirst) return std::nullopt;
        auto date = american ? DaysOf(numbers[2], numbers[0], numbers[1]) : DaysOf(numbers[0], numbers[1], numbers[2]);
        if (american && !date) date = DaysOf(numbers[2], numbers[1], numbers[0]); // 13/1: only the day can be first
        if (!date || (parts->marks.size() > 2 && parts->marks[2] != ' ')) return std::nullopt;
        days = *date;
        time = 3;
    }
    for (std::size_t i = time; i < parts->marks.size(); ++i)
        if (parts->marks[i] != ':') return std::nullopt;
    if (morning || afternoon) { // 12 AM is midnight, 12 PM noon
        if (numbers.size() <= time || numbers[time] < 1 || numbers[time] > 12) return std::nullopt;
        numbers[time] = numbers[time] % 12 + (afternoon ? 12 : 0);
    }
    numbers.resize(std::max<std::size_t>(numbers.size(), time + 3));
    if (numbers.size() > time + 3 || numbers[time] > 23 || numbers[time + 1] > 59 || numbers[time + 2] > 59)
        return std::nullopt;
    return days * kDaySeconds + numbers[time] * 3600 + numbers[time + 1] * 60 + numbers[time + 2];
}

constexpr std::array kMonths = {"January", "February", "March",     "April",   "May",      "June",
                                "July",    "August",   "September", "October", "November", "December"};
constexpr std::array kWeekdays = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

std::string Padded(int number, std::size_t width) {
    std::string text = std::to_string(number);
    if (text.size() < width) text.insert(0, width - text.size(), '0');
    return text;
}

std::string NamedOrPadded(int number, std::size_t length, std::string_view name) {
    if (length >= 4) return std::string(name);
    return length == 3 ? std::string(name.substr(0, 3)) : Padded(number, length);
}

std::string_view NamedMask(std::string_view mask) {
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 7> masks = {
        {{"General Date", "yyyy-mm-dd hh:nn:ss"},
         {"Long Date", "dddd, d mmmm yyyy"},
         {"Medium Date", "dd-mmm-yy"},
         {"Short Date", "yyyy-mm-dd"},
         {"Long Time", "hh:nn:ss"},
         {"Medium Time", "hh:nn AM/PM"},
         {"Short Time", "hh:nn"}}};
    for (const auto& [name, meaning] : masks)
        if (SameName(name, mask)) return meaning;
    return mask;
}

/// The half of the day at the start of a mask: AM/PM or A/P, in the case in which it is written; its length, or 0.
std::size_t HalfDayLength(std::string_view mask) {
    for (const std::string_view word : {std::string_view("AM/PM"), std::string_view("A/P")})
        if (SameName(mask.substr(0, word.size()), word)) return word.size();
    return 0;
}

std::string HalfDay(std::string_view written, int hour) {
    const std::size_t middle = written.find('/');
    return std::string(hour < 12 ? written.substr(0, middle) : written.substr(middle + 1));
}

bool HasHalfDay(std::string_view mask) {
    for (std::size_t i = 0; i < mask.size(); ++i)
        if (HalfDayLength(mask.substr(i)) > 0) return true;
    return false;
}

std::string Field(const Fields& at, char letter, std::size_t length, bool afterHour) {
    switch (letter) {
    case 'y':
        return length >= 3 ? Padded(at.year, 4) : Padded(at.year % 100, 2);
    case 'm':
        if (afterHour) return Padded(at.minute, length);
        return NamedOrPadded(static_cast<int>(at.month), length, kMonths[at.month - 1]);
    case 'd':
        return NamedOrPadded(static_cast<int>(at.day), length, kWeekdays[at.weekday]);
    case 'h':
        return Padded(at.hour, length);
    case 'n':
        return Padded(at.minute, length);
    case 's':
        return Padded(at.second, length);
    case 'q':
        return std::to_string((at.month + 2) / 3);
    default:
        return std::to_string(at.weekday + 1);
    }
}

} // namespace

std::optional<Moment> ReadDate(const Value& value) {
    if (value.isNull()) return std::nullopt;
    if (value.type() == Value::Type::Text) {
        const std::string text = value.toText();
        if (const auto moment = ReadDateText(text)) return moment;
        if (!ReadNumber(text)) return std::nullopt;
    }
    const double days = value.toDouble();
    if (!(std::fabs(days) < 2958466)) return std::nullopt; // the year 10000
    return kDayZero * kDaySeconds + std::llround(days * static_cast<double>(kDaySeconds));
}

std::string DateText(Moment moment) {
    return FormatDate(moment, moment % kDaySeconds == 0 ? "yyyy-mm-dd" : "yyyy-mm-dd hh:nn:ss");
}

bool IsDateMask(std::string_view mask) {
    mask = NamedMask(mask);
    constexpr std::string_view kLetters = "ymdhnsqwYMDHNSQW";
    std::size_t letters = 0;
    for (std::size_t i = 0; i < mask.size(); ++i) {
        if (mask[i] == '"') {
            i = std::min(mask.find('"', i + 1), mask.size());
        } else if (const std::size_t half = HalfDayLength(mask.substr(i)); half > 0) {
            ++letters;
            i += half - 1;
        } else if (mask[i] == '0' || mask[i] == '#') {
            return false;
        } else if (kLetters.find(mask[i]) != std::string_view::npos) {
            ++letters;
        } else if ((mask[i] | 0x20) >= 'a' && (mask[i] | 0x20) <= 'z') {
            return false; // a word, such as Standard
        }
    }
    return letters > 0;
}

std::string FormatDate(Moment moment, std::string_view mask) {
    mask = NamedMask(mask);
    Fields at = FieldsOf(moment);
    const int hour = at.hour;
    if (HasHalfDay(mask)) at.hour = hour % 12 == 0 ? 12 : hour % 12;
    std::string text;
    bool afterHour = false;
    for (std::size_t i = 0; i < mask.size();) {
        const char letter = static_cast<char>(mask[i] | 0x20);
        if (mask[i] == '"') {
            const std::size_t end = std::min(mask.find('"', i + 1), mask.size());
            text += mask.substr(i + 1, end - i - 1);
            i = end + 1;
            continue;
        }
        if (const std::size_t half = HalfDayLength(mask.substr(i)); half > 0) {
            text += HalfDay(mask.substr(i, half), hour);
            i += half;
            continue;
        }
        if (std::string_view("ymdhnsqw").find(letter) == std::string_view::npos) {
            text += mask[i++];
            continue;
        }
        std::size_t end = i;
        while (end < mask.size() && static_cast<char>(mask[end] | 0x20) == letter)
            ++end;
        text += Field(at, letter, end - i, afterHour);
        afterHour = letter == 'h';
        i = end;
    }
    return text;
}

} // namespace jet
