#pragma once

#include <QByteArray>
#include <QList>

namespace tessaro {

/// The codes of a country by ISO 3166-1.
struct CountryCode {
    QByteArray alpha2;
    QByteArray alpha3;
    QByteArray numeric; ///< three digits
};

/// All countries that ICU knows.
[[nodiscard]] const QList<CountryCode>& CountryCodes();

} // namespace tessaro
