#include "session/StatementWatch.h"

#include "jet/engine/Connection.h"
#include "session/Session.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace tessaro {

namespace {

constexpr qint64 kBetweenLooks = 40; // milliseconds

StatementWatch* watching = nullptr;

} // namespace

StatementWatch::StatementWatch() : StatementWatch([this](std::optional<int> percent) { return TellFrame(percent); }) {}

StatementWatch::StatementWatch(Tell tell) : tell_(std::move(tell)) {
    if (watching != nullptr || !Connection || !Connection->isOpen()) return;
    watching = this;
    connection_ = Connection;
    clock_.start();
    connection_->Watch([this](std::optional<int> percent) { return GoesOn(percent); },
                       std::chrono::milliseconds(std::min<qint64>(Patience, kBetweenLooks)));
}

StatementWatch::~StatementWatch() {
    if (watching != this) return;
    watching = nullptr;
    if (held_) TheFrame().HoldScreens(false);
    if (connection_->isOpen()) connection_->Watch({});
}

bool StatementWatch::Stopped() const {
    return watching != nullptr && watching->stopped_;
}

// What screens and timers do on their own runs statements, which have to wait. They are held to the end: let go between
// two looks, the screens would be painted anew each time.
bool StatementWatch::GoesOn(std::optional<int> percent) {
    if (stopped_ || clock_.elapsed() < Patience) return !stopped_;
    if (!held_) TheFrame().HoldScreens(true);
    held_ = true;
    stopped_ = !tell_(percent);
    return !stopped_;
}

bool StatementWatch::TellFrame(std::optional<int> percent) {
    if (!wait_) wait_.emplace();
    if (percent) TheFrame().SetProgress(*percent);
    return !TheFrame().IsStopAsked();
}

} // namespace tessaro
