#include "BenchSession.h"

#include "database/Database.h"
#include "jet/engine/Connection.h"
#include "platform/Paths.h"
#include "session/DatabasePassword.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Startup.h"

#include <cstdio>
#include <cstdlib>

namespace tessaro::bench {

namespace {

void Need(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "bench: %s\n", what);
    std::exit(2);
}

// `share` is the divisor of the numbers that are selected: 2 takes the lower half, 1 all.
void SelectShare(int share) {
    const auto upTo = [share](const char* table, const char* key) {
        return QStringLiteral("(SELECT Max(%1) FROM %2) / %3").arg(QLatin1String(key), QLatin1String(table)).arg(share);
    };
    for (const char* table : {"_SelArea", "_SelTimePeriod", "_SelIUSNId"})
        Need(Execute(QStringLiteral("DELETE * FROM ") + QLatin1String(table)), "a selection table can't be emptied");
    bool ok =
        Execute(QStringLiteral("INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile) SELECT "
                               "AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile FROM Area WHERE AreaNId <= ") +
                upTo("Area", "AreaNId"));
    ok = Execute(
             QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) SELECT TimePeriodNId, TimePeriod "
                            "FROM TimePeriod WHERE TimePeriodNId <= ") +
             upTo("TimePeriod", "TimePeriodNId")) &&
         ok;
    ok = Execute(
             QStringLiteral(
                 "INSERT INTO _SelIUSNId (IUSNId, IndicatorGId, UnitGId, SubpopGId, [Indicator], Unit, Subpop, "
                 "SourceNId, Source, RecommendedSource) SELECT DISTINCT  IUS.IUSNId, IUS.IndicatorGId, IUS.UnitGId, "
                 "IUS.SubpopGId, I.Indicator,   U.Unit, SP.Subpop, S.SourceNId, S.Source, I_S.RecommendedSource  FROM "
                 "(Unit AS U INNER JOIN (Subpop AS SP INNER JOIN ([Indicator] AS I INNER JOIN  Indicator_Unit_Subpop "
                 "AS IUS ON I.IndicatorGId = IUS.IndicatorGId)  ON SP.SubpopGId = IUS.SubpopGId) ON U.UnitGId = "
                 "IUS.UnitGId)  INNER JOIN (Source AS S INNER JOIN Indicator_Source AS I_S ON S.SourceNId = "
                 "I_S.SourceNId)  ON IUS.IUSNId = I_S.IUSNId  WHERE IUS.IUSNId <= ") +
             upTo("Indicator_Unit_Subpop", "IUSNId")) &&
         ok;
    Need(ok, "the selection can't be filled");
}

} // namespace

BenchSession::BenchSession(const QString& databaseFile, const QString& installation)
    : database(databaseFile.toStdString()) {
    AppPath = installation;
    Need(Initialize() == StartResult::GoOn, "the installation has no TS.ini");
    Language = QStringLiteral("English [en]");
    Need(OpenDatabaseFile(databaseFile) && Connection, "the database can't be opened");
    selections = FindPath(JoinPath({CacheFolder, QStringLiteral("UserSelections.mdb")})).toStdString();
    working = FindPath(JoinPath({CacheFolder, QStringLiteral("InfoSel.mdb")})).toStdString();
    workingTemplate = FindPath(JoinPath({AppPath, QStringLiteral("Bin/Template/InfoSel.mdb")})).toStdString();
}

BenchSession::Copies BenchSession::CopyForHand() const {
    Copies copies{selections + ".byhand", working + ".byhand"};
    jet::Database::Copy(selections, copies.selections);
    jet::Database::Copy(working, copies.working);
    return copies;
}

void SelectHalf() {
    SelectShare(2);
}

void SelectEverything() {
    SelectShare(1);
}

void SelectMillion() {
    SelectEverything();
    const bool ok = Execute(QStringLiteral("DELETE * FROM _SelIUSNId WHERE IUSNId > 100")) &&
                    Execute(QStringLiteral("DELETE * FROM _SelArea WHERE AreaNId > 200"));
    Need(ok, "the selection can't be made smaller");
}

double ValuesIn(const QString& databaseFile) {
    const auto connection = jet::Connection::Open(databaseFile.toStdString(), DatabasePassword());
    return connection->OpenRecordset("SELECT Max(RowNId) FROM Data")[std::size_t{0}].toDouble();
}

} // namespace tessaro::bench
