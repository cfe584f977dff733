#include "Heartbeat.h"

#include <QTextStream>

#include <algorithm>

namespace tessaro {

namespace {

constexpr int kBeat = 20;      ///< milliseconds
constexpr qint64 kTold = 1000; ///< gaps shorter than this, in milliseconds, are not told

} // namespace

Heartbeat::Heartbeat() {
    sinceBeat_.start();
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Beat(); });
    timer_.start(kBeat);
}

void Heartbeat::Beat() {
    const qint64 gap = sinceBeat_.restart();
    longest_ = std::max(longest_, gap);
    if (gap > kTold) QTextStream(stdout) << "gap " << gap << ' ' << what_ << '\n';
}

qint64 Heartbeat::Longest() {
    return std::max(longest_, sinceBeat_.elapsed());
}

} // namespace tessaro
