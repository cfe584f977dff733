#include "exchange/AreaMatcher.h"

#include "exchange/SpellingKey.h"

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

const std::vector<TargetArea>& Areas() {
    static const std::vector<TargetArea> areas{
        {1, "AFR", "-AFR", 1, {"Africa", "Afrique"}},
        {2, "AFRKEN", "-KEN", 2, {"Kenya", "Kenya", "كينيا"}},
        {3, "AFRCIV", "-CIV", 2, {"Côte d'Ivoire", "Côte d'Ivoire"}},
        {4, "AFRCOD", "-COD", 2, {"Democratic Republic of the Congo", "République démocratique du Congo"}},
        {5, "AFRCOG", "-COG", 2, {"Republic of the Congo", "République du Congo"}},
        {6, "NAMUSA", "{F00}", 2, {"United States", "États-Unis"}},
        {7, "NAMUSAGEO", "{F01}", 3, {"Georgia", "Géorgie"}},
        {8, "ASIGEO", "-GEO", 2, {"Georgia", "Géorgie"}},
        {9, "NAMKNA", "-KNA", 2, {"Saint Kitts and Nevis", "Saint-Christophe-et-Niévès"}}};
    return areas;
}

int Found(std::string_view id, std::string_view name, const std::vector<AreaChoice>& choices = {}) {
    AreaMatcher matcher(Areas(), choices);
    const AreaMatch match = matcher.Match(id, name);
    switch (match.found) {
    case AreaFound::One:
        return match.number;
    case AreaFound::None:
        return 0;
    case AreaFound::Several:
        return -1;
    case AreaFound::LeftOut:
        return -2;
    }
    return -3;
}

TEST(AreaMatcherTest, FindsAreasByIdCodeAndSpelling) {
    const struct {
        const char* id;
        const char* name;
        int area; ///< 0: none, -1: several
    } cases[] = {{"AFRKEN", "", 2},
                 {"afrken", "no such", 2},
                 {"KEN", "", 2},
                 {"ke", "", 2},
                 {"404", "", 2},
                 {"USA", "", 6},
                 {"US", "", 6},
                 {"", "US", 6},
                 {"", "  kenya ", 2},
                 {"", "كينيا", 2},
                 {"", "COTE D'IVOIRE", 3},
                 {"", "Cote d\u2019Ivoire", 3},
                 {"", "Congo, Dem. Rep.", 4},
                 {"", "Congo, Rep.", 5},
                 {"", "REPUBLIQUE DEMOCRATIQUE DU CONGO", 4},
                 {"", "St. Kitts & Nevis", 9},
                 {"", "Etats Unis", 6},
                 {"no such", "Kenya", 2},
                 {"", "Georgia", -1},
                 {"GEO", "Georgia", 8},
                 {"GE", "", 8},
                 {"NAMUSAGEO", "Georgia", 7},
                 {"", "Atlantis", 0},
                 {"", "", 0}};
    for (const auto& one : cases)
        EXPECT_EQ(Found(one.id, one.name), one.area) << one.id << "; " << one.name;
}

TEST(AreaMatcherTest, KeepsToTheUsersChoices) {
    const std::vector<AreaChoice> choices{{QStringLiteral("Georgia"), QStringLiteral("NAMUSAGEO")},
                                          {QStringLiteral("World"), QString()},
                                          {QStringLiteral("Kenya"), QStringLiteral("gone")}};
    EXPECT_EQ(Found("", "georgia", choices), 7);
    EXPECT_EQ(Found("", "World", choices), -2);
    EXPECT_EQ(Found("", "Kenya", choices), 2);
}

TEST(AreaMatcherTest, KnowsTheUsualNamesOfCountries) {
    const std::vector<TargetArea> areas{{1, "ASIIRN", "-IRN", 2, {"Iran, Islamic Republic of"}},
                                        {2, "ASIKOR", "-KOR", 2, {"Korea, Republic of"}},
                                        {3, "ASIPRK", "-PRK", 2, {"Korea, Democratic People's Republic of"}},
                                        {4, "AMEVEN", "-VEN", 2, {"Venezuela, Bolivarian Republic of"}},
                                        {5, "ASITUR", "-TUR", 2, {"Türkiye"}},
                                        {6, "AMEUSAIRN", "{1}", 3, {"Iron"}},
                                        {7, "AMEUSATUR", "{2}", 3, {"Swaziland"}},
                                        {8, "AFRSWZ", "-SWZ", 2, {"Eswatini"}}};
    AreaMatcher matcher(areas, {});
    const std::pair<const char*, int> cases[] = {
        {"Iran", 1},        {"IRAN, Islamic Rep.", 1}, {"South Korea", 2}, {"Corée du Nord", 3},
        {"Korea, Rep.", 2}, {"Venezuela, RB", 4},      {"Turkey", 5},      {"تركيا", 5},
        {"Иран", 1},        {"Swaziland", 7}};
    for (const auto& [name, number] : cases)
        EXPECT_EQ(matcher.Match("", name).number, number) << name;
    EXPECT_EQ(matcher.Nearest("Irann", 1).front()->number, 6) << "one letter apart";
    EXPECT_EQ(matcher.Nearest("Republic of Iran", 1).front()->number, 1) << "all its words";
}

TEST(AreaMatcherTest, OffersTheNearestNames) {
    const AreaMatcher matcher(Areas(), {});
    const auto nearest = [&](const char* text) {
        const auto areas = matcher.Nearest(text, 3);
        return areas.empty() ? std::string() : areas.front()->id;
    };
    EXPECT_EQ(nearest("Kenia"), "AFRKEN");
    EXPECT_EQ(nearest("United States of America"), "NAMUSA");
    EXPECT_EQ(nearest("Gerogia"), "NAMUSAGEO");
    EXPECT_EQ(nearest("Xyzzyplugh"), "");
    EXPECT_EQ(LettersApart(QStringLiteral("abcd"), QStringLiteral("acbd"), 3), 1);
    EXPECT_EQ(LettersApart(QStringLiteral("abcd"), QStringLiteral("x"), 2), 3);
}

} // namespace
} // namespace tessaro::test
