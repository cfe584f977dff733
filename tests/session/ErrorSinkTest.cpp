#include "session/ErrorSink.h"

#include "jet/values/Error.h"
#include "platform/Clock.h"
#include "platform/Files.h"
#include "session/Query.h"
#include "session/Session.h"
#include "support/TestSession.h"

#include <QFileInfo>

#include <stdexcept>

namespace tessaro::test {
namespace {

class ErrorSinkTest : public SessionTest {
  protected:
    ErrorSinkTest() {
        SetClock([] { return QDateTime(QDate(2006, 5, 4), QTime(3, 2, 1)); });
    }
    ~ErrorSinkTest() override { SetClock({}); }
    [[nodiscard]] static QString Log() { return QString::fromUtf8(ReadWholeFile(LogFile()).value_or(QByteArray())); }
};

TEST_F(ErrorSinkTest, AFailureIsOneLineUnderTheInnermostProcedure) {
    ErrorTrap outer("cmdAllFilter_Click");
    {
        ErrorTrap inner("FillAvailableIndicators");
        EXPECT_FALSE(inner.Try([] { throw jet::Error(jet::ErrorNumber::SyntaxError, "two\nlines"); }));
    }
    EXPECT_FALSE(outer.Try([] { throw std::runtime_error("plain"); }));
    EXPECT_TRUE(outer.Try([] {}));
    EXPECT_EQ(Log(), QString("2006-05-04T03:02:01.000\tFillAvailableIndicators\t0x80040E14\ttwo lines\n"
                             "2006-05-04T03:02:01.000\tcmdAllFilter_Click\t0\tplain\n"));
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(ErrorSinkTest, KeysNotUniqueAndMissingTablesPassWithoutALine) {
    SilentErrors = false;
    ReportError(jet::Error(jet::ErrorNumber::NoSuchTable, "gone"), "DropThem");
    ReportError(35602, "Key not unique", "FillList");
    EXPECT_EQ(Log(), QString());
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(ErrorSinkTest, ShowsTheBoxWhenAskedOrWhenErrorsAreNotSilent) {
    ReportError(53, "File not found", "Load", true);
    SilentErrors = false;
    ReportError(53, "File not found", "Load");
    EXPECT_EQ(messages, QStringList(2, QString("53\rFile not found\r\rLoad")));
}

TEST_F(ErrorSinkTest, KeepsThePasswordOutOfTheLog) {
    ReportError(1, QString("PWD=%1;").arg(QString::fromStdString(DatabasePassword())), "Open");
    EXPECT_FALSE(Log().contains(QString::fromStdString(DatabasePassword())));
    EXPECT_TRUE(Log().contains("PWD=***;"));
}

TEST_F(ErrorSinkTest, TheLogIsCappedWithOneForerunner) {
    const QString longText(1000, 'x');
    for (int i = 0; i < 2500; ++i)
        LogNote(longText);
    const qint64 limit = 1024 * 1024;
    EXPECT_LE(QFileInfo(LogFile()).size(), limit + 2000);
    EXPECT_LE(QFileInfo(LogFile() + ".1").size(), limit + 2000);
    EXPECT_GT(QFileInfo(LogFile() + ".1").size(), limit / 2);
    EXPECT_FALSE(QFileInfo::exists(LogFile() + ".2"));
}

TEST_F(ErrorSinkTest, NeverFailsItself) {
    CacheFolder = "/proc/sys/nowhere";
    ReportError(1, "can't be written", "Open");
    LogNote(QString());
    SUCCEED();
}

TEST_F(ErrorSinkTest, FillingsOfAMessageStandAsTheyAre) {
    ShowFilledMessage("%1 of %2; 5 % and %3", {"%2", "b"}); // a key without a text stands for itself
    EXPECT_EQ(messages, QStringList{"%1 of %2; 5 % and %3"});
    SetMessageAnswerer([this](const Message& message) {
        messages << message.text;
        return MessageCode::Ok;
    });
    ShowFilledMessage("%1 of %2; 5 % and %3", {"%2", "b"});
    EXPECT_EQ(messages.last(), "%2 of b; 5 % and %3");
}

} // namespace
} // namespace tessaro::test
