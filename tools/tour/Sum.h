#pragma once

#include <QString>

#include <cmath>

namespace tessaro {

/// How many numbers there are and what they add up to, to compare two readings of the same values.
struct Sum {
    int count = 0;
    double sum = 0;

    void Add(double value) {
        ++count;
        sum += value;
    }
    /// `rounding`: how far each number may be off. Without numbers nothing matches.
    [[nodiscard]] bool Matches(const Sum& other, double rounding = 0) const {
        return count > 0 && count == other.count &&
               std::abs(sum - other.sum) <= rounding * count + 1e-9 * std::abs(sum) + 1e-6;
    }
};

/// The values of a database.
[[nodiscard]] Sum ValuesOf(const QString& database);

} // namespace tessaro
