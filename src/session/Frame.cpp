#include "session/Frame.h"

namespace tessaro {

namespace {
Frame noFrame;
Frame* theFrame = &noFrame;
} // namespace

Frame& TheFrame() {
    return *theFrame;
}

void SetFrame(Frame* frame) {
    theFrame = frame == nullptr ? &noFrame : frame;
}

} // namespace tessaro
