#include "jet/columns/KeyTable.h"

#include "jet/columns/WorkWatch.h"

namespace jet {

std::uint32_t KeyTable::PlaceOf(std::uint64_t key, WorkWatch* watch) {
    if (keys_.size() >= slots_.size() / 4 * 3) Spread(watch);
    std::uint32_t& held = slots_[SlotOf(key)];
    if (held == 0) {
        keys_.push_back(key);
        held = static_cast<std::uint32_t>(keys_.size());
    }
    return held - 1;
}

void KeyTable::Spread(WorkWatch* watch) {
    constexpr unsigned kFirstBits = 16;
    bits_ = bits_ == 0 ? kFirstBits : bits_ + 1;
    std::vector<std::uint32_t>().swap(slots_);
    slots_.resize(std::size_t{1} << bits_);
    for (std::size_t place = 0; place < keys_.size(); ++place) {
        slots_[SlotOf(keys_[place])] = static_cast<std::uint32_t>(place + 1);
        if (watch != nullptr) watch->Step();
    }
}

} // namespace jet
