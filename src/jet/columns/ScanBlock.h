#pragma once

#include "jet/columns/ColumnImage.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace jet {

/// Place of a row that belongs to no group.
inline constexpr std::uint32_t kNoPlace = 0xFFFFFFFF;

/// The rows of a block of the image that are still in, as numbers of the image, and the place of each.
struct ScanBlock {
    std::array<std::uint32_t, kBlockRows> rows;
    std::array<std::uint32_t, kBlockRows> places;
    std::size_t count = 0;

    /// Keeps the rows for which the test gives true.
    template <class Test> void Keep(const Test& test) {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint32_t row = rows[i];
            rows[kept] = row;
            kept += test(row) ? 1U : 0U;
        }
        count = kept;
    }
};

template <class Code> std::uint32_t CodeAt(const unsigned char* codes, std::uint32_t row) {
    Code code = 0;
    std::memcpy(&code, codes + row * sizeof(Code), sizeof(Code));
    return code;
}

/// Calls `work` with a function that gives the code of a row.
template <class Work> void WithCodes(const ImageColumn& column, const Work& work) {
    const unsigned char* const codes = column.codes;
    if (column.width == 1) work([codes](std::uint32_t row) { return CodeAt<std::uint8_t>(codes, row); });
    if (column.width == 2) work([codes](std::uint32_t row) { return CodeAt<std::uint16_t>(codes, row); });
    if (column.width == 4) work([codes](std::uint32_t row) { return CodeAt<std::uint32_t>(codes, row); });
}

} // namespace jet
