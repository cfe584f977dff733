#include "jet/columns/ScanGroups.h"

#include <cmath>

namespace jet {

void SumState::Add(double term) {
    const double next = sum + term;
    lost += std::fabs(sum) >= std::fabs(term) ? (sum - next) + term : (term - next) + sum;
    sum = next;
    ++count;
}

void SumState::Join(const SumState& part) {
    const std::int64_t all = count + part.count;
    Add(part.sum);
    lost += part.lost;
    count = all;
}

void SpreadState::Add(double value) {
    const double distance = value - mean;
    ++count;
    mean += distance / static_cast<double>(count);
    squares += distance * (value - mean);
}

// Chan, Golub and LeVeque: the spread of two groups together.
void SpreadState::Join(const SpreadState& part) {
    if (count == 0 || part.count == 0) {
        if (count == 0) *this = part;
        return;
    }
    const auto before = static_cast<double>(count);
    const auto added = static_cast<double>(part.count);
    const double distance = part.mean - mean;
    count += part.count;
    mean += distance * added / (before + added);
    squares += part.squares + distance * distance * before * added / (before + added);
}

std::uint32_t ScanGroups::share(std::uint32_t place, std::size_t position) const {
    std::uint64_t key = keys.empty() ? place : keys[place];
    for (std::size_t later = sizes.size() - 1; later > position; --later)
        key /= sizes[later];
    return static_cast<std::uint32_t>(key % sizes[position]);
}

std::uint32_t ScanGroups::code(std::uint32_t place, std::size_t column) const {
    return codes[column][share(place, column)];
}

std::uint32_t ScanGroups::classOf(std::uint32_t place, std::size_t side) const {
    return share(place, codes.size() + side);
}

} // namespace jet
