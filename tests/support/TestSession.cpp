#include "support/TestSession.h"

#include "TestPlaces.h"
#include "database/Database.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/Session.h"
#include "session/Startup.h"
#include "session/Strings.h"
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

void SessionTest::OpenSampleWithTexts() {
    ASSERT_TRUE(OpenSample());
    InstallTexts();
}

void SessionTest::InstallTexts() {
    const QString file = FileOfLanguage(Language);
    ASSERT_TRUE(CopyFileOver(FindPath(QStringLiteral(TESSARO_INSTALLATION "/Languages/") + FileNameOf(file)), file));
    ReadTranslateFile();
}

void SessionTest::UseLanguage(const QString& code) {
    const QString installed = QStringLiteral(TESSARO_INSTALLATION "/Languages/");
    const QStringList files = FilesOf(installed).filter(QLatin1Char('[') + code + QLatin1Char(']'));
    ASSERT_EQ(files.size(), 1);
    ASSERT_TRUE(CopyFileOver(installed + files.front(), JoinPath({LanguageFolder(), files.front()})));
    FillLanguageArray();
    Language = files.front().section(QLatin1Char('_'), 1).section(QLatin1Char('.'), 0, -2);
    ReadTranslateFile();
}

SessionTest::~SessionTest() {
    SetMessageAnswerer({});
    SetFrame(nullptr);
    ResetSession();
}

} // namespace tessaro::test
