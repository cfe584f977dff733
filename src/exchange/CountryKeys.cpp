#include "exchange/CountryKeys.h"

#include "exchange/SpellingKey.h"
#include "formats/CountryCodes.h"

#include <QStringList>

namespace tessaro {

namespace {

/// Names in tables of the United Nations and the World Bank, and former ones, beside the short names.
struct UsualNames {
    const char* alpha3;
    const char* names;
};
constexpr UsualNames kUsualNames[] = {
    {"ARE", "UAE"},
    {"BOL", "Bolivia (Plurinational State of)|Bolivia, Plurinational State of"},
    {"BRN", "Brunei Darussalam"},
    {"CIV", "Ivory Coast"},
    {"COD", "Congo, Dem. Rep.|Democratic Republic of the Congo|DR Congo|D.R. of the Congo|Zaire"},
    {"COG", "Congo, Rep.|Republic of the Congo"},
    {"CPV", "Cabo Verde|Cape Verde"},
    {"CZE", "Czech Republic|Czechia"},
    {"EGY", "Egypt, Arab Rep."},
    {"FSM", "Micronesia (Federated States of)|Micronesia, Fed. Sts."},
    {"GBR", "United Kingdom|Great Britain|UK|United Kingdom of Great Britain and Northern Ireland"},
    {"HKG", "Hong Kong|Hong Kong SAR, China|Hong Kong, China|China, Hong Kong Special Administrative Region"},
    {"IRN", "Iran (Islamic Republic of)|Iran, Islamic Rep."},
    {"KGZ", "Kyrgyz Republic"},
    {"KOR", "Korea, Rep.|Republic of Korea"},
    {"LAO", "Lao PDR|Lao People's Democratic Republic"},
    {"MAC", "Macao|Macao SAR, China|China, Macao Special Administrative Region"},
    {"MDA", "Republic of Moldova"},
    {"MKD", "Macedonia|FYR Macedonia|Macedonia, FYR|The former Yugoslav Republic of Macedonia"},
    {"MMR", "Myanmar|Burma"},
    {"NLD", "Netherlands|Netherlands (Kingdom of the)"},
    {"PRK", "Korea, Dem. People's Rep.|Democratic People's Republic of Korea"},
    {"PSE", "West Bank and Gaza|State of Palestine|Palestine|Occupied Palestinian Territory"},
    {"RUS", "Russian Federation"},
    {"SVK", "Slovak Republic"},
    {"SWZ", "Swaziland"},
    {"SYR", "Syrian Arab Republic"},
    {"TLS", "East Timor"},
    {"TUR", "Turkey|Türkiye"},
    {"TWN", "Taiwan, China|Chinese Taipei|Taiwan Province of China"},
    {"TZA", "United Republic of Tanzania"},
    {"USA", "United States|United States of America|USA|US"},
    {"VEN", "Venezuela (Bolivarian Republic of)|Venezuela, RB"},
    {"VIR", "Virgin Islands (U.S.)|United States Virgin Islands"},
    {"VNM", "Viet Nam"},
    {"YEM", "Yemen, Rep."}};

QHash<QString, QByteArray> ReadKeys() {
    QHash<QString, QByteArray> keys;
    for (const CountryCode& country : CountryCodes())
        for (const QString& name : country.names)
            keys.insert(SpellingKey(name), country.alpha3);
    for (const UsualNames& country : kUsualNames)
        for (const QString& name : QString::fromUtf8(country.names).split(QLatin1Char('|')))
            keys.insert(SpellingKey(name), country.alpha3);
    return keys;
}

} // namespace

const QHash<QString, QByteArray>& CountryKeys() {
    static const QHash<QString, QByteArray> keys = ReadKeys();
    return keys;
}

} // namespace tessaro
