#include "platform/Clock.h"

#include <utility>

namespace tessaro {

namespace {
std::function<QDateTime()>& TheClock() {
    static std::function<QDateTime()> clock;
    return clock;
}
} // namespace

QDateTime Now() {
    return TheClock() ? TheClock()() : QDateTime::currentDateTime();
}

void SetClock(std::function<QDateTime()> clock) {
    TheClock() = std::move(clock);
}

} // namespace tessaro
