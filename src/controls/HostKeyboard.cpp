#include "controls/HostKeyboard.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace tessaro {

namespace {

constexpr xcb_keysym_t kF6 = 0xFFC3;
/// Caps Lock and Num Lock, which don't make another key of it.
constexpr unsigned kLocks[] = {0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};

template <class Reply> using Owned = std::unique_ptr<Reply, decltype(&std::free)>;
template <class Reply> Owned<Reply> Own(Reply* reply) {
    return {reply, &std::free};
}

xcb_connection_t* Display() {
    auto* display = qApp ? qApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return display ? display->connection() : nullptr;
}

/// The number that the keyboard gives a key; 0 when it hasn't got it.
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

} // namespace

HostKeyboard::HostKeyboard(WId place, std::function<void(bool)> left) : place_(place), left_(std::move(left)) {
    if (xcb_connection_t* display = Display()) keyCode_ = KeyCodeOf(display, kF6);
    HoldKey(true);
    qApp->installNativeEventFilter(this);
}

HostKeyboard::~HostKeyboard() {
    if (!qApp) return;
    qApp->removeNativeEventFilter(this);
    HoldKey(false);
}

// The foreign window lies inside ours, so a key held for ours comes to us while that one has the keyboard.
void HostKeyboard::HoldKey(bool hold) {
    xcb_connection_t* display = Display();
    if (!display || keyCode_ == 0) return;
    for (const unsigned shift : {0U, static_cast<unsigned>(XCB_MOD_MASK_SHIFT)})
        for (const unsigned lock : kLocks) {
            const auto modifiers = static_cast<uint16_t>(shift | lock);
            if (hold)
                xcb_grab_key(display, 0, static_cast<xcb_window_t>(place_), modifiers, keyCode_, XCB_GRAB_MODE_ASYNC,
                             XCB_GRAB_MODE_ASYNC);
            else
                xcb_ungrab_key(display, keyCode_, static_cast<xcb_window_t>(place_), modifiers);
        }
    xcb_flush(display);
}

bool HostKeyboard::IsInside() const {
    xcb_connection_t* display = Display();
    if (!display) return false;
    const auto focus = Own(xcb_get_input_focus_reply(display, xcb_get_input_focus(display), nullptr));
    xcb_window_t window = focus ? focus->focus : XCB_NONE;
    while (window > XCB_INPUT_FOCUS_POINTER_ROOT && window != place_) {
        const auto tree = Own(xcb_query_tree_reply(display, xcb_query_tree(display, window), nullptr));
        window = tree ? tree->parent : XCB_NONE;
    }
    return window == place_;
}

void HostKeyboard::Enter() const {
    xcb_connection_t* display = Display();
    if (!display) return;
    const auto tree =
        Own(xcb_query_tree_reply(display, xcb_query_tree(display, static_cast<xcb_window_t>(place_)), nullptr));
    if (tree && xcb_query_tree_children_length(tree.get()) > 0) GiveTo(*xcb_query_tree_children(tree.get()));
}

void HostKeyboard::GiveTo(WId window) {
    xcb_connection_t* display = Display();
    if (!display) return;
    xcb_set_input_focus(display, XCB_INPUT_FOCUS_PARENT, static_cast<xcb_window_t>(window), XCB_CURRENT_TIME);
    xcb_flush(display);
}

bool HostKeyboard::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) {
    if (keyCode_ == 0 || eventType != "xcb_generic_event_t") return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    const int type = event->response_type & 0x7F;
    if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE) return false;
    const auto* key = static_cast<const xcb_key_press_event_t*>(message);
    if (key->detail != keyCode_ || key->event != place_) return false;
    if (type == XCB_KEY_PRESS) left_((key->state & XCB_MOD_MASK_SHIFT) == 0);
    return true;
}

} // namespace tessaro
