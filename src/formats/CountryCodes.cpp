#include "formats/CountryCodes.h"

#include <iterator>
#include <unicode/uloc.h>
#include <unicode/uregion.h>

namespace tessaro {

namespace {

QStringList NamesOf(const QByteArray& alpha2) {
    QStringList names;
    const QByteArray country = "und_" + alpha2;
    for (const char* const language : {"en", "fr", "es", "ar", "ru"}) {
        char16_t name[200];
        UErrorCode status = U_ZERO_ERROR;
        const int32_t length = uloc_getDisplayCountry(country.constData(), language, name, std::size(name), &status);
        if (U_SUCCESS(status) && length > 0) names << QString::fromUtf16(name, length);
    }
    return names;
}

QList<CountryCode> ReadCodes() {
    QList<CountryCode> codes;
    for (const char* const* country = uloc_getISOCountries(); *country != nullptr; ++country) {
        UErrorCode status = U_ZERO_ERROR;
        const URegion* const region = uregion_getRegionFromCode(*country, &status);
        const QByteArray alpha3 = uloc_getISO3Country((QByteArray("und_") + *country).constData());
        const int32_t number = region != nullptr ? uregion_getNumericCode(region) : 0;
        if (alpha3.isEmpty()) continue;
        codes.append({*country, alpha3, number > 0 ? QByteArray::number(number).rightJustified(3, '0') : QByteArray(),
                      NamesOf(*country)});
    }
    return codes;
}

} // namespace

const QList<CountryCode>& CountryCodes() {
    static const QList<CountryCode> codes = ReadCodes();
    return codes;
}

} // namespace tessaro
