#include "jet/functions/FunctionSupport.h"
#include "jet/values/Catalogue.h"
#include "jet/values/Dates.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <ctime>

namespace jet {

namespace {

constexpr std::int64_t kDaySeconds = 86400;

Moment Floored(Moment moment, std::int64_t step) {
    return moment / step - (moment % step < 0 ? 1 : 0);
}

std::int64_t DayNumber(Moment moment) {
    return Floored(moment, kDaySeconds);
}

std::chrono::year_month_day Civil(Moment moment) {
    return std::chrono::year_month_day(std::chrono::sys_days(std::chrono::days(DayNumber(moment))));
}

std::int64_t SecondOfDay(Moment moment) {
    return moment - DayNumber(moment) * kDaySeconds;
}

Moment DateAt(const Call& call, std::size_t i) {
    if (const auto moment = ReadDate(call.value(i))) return *moment;
    throw Error(ErrorNumber::TypeMismatch, "Type mismatch: '" + call.value(i).toText() + "' is no date.");
}

void GiveDate(Call& call, Moment moment) {
    call.give(std::string_view(DateText(moment)));
}

Moment LocalNow() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return static_cast<Moment>(now) + local.tm_gmtoff;
}

void Now(Call& call) {
    call.give(std::string_view(FormatDate(LocalNow(), "yyyy-mm-dd hh:nn:ss")));
}
void Date(Call& call) {
    call.give(std::string_view(FormatDate(LocalNow(), "yyyy-mm-dd")));
}
void Time(Call& call) {
    call.give(std::string_view(FormatDate(LocalNow(), "hh:nn:ss")));
}

std::int64_t Part(std::string_view interval, Moment moment) {
    const auto civil = Civil(moment);
    const auto month = static_cast<unsigned>(civil.month());
    const std::int64_t second = SecondOfDay(moment);
    if (SameName(interval, "yyyy")) return static_cast<int>(civil.year());
    if (SameName(interval, "q")) return (month + 2) / 3;
    if (SameName(interval, "m")) return month;
    if (SameName(interval, "d")) return static_cast<unsigned>(civil.day());
    if (SameName(interval, "h")) return second / 3600;
    if (SameName(interval, "n")) return second / 60 % 60;
    if (SameName(interval, "s")) return second % 60;
    const auto yearStart = std::chrono::sys_days(civil.year() / 1 / 1).time_since_epoch().count();
    const std::int64_t dayOfYear = DayNumber(moment) - yearStart;
    if (SameName(interval, "y")) return dayOfYear + 1;
    const auto weekday = [](std::int64_t day) { return ((day + 4) % 7 + 7) % 7; }; // 1 January 1970 was a Thursday
    if (SameName(interval, "w")) return weekday(DayNumber(moment)) + 1;
    if (SameName(interval, "ww")) return (dayOfYear + weekday(yearStart)) / 7 + 1;
    throw Error(ErrorNumber::TypeMismatch, "There is no date interval '" + std::string(interval) + "'.");
}

template <const char* interval> void PartOf(Call& call) {
    call.give(Part(interval, DateAt(call, 0)));
}

void DatePart(Call& call) {
    std::string room;
    call.give(Part(call.text(0, room), DateAt(call, 1)));
}

// Months may lie outside 1 to 12 and days outside the month; they run on into the next ones.
Moment Serial(std::int64_t year, std::int64_t month, std::int64_t day) {
    constexpr std::int64_t kFar = 4'000'000;
    if (std::abs(year) > 9999 || std::abs(month) > kFar || std::abs(day) > kFar)
        throw Error(ErrorNumber::TypeMismatch, "The date is out of range.");
    const std::int64_t months = year * 12 + month - 1;
    const auto first = std::chrono::year(static_cast<int>(Floored(months, 12))) /
                       std::chrono::month(static_cast<unsigned>(months - Floored(months, 12) * 12 + 1)) / 1;
    return (std::chrono::sys_days(first).time_since_epoch().count() + day - 1) * kDaySeconds;
}

void DateSerial(Call& call) {
    std::int64_t year = call.whole(0);
    if (year >= 0 && year < 100) year += year < 30 ? 2000 : 1900;
    GiveDate(call, Serial(year, call.whole(1), call.whole(2)));
}

void TimeSerial(Call& call) {
    const double seconds = static_cast<double>(call.whole(0)) * 3600 + static_cast<double>(call.whole(1)) * 60 +
                           static_cast<double>(call.whole(2));
    call.give(std::string_view(FormatDate(((ToWhole(seconds) % kDaySeconds) + kDaySeconds) % kDaySeconds, "hh:nn:ss")));
}

Moment AddMonths(Moment moment, std::int64_t months) {
    const auto civil = Civil(moment);
    const Moment first = Serial(static_cast<int>(civil.year()), static_cast<unsigned>(civil.month()) + months, 1);
    const auto target = Civil(first);
    const auto last =
        std::chrono::year_month_day_last(target.year(), std::chrono::month_day_last(target.month())).day();
    const auto day = std::min(civil.day(), last);
    return first + (static_cast<unsigned>(day) - 1) * kDaySeconds + SecondOfDay(moment);
}

// Seconds of a step of fixed length, or 0.
std::int64_t StepSeconds(std::string_view interval) {
    static constexpr std::array<std::pair<std::string_view, std::int64_t>, 7> steps = {{{"d", kDaySeconds},
                                                                                        {"y", kDaySeconds},
                                                                                        {"w", kDaySeconds},
                                                                                        {"ww", 7 * kDaySeconds},
                                                                                        {"h", 3600},
                                                                                        {"n", 60},
                                                                                        {"s", 1}}};
    for (const auto& [name, seconds] : steps)
        if (SameName(name, interval)) return seconds;
    return 0;
}

// Months of a step of whole months.
std::int64_t StepMonths(std::string_view interval) {
    if (SameName(interval, "yyyy")) return 12;
    if (SameName(interval, "q")) return 3;
    if (SameName(interval, "m")) return 1;
    throw Error(ErrorNumber::TypeMismatch, "There is no date interval '" + std::string(interval) + "'.");
}

void DateAdd(Call& call) {
    std::string room;
    const std::string_view interval = call.text(0, room);
    const std::int64_t count = std::clamp<std::int64_t>(call.whole(1), -400'000'000'000, 400'000'000'000);
    const Moment moment = DateAt(call, 2);
    const std::int64_t step = StepSeconds(interval);
    constexpr Moment kFirst = -59'011'459'200;  // the year 100
    constexpr Moment kBehind = 253'402'300'800; // the year 10000
    const Moment sum = step > 0 ? moment + count * step : AddMonths(moment, count * StepMonths(interval));
    if (sum < kFirst || sum >= kBehind) throw Error(ErrorNumber::TypeMismatch, "The date is out of range.");
    GiveDate(call, sum);
}

void DateDiff(Call& call) {
    std::string room;
    const std::string_view interval = call.text(0, room);
    const Moment from = DateAt(call, 1);
    const Moment to = DateAt(call, 2);
    if (SameName(interval, "ww")) return call.give(Floored(DayNumber(to) + 4, 7) - Floored(DayNumber(from) + 4, 7));
    if (SameName(interval, "w")) return call.give((DayNumber(to) - DayNumber(from)) / 7);
    if (const std::int64_t step = StepSeconds(interval)) return call.give(Floored(to, step) - Floored(from, step));
    const std::int64_t months = StepMonths(interval);
    const auto number = [months](Moment moment) {
        return (Part("yyyy", moment) * 12 + Part("m", moment) - 1) / months;
    };
    call.give(number(to) - number(from));
}

void CDate(Call& call) {
    GiveDate(call, DateAt(call, 0));
}
/// A date as days since the end of 1899; a number is such days already.
void Days(Call& call) {
    if (!call.isText(0)) return call.giveArgument(0);
    const double days = static_cast<double>(DateAt(call, 0)) / static_cast<double>(kDaySeconds) + 25569;
    if (days == std::floor(days)) return call.give(static_cast<std::int64_t>(days));
    call.give(days);
}
void DateValue(Call& call) {
    GiveDate(call, DayNumber(DateAt(call, 0)) * kDaySeconds);
}
void TimeValue(Call& call) {
    call.give(std::string_view(FormatDate(DateAt(call, 0), "hh:nn:ss")));
}
void IsDate(Call& call) {
    call.giveYesNo(call.isText(0) && !ReadNumber(call.value(0).toText()) && ReadDate(call.value(0)).has_value());
}

constexpr char kYear[] = "yyyy";
constexpr char kMonth[] = "m";
constexpr char kDay[] = "d";
constexpr char kHour[] = "h";
constexpr char kMinute[] = "n";
constexpr char kSecond[] = "s";
constexpr char kWeekday[] = "w";

} // namespace

void RegisterDateFunctions(sqlite3* database) {
    static constexpr std::array functions = {
        Registration{"jet_now", Entry<Now, Nulls::Pass>, false},
        Registration{"jet_date", Entry<Date, Nulls::Pass>, false},
        Registration{"jet_time", Entry<Time, Nulls::Pass>, false},
        Registration{"jet_year", Entry<PartOf<kYear>, Nulls::Spread>},
        Registration{"jet_month", Entry<PartOf<kMonth>, Nulls::Spread>},
        Registration{"jet_day", Entry<PartOf<kDay>, Nulls::Spread>},
        Registration{"jet_hour", Entry<PartOf<kHour>, Nulls::Spread>},
        Registration{"jet_minute", Entry<PartOf<kMinute>, Nulls::Spread>},
        Registration{"jet_second", Entry<PartOf<kSecond>, Nulls::Spread>},
        Registration{"jet_weekday", Entry<PartOf<kWeekday>, Nulls::Spread>},
        Registration{"jet_datepart", Entry<DatePart, Nulls::Spread>},
        Registration{"jet_dateserial", Entry<DateSerial, Nulls::Spread>},
        Registration{"jet_timeserial", Entry<TimeSerial, Nulls::Spread>},
        Registration{"jet_dateadd", Entry<DateAdd, Nulls::Spread>},
        Registration{"jet_datediff", Entry<DateDiff, Nulls::Spread>},
        Registration{"jet_cdate", Entry<CDate, Nulls::Spread>},
        Registration{"jet_cvdate", Entry<CDate, Nulls::Spread>},
        Registration{"jet_days", Entry<Days, Nulls::Spread>},
        Registration{"jet_datevalue", Entry<DateValue, Nulls::Spread>},
        Registration{"jet_timevalue", Entry<TimeValue, Nulls::Spread>},
        Registration{"jet_isdate", Entry<IsDate, Nulls::Pass>},
    };
    Register(database, functions);
}

} // namespace jet
