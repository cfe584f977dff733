#include "calculate/NewDatabaseTest.h"
#include "database/UseOfFile.h"
#include "platform/Apart.h"
#include "platform/Files.h"
#include "session/Leftovers.h"
#include "session/Messages.h"
#include "support/FullDisk.h"

#include <QFileInfo>

#include <filesystem>

namespace tessaro::test {
namespace {

class NewDatabaseFailuresTest : public NewDatabaseTest {
  protected:
    void SetUp() override {
        NewDatabaseTest::SetUp();
        OpenIn(QStringLiteral("English [en]"));
    }
    [[nodiscard]] static QString Failure(const QString& folder) {
        return FilledText(QStringLiteral("TS_NewDatabaseFailed"), {folder});
    }
};

TEST_F(NewDatabaseFailuresTest, TheOpenDatabaseIsRefusedHoweverItIsNamed) {
    const QString link = Target(QStringLiteral("link.mdb"));
    const QString hardLink = Target(QStringLiteral("hard.mdb"));
    std::filesystem::create_symlink(source_.toStdString(), link.toStdString());
    std::filesystem::create_hard_link(source_.toStdString(), hardLink.toStdString());
    const QByteArray before = Bytes(source_);
    const QString names[] = {source_,
                             Folder() + QStringLiteral("/SOURCE.MDB"),
                             QString(source_).replace(QLatin1Char('/'), QLatin1Char('\\')),
                             Folder() + QStringLiteral("/Out/../Source.mdb"),
                             link,
                             hardLink,
                             JoinPath({CacheFolder, QStringLiteral("InfoSel.mdb")}),
                             JoinPath({CacheFolder, QStringLiteral("UserSelections.mdb")})};
    for (const QString& name : names) {
        for (const bool withDataView : {true, false}) {
            const BuiltDatabase built = BuildDatabase(Result(), withDataView, name, {});
            EXPECT_FALSE(built.made) << name.toStdString();
            EXPECT_EQ(built.message, FilledText(QStringLiteral("012"), {}));
        }
    }
    EXPECT_EQ(Bytes(source_), before);
    EXPECT_FALSE(IsDatabaseInUse(Target()));
}

TEST_F(NewDatabaseFailuresTest, AResultThatCanNotBeWrittenIsToldWithItsReason) {
    const QString tooLong(256, QLatin1Char('x'));
    const auto name = [](QString DataEntrySheet::*field, const QString& text) {
        DataEntrySheet result = Result();
        result.*field = text;
        return result;
    };
    const auto row = [](QString DataEntryRow::*field, const QString& text) {
        DataEntrySheet result = Result();
        result.rows[1].*field = text;
        return result;
    };
    DataEntrySheet empty = Result();
    empty.rows.clear();
    const std::pair<DataEntrySheet, const char*> cases[] = {
        {empty, "no results"},
        {name(&DataEntrySheet::sector, QStringLiteral(" ")), "\"Sector\" is empty"},
        {name(&DataEntrySheet::indicatorClass, {}), "\"Class\" is empty"},
        {name(&DataEntrySheet::indicator, tooLong), "\"Indicator\" is too long: at most 255"},
        {name(&DataEntrySheet::unit, tooLong), "\"Unit\" is too long: at most 255"},
        {row(&DataEntryRow::timePeriod, {}), "\"Time\" is empty"},
        {row(&DataEntryRow::timePeriod, QString(61, QLatin1Char('1'))), "\"Time\" is too long: at most 60"},
        {row(&DataEntryRow::areaId, {}), "2000; ; China; .25; Everybody; Asia_Own reckoning. \"Area ID\" is empty"},
        {row(&DataEntryRow::subpop, tooLong), "\"Subgroup\" is too long"},
        {row(&DataEntryRow::source, tooLong), "\"Source\" is too long"},
        {row(&DataEntryRow::value, QStringLiteral("1,5")), "\"1,5\" is not a number"},
        {row(&DataEntryRow::value, QStringLiteral("n/a")), "\"n/a\" is not a number"},
        {row(&DataEntryRow::value, {}), "\"Data value\" is empty"}};
    for (const auto& [result, reason] : cases) {
        const BuiltDatabase built = BuildDatabase(result, true, Target(), {});
        EXPECT_FALSE(built.made) << reason;
        EXPECT_TRUE(built.message.contains(QLatin1String(reason))) << built.message.toStdString();
    }
    EXPECT_EQ(Out(), QStringList());
}

TEST_F(NewDatabaseFailuresTest, APlaceThatTakesNoFileIsTold) {
    const QString protectedFile = Target(QStringLiteral("protected.mdb"));
    ASSERT_TRUE(ReplaceFile(protectedFile, "mine"));
    ASSERT_TRUE(QFile::setPermissions(protectedFile, QFile::ReadOwner));
    ASSERT_TRUE(QDir().mkpath(Target(QStringLiteral("folder.mdb"))));
    const QStringList before = Out();
    const QString gone = Folder() + QStringLiteral("/Gone/New.mdb");
    for (const QString& target :
         {gone, QStringLiteral("/proc/New.mdb"), protectedFile, Target(QStringLiteral("folder.mdb"))}) {
        for (const bool withDataView : {true, false}) {
            const BuiltDatabase built = BuildDatabase(Result(), withDataView, target, {});
            EXPECT_FALSE(built.made) << target.toStdString();
            EXPECT_EQ(built.message, Failure(FolderOf(target)));
        }
    }
    EXPECT_EQ(Bytes(protectedFile), "mine");
    EXPECT_EQ(Out(), before);
}

TEST_F(NewDatabaseFailuresTest, AFullDiskLeavesWhatWasThere) {
    ASSERT_TRUE(BuildDatabase(Result(), true, Target(), {}).made);
    const QByteArray before = Bytes(Target());
    DataEntrySheet other = Result();
    other.indicator = QStringLiteral("Another");
    int failures = 0;
    for (const bool withDataView : {true, false}) {
        const qint64 whole = QFileInfo(withDataView ? Target() : source_).size();
        for (const qint64 part : {1, 30, 60, 90, 99}) {
            BuiltDatabase built;
            {
                const FullDisk full(static_cast<rlim_t>(whole * part / 100));
                built = BuildDatabase(other, withDataView, Target(), {});
            }
            EXPECT_EQ(Out(), QStringList{QStringLiteral("New.mdb")});
            if (built.made) continue;
            ++failures;
            EXPECT_EQ(built.message, Failure(FolderOf(Target())));
            EXPECT_EQ(Bytes(Target()), before) << part;
        }
    }
    EXPECT_GE(failures, 6);
    ASSERT_TRUE(BuildDatabase(other, true, Target(), {}).made) << "and with room again it goes on";
}

TEST_F(NewDatabaseFailuresTest, AKillLeavesTheOldFileOrTheNewOne) {
    ASSERT_TRUE(BuildDatabase(Result(), true, Target(), {}).made);
    const QByteArray before = Bytes(Target());
    DataEntrySheet other = Result();
    other.indicator = QStringLiteral("Another");
    int killed = 0;
    for (const int milliseconds : {20, 40, 60, 90, 120, 200}) {
        killed += RunApart([&] { return BuildDatabase(other, true, Target(), {}).made; },
                           std::chrono::milliseconds(milliseconds))
                      ? 0
                      : 1;
        const bool old = Bytes(Target()) == before;
        const PlainReader made(Plain(Target()));
        EXPECT_EQ(made.Number("SELECT count(*) FROM Indicator_fr WHERE Indicator = 'Another'"), old ? 0 : 1);
        EXPECT_EQ(made.Number("SELECT count(*) FROM Data"), 20);
    }
    EXPECT_GE(killed, 1);
    ASSERT_TRUE(BuildDatabase(other, true, Target(), {}).made);
    EXPECT_EQ(Out(), QStringList{QStringLiteral("New.mdb")}) << "what the killed runs left is gone";
}

TEST_F(NewDatabaseFailuresTest, TheCopyOfAReadOnlyDatabaseCanBeWritten) {
    ASSERT_TRUE(QFile::setPermissions(source_, QFile::ReadOwner | QFile::ReadGroup));
    ASSERT_TRUE(BuildDatabase(Result(), false, Target(), {}).made);
    EXPECT_TRUE(QFileInfo(Target()).permissions() & QFile::WriteOwner);
    const auto copy = CreateTheConnection(Target());
    ASSERT_TRUE(copy);
    EXPECT_FALSE(copy->isReadOnly());
    EXPECT_TRUE(Execute(QStringLiteral("DELETE * FROM Data"), copy.get()));
}

TEST_F(NewDatabaseFailuresTest, ALinkStaysAndTheFileBehindItIsReplaced) {
    const QString real = Folder() + QStringLiteral("/Real.mdb");
    ASSERT_TRUE(ReplaceFile(real, "old"));
    std::filesystem::create_symlink(real.toStdString(), Target().toStdString());
    ASSERT_TRUE(BuildDatabase(Result(), true, Target(), {}).made);
    EXPECT_TRUE(QFileInfo(Target()).isSymLink());
    EXPECT_FALSE(InValidFile(real));
}

TEST_F(NewDatabaseFailuresTest, TheJournalOfTheOldFileIsNotTakenForTheNewOnes) {
    ASSERT_TRUE(BuildDatabase(Result(), true, Target(), {}).made);
    ASSERT_TRUE(ReplaceFile(Target() + QStringLiteral("-journal"), QByteArray(5000, 'j')));
    ASSERT_TRUE(BuildDatabase(Result(), false, Target(), {}).made);
    EXPECT_EQ(Out(), QStringList{QStringLiteral("New.mdb")});
    EXPECT_EQ(PlainReader(Plain(Target())).Number("SELECT count(*) FROM Data"), 3);
}

TEST_F(NewDatabaseFailuresTest, AMissingTemplateIsTold) {
    const QString application = Folder() + QStringLiteral("/Application");
    ASSERT_TRUE(QDir().mkpath(application));
    AppPath = application;
    EXPECT_EQ(BuildDatabase(Result(), true, Target(), {}).message, FilledText(QStringLiteral("011"), {}));
    EXPECT_EQ(Out(), QStringList());
    EXPECT_TRUE(BuildDatabase(Result(), false, Target(), {}).made) << "a copy needs none";
}

TEST_F(NewDatabaseFailuresTest, WithoutAnOpenDatabaseNothingIsMade) {
    Connection.reset();
    for (const bool withDataView : {true, false})
        EXPECT_EQ(BuildDatabase(Result(), withDataView, Target(), {}).message, FilledText(QStringLiteral("011"), {}));
    EXPECT_EQ(Out(), QStringList());
}

TEST_F(NewDatabaseFailuresTest, ANameAsLongAsTheDiskTakesItWorks) {
    const QString name = QString(247, QLatin1Char('n')) + QStringLiteral(".mdb");
    ASSERT_TRUE(BuildDatabase(Result(), true, Target(name), {}).made);
    EXPECT_EQ(Out(), QStringList{name});
}

TEST_F(NewDatabaseFailuresTest, TheUserCanStopIt) {
    struct StoppingFrame : FakeFrame {
        bool IsStopAsked() override { return true; }
    } stopping;
    SetFrame(&stopping);
    const BuiltDatabase built = BuildDatabase(Result(), true, Target(), {});
    SetFrame(&frame);
    EXPECT_FALSE(built.made);
    EXPECT_TRUE(built.message.isEmpty());
    EXPECT_EQ(Out(), QStringList());
    EXPECT_EQ(stopping.busy, 0);
}

} // namespace
} // namespace tessaro::test
