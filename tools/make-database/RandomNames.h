#pragma once

#include <cstdint>
#include <string>

namespace tessaro::content {

/// A well-spread number that belongs to (seed, number): the same in every run and on every machine.
[[nodiscard]] std::uint64_t Scatter(std::uint64_t seed, std::uint64_t number);

/// A made-up place name of two to four syllables.
[[nodiscard]] std::string PlaceName(std::uint64_t random);
/// "Share of rural households": a made-up indicator, one of some hundreds; `number` keeps it apart from the others.
[[nodiscard]] std::string IndicatorName(int number);

/// Three characters, digits and capitals, that number a child below its parent.
[[nodiscard]] std::string ThreeCharacters(int number);

} // namespace tessaro::content
