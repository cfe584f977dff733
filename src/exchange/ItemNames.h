#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tessaro {

/// Look-up of texts by pieces of other texts, without making a copy of them.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};
template <class Held> using TextMap = std::unordered_map<std::string, Held, TextHash, std::equal_to<>>;

/// A text without the blanks around it.
[[nodiscard]] std::string_view WithoutBlanks(std::string_view text);

/// The items of one kind by their names, ignoring case: those of the database with numbers above 0, and those that a
/// file adds, which are numbered -1, -2 and so on.
class ItemNames final {
  public:
    /// The most names that a file may add.
    static constexpr std::size_t kMostMade = 500'000;

    /// An item of the database under one of its names. Of two items with one name the first counts.
    void Know(const std::string& name, int number);
    /// The number of the item with this name; a new name gets one. 0 when there are too many.
    [[nodiscard]] int NumberOf(std::string_view name);
    /// The same without making one: 0 for a name that isn't there.
    [[nodiscard]] int Find(std::string_view name) const;
    /// Those that were added, the one with number -1 first.
    [[nodiscard]] const std::vector<std::string>& Made() const { return made_; }
    /// The first name of an item; empty for a number that isn't there.
    [[nodiscard]] std::string NameOf(int number) const;

  private:
    TextMap<int> spelt_;  ///< as texts have been asked for
    TextMap<int> folded_; ///< without case
    std::unordered_map<int, std::string> names_;
    std::vector<std::string> made_;
    std::string last_;
    int lastNumber_ = 0;
};

} // namespace tessaro
