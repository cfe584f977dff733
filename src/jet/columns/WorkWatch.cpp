#include "jet/columns/WorkWatch.h"

#include "jet/values/Error.h"

#include <exception>
#include <utility>

namespace jet {

void WorkWatch::Set(Ask ask, std::chrono::milliseconds between) {
    ask_ = std::move(ask);
    between_ = between;
    last_ = std::chrono::steady_clock::now();
}

bool WorkWatch::GoesOn(std::optional<int> percent) {
    if (!isSet() || asking_ || std::chrono::steady_clock::now() - last_ < between_) return true;
    asking_ = true;
    bool goesOn = false;
    try {
        goesOn = ask_(percent);
    } catch (const std::exception&) {
        goesOn = false; // SQLite, which is between here and the caller, can't be left by an error
    }
    asking_ = false;
    last_ = std::chrono::steady_clock::now();
    return goesOn;
}

void WorkWatch::Check(std::optional<int> percent) {
    if (!GoesOn(percent)) FailInterrupted();
}

void FailInterrupted() {
    throw Error(ErrorNumber::Interrupted, "The statement was stopped.");
}

} // namespace jet
