#include "RandomNames.h"

#include <array>
#include <string_view>

namespace tessaro::content {

std::uint64_t Scatter(std::uint64_t seed, std::uint64_t number) {
    std::uint64_t mixed = seed * 0x9E3779B97F4A7C15U + number * 0xD1B54A32D192ED03U + 0x632BE59BD9B4E019U;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
    return mixed ^ (mixed >> 31);
}

std::string PlaceName(std::uint64_t random) {
    static constexpr std::array<std::string_view, 24> syllables = {
        "ka", "lo",  "mir", "ta", "ven", "do",  "sa", "rin", "bel", "or", "un",  "za",
        "pe", "gar", "nim", "te", "wa",  "hol", "is", "ru",  "fen", "mo", "qua", "li"};
    std::string name;
    for (std::uint64_t left = 2 + random % 3; left > 0; --left) {
        random /= 7;
        name += syllables[random % syllables.size()];
    }
    name.front() = static_cast<char>(name.front() - 'a' + 'A');
    return name;
}

std::string IndicatorName(int number) {
    static constexpr std::array<std::string_view, 8> measures = {"Share of",  "Number of", "Growth of",  "Spending on",
                                                                 "Access to", "Cost of",   "Density of", "Coverage of"};
    static constexpr std::array<std::string_view, 20> subjects = {
        "rural households", "primary schools", "clean water",      "health workers",  "paved roads",
        "irrigated land",   "small firms",     "forest cover",     "vaccinations",    "electricity",
        "teachers",         "mobile phones",   "public transport", "food production", "safe sanitation",
        "urban housing",    "savings",         "exports",          "apprenticeships", "renewable energy"};
    const auto index = static_cast<std::size_t>(number);
    std::string name(measures[index % measures.size()]);
    name.append(" ").append(subjects[index / measures.size() % subjects.size()]);
    const std::size_t round = index / (measures.size() * subjects.size());
    if (round > 0) name += ", series " + std::to_string(round + 1);
    return name;
}

std::string ThreeCharacters(int number) {
    static constexpr std::string_view digits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    std::string text(3, '0');
    for (auto place = text.rbegin(); place != text.rend(); ++place) {
        *place = digits[static_cast<std::size_t>(number % 36)];
        number /= 36;
    }
    return text;
}

} // namespace tessaro::content
