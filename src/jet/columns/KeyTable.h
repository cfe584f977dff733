#pragma once

#include "jet/columns/WorkWatch.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace jet {

/// Gives keys places 0, 1 … in the order in which they are met.
class KeyTable final {
  public:
    static constexpr std::uint32_t kNotMet = 0xFFFFFFFF;

    /// The place of a key, a new one when it has not been met before. The watch, which may be nullptr, can stop it when
    /// it makes room.
    std::uint32_t PlaceOf(std::uint64_t key, WorkWatch* watch) {
        if (keys_.size() >= slots_.size() / 4 * 3) Spread(watch);
        std::uint32_t& held = slots_[SlotOf(key)];
        if (held == 0) {
            keys_.push_back(key);
            held = static_cast<std::uint32_t>(keys_.size());
        }
        return held - 1;
    }
    /// kNotMet for one that has not been met.
    [[nodiscard]] std::uint32_t find(std::uint64_t key) const {
        if (slots_.empty()) return kNotMet;
        const std::uint32_t held = slots_[SlotOf(key)];
        return held == 0 ? kNotMet : held - 1;
    }
    [[nodiscard]] const std::vector<std::uint64_t>& keys() const { return keys_; }
    [[nodiscard]] std::vector<std::uint64_t> TakeKeys() { return std::move(keys_); }

    bool operator==(const KeyTable& other) const { return keys_ == other.keys_; }

  private:
    /// Where the key stands, or the free slot where it would.
    [[nodiscard]] std::size_t SlotOf(std::uint64_t key) const {
        constexpr std::uint64_t kGolden = 0x9E3779B97F4A7C15U; // Fibonacci hashing: the upper bits are well mixed
        const std::size_t mask = slots_.size() - 1;
        std::size_t slot = (key * kGolden) >> (64 - bits_);
        while (slots_[slot] != 0 && keys_[slots_[slot] - 1] != key)
            slot = (slot + 1) & mask;
        return slot;
    }
    void Spread(WorkWatch* watch) {
        constexpr unsigned kFirstBits = 16;
        bits_ = bits_ == 0 ? kFirstBits : bits_ + 1;
        std::vector<std::uint32_t>().swap(slots_);
        slots_.resize(std::size_t{1} << bits_);
        for (std::size_t place = 0; place < keys_.size(); ++place) {
            slots_[SlotOf(keys_[place])] = static_cast<std::uint32_t>(place + 1);
            if (watch != nullptr) watch->Step();
        }
    }

    std::vector<std::uint64_t> keys_;  ///< by place
    std::vector<std::uint32_t> slots_; ///< by hash of the key: place + 1; 0 is free
    unsigned bits_ = 0;
};

} // namespace jet
