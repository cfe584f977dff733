#pragma once

#include <cstdint>
#include <random>
#include <string>

namespace jet::test {

/// Statements at random over the tables of ScanDatabase, most of them of the shapes that are run on a column
/// image. The same seed gives the same statements.
class RandomScans {
  public:
    explicit RandomScans(std::uint64_t seed) : random_(seed) {}
    [[nodiscard]] std::string Next();

  private:
    [[nodiscard]] bool Chance(unsigned percent) { return random_() % 100 < percent; }
    template <class List> auto OneOf(const List& list) { return *(std::begin(list) + random_() % std::size(list)); }
    std::string Group(int most);
    std::string OfWizards();
    std::string CrossFilter();
    std::string OfRows();
    std::string Arm(const std::string& group, bool into);
    std::string From();
    std::string Conditions();

    std::mt19937_64 random_;
};

} // namespace jet::test
