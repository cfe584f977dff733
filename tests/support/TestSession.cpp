#include "support/TestSession.h"

#include "session/Session.h"

namespace tessaro::test {

SessionTest::SessionTest() {
    qputenv("TESSARO_HOME", home_.path().toUtf8());
    ResetSession();
    SetFrame(&frame);
    SetMessageAnswerer([this](const Message& message) {
        messages << (message.key.isEmpty() ? message.text : message.key);
        return answers.isEmpty() ? CodeOfClosing(message.type) : answers.takeFirst();
    });
}

SessionTest::~SessionTest() {
    SetMessageAnswerer({});
    SetFrame(nullptr);
    ResetSession();
}

} // namespace tessaro::test
