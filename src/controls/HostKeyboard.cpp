#include "controls/HostKeyboard.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>
#include <xcb/xcb.h>

namespace tessaro {

namespace {

constexpr xcb_keysym_t kF6 = 0xFFC3;
/// Caps Lock and Num Lock: a key with them is the same key.
constexpr unsigned kLocks[] = {0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};

template <class Reply> using Owned = std::unique_ptr<Reply, decltype(&std::free)>;
template <class Reply> Owned<Reply> Own(Reply* reply) {
    return {reply, &std::free};
}

xcb_connection_t* Display() {
    auto* display = qApp ? qApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return display ? display->connection() : nullptr;
}

/// All that exist now.
std::vector<HostKeyboard*> keyboards;

/// The key code of the keyboard for a key; 0 when the keyboard doesn't have it.
unsigned char KeyCodeOf(xcb_connection_t* display, xcb_keysym_t key) {
    const xcb_setup_t* setup = xcb_get_setup(display);
    const auto count = static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto map = Own(
        xcb_get_keyboard_mapping_reply(display, xcb_get_keyboard_mapping(display, setup->min_keycode, count), nullptr));
    if (!map) return 0;
    const xcb_keysym_t* keys = xcb_get_keyboard_mapping_keysyms(map.get());
    for (int code = 0; code < count; ++code)
        if (keys[code * map->keysyms_per_keycode] == key) return static_cast<uint8_t>(setup->min_keycode + code);
    return 0;
}

void SetFocus(xcb_connection_t* display, xcb_window_t window) {
    xcb_set_input_focus(display, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
}

} // namespace

HostKeyboard::HostKeyboard(WId place, WId form, std::function<void(bool)> left)
    : place_(place), form_(form), left_(std::move(left)) {
    if (xcb_connection_t* display = Display()) keyCode_ = KeyCodeOf(display, kF6);
    keyboards.push_back(this);
    SetInside(false);
    qApp->installNativeEventFilter(this);
}

HostKeyboard::~HostKeyboard() {
    std::erase(keyboards, this);
    if (!qApp) return;
    qApp->removeNativeEventFilter(this);
    GrabKeysOfForm();
}

void HostKeyboard::SetInside(bool inside) {
    inside_ = inside;
    if (!Display()) return;
    GrabButtons();
    GrabLeavingKey();
    GrabKeysOfForm();
    xcb_flush(Display());
}

// A click into the foreign window gives it the keyboard; then the click is passed on.
void HostKeyboard::GrabButtons() const {
    const auto place = static_cast<xcb_window_t>(place_);
    if (inside_)
        xcb_ungrab_button(Display(), XCB_BUTTON_INDEX_ANY, place, XCB_MOD_MASK_ANY);
    else
        xcb_grab_button(Display(), 0, place, XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_SYNC, XCB_GRAB_MODE_ASYNC,
                        XCB_NONE, XCB_NONE, XCB_BUTTON_INDEX_ANY, XCB_MOD_MASK_ANY);
}

void HostKeyboard::GrabLeavingKey() const {
    if (keyCode_ == 0) return;
    const auto place = static_cast<xcb_window_t>(place_);
    if (!inside_) {
        xcb_ungrab_key(Display(), keyCode_, place, XCB_MOD_MASK_ANY);
        return;
    }
    for (const unsigned shift : {0U, static_cast<unsigned>(XCB_MOD_MASK_SHIFT)})
        for (const unsigned lock : kLocks)
            xcb_grab_key(Display(), 0, place, static_cast<uint16_t>(shift | lock), keyCode_, XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC);
}

// A key that is grabbed on the form's window comes to us alone, wherever the pointer is, as long as the form or a
// widget in it has the focus.
void HostKeyboard::GrabKeysOfForm() const {
    if (!Display()) return;
    const auto form = static_cast<xcb_window_t>(form_);
    const auto ofForm = [this](const HostKeyboard* other) { return other->form_ == form_; };
    const auto hasKeys = [&](const HostKeyboard* other) { return ofForm(other) && other->inside_; };
    if (std::ranges::any_of(keyboards, ofForm) && std::ranges::none_of(keyboards, hasKeys))
        xcb_grab_key(Display(), 0, form, XCB_MOD_MASK_ANY, XCB_GRAB_ANY, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    else
        xcb_ungrab_key(Display(), XCB_GRAB_ANY, form, XCB_MOD_MASK_ANY);
    xcb_flush(Display());
}

void HostKeyboard::Enter() {
    xcb_connection_t* display = Display();
    if (!display) return;
    const auto tree =
        Own(xcb_query_tree_reply(display, xcb_query_tree(display, static_cast<xcb_window_t>(place_)), nullptr));
    if (!tree || xcb_query_tree_children_length(tree.get()) == 0) return;
    for (HostKeyboard* other : keyboards)
        if (other != this && other->inside_) other->SetInside(false);
    SetInside(true);
    SetFocus(display, *xcb_query_tree_children(tree.get()));
    xcb_flush(display);
}

void HostKeyboard::TakeBack() {
    xcb_connection_t* display = Display();
    if (!display) return;
    if (inside_) SetInside(false);
    SetFocus(display, static_cast<xcb_window_t>(form_));
    xcb_flush(display);
}

// A grabbed key leaves the focus with the form. But a menu may have taken the keyboard before and give it back now:
// Qt has noticed the loss of the focus, so it must be told that the focus is back.
bool HostKeyboard::IsPassedOver(int type, const xcb_focus_in_event_t* event) {
    if (event->mode != XCB_NOTIFY_MODE_GRAB && event->mode != XCB_NOTIFY_MODE_UNGRAB) return false;
    const bool goes = type == XCB_FOCUS_OUT && event->mode == XCB_NOTIFY_MODE_GRAB;
    const bool returns = type == XCB_FOCUS_IN && event->mode == XCB_NOTIFY_MODE_UNGRAB;
    if (goes) withoutFocus_.insert(event->event);
    return !returns || withoutFocus_.erase(event->event) > 0;
}

bool HostKeyboard::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) {
    if (eventType != "xcb_generic_event_t") return false;
    const int type = static_cast<const xcb_generic_event_t*>(message)->response_type & 0x7F;
    if (type == XCB_FOCUS_IN || type == XCB_FOCUS_OUT)
        return IsPassedOver(type, static_cast<const xcb_focus_in_event_t*>(message));
    if (type == XCB_BUTTON_PRESS) {
        if (static_cast<const xcb_button_press_event_t*>(message)->event != place_) return false;
        Enter();
        xcb_allow_events(Display(), XCB_ALLOW_REPLAY_POINTER, XCB_CURRENT_TIME);
        xcb_flush(Display());
        return true;
    }
    if (!inside_ || (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE)) return false;
    const auto* key = static_cast<const xcb_key_press_event_t*>(message);
    if (key->detail != keyCode_ || key->event != place_) return false;
    if (type == XCB_KEY_PRESS) left_((key->state & XCB_MOD_MASK_SHIFT) == 0);
    return true;
}

} // namespace tessaro
