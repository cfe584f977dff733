#include "session/DisplayValue.h"

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

} // namespace tessaro
