#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace tessaro {

/// An arrow instead of the wait pointer for as long as it lives: over a dialog that opens in the midst of work the
/// program waits for the user, not the user for the program. Without a wait pointer it does nothing.
class ArrowPointer final {
  public:
    ArrowPointer() : busy_(QGuiApplication::overrideCursor() != nullptr) {
        if (busy_) QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    ~ArrowPointer() {
        if (busy_) QGuiApplication::restoreOverrideCursor();
    }
    ArrowPointer(const ArrowPointer&) = delete;
    ArrowPointer& operator=(const ArrowPointer&) = delete;

  private:
    const bool busy_;
};

} // namespace tessaro
