#include "formats/CountryCodes.h"

#include <unicode/uloc.h>
#include <unicode/uregion.h>

namespace tessaro {

namespace {

QList<CountryCode> ReadCodes() {
    QList<CountryCode> codes;
    for (const char* const* country = uloc_getISOCountries(); *country != nullptr; ++country) {
        UErrorCode status = U_ZERO_ERROR;
        const URegion* const region = uregion_getRegionFromCode(*country, &status);
        const QByteArray alpha3 = uloc_getISO3Country((QByteArray("und_") + *country).constData());
        const int32_t number = region != nullptr ? uregion_getNumericCode(region) : 0;
        if (alpha3.isEmpty()) continue;
        codes.append({*country, alpha3, number > 0 ? QByteArray::number(number).rightJustified(3, '0') : QByteArray()});
    }
    return codes;
}

} // namespace

const QList<CountryCode>& CountryCodes() {
    static const QList<CountryCode> codes = ReadCodes();
    return codes;
}

} // namespace tessaro
