#pragma once

#include <cstdint>
#include <string>

namespace tessaro {

/// A value that waits to be written, with the numbers of what it belongs to: above 0 in the database, below 0 for what
/// is to be made.
struct StagedValue {
    std::int64_t row = 0; ///< of the file
    int combination = 0;
    int source = 0;
    int area = 0;
    int period = 0;
    int footnote = 0;  ///< 0: none
    std::string value; ///< of at most 255 bytes

    /// Whether both belong to the same indicator, source, area and period.
    [[nodiscard]] bool HasKeyOf(const StagedValue& other) const {
        return combination == other.combination && source == other.source && area == other.area &&
               period == other.period;
    }
    /// Whether the database may have a value of the same key.
    [[nodiscard]] bool IsOfKnownItems() const { return combination > 0 && source > 0 && area > 0 && period > 0; }
};

} // namespace tessaro
