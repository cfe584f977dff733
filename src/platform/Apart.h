#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

/// Runs work that may crash or hang in a process of its own.
namespace tessaro {

/// What work that runs apart tells the program.
class ApartReport final {
  public:
    explicit ApartReport(int pipe) : pipe_(pipe) {}
    /// How far it is, 0 to 100; also the sign of life that `ApartLimits::silence` waits for.
    void Progress(int percent);
    /// Why it fails; the last one counts.
    void Reason(std::string_view text) const;

  private:
    void Send(char kind, std::string_view text) const;
    int pipe_;
    int last_ = -1;
    std::chrono::steady_clock::time_point sent_{};
};

/// Bounds of work that runs apart; 0 is none.
struct ApartLimits {
    std::chrono::milliseconds whole{0};   ///< from the start to the end
    std::chrono::milliseconds silence{0}; ///< without a report of progress
    std::uint64_t memory = 0;             ///< bytes beyond what the program has already
    std::uint64_t file = 0;               ///< bytes of the largest file that it writes
};

struct ApartResult {
    bool good = false;    ///< the work gave True in time
    bool stopped = false; ///< `goOn` ended it
    std::string reason;   ///< what the work told; empty when it crashed or took too long
};

/// Runs work in a process of its own and waits for it: a crash or an endless loop in it (a foreign library on a damaged
/// file) costs the work, not the program. The work may write files but must not touch windows or open connections; what
/// it changes in memory is lost. `goOn` is asked several times a second with the progress so far, and ends the work
/// when it gives False. The work's process ends with the program.
[[nodiscard]] ApartResult RunApart(const std::function<bool(ApartReport&)>& work, const ApartLimits& limits,
                                   const std::function<bool(int percent)>& goOn);
/// The same for work that tells nothing; True when it gave True within the time limit.
[[nodiscard]] bool RunApart(const std::function<bool()>& work, std::chrono::milliseconds limit);

} // namespace tessaro
