#include "exchange/HeadWords.h"

#include "exchange/SpellingKey.h"

#include <QHash>
#include <QStringList>

namespace tessaro {

namespace {

/// The usual heads of a role, in English, French, Spanish, Arabic and Russian, and those of exchange formats.
struct HeadWordList {
    Role role;
    const char* heads;
};
constexpr HeadWordList kHeads[] = {
    {Role::Time, "time|year|years|period|date|time period|time_period|timeperiod|reference period|année|annee|période|"
                 "temps|año|ano|período|periodo|tiempo|fecha|السنة|سنة|الفترة|الفترة الزمنية|год|годы|период|время"},
    {Role::AreaId,
     "area id|areaid|area code|area_code|country code|country_code|iso3|iso 3|iso|iso code|iso2|iso alpha 3|ref_area|"
     "ref area|geo code|geocode|region code|location code|"
     "code de zone|code pays|código de área|código de país|رمز المنطقة|код территории|код страны"},
    {Role::AreaName,
     "area|area name|areaname|country|country name|country or area|countries|territory|region|region name|geo|"
     "geography|geopolitical entity (reporting)|location|state|province|district|place|zone|nom de zone|pays|région|"
     "territoire|área|nombre del área|país|región|territorio|المنطقة|اسم المنطقة|البلد|الدولة|территория|"
     "название территории|страна|регион"},
    {Role::Indicator, "indicator|indicator name|series|series name|series_name|variable|measure|contents|subject|item|"
                      "indicateur|série|indicador|serie|المؤشر|показатель|индикатор"},
    {Role::Unit, "unit|units|unit of measure|unit_measure|unit measure|measurement unit|unité|unités|unité de mesure|"
                 "unidad|unidad de medida|الوحدة|وحدة القياس|единица|единица измерения"},
    {Role::Subgroup,
     "subgroup|sub group|subpopulation|subpop|group|population group|sex|age|sex and age|disaggregation|"
     "sous-groupe|sexe|subgrupo|sexo|المجموعة الفرعية|الجنس|подгруппа|пол"},
    {Role::Source, "source|sources|data source|dataset|survey|fuente|المصدر|источник"},
    {Role::Value, "value|values|factvaluenumeric|data value|datavalue|obs_value|obs value|observation|observation "
                  "value|valeur|donnée|"
                  "valor|dato|القيمة|значение"},
    {Role::Footnote, "footnote|footnotes|note|notes|comment|comments|comment_obs|note de bas de page|remarque|nota|"
                     "notas al pie|حاشية|сноска|примечание"}};

const QHash<QString, Role>& RolesOfHeads() {
    static const QHash<QString, Role> roles = [] {
        QHash<QString, Role> made;
        for (const HeadWordList& list : kHeads)
            for (const QString& head : QString::fromUtf8(list.heads).split(QLatin1Char('|')))
                made.insert(SpellingKey(head), list.role);
        return made;
    }();
    return roles;
}

bool HasWord(const char* words, const QString& text) {
    const QString key = SpellingKey(text);
    for (const QString& word : QString::fromUtf8(words).split(QLatin1Char('|')))
        if (SpellingKey(word) == key) return true;
    return false;
}

constexpr auto kTotals =
    "total|all|both sexes|both|t|totals|tous|ensemble|todos|ambos sexos|المجموع|الإجمالي|всего|оба пола";

} // namespace

bool IsTotal(const QString& text) {
    return HasWord(kTotals, text);
}

bool IsWordOf(Role role, const QString& text) {
    if (role == Role::Unit)
        return text == QLatin1String("%") ||
               HasWord("number|percent|per cent|percentage|rate|ratio|index|thousands|millions|persons|people|nombre|"
                       "pourcentage|pour cent|taux|indice|milliers|número|porcentaje|por ciento|tasa|índice|miles|"
                       "millones|عدد|نسبة|نسبة مئوية|число|процент|процентов|тысяч|млн",
                       text);
    return role == Role::Subgroup &&
           (IsTotal(text) ||
            HasWord("male|female|males|females|men|women|boys|girls|urban|rural|hommes|femmes|garçons|filles|urbain|"
                    "hombres|mujeres|niños|niñas|urbano|ذكور|إناث|حضر|ريف|мужчины|женщины|мальчики|девочки|город|село",
                    text));
}

Role RoleOfHead(const QString& head) {
    // A column beside another one, with its codes.
    static const QString codes = QStringLiteral(" (code)");
    if (head.endsWith(codes, Qt::CaseInsensitive)) {
        const Role role = RoleOfHead(head.chopped(codes.size()));
        return role == Role::AreaName || role == Role::AreaId ? Role::AreaId : Role::LeftOut;
    }
    // "REF_AREA: Reference area": a concept with its name.
    if (const qsizetype colon = head.indexOf(QLatin1String(": ")); colon > 0)
        if (const Role role = RoleOfHead(head.left(colon)); role != Role::LeftOut) return role;
    const Role known = RolesOfHeads().value(SpellingKey(head), Role::LeftOut);
    if (known != Role::LeftOut) return known;
    // The program's own captions, whatever the language.
    for (int i = 1; i < kRoles; ++i)
        if (CaptionOf(static_cast<Role>(i)).compare(head.trimmed(), Qt::CaseInsensitive) == 0)
            return static_cast<Role>(i);
    return Role::LeftOut;
}

} // namespace tessaro
