#include "exchange/ItemNames.h"

#include "jet/values/Collation.h"

namespace tessaro {

namespace {

/// Spellings that are kept beside the folded names, so that a file of many of them takes no more memory than this.
constexpr std::size_t kMostSpellings = 100'000;

} // namespace

std::string_view WithoutBlanks(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

void ItemNames::Know(const std::string& name, int number) {
    folded_.try_emplace(jet::Folded(WithoutBlanks(name)), number);
    names_.try_emplace(number, name);
}

int ItemNames::Find(std::string_view name) const {
    const auto found = folded_.find(jet::Folded(WithoutBlanks(name)));
    return found == folded_.end() ? 0 : found->second;
}

int ItemNames::NumberOf(std::string_view name) {
    if (lastNumber_ != 0 && name == last_) return lastNumber_;
    const auto spelt = spelt_.find(name);
    int number = spelt != spelt_.end() ? spelt->second : Find(name);
    if (number == 0) {
        if (made_.size() >= kMostMade) return 0;
        made_.emplace_back(WithoutBlanks(name));
        number = -static_cast<int>(made_.size());
        folded_.emplace(jet::Folded(made_.back()), number);
    }
    if (spelt == spelt_.end() && spelt_.size() < kMostSpellings) spelt_.emplace(name, number);
    last_ = name;
    lastNumber_ = number;
    return number;
}

std::string ItemNames::NameOf(int number) const {
    if (number < 0 && static_cast<std::size_t>(-number) <= made_.size())
        return made_[static_cast<std::size_t>(-number) - 1];
    const auto found = names_.find(number);
    return found == names_.end() ? std::string() : found->second;
}

} // namespace tessaro
