#pragma once

#include "jet/columns/FileMark.h"

#include <array>
#include <cstddef>
#include <cstdint>

/// How the file of a column image is laid out: the head, one entry a column, then the sections that the entries point
/// to, each from a multiple of 64 bytes on. Numbers stand as the machine has them; the file never leaves it.
namespace jet::image {

inline constexpr std::array<char, 8> kMagic = {'J', 'E', 'T', 'C', 'O', 'L', '0', '1'};
inline constexpr std::size_t kAlignment = 64;
inline constexpr std::size_t kMostColumns = 32;
inline constexpr std::size_t kLongestName = 64;

struct Head {
    std::array<char, 8> magic = kMagic;
    std::uint64_t sum = 0; ///< of all bytes of the file, with 0 here
    std::uint64_t bytes = 0;
    std::uint64_t subject = 0;
    FileMark mark;
    std::uint64_t rows = 0;
    std::uint64_t columns = 0;
};

struct Section {
    std::uint64_t start = 0;
    std::uint64_t bytes = 0;
};

struct Entry {
    std::array<char, kLongestName> name{};
    std::uint8_t form = 0;
    std::uint8_t width = 0;
    std::uint8_t hasNull = 0;
    std::array<std::uint8_t, 5> unused{};
    std::int64_t first = 0;
    Section numbers, counts, codes, plain, values, kinds, textRows, textEnds, textBytes;
};

/// A sum over bytes that tells damage, not intent.
[[nodiscard]] std::uint64_t SumOf(const unsigned char* bytes, std::size_t count);
/// The sum that belongs into the head of a file.
[[nodiscard]] std::uint64_t SumOfFile(const unsigned char* start, std::size_t bytes);

} // namespace jet::image
