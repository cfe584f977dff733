#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace tessaro {

/// An arrow instead of the wait pointer while it lives: for dialogs that are opened in the midst of work. Without a
/// wait pointer it does nothing.
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
