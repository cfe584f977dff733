// Every statement that the program runs, or will run in a screen still to come, against the sample database: the
// scripts in data/ are the contract between the SQL floor and all rooms above it.

#include "StatementScript.h"
#include "TestPlaces.h"
#include "database/Database.h"
#include "session/ProductSettings.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "support/TestSession.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <charconv>
#include <sstream>

namespace tessaro::test {
namespace {

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

std::string Trimmed(const std::string& text) {
    const auto from = text.find_first_not_of(' ');
    return from == std::string::npos ? std::string() : text.substr(from, text.find_last_not_of(' ') - from + 1);
}

/// "> 5" or "= 3" against a number.
bool Holds(const std::string& comparison, std::int64_t number) {
    std::istringstream words(comparison);
    std::string sign;
    std::int64_t bound = 0;
    words >> sign >> bound;
    return sign == ">" ? number > bound : number == bound;
}

std::string ColumnList(const jet::Recordset& rows) {
    std::string list;
    for (std::size_t i = 0; i < rows.FieldCount(); ++i)
        list += (i ? ", " : "") + rows.Field(i).name;
    return list;
}

class StatementContract : public SessionTest {
  protected:
    void SetUp() override {
        AppPath = QStringLiteral(TESSARO_INSTALLATION);
        Language = QStringLiteral("English [en]");
        FillLanguageArray();
        ASSERT_TRUE(ReadInfoINIFile());
        const QString copy = Folder() + QStringLiteral("/sample.mdb");
        jet::Database::Copy(SampleDatabase().toStdString(), copy.toStdString());
        ASSERT_TRUE(OpenDatabaseFile(copy)) << messages.join(' ').toStdString();
        data_ = CreateTheConnection(copy);
        language_ = CreateTheConnection(FileOfLanguage(Language));
        ASSERT_TRUE(data_ && language_);
        LookUpSamples();
    }

    static QString SampleDatabase() {
        const QDir folder(AppPath + QStringLiteral("/") + Setting(QStringLiteral("Data Folder")));
        return folder.filePath(Setting(QStringLiteral("DEFAULT DATABASE NAME")));
    }

    std::string First(const std::string& sql) {
        jet::Recordset rows = Connection->OpenRecordset(sql);
        EXPECT_FALSE(rows.atEnd()) << sql;
        return rows.atEnd() ? std::string() : rows.Get(0).toText();
    }

    void Sample(const std::string& word, const std::string& sql) { samples_[word] = First(WithSamples(sql, samples_)); }

    /// Two indicators of one source with values for two countries of one region in two years.
    void LookUpSamples() {
        samples_["temp"] = TempFolder.toStdString();
        Sample("areaid",
               "SELECT TOP 1 A.AreaID FROM Area A INNER JOIN Data D ON A.AreaNId = D.AreaNId WHERE Len(A.AreaID) = 6 "
               "AND A.MapFile <> '' GROUP BY A.AreaID ORDER BY Count(*) DESC, A.AreaID");
        Sample("regionid", "SELECT Mid(AreaID,1,3) FROM Area WHERE AreaID = '<areaid>'");
        Sample("areanid", "SELECT AreaNId FROM Area WHERE AreaID = '<areaid>'");
        Sample("otherareaid",
               "SELECT TOP 1 A.AreaID FROM Area A INNER JOIN Data D ON A.AreaNId = D.AreaNId WHERE Len(A.AreaID) = 6 "
               "AND Mid(A.AreaID,1,3) = '<regionid>' AND A.AreaID <> '<areaid>' GROUP BY A.AreaID ORDER BY Count(*) "
               "DESC, A.AreaID");
        Sample("otherareanid", "SELECT AreaNId FROM Area WHERE AreaID = '<otherareaid>'");
        samples_["areanids"] = samples_["areanid"] + "," + samples_["otherareanid"];
        Sample("iusnid",
               "SELECT TOP 1 D.IUSNId FROM Data D INNER JOIN Indicator_Source I ON D.IUSNId = I.IUSNId AND D.SourceNId "
               "= I.SourceNId "
               "WHERE D.AreaNId = <areanid> AND D.FootnoteNId > 0 GROUP BY D.IUSNId ORDER BY Count(*) DESC, D.IUSNId");
        for (const char* field : {"IndicatorGId", "UnitGId", "SubpopGId"})
            Sample(Lower(field),
                   std::string("SELECT ") + field + " FROM Indicator_Unit_Subpop WHERE IUSNId = <iusnid>");
        Sample("othertimenid", "SELECT TOP 1 TimePeriodNId FROM Data WHERE IUSNId = <iusnid> AND AreaNId = <areanid> "
                               "AND FootnoteNId > 0 ORDER BY TimePeriodNId DESC");
        Sample("timenid", "SELECT TOP 1 TimePeriodNId FROM Data WHERE IUSNId = <iusnid> AND AreaNId = <areanid> AND "
                          "TimePeriodNId <> <othertimenid> ORDER BY TimePeriodNId DESC");
        Sample("time", "SELECT TimePeriod FROM TimePeriod WHERE TimePeriodNId = <timenid>");
        Sample("othertime", "SELECT TimePeriod FROM TimePeriod WHERE TimePeriodNId = <othertimenid>");
        Sample("sourcenid", "SELECT TOP 1 SourceNId FROM Data WHERE IUSNId = <iusnid> AND AreaNId = <areanid> AND "
                            "TimePeriodNId = <timenid> ORDER BY SourceNId");
        Sample("otheriusnid",
               "SELECT TOP 1 D.IUSNId FROM Data D INNER JOIN Indicator_Unit_Subpop I ON D.IUSNId = I.IUSNId WHERE "
               "D.AreaNId = <areanid> "
               "AND D.TimePeriodNId = <timenid> AND I.IndicatorGId <> '<indicatorgid>' ORDER BY D.IUSNId");
        Sample("otherindicatorgid", "SELECT IndicatorGId FROM Indicator_Unit_Subpop WHERE IUSNId = <otheriusnid>");
        Sample("thirdiusnid",
               "SELECT TOP 1 D.IUSNId FROM Data D INNER JOIN Indicator_Unit_Subpop I ON D.IUSNId = I.IUSNId WHERE "
               "D.AreaNId = <areanid> AND D.TimePeriodNId = <timenid> "
               "AND I.IndicatorGId <> '<indicatorgid>' AND I.IndicatorGId <> '<otherindicatorgid>' ORDER BY D.IUSNId");
        samples_["iuslist"] = samples_["iusnid"] + "," + samples_["otheriusnid"] + "," + samples_["thirdiusnid"];
        Sample("newindicatorgid", "SELECT TOP 1 I.IndicatorGId FROM Indicator_Unit_Subpop I INNER JOIN "
                                  "Indicator_Source S ON I.IUSNId = S.IUSNId "
                                  "WHERE I.IndicatorGId LIKE '-*' AND I.IndicatorGId NOT IN (SELECT IndicatorGId FROM "
                                  "Indicator_Unit_Subpop WHERE IUSNId IN (<iuslist>)) "
                                  "ORDER BY I.IUSNId");
        Sample("othersubpop", "SELECT S.Subpop FROM Subpop S INNER JOIN Indicator_Unit_Subpop I ON S.SubpopGId = "
                              "I.SubpopGId WHERE I.IUSNId = <otheriusnid>");
        Sample("otherindicator", "SELECT Indicator FROM [Indicator] WHERE IndicatorGId = '<otherindicatorgid>'");
        Sample("indicator", "SELECT Indicator FROM [Indicator] WHERE IndicatorGId = '<indicatorgid>'");
        Sample("unit", "SELECT Unit FROM Unit WHERE UnitGId = '<unitgid>'");
        Sample("subpop", "SELECT Subpop FROM Subpop WHERE SubpopGId = '<subpopgid>'");
        Sample("source", "SELECT Source FROM Source WHERE SourceNId = <sourcenid>");
        Sample("sourcegid", "SELECT SourceGId FROM Source WHERE SourceNId = <sourcenid>");
        Sample("regionnid", "SELECT RegionNId FROM Source WHERE SourceNId = <sourcenid>");
        Sample(
            "footnotenid",
            "SELECT TOP 1 FootnoteNId FROM Data WHERE IUSNId = <iusnid> AND AreaNId = <areanid> AND FootnoteNId > 0");
        Sample("rownid", "SELECT RowNId FROM Data WHERE IUSNId = <iusnid> AND AreaNId = <areanid> AND TimePeriodNId = "
                         "<timenid> AND SourceNId = <sourcenid>");
        Sample("sector2gid", "SELECT SectorLabel2GId FROM Indicator_Sector WHERE IndicatorGId = '<indicatorgid>'");
        Sample("sector1gid", "SELECT SectorLabel1GId FROM Sector WHERE SectorLabel2GId = '<sector2gid>'");
    }

    jet::Connection& On(const std::string& which) {
        return which == "data" ? *data_ : which == "language" ? *language_ : *Connection;
    }

    /// The first field that the query behind "then" gives, compared with the text behind its "=>".
    void ExpectEffect(jet::Connection& on, const std::string& expectation) {
        const auto arrow = expectation.rfind("=>");
        const std::string sql = Trimmed(expectation.substr(5, arrow - 5));
        jet::Recordset rows = on.OpenRecordset(sql);
        ASSERT_FALSE(rows.atEnd()) << sql;
        EXPECT_EQ(rows.Get(0).toText(), Trimmed(expectation.substr(arrow + 2))) << sql;
    }

    void ExpectTable(jet::Connection& on, const std::string& expectation) {
        const auto colon = expectation.find(": ");
        const std::string table = expectation.substr(6, colon - 6);
        EXPECT_EQ(Lower(ColumnList(on.OpenRecordset("SELECT * FROM [" + table + "]"))),
                  Lower(expectation.substr(colon + 2)));
    }

    void Meets(jet::Connection& on, const std::string& expectation, jet::Recordset* rows, std::int64_t changed) {
        if (expectation.starts_with("then ")) {
            ExpectEffect(on, expectation);
        } else if (expectation.starts_with("makes ")) {
            ExpectTable(on, expectation);
        } else if (expectation.starts_with("changed ")) {
            EXPECT_TRUE(Holds(expectation.substr(8), changed)) << changed << " rows changed, expected " << expectation;
        } else if (expectation.starts_with("file ")) {
            EXPECT_TRUE(QFile::exists(QString::fromStdString(expectation.substr(5)))) << expectation;
        } else if (rows && expectation.starts_with("columns: ")) {
            EXPECT_EQ(Lower(ColumnList(*rows)), Lower(expectation.substr(9)));
        } else if (rows && expectation.starts_with("rows ")) {
            EXPECT_TRUE(Holds(expectation.substr(5), rows->RecordCount()))
                << rows->RecordCount() << " rows, expected " << expectation;
        } else {
            ADD_FAILURE() << "can't be checked: " << expectation;
        }
    }

    static bool GivesRows(const std::string& sql) {
        const std::string lower = Lower(Trimmed(sql));
        return lower.starts_with("transform") ||
               (lower.starts_with("select") && lower.find(" into ") == std::string::npos);
    }

    void Run(const ScriptedStatement& block) {
        SCOPED_TRACE(block.name + " (line " + std::to_string(block.line) + ")");
        // The row of the selection that the options take out is known only once the selection stands.
        if (block.sql.find("<selrownid>") != std::string::npos && !samples_.contains("selrownid"))
            Sample("selrownid", "SELECT TOP 1 RowNId FROM _SelIUSNId WHERE IUSNId = <iusnid> ORDER BY RowNId");
        jet::Connection& on = On(block.on);
        const std::string sql = WithSamples(block.sql, samples_);
        const bool refused = block.expectations.front() == "refused";
        jet::Recordset rows;
        std::int64_t changed = 0;
        try {
            if (GivesRows(sql))
                rows = on.OpenRecordset(sql);
            else
                changed = on.Execute(sql);
            EXPECT_FALSE(refused) << "was taken: " << sql;
        } catch (const jet::Error& error) {
            EXPECT_TRUE(refused) << error.what() << "\n" << sql;
            if (!refused) return;
        }
        for (const std::string& expectation : block.expectations) {
            if (expectation != "refused")
                Meets(on, WithSamples(expectation, samples_), GivesRows(sql) ? &rows : nullptr, changed);
        }
    }

    void RunScript(const char* name) {
        for (const ScriptedStatement& block : ReadStatementScript(std::string(TESSARO_TESTS "/database/data/") + name))
            Run(block);
    }

    Samples samples_;
    std::shared_ptr<jet::Connection> data_;
    std::shared_ptr<jet::Connection> language_;
};

// The scripts build on one another: the wizards read the selection, the builder's reads need the wizards' snapshot.
TEST_F(StatementContract, EveryStatementRunsAsTold) {
    RunScript("statements-selection.txt");
    RunScript("statements-wizards.txt");
    RunScript("statements-database.txt");
}

} // namespace
} // namespace tessaro::test
