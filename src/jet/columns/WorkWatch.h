#pragma once

#include <chrono>
#include <functional>
#include <optional>

namespace jet {

/// Lets whoever waits for the statements of a connection see how far they are, and stop them.
class WorkWatch final {
  public:
    /// Called on the thread of the statement, with how far it is in percent where that is known. False stops the
    /// statement, which then fails with Error (Interrupted). Other statements of the connection are refused meanwhile.
    using Ask = std::function<bool(std::optional<int> percent)>;

    /// An empty one ends the watch.
    void Set(Ask ask, std::chrono::milliseconds between);
    [[nodiscard]] bool isSet() const { return ask_ != nullptr; }
    [[nodiscard]] bool isAsking() const { return asking_; }

    /// Asks when it is time again; to be called every few milliseconds, on the thread of the statement. False: the
    /// statement is to stop.
    [[nodiscard]] bool GoesOn(std::optional<int> percent = std::nullopt);
    /// The same; throws Error (Interrupted).
    void Check(std::optional<int> percent = std::nullopt);
    /// The same for the steps of a loop, of which it looks at few.
    void Step() {
        constexpr unsigned kSteps = 1U << 16U;
        if (++steps_ % kSteps == 0) Check();
    }

  private:
    Ask ask_;
    std::chrono::milliseconds between_{0};
    std::chrono::steady_clock::time_point last_;
    unsigned steps_ = 0;
    bool asking_ = false;
};

/// Throws Error (Interrupted).
[[noreturn]] void FailInterrupted();

} // namespace jet
