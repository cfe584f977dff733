#pragma once

#include <QAbstractNativeEventFilter>
#include <qwindowdefs.h>

#include <functional>

namespace tessaro {

/// Who has the keyboard on an X11 display. Another program's window inside one of ours takes it on a click and would
/// keep it, since no window manager knows of the parts of one window. On other displays nothing happens.
///
/// Holds one key besides: F6, with or without Shift, pressed in the foreign window, leaves it.
class HostKeyboard final : public QAbstractNativeEventFilter {
  public:
    /// `place` is the native window that holds the foreign one. `left` is called when the user leaves it by key; the
    /// argument tells whether forwards.
    HostKeyboard(WId place, std::function<void(bool)> left);
    ~HostKeyboard() override;
    HostKeyboard(const HostKeyboard&) = delete;
    HostKeyboard& operator=(const HostKeyboard&) = delete;

    /// The foreign window has it.
    [[nodiscard]] bool IsInside() const;
    /// Gives it to the foreign window.
    void Enter() const;
    /// Gives it to one of our windows.
    static void GiveTo(WId window);

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  private:
    void HoldKey(bool hold);

    WId place_;
    std::function<void(bool)> left_;
    unsigned char keyCode_ = 0;
};

} // namespace tessaro
