#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

namespace tessaro {

/// The codes of a country by ISO 3166-1.
struct CountryCode {
    QByteArray alpha2;
    QByteArray alpha3;
    QByteArray numeric; ///< three digits
    QStringList names;  ///< short ones in the languages of the program, as Unicode's locale data has them
};

/// All countries that ICU knows.
[[nodiscard]] const QList<CountryCode>& CountryCodes();

} // namespace tessaro
