#include "calculate/Numbers.h"

#include "jet/values/Format.h"
#include "session/DisplayValue.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <string>

namespace tessaro {

namespace {

constexpr int kMostDecimals = 15;      ///< more than a double holds
constexpr int kSignificantDigits = 15; ///< of a number's text

/// The number that people mean by a sum like 3.6214999999999993: 3.6215. A half is a half then, as it is for ROUND in a
/// sheet, which takes a number as it is only when it rounds to whole ones.
double BeforeRounding(double number, int places) {
    return places == 0 ? number : QString::number(number, 'g', kSignificantDigits).toDouble();
}

} // namespace

QString ToDotDecimal(const QString& value) {
    QString text = value.trimmed();
    if (text.isEmpty()) return QStringLiteral("0");
    const QLocale locale = QLocale::system();
    text.replace(locale.decimalPoint(), QLatin1String(".")).replace(locale.negativeSign(), QLatin1String("-"));
    for (QChar& letter : text)
        if (letter.isDigit()) letter = QChar(static_cast<char16_t>(u'0' + letter.digitValue()));
    return text;
}

QString SumText(double sum) {
    constexpr int kSignificantDigits = 15;
    return QString::number(sum, 'g', kSignificantDigits);
}

std::optional<int> DecimalsTyped(const QString& decimals) {
    const auto number = NumberTyped(decimals);
    if (!number) return std::nullopt;
    return static_cast<int>(std::clamp(std::round(*number), 0.0, static_cast<double>(kMostDecimals)));
}

QString FormatToDecimals(const QString& value, const QString& decimals) {
    const auto places = DecimalsTyped(decimals);
    const auto number = NumberOf(value);
    if (!places || !number) return value;
    const std::string mask = *places == 0 ? "0" : "." + std::string(static_cast<std::size_t>(*places), '0');
    return QString::fromStdString(jet::Format(jet::Value(BeforeRounding(*number, *places)), mask));
}

} // namespace tessaro
