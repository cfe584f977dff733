#pragma once

#include <QtGlobal>

#include <chrono>

namespace tessaro::office {

/// Tells a process that does nothing, although an answer is waited for, from one that is just slow: none of its threads
/// runs or waits for a disk, and no processor time has been used for a while.
class StuckWatch final {
  public:
    StuckWatch(qint64 processId, std::chrono::milliseconds patience);

    /// To be asked from time to time.
    [[nodiscard]] bool IsStuck();

  private:
    qint64 processId_;
    std::chrono::milliseconds patience_;
    qint64 used_ = -1; ///< processor time, in ticks of the system
    std::chrono::steady_clock::time_point since_;
};

} // namespace tessaro::office
