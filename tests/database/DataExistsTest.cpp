#include "database/DataExists.h"

#include "session/Query.h"
#include "support/SampleApplication.h"
#include "support/TestSession.h"

#include <QFile>

namespace tessaro::test {
namespace {

class DataExistsTest : public SessionTest {
  protected:
    void SetUp() override {
        path_ = Folder() + "/Sample.mdb";
        MakeSampleDatabase(path_);
    }
    void Change(const QStringList& statements) const {
        const auto connection = CreateTheConnection(path_);
        for (const QString& sql : statements)
            ASSERT_TRUE(Execute(sql, connection.get())) << sql.toStdString();
    }
    /// The keys of the marked rows, sorted, joined by ",".
    [[nodiscard]] QString Marked(const QString& table, const QString& key) const {
        const auto connection = CreateTheConnection(path_);
        return Select(QStringLiteral("SELECT [%2] FROM [%1] WHERE DataExists = True ORDER BY [%2]").arg(table, key),
                      jet::CursorType::Static, connection.get())
            .Joined();
    }
    void ExpectMarks(const QList<QStringList>& expected) const {
        for (const QStringList& row : expected)
            EXPECT_EQ(Marked(row[0], row[1]), row[2]) << row[0].toStdString();
    }
    QString path_;
};

const QList<QStringList> MarksOfSample = {
    {"Indicator_Unit_Subpop", "IUSNId", "1,2,3"},
    {"TimePeriod", "TimePeriodNId", "1,2,3"},
    {"Sector", "SectorLabel2GId", "-S1A"},
    {"Goal", "GoalLabel3GId", "-G1AA"},
    {"Institution", "InstitutionLabel2GId", "-N1A"},
    {"Convention", "ConventionLabel3GId", "-C1AA"},
    {"Source_en", "SourceNId", "1,2"},
    {"Source_fr", "SourceNId", "1,2"},
    {"CF_en", "CFGId", "-F1"},
    {"Theme_fr", "ThemeGId", "-T1"},
    {"Area_en", "AreaID", "ASI,ASICHN,ASIIND,ASIINDDEL"},
    {"Area_fr", "AreaID", "ASI,ASICHN,ASIIND,ASIINDDEL"},
};

TEST_F(DataExistsTest, LeavesMarksThatAreRight) {
    MarkDataExists(path_);
    ExpectMarks(MarksOfSample);
}

TEST_F(DataExistsTest, MakesThemAnewFromWrongOnes) {
    Change({"UPDATE Indicator_Unit_Subpop SET DataExists = True", "UPDATE Sector SET DataExists = True",
            "UPDATE Goal SET DataExists = False", "UPDATE TimePeriod SET DataExists = True",
            "UPDATE Area_en SET DataExists = True", "UPDATE Area_fr SET DataExists = False",
            "UPDATE Source_fr SET DataExists = False", "UPDATE CF_en SET DataExists = False"});
    MarkDataExists(path_);
    ExpectMarks(MarksOfSample);
}

TEST_F(DataExistsTest, AnAreaIsMarkedByItsDescendants) {
    Change({"DELETE * FROM Data",
            "INSERT INTO Data (TimePeriodNId, IUSNId, AreaNId, SourceNId, Datavalue) VALUES (4, 4, 3, 2, '9')"});
    MarkDataExists(path_);
    ExpectMarks({{"Area_en", "AreaID", "ASI,ASIIND,ASIINDDEL"},
                 {"Indicator_Unit_Subpop", "IUSNId", "4"},
                 {"TimePeriod", "TimePeriodNId", "4"},
                 {"Sector", "SectorLabel2GId", "-S1B"},
                 {"Source_en", "SourceNId", "2"}});
}

TEST_F(DataExistsTest, AnEmptyDataTableClearsAllButFrameworksAndThemes) {
    Change({"DELETE * FROM Data"});
    MarkDataExists(path_);
    ExpectMarks({{"Indicator_Unit_Subpop", "IUSNId", ""},
                 {"Sector", "SectorLabel2GId", ""},
                 {"Convention", "ConventionLabel3GId", ""},
                 {"TimePeriod", "TimePeriodNId", ""},
                 {"Area_en", "AreaID", ""},
                 {"Source_fr", "SourceNId", ""},
                 {"CF_en", "CFGId", "-F1"},
                 {"Theme_en", "ThemeGId", "-T1"}});
}

TEST_F(DataExistsTest, ATopLevelAreaWithDataNeedsNoParent) {
    Change({"DELETE * FROM Data WHERE AreaNId <> 1"});
    MarkDataExists(path_);
    EXPECT_EQ(Marked("Area_en", "AreaID"), QString("ASI"));
}

TEST_F(DataExistsTest, TellsItsProgressAndLeavesTheScratchTableEmpty) {
    QList<int> told;
    MarkDataExists(path_, [&](int percent) { told << percent; });
    EXPECT_EQ(frame.calls, QStringList()); // the caller shows it
    ASSERT_GT(told.size(), 3);
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_EQ(told.last(), 100);
    const auto connection = CreateTheConnection(path_);
    EXPECT_TRUE(Select("SELECT * FROM [GUId]", jet::CursorType::Static, connection.get()).isEmpty());
}

TEST_F(DataExistsTest, GoesOnPastAStatementThatFails) {
    Change({"DROP TABLE Indicator_Goal", "UPDATE Area_en SET DataExists = False"});
    MarkDataExists(path_);
    EXPECT_EQ(Marked("Area_en", "AreaID"), QString("ASI,ASICHN,ASIIND,ASIINDDEL"));
    MarkDataExists(Folder() + "/missing.mdb");
    EXPECT_TRUE(messages.isEmpty());
}

} // namespace
} // namespace tessaro::test
