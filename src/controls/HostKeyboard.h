#pragma once

#include <QAbstractNativeEventFilter>
#include <qwindowdefs.h>

#include <functional>
#include <set>

struct xcb_focus_in_event_t;

namespace tessaro {

/// Who has the keyboard on an X11 display: our form, or another program's window inside it. No window manager knows of
/// the parts of one window; the display gives the keys of the form to whatever lies under the pointer, and the other
/// program also listens to those of the whole form. So the form grabs all its keys until the user clicks into a foreign
/// window or enters it by key; from then on that window has them all but F6, with or without Shift, which leaves it. A
/// form may have several such windows, of which one at most has the keyboard. On other displays nothing happens.
class HostKeyboard final : public QAbstractNativeEventFilter {
  public:
    /// `place` is the native window that holds the foreign one, `form` the one of the whole form. `left` is called when
    /// the user leaves it by key; the argument tells whether forwards.
    HostKeyboard(WId place, WId form, std::function<void(bool)> left);
    ~HostKeyboard() override;
    HostKeyboard(const HostKeyboard&) = delete;
    HostKeyboard& operator=(const HostKeyboard&) = delete;

    /// The foreign window has it.
    [[nodiscard]] bool IsInside() const { return inside_; }
    /// Gives it to the foreign window.
    void Enter();
    /// Gives it to the form, also where the foreign window took it by itself.
    void TakeBack();

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  private:
    void SetInside(bool inside);
    void GrabButtons() const;
    void GrabLeavingKey() const;
    void GrabKeysOfForm() const;
    [[nodiscard]] bool IsPassedOver(int type, const xcb_focus_in_event_t* event);

    WId place_;
    WId form_;
    std::function<void(bool)> left_;
    unsigned char keyCode_ = 0; ///< of F6
    bool inside_ = false;
    std::set<unsigned> withoutFocus_; ///< windows of ours whose keyboard is held, which the toolkit isn't told
};

} // namespace tessaro
