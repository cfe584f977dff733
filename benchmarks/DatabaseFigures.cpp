#include "Figures.h"
#include "database/DataExists.h"
#include "database/Database.h"
#include "dataview/GridQuery.h"
#include "jet/emit/Translator.h"
#include "session/Query.h"
#include "session/Session.h"
#include "view/InView.h"

#include <filesystem>
#include <sqlite3.h>

namespace tessaro::bench {

namespace {

/// The marking by hand: each list of ids is read once and everything is written in one transaction, as it is in ours.
const std::string kClear = "UPDATE Indicator_Unit_Subpop SET DataExists = 0; UPDATE Sector SET DataExists = 0; UPDATE "
                           "Convention SET DataExists = 0; UPDATE Goal SET DataExists = 0; UPDATE Institution SET "
                           "DataExists = 0; UPDATE TimePeriod SET DataExists = 0;";

std::string List(const std::string& column) {
    return "DELETE FROM GUId; INSERT INTO GUId (NId) SELECT DISTINCT " + column + " FROM Data;";
}

std::string Mark(const std::string& table, const std::string& key) {
    return "UPDATE " + table + " SET DataExists = -1 WHERE " + key + " IN (SELECT NId FROM GUId);";
}

std::string MarkClass(const std::string& table, const std::string& link, const std::string& key,
                      const std::string& iusKey = "IUSNId") {
    return "UPDATE " + table + " SET DataExists = -1 WHERE " + key + " COLLATE NOCASE IN (SELECT L." + key + " FROM " +
           link + " L JOIN Indicator_Unit_Subpop X ON X." + iusKey + " = L." + iusKey + " WHERE X.DataExists <> 0);";
}

std::string MarkByHand() {
    std::string sql = "BEGIN IMMEDIATE;" + kClear + List("IUSNId") + Mark("Indicator_Unit_Subpop", "IUSNId");
    sql += MarkClass("Sector", "Indicator_Sector", "SectorLabel2GId", "IndicatorGId");
    sql += MarkClass("Convention", "Indicator_Convention", "ConventionLabel3GId");
    sql += MarkClass("Goal", "Indicator_Goal", "GoalLabel3GId");
    sql += MarkClass("Institution", "Indicator_Institution", "InstitutionLabel2GId");
    sql += List("TimePeriodNId") + Mark("TimePeriod", "TimePeriodNId");
    sql += List("SourceNId") + "UPDATE Source_en SET DataExists = 0;" + Mark("Source_en", "SourceNId");
    sql += MarkClass("CF_en", "Indicator_CF", "CFGId") + MarkClass("Theme_en", "Indicator_Theme", "ThemeGId");
    sql += List("AreaNId") + "UPDATE Area_en SET DataExists = 0;" + Mark("Area_en", "AreaNId");
    for (const char* level : {"4", "3", "2"}) {
        sql +=
            std::string("UPDATE Area_en SET DataExists = -1 WHERE DataExists = 0 AND AreaID COLLATE NOCASE IN (SELECT "
                        "substr(AreaID, 1, length(AreaID) - 3) FROM Area_en WHERE DataExists <> 0 AND AreaLevel = ") +
            level + ");";
    }
    return sql + "DELETE FROM GUId; COMMIT;";
}

void MeasureTranslation(Report& report) {
    int number = 0;
    const auto translated = [&] {
        return Milliseconds(
            [&] {
                const QString sql =
                    RequeryStatement(QStringLiteral(" AND D.RowNId <> %1").arg(++number), DefaultDataOrderBy());
                (void)jet::Translate(sql.toStdString(), Connection->catalogue());
            },
            500);
    };
    report.Bound("translating a new statement", translated, 0.5, "ms");

    // Within a transaction the engine takes no locks on files, so the rest of the cost is the statement's own.
    const auto run = [] {
        const std::string sql = "SELECT AreaNId FROM _SelArea WHERE AreaNId = -1";
        Connection->Begin();
        const double once =
            Milliseconds([&] { (void)Connection->OpenRecordset(sql, jet::CursorType::ForwardOnly); }, 20000);
        Connection->Commit();
        return once;
    };
    report.Bound("a statement seen before, translated and run", run, 0.005, "ms");
}

/// A database is marked when the program has just written it: no planner statistics tell SQLite then what pays.
void MeasureMarksOfNew(Report& report, const BenchSession& session, const std::string& byHand) {
    const std::string what = "MarkDataExists of a database just written";
    if (!report.Wants(what)) return;
    const BenchSession::Copies copies = session.CopyForHand();
    const std::string written = session.working + ".written";
    std::filesystem::copy_file(session.database, written, std::filesystem::copy_options::overwrite_existing);
    HandWritten(written, copies.selections, copies.working).Run("DROP TABLE IF EXISTS sqlite_stat1;");
    report.Compare(
        what, [&] { MarkDataExists(QString::fromStdString(written)); },
        [&] { HandWritten(written, copies.selections, copies.working).Run(byHand); }, 0.3);
    std::filesystem::remove(written);
}

void MeasureOpening(Report& report, const BenchSession& session) {
    const QString path = QString::fromStdString(session.database);
    const std::string scratch = session.working + ".byhand";
    report.Compare(
        "open a database",
        [&] {
            Connection.reset();
            (void)OpenDatabaseFile(path);
        },
        [&] { OpenByHand(session.database, session.selections, session.workingTemplate, scratch); });
    std::filesystem::remove(scratch);
}

} // namespace

void MeasureDatabase(Report& report, const BenchSession& session) {
    const BenchSession::Copies copies = session.CopyForHand();
    MeasureTranslation(report);
    const QString path = QString::fromStdString(session.database);
    const std::string byHand = MarkByHand();
    report.Compare(
        "MarkDataExists", [&] { MarkDataExists(path); },
        [&] { HandWritten(session.database, copies.selections, copies.working).Run(byHand); });
    MeasureMarksOfNew(report, session, byHand);
    MeasureOpening(report, session);
}

} // namespace tessaro::bench
