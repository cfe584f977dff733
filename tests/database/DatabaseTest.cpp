#include "database/Database.h"

#include "database/Links.h"
#include "database/NewGId.h"
#include "database/Schema.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Session.h"
#include "support/FullDisk.h"
#include "support/SampleApplication.h"
#include "support/TestSession.h"

#include <QFile>
#include <QFileInfo>

#include <chrono>

namespace tessaro::test {
namespace {

class DatabaseTest : public SessionTest {
  protected:
    void SetUp() override {
        StartSample();
        sample_ = JoinPath({AppPath, "Data/Sample.mdb"});
    }
    /// A sample database of another name, changed by statements.
    [[nodiscard]] QString Changed(const QStringList& statements) const {
        const QString path = Folder() + "/Changed.mdb";
        QFile::remove(path);
        MakeSampleDatabase(path);
        const auto connection = CreateTheConnection(path);
        for (const QString& sql : statements)
            EXPECT_TRUE(Execute(sql, connection.get())) << sql.toStdString();
        return path;
    }
    [[nodiscard]] static QString First(const QString& sql) {
        const Records rows = Select(sql);
        return rows.isOpen() && !rows.atEnd() ? rows.Text(std::size_t{0}) : QStringLiteral("nothing");
    }
    QString sample_;
};

TEST_F(DatabaseTest, BareNamesResolveToTheCurrentLanguage) {
    ASSERT_TRUE(OpenSample());
    EXPECT_EQ(LanguageSuffix, QString("_en"));
    EXPECT_TRUE(LanguageInDatabase);
    EXPECT_EQ(First("SELECT AreaName FROM Area WHERE AreaID = 'ASIIND'"), QString("India"));
    EXPECT_EQ(First("SELECT FootNote FROM Footnote"), QString("Estimate"));
    EXPECT_EQ(First("SELECT Count(*) FROM Data"), QString("17"));
    EXPECT_EQ(First("SELECT Count(*) FROM _SelArea"), QString("0"));
    Language = QString::fromUtf8("Français [fr]");
    ASSERT_TRUE(OpenDatabaseFile(sample_));
    EXPECT_EQ(First("SELECT AreaName FROM Area WHERE AreaID = 'ASIIND'"), QString("Inde"));
}

TEST_F(DatabaseTest, EveryLinkAnswers) {
    ASSERT_TRUE(OpenSample());
    for (const char* name : {"_SelIUSNId",
                             "_SelArea",
                             "_SelTimeperiod",
                             "Language",
                             "Data",
                             "TimePeriod",
                             "Area",
                             "FootNote",
                             "Indicator_Unit_Subpop",
                             "Indicator",
                             "Unit",
                             "Subpop",
                             "SectorLabel1",
                             "SectorLabel2",
                             "Sector",
                             "Indicator_Sector",
                             "GoalLabel1",
                             "GoalLabel2",
                             "GoalLabel3",
                             "Goal",
                             "Indicator_Goal",
                             "CF",
                             "Indicator_CF",
                             "Theme",
                             "Indicator_Theme",
                             "InstitutionLabel1",
                             "InstitutionLabel2",
                             "Institution",
                             "Indicator_Institution",
                             "ConventionLabel1",
                             "ConventionLabel2",
                             "ConventionLabel3",
                             "Convention",
                             "Indicator_Convention",
                             "Region",
                             "Source",
                             "Indicator_Source",
                             "Database_Log",
                             "Template_Log"})
        EXPECT_TRUE(Select(QStringLiteral("SELECT * FROM [%1]").arg(QLatin1String(name))).isOpen()) << name;
}

TEST_F(DatabaseTest, TheSelectionSurvivesAChangeOfDatabase) {
    ASSERT_TRUE(OpenSample());
    ASSERT_TRUE(Execute("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) VALUES (2, '2000')"));
    const QString other = Changed({"DELETE * FROM Data WHERE IUSNId > 1"});
    ASSERT_TRUE(OpenDatabaseFile(other));
    EXPECT_EQ(CurrentDatabase, other);
    EXPECT_EQ(First("SELECT TimePeriod FROM _SelTimePeriod"), QString("2000"));
    EXPECT_EQ(First("SELECT Count(*) FROM Data"), QString("11"));
}

TEST_F(DatabaseTest, AChangeWithAQueryStillOpenTakesTheNewData) {
    ASSERT_TRUE(OpenSample());
    const std::shared_ptr<jet::Connection> old = Connection;
    jet::Recordset pages = old->OpenRecordset("SELECT RowNId FROM Data", jet::CursorType::ForwardOnly);
    ASSERT_FALSE(pages.atEnd());
    ASSERT_TRUE(OpenDatabaseFile(Changed({"DELETE * FROM Data WHERE IUSNId > 1"})));
    EXPECT_NE(Connection, old);
    EXPECT_EQ(First("SELECT Count(*) FROM Data"), QString("11"));
}

TEST_F(DatabaseTest, RefusesWhatIsNoDataDatabaseAndKeepsTheSession) {
    ASSERT_TRUE(OpenSample());
    const QString text = Folder() + "/text.mdb";
    ASSERT_TRUE(ReplaceFile(text, QByteArray(4000, 't')));
    const QString empty = Folder() + "/empty.mdb";
    ASSERT_TRUE(ReplaceFile(empty, QByteArray()));
    const QString foreign = Folder() + "/foreign.mdb";
    jet::Database::Create(foreign.toStdString(), "another password");
    const QString cut = Folder() + "/cut.mdb";
    ASSERT_TRUE(ReplaceFile(cut, ReadWholeFile(sample_)->left(30000)));
    const QString bad[] = {text, empty, foreign, cut, Folder() + "/missing.mdb", Folder(), QString()};
    for (const QString& path : bad) {
        messages.clear();
        EXPECT_FALSE(OpenDatabaseFile(path)) << path.toStdString();
        EXPECT_EQ(messages, QStringList{"316"}) << path.toStdString();
        EXPECT_EQ(CurrentDatabase, sample_);
        EXPECT_EQ(First("SELECT AreaName FROM Area WHERE AreaID = 'ASI'"), QString("Asia"));
    }
}

TEST_F(DatabaseTest, WantsADefaultLanguageAndAllOfItsTables) {
    struct {
        QStringList changes;
        bool refused;
    } const cases[] = {
        {{}, false},
        {{"DROP TABLE Region"}, true},
        {{"DROP TABLE Area_en"}, true},
        {{"DROP TABLE Area_en", "CREATE TABLE AREA_EN (AreaNId LONG)"}, false}, // names ignore case
        {{"DROP TABLE Data", "CREATE TABLE _Data (RowNId LONG)"}, true},        // a working table stands in for none
        {{"DROP TABLE Area_fr"}, false},                                        // only the default language counts
        {{"DROP TABLE Database_Log", "DROP TABLE Template_Log", "DROP TABLE GUId"}, false},
        {{"CREATE TABLE Extra (x LONG)"}, false},
        {{"UPDATE [Language] SET LanguageDefault = False"}, true},
        {{"DELETE * FROM [Language]"}, true},
        {{"DROP TABLE [Language]"}, true},
    };
    for (const auto& c : cases) {
        messages.clear();
        EXPECT_EQ(InValidFile(Changed(c.changes)), c.refused) << c.changes.join("; ").toStdString();
        EXPECT_EQ(messages, c.refused ? QStringList{"316"} : QStringList{});
    }
}

TEST_F(DatabaseTest, ADatabaseWithoutTheLanguageGoesHomeWithItsDoorsShut) {
    ASSERT_TRUE(OpenSample());
    const QString french =
        Changed({"DELETE * FROM [Language] WHERE LanguageCode = 'en'", "UPDATE [Language] SET LanguageDefault = True"});
    EXPECT_TRUE(OpenDatabaseFile(french));
    EXPECT_FALSE(LanguageInDatabase);
    EXPECT_FALSE(DatabaseOpen);
    EXPECT_TRUE(frame.calls.isEmpty()); // what is on the screen is the frame's own business
    EXPECT_EQ(CurrentDatabase, french);
    EXPECT_TRUE(messages.isEmpty());
    // Back to one that has it: everything answers again.
    ASSERT_TRUE(OpenDatabaseFile(sample_));
    EXPECT_TRUE(LanguageInDatabase);
    EXPECT_EQ(First("SELECT Count(*) FROM Data"), QString("17"));
}

TEST_F(DatabaseTest, ReadOnlyDatabasesOpen) {
    QFile::setPermissions(sample_, QFile::ReadOwner);
    QFile::setPermissions(FolderOf(sample_), QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_TRUE(OpenSample());
    EXPECT_EQ(First("SELECT Count(*) FROM Data"), QString("17"));
    QFile::setPermissions(FolderOf(sample_), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(DatabaseTest, AFileThatGoesAwayWhileItIsOpenFailsNoisilyInTheLogOnly) {
    const QString path = Changed({});
    ASSERT_TRUE(OpenDatabaseFile(path));
    Connection.reset();
    QFile::remove(path);
    Connection = ConnectWorkingDatabase();
    EXPECT_FALSE(Select("SELECT * FROM Data").isOpen());
    EXPECT_TRUE(Select("SELECT * FROM _SelArea").isOpen());
}

TEST_F(DatabaseTest, AMissingTemplateKeepsTheWorkingDatabaseThatIsThere) {
    QFile::remove(JoinPath({AppPath, "Bin/Template/InfoSel.mdb"}));
    EXPECT_TRUE(OpenSample());
    EXPECT_EQ(First("SELECT Count(*) FROM Data"), QString("17"));
}

TEST_F(DatabaseTest, ADamagedWorkingDatabaseIsReplaced) {
    ASSERT_TRUE(ReplaceFile(JoinPath({CacheFolder, "InfoSel.mdb"}), QByteArray(9000, 'q')));
    EXPECT_TRUE(OpenSample());
    EXPECT_EQ(First("SELECT Count(*) FROM Data"), QString("17"));
}

TEST_F(DatabaseTest, CreateLinkReplacesOneLinkOnItsOwn) {
    ASSERT_TRUE(OpenSample());
    CreateLink(sample_, "Area_fr", "Area");
    CreateLink(sample_, "NoSuchTable", "Unit");
    CreateLink(Folder() + "/missing.mdb", "Subpop_en", "Subpop");
    Connection = ConnectWorkingDatabase();
    EXPECT_EQ(First("SELECT AreaName FROM Area WHERE AreaID = 'ASI'"), QString("Asie"));
    EXPECT_EQ(First("SELECT Count(*) FROM Indicator"), QString("3"));
    EXPECT_FALSE(Select("SELECT * FROM Unit").isOpen());
    EXPECT_FALSE(Select("SELECT * FROM Subpop").isOpen());
}

TEST_F(DatabaseTest, TheSelectionIsWrittenThroughItsLinksAndTheDataIsOnlyRead) {
    ASSERT_TRUE(OpenSample());
    for (const char* sql : {"UPDATE Area SET AreaName = 'Bharat'", "DELETE * FROM Data", "DELETE * FROM [Language]"})
        EXPECT_FALSE(Execute(QLatin1String(sql))) << sql;
    ASSERT_TRUE(Execute("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) VALUES (2, '2000')"));
    const auto file = CreateTheConnection(sample_);
    EXPECT_EQ(Select("SELECT Count(*) FROM Data", jet::CursorType::Static, file.get()).Text(std::size_t{0}), "17");
    const auto selections = CreateTheConnection(JoinPath({CacheFolder, "UserSelections.mdb"}));
    EXPECT_EQ(
        Select("SELECT TimePeriod FROM _SelTimePeriod", jet::CursorType::Static, selections.get()).Text(std::size_t{0}),
        "2000");
}

TEST(SuffixOfLanguageTest, IsTheCodeBetweenTheBrackets) {
    struct {
        const char *language, *suffix;
    } const cases[] = {{"English [en]", "_en"}, {"[zh-CN]", "_zh-CN"}, {"English", "_"}, {"", "_"},
                       {"odd ]en[", "_"},       {"x []", "_"}};
    for (const auto& c : cases)
        EXPECT_EQ(SuffixOfLanguage(QString::fromLatin1(c.language)).toStdString(), c.suffix) << c.language;
}

TEST_F(DatabaseTest, NewIdentifiersAreUniqueAndLocal) {
    const auto connection = CreateTheConnection(Changed({}));
    const QString one = NewGId(connection.get());
    const QString two = NewGId(connection.get());
    EXPECT_EQ(one.size(), 38);
    EXPECT_TRUE(one.startsWith('{') && one.endsWith('}'));
    EXPECT_NE(one, two);
    connection->Close();
    EXPECT_EQ(NewGId(connection.get()), QString());
    EXPECT_EQ(NewGId(nullptr), QString());
}

TEST_F(DatabaseTest, OpensAgainByTheSessionsOwnValue) {
    ASSERT_TRUE(OpenDatabaseFile(sample_));
    ASSERT_TRUE(OpenDatabaseFile(CurrentDatabase)); // as a start does with the remembered one
    EXPECT_EQ(CurrentDatabase, sample_);
}

TEST_F(DatabaseTest, OnAFullDiskNothingChangesAndTheFolderIsNamed) {
    const QString other = Changed({"DELETE * FROM Data WHERE IUSNId > 1"});
    {
        const FullDisk full(0);
        EXPECT_FALSE(OpenDatabaseFile(other));
    }
    EXPECT_FALSE(Connection);
    EXPECT_EQ(CurrentDatabase, QString());
    ASSERT_TRUE(OpenDatabaseFile(sample_));
    const QString all = Select("SELECT Count(*) FROM Data").Text(std::size_t{0});
    {
        const FullDisk full(0);
        EXPECT_FALSE(OpenDatabaseFile(other));
    }
    EXPECT_EQ(CurrentDatabase, sample_);
    EXPECT_EQ(Select("SELECT Count(*) FROM Data").Text(std::size_t{0}), all);
    EXPECT_EQ(messages, (QStringList{"TS_NoRoomToOpen", "TS_NoRoomToOpen"}));
}

} // namespace
} // namespace tessaro::test
