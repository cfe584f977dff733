#include "session/Startup.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "support/SampleApplication.h"
#include "support/TestSession.h"

#include <QFile>

#include <functional>

namespace tessaro::test {
namespace {

/// One damaged installation, and what the start makes of it.
struct BadStart {
    const char* name;
    void (*damage)(const QString& application);
    StartResult result;
    int messages;
    const char* logged;
};

void Edit(const QString& path, const std::function<QByteArray(QByteArray)>& change) {
    const auto contents = ReadWholeFile(FindPath(path));
    ASSERT_TRUE(contents.has_value()) << path.toStdString();
    ASSERT_TRUE(ReplaceFile(FindPath(path), change(*contents)));
}
QString In(const QString& application, const char* file) {
    return JoinPath({application, QString::fromUtf8(file)});
}

const BadStart kBadStarts[] = {
    {"no settings", [](const QString& app) { QFile::remove(FindPath(In(app, "TS.ini"))); }, StartResult::EndProgram, 1,
     "no readable settings"},
    {"settings cut off",
     [](const QString& app) { Edit(In(app, "TS.ini"), [](const QByteArray& all) { return all.left(120); }); },
     StartResult::EndProgram, 1, "no readable settings"},
    {"settings of other bytes",
     [](const QString& app) { Edit(In(app, "TS.ini"), [](const QByteArray&) { return QByteArray(500, '\xA7'); }); },
     StartResult::EndProgram, 1, "no readable settings"},
    {"an unknown language",
     [](const QString& app) {
         Edit(In(app, "Bin/Template/Pref.ini"),
              [](QByteArray all) { return all.replace("English [en]", "Klingon [tlh]"); });
     },
     StartResult::GoOn, 1, "Klingon"},
    {"a damaged language file",
     [](const QString& app) {
         Edit(In(app, "Bin/Template/Pref.ini"),
              [](QByteArray all) { return all.replace("English [en]", "Broken [br]"); });
         ASSERT_TRUE(ReplaceFile(In(app, "Languages/TS_Broken [br].mdb"), QByteArray(5000, 'x')));
     },
     StartResult::GoOn, 1, "no database"},
    {"no template of the preferences", [](const QString& app) { QFile::remove(In(app, "Bin/Template/Pref.ini")); },
     StartResult::GoOn, 1, "Pref.ini"},
    {"no template of the selection",
     [](const QString& app) { QFile::remove(In(app, "Bin/Template/UserSelections.mdb")); }, StartResult::GoOn, 1,
     "UserSelections.mdb"},
    {"no template of the links", [](const QString& app) { QFile::remove(In(app, "Bin/Template/InfoSel.mdb")); },
     StartResult::GoOn, 1, "InfoSel.mdb"},
};

class StartupTest : public SessionTest, public testing::WithParamInterface<BadStart> {};

TEST_P(StartupTest, ABadInstallationIsToldAndSpeaksEnglish) {
    AppPath = JoinPath({Folder(), QStringLiteral("Application")});
    MakeSampleApplication(AppPath);
    GetParam().damage(AppPath);
    EXPECT_EQ(Initialize(), GetParam().result);
    EXPECT_EQ(messages.size(), GetParam().messages) << messages.join(QLatin1Char('|')).toStdString();
    EXPECT_TRUE(ReadWholeFile(LogFile()).value_or(QByteArray()).contains(GetParam().logged));
    if (GetParam().result == StartResult::GoOn) {
        EXPECT_EQ(GetText(QStringLiteral("ADDRESS")), QStringLiteral("Address"));
    }
}

INSTANTIATE_TEST_SUITE_P(Bad, StartupTest, testing::ValuesIn(kBadStarts), [](const auto& start) {
    return QString::fromUtf8(start.param.name).replace(QLatin1Char(' '), QLatin1Char('_')).toStdString();
});

} // namespace
} // namespace tessaro::test
