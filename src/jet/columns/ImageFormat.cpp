#include "jet/columns/ImageFormat.h"

#include <bit>
#include <cstring>

namespace jet::image {

// Four lanes, so that the processor works on several words at once.
std::uint64_t SumOf(const unsigned char* bytes, std::size_t count) {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;
    constexpr std::size_t kLanes = 4;
    constexpr std::size_t kStride = kLanes * sizeof(std::uint64_t);
    std::array<std::uint64_t, kLanes> lanes = {1, 2, 3, count};
    const auto add = [](std::uint64_t lane, std::uint64_t word) { return std::rotl((lane ^ word) * kFactor, 29); };
    std::size_t at = 0;
    for (; at + kStride <= count; at += kStride) {
        std::array<std::uint64_t, kLanes> words{};
        std::memcpy(words.data(), bytes + at, kStride);
        for (std::size_t lane = 0; lane < kLanes; ++lane)
            lanes[lane] = add(lanes[lane], words[lane]);
    }
    for (; at < count; ++at)
        lanes[0] = add(lanes[0], bytes[at]);
    std::uint64_t sum = 0;
    for (const std::uint64_t lane : lanes)
        sum = add(sum, lane);
    return sum;
}

std::uint64_t SumOfFile(const unsigned char* start, std::size_t bytes) {
    Head head;
    std::memcpy(static_cast<void*>(&head), start, sizeof(head));
    head.sum = 0;
    std::array<unsigned char, sizeof(Head)> clean{};
    std::memcpy(clean.data(), static_cast<const void*>(&head), sizeof(head));
    return SumOf(clean.data(), clean.size()) ^ SumOf(start + sizeof(head), bytes - sizeof(head));
}

} // namespace jet::image
