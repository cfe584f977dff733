#include "exchange/Periods.h"

#include <QDate>
#include <QHash>
#include <QLocale>
#include <QRegularExpression>
#include <QString>

#include <array>
#include <set>

namespace tessaro {

namespace {

/// A form of periods: what it looks like, and how a database writes it.
struct PeriodForm {
    QRegularExpression looks;
    const char* written; ///< with %1, %2 … for what is in brackets
};

const std::array<PeriodForm, 12>& Forms() {
    const auto form = [](const char* looks, const char* written) {
        return PeriodForm{
            QRegularExpression(QRegularExpression::anchoredPattern(
                                   QString::fromUtf8(looks)
                                       .replace(QLatin1String("YEAR"), QLatin1String("((?:1[0-9]|20|21)[0-9]{2})"))
                                       .replace(QLatin1String("MONTH"), QLatin1String("(0[1-9]|1[0-2])"))
                                       .replace(QLatin1String("DAY"), QLatin1String("(0[1-9]|[12][0-9]|3[01])"))),
                               QRegularExpression::CaseInsensitiveOption),
            written};
    };
    static const std::array<PeriodForm, 12> forms{
        form("YEAR", "%1"),
        form("YEAR\\s*\\[YR[0-9]{4}\\]", "%1"),
        form("YEAR\\s*[-\u2013]\\s*YEAR", "%1-%2"),
        form("YEAR[-./ ]?Q([1-4])", "%1.Q%2"),
        form("Q([1-4])[-./ ]?YEAR", "%2.Q%1"),
        form("YEAR[-./ ]?[SH]([12])", "%1.S%2"),
        form("YEAR[-./ ]?W(0[1-9]|[1-4][0-9]|5[0-3])", "%1.W%2"),
        form("YEAR[-./ ]?M?MONTH", "%1.%2"),
        form("YEAR[-./]MONTH[-./]DAY(?:[T ]00:00(?::00)?)?", "%1.%2.%3"),
        form("YEAR[-.]MONTH\\s*[-\u2013]\\s*YEAR[-.]MONTH", "%1.%2-%3.%4"),
        form("YEAR[-./]MONTH[-./]DAY\\s*-\\s*YEAR[-./]MONTH[-./]DAY", "%1.%2.%3-%4.%5.%6"),
        form("YEAR-?A1?", "%1"),
    };
    return forms;
}

/// "2001/02", the years of a school or a budget, as a range; nothing for other texts.
std::optional<std::string> SplitYears(const QString& text) {
    static const QRegularExpression form(QStringLiteral("^((?:1[0-9]|20|21)[0-9]{2})/([0-9]{2}|[0-9]{4})$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch()) return std::nullopt;
    const int first = match.captured(1).toInt();
    const int second = match.captured(2).toInt();
    if (second != first + 1 && second != (first + 1) % 100) return std::nullopt;
    return QStringLiteral("%1-%2").arg(first).arg(first + 1).toStdString();
}

/// The numbers of months by their names, long and short, in the languages of the program.
const QHash<QString, int>& MonthNames() {
    static const QHash<QString, int> names = [] {
        QHash<QString, int> made;
        for (const char* const language : {"en", "fr", "es", "ar", "ru"})
            for (int month = 1; month <= 12; ++month)
                for (const auto format : {QLocale::LongFormat, QLocale::ShortFormat}) {
                    const QLocale locale{QLatin1String(language)};
                    for (QString name : {locale.monthName(month, format), locale.standaloneMonthName(month, format)})
                        made.insert(name.remove(QLatin1Char('.')).toCaseFolded(), month);
                }
        return made;
    }();
    return names;
}

/// "Jan 2001", "2001 janvier": the month of a year; nothing for other texts.
std::optional<std::string> NamedMonth(const QString& text) {
    static const QRegularExpression form(QStringLiteral("^(?:([\\p{L}\\p{M}]+)\\.?[-./ ]+((?:1[0-9]|20|21)[0-9]{2})|"
                                                        "((?:1[0-9]|20|21)[0-9]{2})[-./ ]+([\\p{L}\\p{M}]+)\\.?)$"));
    const QRegularExpressionMatch match = form.match(text);
    const int month = MonthNames().value((match.captured(1) + match.captured(4)).toCaseFolded());
    if (month == 0) return std::nullopt;
    return QStringLiteral("%1.%2")
        .arg(match.captured(2) + match.captured(3))
        .arg(month, 2, 10, QLatin1Char('0'))
        .toStdString();
}

/// Four digits in a row, as every form has them: most texts of a file are no periods, and this tells soon.
bool HasYear(std::string_view text) {
    int digits = 0;
    for (const char c : text) {
        digits = c >= '0' && c <= '9' ? digits + 1 : 0;
        if (digits == 4) return true;
    }
    return false;
}

bool IsYear(std::string_view text) {
    return text.size() == 4 && (text[0] == '1' || (text[0] == '2' && text[1] < '2')) &&
           text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// "2001.05.01"
bool IsDay(std::string_view period) {
    return period.size() == 10 && period[4] == '.' && period[7] == '.';
}

/// The first or the last day of a month.
bool IsAtEndOfMonth(const std::string& day) {
    const QDate date = QDate::fromString(QString::fromStdString(day), QStringLiteral("yyyy.MM.dd"));
    return date.day() == 1 || (date.isValid() && date.day() == date.daysInMonth());
}

} // namespace

std::optional<std::string> ReadPeriod(std::string_view text) {
    if (IsYear(text)) return std::string(text);
    if (text.size() < 4 || text.size() > 40 || !HasYear(text)) return std::nullopt;
    const QString trimmed = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).trimmed();
    if (const auto split = SplitYears(trimmed)) return split;
    for (const PeriodForm& form : Forms()) {
        const QRegularExpressionMatch match = form.looks.match(trimmed);
        if (!match.hasMatch()) continue;
        QString written = QLatin1String(form.written);
        for (int i = match.lastCapturedIndex(); i > 0; --i)
            written.replace(QLatin1Char('%') + QString::number(i), match.captured(i));
        return written.toStdString();
    }
    return NamedMonth(trimmed);
}

std::string WithoutDay(std::string period, DateTells dates) {
    if (dates != DateTells::Day && IsDay(period)) period.resize(dates == DateTells::Month ? 7 : 4);
    return period;
}

DateTells FindDateTells(const std::vector<std::string>& texts) {
    bool areYears = true;
    bool areMonths = true;
    std::set<std::string> days;
    for (const std::string& text : texts) {
        const std::optional<std::string> period = ReadPeriod(text);
        if (!period || !IsDay(*period)) continue;
        areYears = areYears && (period->ends_with(".01.01") || period->ends_with(".12.31"));
        areMonths = areMonths && IsAtEndOfMonth(*period);
        days.insert(*period);
    }
    if (days.empty() || !areMonths) return DateTells::Day;
    return areYears && days.size() > 1 ? DateTells::Year : DateTells::Month;
}

bool LooksLikeDay(std::string_view text) {
    static const QRegularExpression form(
        QStringLiteral("^\\s*[0-9]{1,2}[./-][0-9]{1,2}[./-](?:[0-9]{2}|[0-9]{4})(?:\\s.*)?$"));
    return form.match(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))).hasMatch();
}

} // namespace tessaro
