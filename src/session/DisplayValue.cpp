#include "session/DisplayValue.h"

#include "jet/values/Format.h"
#include "session/Session.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessaro {

namespace {

struct Parts {
    QStringView sign, whole, fraction, exponent;
    bool hasPoint = false;
    bool good = false;
};

bool IsDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

QStringView TakeDigits(QStringView& rest) {
    qsizetype length = 0;
    while (length < rest.size() && IsDigit(rest[length]))
        ++length;
    const QStringView digits = rest.first(length);
    rest = rest.sliced(length);
    return digits;
}

Parts Split(QStringView text) {
    QStringView rest = text.trimmed();
    Parts parts;
    if (rest.startsWith(QLatin1Char('-')) || rest.startsWith(QLatin1Char('+'))) {
        parts.sign = rest.first(1);
        rest = rest.sliced(1);
    }
    parts.whole = TakeDigits(rest);
    if (rest.startsWith(QLatin1Char('.'))) {
        parts.hasPoint = true;
        rest = rest.sliced(1);
        parts.fraction = TakeDigits(rest);
    }
    if (rest.startsWith(QLatin1Char('e'), Qt::CaseInsensitive)) {
        QStringView power = rest.sliced(1);
        if (power.startsWith(QLatin1Char('-')) || power.startsWith(QLatin1Char('+'))) power = power.sliced(1);
        if (!TakeDigits(power).isEmpty() && power.isEmpty()) parts.exponent = std::exchange(rest, {});
    }
    parts.good = rest.isEmpty() && !(parts.whole.isEmpty() && parts.fraction.isEmpty());
    return parts;
}

} // namespace

bool ReadsAsNumber(const QString& datavalue) {
    return Split(datavalue).good;
}

std::optional<double> NumberOf(const QString& datavalue) {
    if (!ReadsAsNumber(datavalue)) return std::nullopt;
    bool read = false;
    const double number = datavalue.trimmed().toDouble(&read);
    return read && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

QString WithSeparators(const QString& datavalue, const QLocale& locale) {
    const Parts parts = Split(datavalue);
    if (!parts.good) return datavalue;
    // Taken apart as text: a double would cut long values and drop the zeros that tell their precision.
    QString shown = parts.sign.toString();
    for (qsizetype place = 0; place < parts.whole.size(); ++place) {
        const qsizetype left = parts.whole.size() - place;
        if (place > 0 && left % 3 == 0) shown += locale.groupSeparator();
        shown += parts.whole[place];
    }
    if (parts.hasPoint) shown += locale.decimalPoint() + parts.fraction.toString();
    return shown + parts.exponent.toString();
}

QString WithDecimals(double value, int decimals) {
    const std::string mask = "0" + (decimals > 0 ? "." + std::string(static_cast<std::size_t>(decimals), '0') : "");
    const std::string text = jet::Format(jet::Value(value), mask);
    return QString::fromStdString(text);
}

QString InDigitsOf(const QLocale& locale, QString text) {
    const QString zero = locale.zeroDigit();
    if (zero.size() != 1) return text;
    for (QChar& letter : text)
        if (IsDigit(letter)) letter = QChar(static_cast<char16_t>(zero.front().unicode() + letter.digitValue()));
    return text;
}

QString DisplayedValue(const QString& datavalue) {
    const QString shown = FiledValue(datavalue);
    return SysNumFormat && ReadsAsNumber(datavalue) ? InDigitsOf(QLocale::system(), shown) : shown;
}

QString FiledValue(const QString& datavalue) {
    return SysNumFormat ? WithSeparators(datavalue.trimmed(), QLocale::system()) : datavalue.trimmed();
}

namespace {

std::optional<double> Finite(double number, bool read) {
    return read && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<double> InDataForm(const QString& text) {
    bool read = false;
    const double number = text.toDouble(&read); // no groups: "1,234" may be meant as a fraction
    return Finite(number, read);
}

/// True when the parts between group separators can be a number's groups: a zero begins none ("0.125" is no 125).
bool AreGroups(const QStringList& parts) {
    if (parts.size() == 1) return true;
    const QString first = QString(parts.front()).remove(QLatin1Char('-'));
    if (first.isEmpty() || first.size() > 3 || first == QLatin1String("0") || parts.back().size() != 3) return false;
    return std::all_of(parts.begin() + 1, parts.end(),
                       [](const QString& part) { return part.size() == 2 || part.size() == 3; });
}

/// Groups are taken out beforehand: some locales, as the Spanish one, won't read them in numbers of four digits.
std::optional<double> InLocaleForm(const QString& text, QLocale locale) {
    const QString point = locale.decimalPoint();
    QString group = locale.groupSeparator();
    QString whole = text.section(point, 0, 0);
    if (group.size() == 1 && group.front().isSpace()) { // keyboards have one kind of blank only
        group = QStringLiteral(" ");
        for (QChar& letter : whole)
            if (letter.isSpace()) letter = QLatin1Char(' ');
    }
    const QStringList parts = group.isEmpty() ? QStringList{whole} : whole.split(group);
    if (!AreGroups(parts)) return std::nullopt;
    locale.setNumberOptions(QLocale::RejectGroupSeparator);
    bool read = false;
    const double number = locale.toDouble(parts.join(QString()) + text.mid(whole.size()), &read);
    return Finite(number, read);
}

} // namespace

std::optional<double> NumberTyped(const QString& text, const QLocale& locale, bool separators) {
    QString typed = text.trimmed();
    typed.removeIf([](QChar letter) { return letter.category() == QChar::Other_Format; }); // marks of direction
    if (separators)
        if (const auto number = InLocaleForm(typed, locale)) return number;
    if (const auto number = InDataForm(typed)) return number;
    return InLocaleForm(typed, locale);
}

std::optional<double> NumberTyped(const QString& text) {
    return NumberTyped(text, QLocale::system(), SysNumFormat);
}

} // namespace tessaro
