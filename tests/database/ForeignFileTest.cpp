// Data databases as a stranger may hand them over.
#include "database/DataExists.h"
#include "database/Database.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/Query.h"
#include "session/Session.h"
#include "support/Journals.h"
#include "support/SampleApplication.h"
#include "support/TestSession.h"

#include <QFile>

#include <sqlite3.h>

namespace tessaro::test {
namespace {

class ForeignFileTest : public SessionTest {
  protected:
    void SetUp() override { StartSample(); }

    /// Statements of the plain engine on a file.
    static void Run(const QString& path, const std::string& sql) {
        sqlite3* plain = nullptr;
        ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &plain), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(plain, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sql << ": " << sqlite3_errmsg(plain);
        sqlite3_close(plain);
    }
    [[nodiscard]] QString Foreign(const std::string& sql) const {
        const QString path = Folder() + "/Foreign.mdb";
        QFile::remove(path);
        MakeSampleDatabase(path);
        Run(path, sql);
        return path;
    }
    [[nodiscard]] static QString First(const QString& sql, jet::Connection* on = nullptr) {
        const Records rows = Select(sql, jet::CursorType::Static, on);
        return rows.isOpen() && !rows.atEnd() ? rows.Text(std::size_t{0}) : QStringLiteral("nothing");
    }
    [[nodiscard]] static QString Log() {
        return QString::fromUtf8(ReadWholeFile(JoinPath({CacheFolder, "Tessaro.log"})).value_or(QByteArray()));
    }
};

TEST_F(ForeignFileTest, ItsLinksReachNoOtherFile) {
    const QString victim = Folder() + "/victim.mdb";
    Run(victim, "CREATE TABLE Data (a INTEGER); CREATE TABLE GUId (NId INTEGER); INSERT INTO Data VALUES (1), (2);"
                "INSERT INTO GUId VALUES (7)");
    const QString foreign = Foreign("ALTER TABLE Data RENAME TO RealData; DROP TABLE GUId;"
                                    "CREATE TABLE MSysLinks (Name, File, Password, SourceTable, Writable);"
                                    "INSERT INTO MSysLinks VALUES ('Data', '" +
                                    victim.toStdString() + "', '', 'Data', 1), ('GUId', '" + victim.toStdString() +
                                    "', '', 'GUId', 1), ('RealData', '', '', '', 0)");
    EXPECT_FALSE(OpenDatabaseFile(foreign)); // there is no table Data
    EXPECT_EQ(messages, QStringList{"316"});
    EXPECT_FALSE(MarkDataExists(foreign));
    const auto reached = CreateTheConnection(victim);
    EXPECT_EQ(First("SELECT Count(*) FROM Data", reached.get()), "2");
    EXPECT_EQ(First("SELECT NId FROM GUId", reached.get()), "7");
    EXPECT_EQ(First("SELECT Count(*) FROM RealData", CreateTheConnection(foreign).get()), "17");
}

TEST_F(ForeignFileTest, AJournalThatNamesAnotherFileIsNotBelieved) {
    const QString victim = Folder() + "/precious.txt";
    ASSERT_TRUE(ReplaceFile(victim, "kept"));
    const QString foreign = Foreign("SELECT 1");
    const QByteArray journal = QByteArray::fromStdString(JournalNaming(victim.toStdString()));
    ASSERT_TRUE(ReplaceFile(foreign + "-journal", journal));
    EXPECT_FALSE(OpenDatabaseFile(foreign));
    EXPECT_EQ(messages, QStringList{"316"});
    EXPECT_TRUE(Log().contains("names a further file")) << Log().toStdString();
    EXPECT_FALSE(MarkDataExists(foreign));
    EXPECT_EQ(ReadWholeFile(victim), QByteArray("kept"));
    ASSERT_TRUE(QFile::remove(foreign + "-journal"));
    EXPECT_TRUE(OpenDatabaseFile(foreign)); // as it is
    EXPECT_EQ(First("SELECT Count(*) FROM Data"), "17");
}

TEST_F(ForeignFileTest, ARefusalSaysWhy) {
    struct {
        std::string sql;
        const char* reason;
    } const cases[] = {
        {"ALTER TABLE Data ADD COLUMN Big TEXT AS (hex(zeroblob(50000000)))", "table Data has a computed field"},
        {"CREATE INDEX x ON Area_en (upper(AreaName))", "table Area_en calls the function upper"},
        {"ALTER TABLE Region RENAME TO R; CREATE VIEW Region AS SELECT * FROM R", "TS_TablesMissing"},
    };
    ASSERT_TRUE(OpenSample());
    const QString open = CurrentDatabase;
    QStringList shown;
    SetMessageAnswerer([&](const Message& message) {
        shown << message.key + QLatin1Char(' ') + message.text;
        return CodeOfClosing(message.type);
    });
    for (const auto& each : cases) {
        shown.clear();
        EXPECT_FALSE(OpenDatabaseFile(Foreign(each.sql))) << each.sql;
        ASSERT_EQ(shown.size(), 1) << each.sql;
        EXPECT_TRUE(shown.front().startsWith(QLatin1String("316 ")));
        EXPECT_TRUE(shown.front().contains(QLatin1String(each.reason), Qt::CaseInsensitive))
            << shown.front().toStdString();
        EXPECT_TRUE(Log().contains(QLatin1String(each.reason), Qt::CaseInsensitive)) << each.sql << Log().toStdString();
        EXPECT_EQ(CurrentDatabase, open);
        EXPECT_EQ(First("SELECT Count(*) FROM Data"), "17");
    }
}

TEST_F(ForeignFileTest, TriggersDoNotRunAndNothingIsWrittenWhileItIsRead) {
    const QString foreign =
        Foreign("CREATE TRIGGER t AFTER UPDATE ON Indicator_Unit_Subpop BEGIN DELETE FROM Data; END");
    ASSERT_TRUE(OpenDatabaseFile(foreign));
    EXPECT_EQ(First("SELECT Count(*) FROM Data"), "17");
    EXPECT_FALSE(Execute("DELETE * FROM Data"));
    EXPECT_TRUE(Execute("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) VALUES (2, '2000')"));
    EXPECT_TRUE(MarkDataExists(foreign));
    EXPECT_EQ(First("SELECT Count(*) FROM Data"), "17");
}

} // namespace
} // namespace tessaro::test
