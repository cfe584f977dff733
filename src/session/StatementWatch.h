#pragma once

#include "session/Frame.h"

#include <QElapsedTimer>

#include <functional>
#include <memory>
#include <optional>

namespace jet {
class Connection;
}

namespace tessaro {

/// While it lives, statements on Connection that take longer than a moment tell how far they are, and can be stopped. A
/// stopped one fails as any other, without a message; one whose rows are read as they come may fail at any of them.
/// Within the life of another it does nothing of its own.
class StatementWatch final {
  public:
    /// Milliseconds of work before anything is told or asked.
    static inline qint64 Patience = 300;
    /// How far the statement is in percent, where that is known; false stops it. Must not throw.
    using Tell = std::function<bool(std::optional<int> percent)>;

    /// Tells the frame, and stops when the user asks for that there.
    StatementWatch();
    explicit StatementWatch(Tell tell);
    ~StatementWatch();
    StatementWatch(const StatementWatch&) = delete;
    StatementWatch& operator=(const StatementWatch&) = delete;

    /// True once a statement has been stopped; those after it are stopped, too, as far as they take longer.
    [[nodiscard]] bool Stopped() const;

  private:
    [[nodiscard]] bool GoesOn(std::optional<int> percent);
    [[nodiscard]] bool TellFrame(std::optional<int> percent);

    Tell tell_;
    std::shared_ptr<jet::Connection> connection_; ///< nullptr when another watches
    QElapsedTimer clock_;
    std::optional<WaitState> wait_;
    bool held_ = false;
    bool stopped_ = false;
};

} // namespace tessaro
