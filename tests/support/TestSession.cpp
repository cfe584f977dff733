#include "support/TestSession.h"

#include "database/Database.h"
#include "platform/Paths.h"
#include "session/Session.h"
#include "session/Startup.h"
#include "support/SampleApplication.h"

namespace tessaro::test {

SessionTest::SessionTest() {
    qputenv("TESSARO_HOME", home_.path().toUtf8());
    ResetSession();
    SilentErrors = true;
    SetFrame(&frame);
    SetMessageAnswerer([this](const Message& message) {
        messages << (message.key.isEmpty() ? message.text : message.key);
        return answers.isEmpty() ? CodeOfClosing(message.type) : answers.takeFirst();
    });
}

void SessionTest::StartSample() {
    AppPath = JoinPath({Folder(), QStringLiteral("Application")});
    MakeSampleApplication(AppPath);
    ASSERT_EQ(Initialize(), StartResult::GoOn);
}

void SessionTest::StartInstallation() {
    AppPath = QStringLiteral(TESSARO_INSTALLATION);
    ASSERT_EQ(Initialize(), StartResult::GoOn);
}

bool SessionTest::OpenSample() {
    if (AppPath.isEmpty()) StartSample();
    const bool open = OpenDatabaseFile(JoinPath({AppPath, QStringLiteral("Data/Sample.mdb")}));
    EXPECT_TRUE(open);
    return open && Connection;
}

SessionTest::~SessionTest() {
    SetMessageAnswerer({});
    SetFrame(nullptr);
    ResetSession();
}

} // namespace tessaro::test
