#include "exchange/AreaMatcher.h"

#include "exchange/CountryKeys.h"
#include "exchange/SpellingKey.h"
#include "formats/CountryCodes.h"
#include "jet/values/Collation.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr std::size_t kMostSeen = 200'000;

/// What stands under a name; a second area under it makes it ambiguous.
void Know(TextMap<AreaMatch>& map, const std::string& text, int number) {
    if (text.empty()) return;
    const auto [found, isNew] = map.try_emplace(text, AreaMatch{AreaFound::One, number});
    if (!isNew && found->second.number != number) found->second = {AreaFound::Several, 0};
}

std::string KeyOf(std::string_view name) {
    return SpellingKey(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()))).toStdString();
}

const AreaMatch* FoundIn(const TextMap<AreaMatch>& map, const std::string& text) {
    const auto found = map.find(text);
    return found == map.end() ? nullptr : &found->second;
}

bool HoldsWords(const QString& key, const QStringList& words) {
    return std::ranges::all_of(words, [&key](const QString& word) { return key.contains(word); });
}

/// The global identifier without the sign of a global item: "KEN" for "-KEN".
std::string BareGId(const std::string& gid) {
    return gid.starts_with('-') ? gid.substr(1) : gid;
}

} // namespace

AreaMatcher::AreaMatcher(const std::vector<TargetArea>& areas, const std::vector<AreaChoice>& choices) : areas_(areas) {
    TextMap<int> numberOf;
    for (const TargetArea& area : areas) {
        Know(ids_, jet::Folded(area.id), area.number);
        numberOf.try_emplace(jet::Folded(area.id), area.number);
        for (const std::string& name : area.names) {
            Know(names_, jet::Folded(WithoutBlanks(name)), area.number);
            const QString key = SpellingKey(QString::fromStdString(name));
            Know(keys_, key.toStdString(), area.number);
            if (nameKeys_.empty() || nameKeys_.back().second != &area || nameKeys_.back().first != key)
                nameKeys_.emplace_back(key, &area);
        }
    }
    for (const TargetArea& area : areas)
        KnowCode(BareGId(area.gid), area.number);
    KnowCodes();
    for (const AreaChoice& choice : choices) {
        const auto found = numberOf.find(jet::Folded(choice.areaId.toStdString()));
        const std::string text = jet::Folded(WithoutBlanks(choice.text.toStdString()));
        if (choice.areaId.isEmpty()) choices_[text] = {AreaFound::LeftOut, 0};
        if (found != numberOf.end()) choices_[text] = {AreaFound::One, found->second};
    }
}

void AreaMatcher::KnowCode(const std::string& code, int number) {
    if (!code.empty()) ids_.try_emplace(jet::Folded(code), AreaMatch{AreaFound::One, number});
}

/// The codes of countries go by the three letters that an area has for its global identifier, or at the end of its id
/// on the second level.
void AreaMatcher::KnowCodes() {
    TextMap<AreaMatch> alpha3;
    for (const TargetArea& area : areas_)
        if (area.id.size() == 6) Know(alpha3, area.id.substr(3), area.number);
    for (const TargetArea& area : areas_)
        if (const std::string code = BareGId(area.gid); code.size() == 3) alpha3[code] = {AreaFound::One, area.number};
    for (const CountryCode& country : CountryCodes()) {
        const AreaMatch* const match = FoundIn(alpha3, country.alpha3.toStdString());
        if (match == nullptr || match->found != AreaFound::One) continue;
        KnowCode(country.alpha3.toStdString(), match->number);
        KnowCode(country.alpha2.toStdString(), match->number);
        KnowCode(country.numeric.toStdString(), match->number);
    }
    for (auto name = CountryKeys().begin(); name != CountryKeys().end(); ++name)
        if (const AreaMatch* const match = FoundIn(alpha3, name.value().toStdString());
            match != nullptr && match->found == AreaFound::One)
            keys_.try_emplace(name.key().toStdString(), *match);
}

AreaMatch AreaMatcher::Look(std::string_view text) const {
    const std::string folded = jet::Folded(WithoutBlanks(text));
    if (folded.empty()) return {};
    for (const TextMap<AreaMatch>* const map : {&choices_, &ids_, &names_})
        if (const AreaMatch* const match = FoundIn(*map, folded)) return *match;
    if (const AreaMatch* const match = FoundIn(keys_, KeyOf(text))) return *match;
    // "KEN: Kenya": a code with its name.
    const std::size_t colon = text.find(": ");
    return colon != std::string_view::npos ? Look(text.substr(0, colon)) : AreaMatch{};
}

AreaMatch AreaMatcher::Match(std::string_view id, std::string_view name) {
    std::string both(id);
    both.append(1, '\0').append(name);
    if (both == last_) return lastMatch_;
    const auto seen = seen_.find(both);
    AreaMatch match = seen != seen_.end() ? seen->second : Look(id);
    if (seen == seen_.end()) {
        if (match.found == AreaFound::None || match.found == AreaFound::Several)
            if (const AreaMatch byName = Look(name); byName.found != AreaFound::None) match = byName;
        if (seen_.size() < kMostSeen) seen_.emplace(both, match);
    }
    last_ = std::move(both);
    lastMatch_ = match;
    return match;
}

std::vector<const TargetArea*> AreaMatcher::Nearest(const std::string& text, std::size_t count) const {
    constexpr int most = 6;
    const QString key = SpellingKey(QString::fromStdString(text));
    const QStringList words = key.split(QLatin1Char(' '));
    const int enough = std::max<int>(2, static_cast<int>(key.size()) / 3);
    std::vector<std::pair<int, const TargetArea*>> near;
    for (const auto& [other, area] : nameKeys_) {
        const bool holds = key.size() > 3 && other.size() > 3 && (HoldsWords(other, words) || key.contains(other));
        const int apart = key == other ? 0 : holds ? 1 : LettersApart(key, other, std::min(enough, most));
        if (apart > std::min(enough, most)) continue;
        // The names of an area stand together.
        if (near.empty() || near.back().second != area)
            near.emplace_back(apart, area);
        else
            near.back().first = std::min(near.back().first, apart);
    }
    std::ranges::stable_sort(near, {}, &std::pair<int, const TargetArea*>::first);
    std::vector<const TargetArea*> areas;
    for (const auto& [apart, area] : near)
        if (areas.size() < count) areas.push_back(area);
    return areas;
}

} // namespace tessaro
