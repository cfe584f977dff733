#include "presentation/PeriodPlaces.h"

#include <QDate>
#include <QRegularExpression>

#include <algorithm>

namespace tessaro {

namespace {

constexpr int kFirstYearOfDates = 1900;

/// First day of a period, and the first day after it.
struct Days {
    QDate begin;
    QDate end;
    bool wholeYears = true;
};

std::optional<Days> DaysOf(const QString& text) {
    static const QRegularExpression form(QStringLiteral(R"(^(\d{4})(?:\.(\d{1,2}))?(?:\.(\d{1,2}))?$)"));
    const auto match = form.match(text.trimmed());
    if (!match.hasMatch()) return std::nullopt;
    const QString month = match.captured(2);
    const QString day = match.captured(3);
    const QDate begin(match.captured(1).toInt(), month.isEmpty() ? 1 : month.toInt(), day.isEmpty() ? 1 : day.toInt());
    if (!begin.isValid()) return std::nullopt;
    const QDate end = !day.isEmpty() ? begin.addDays(1) : month.isEmpty() ? begin.addYears(1) : begin.addMonths(1);
    return Days{begin, end, month.isEmpty()};
}

std::optional<Days> SpanOf(const QString& period) {
    static const QRegularExpression dash(QStringLiteral("[-\u2013]"));
    const QStringList ends = period.split(dash);
    if (ends.size() > 2) return std::nullopt;
    const auto first = DaysOf(ends.front());
    const auto last = DaysOf(ends.back());
    if (!first || !last || last->end <= first->begin) return std::nullopt;
    return Days{first->begin, last->end, first->wholeYears && last->wholeYears};
}

/// The middle of a period as a decimal year; a whole year is its own number, 2000 for all of 2000.
double YearsOf(const Days& days) {
    if (days.wholeYears) return (days.begin.year() + days.end.year() - 1) / 2.0;
    const QDate middle = days.begin.addDays(days.begin.daysTo(days.end) / 2);
    return middle.year() + (middle.dayOfYear() - 1.0) / middle.daysInYear();
}

double DateOf(const Days& days) {
    const QDate zero(1899, 12, 30);
    return static_cast<double>(zero.daysTo(days.begin)) + static_cast<double>(days.begin.daysTo(days.end)) / 2;
}

} // namespace

std::optional<PeriodPlaces> MeasurePeriods(const QStringList& periods) {
    std::vector<Days> spans;
    for (const QString& period : periods) {
        const auto span = SpanOf(period);
        if (!span) return std::nullopt;
        spans.push_back(*span);
    }
    PeriodPlaces found;
    found.dates = std::any_of(spans.begin(), spans.end(), [](const Days& span) { return !span.wholeYears; }) &&
                  std::all_of(spans.begin(), spans.end(),
                              [](const Days& span) { return span.begin.year() >= kFirstYearOfDates; });
    for (const Days& span : spans)
        found.places.push_back(found.dates ? DateOf(span) : YearsOf(span));
    return found;
}

} // namespace tessaro
