#include "selection/KeptSelection.h"

#include "selection/IndicatorSelection.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Session.h"

namespace tessaro::selection {

namespace {

// clang-format off
constexpr const char* kStatements[] = {
    "DELETE S.* FROM _SelIUSNId AS S LEFT JOIN Indicator_Unit_Subpop AS IUS ON (S.IUSNId = IUS.IUSNId) AND (S.IndicatorGId = IUS.IndicatorGId) AND (S.UnitGId = IUS.UnitGId) AND (S.SubpopGId = IUS.SubpopGId) WHERE IUS.IUSNId IS NULL",
    "DELETE S.* FROM _SelIUSNId AS S LEFT JOIN Indicator_Source AS I_S ON (S.IUSNId = I_S.IUSNId) AND (S.SourceNId = I_S.SourceNId) WHERE I_S.IUSNId IS NULL",
    "DELETE S.* FROM _SelTimePeriod AS S LEFT JOIN TimePeriod AS T ON (S.TimePeriodNId = T.TimePeriodNId) AND (S.TimePeriod = T.TimePeriod) WHERE T.TimePeriodNId IS NULL",
    "DELETE S.* FROM _SelArea AS S LEFT JOIN Area AS A ON (S.AreaNId = A.AreaNId) AND (S.AreaID = A.AreaID) WHERE A.AreaNId IS NULL",
    "UPDATE _SelIUSNId AS S INNER JOIN [Indicator] AS I ON S.IndicatorGId = I.IndicatorGId SET S.[Indicator] = I.[Indicator] WHERE S.[Indicator] <> I.[Indicator]",
    "UPDATE _SelIUSNId AS S INNER JOIN Unit AS U ON S.UnitGId = U.UnitGId SET S.Unit = U.Unit WHERE S.Unit <> U.Unit",
    "UPDATE _SelIUSNId AS S INNER JOIN Subpop AS SP ON S.SubpopGId = SP.SubpopGId SET S.Subpop = SP.Subpop WHERE S.Subpop <> SP.Subpop",
    "UPDATE _SelIUSNId AS S INNER JOIN Source AS SR ON S.SourceNId = SR.SourceNId SET S.Source = SR.Source WHERE S.Source <> SR.Source",
    "UPDATE _SelArea AS S INNER JOIN Area AS A ON S.AreaNId = A.AreaNId SET S.AreaName = A.AreaName WHERE S.AreaName <> A.AreaName",
};
// clang-format on

/// Rows of the three selection tables together.
qint64 RowsSelected() {
    qint64 rows = 0;
    for (const char* table : {"_SelIUSNId", "_SelTimePeriod", "_SelArea"}) {
        const Records count = Select(QStringLiteral("SELECT Count(*) FROM ") + QLatin1String(table));
        if (!count.atEnd()) rows += count.Number(std::size_t{0});
    }
    return rows;
}

} // namespace

bool FitKeptSelection() {
    const ErrorTrap trap("FitKeptSelection");
    const qint64 before = RowsSelected();
    for (const char* statement : kStatements)
        Execute(QString::fromLatin1(statement));
    return RowsSelected() != before;
}

int CountOfSelection(Stage stage) {
    if (!Connection) return 0;
    const char* rows = stage == Stage::Time    ? "SELECT Count(*) FROM _SelTimePeriod"
                       : stage == Stage::Areas ? "SELECT Count(*) FROM _SelArea"
                       : ByCombination()       ? "SELECT Count(*) FROM (SELECT DISTINCT IUSNId FROM _SelIUSNId)"
                                               : "SELECT Count(*) FROM (SELECT DISTINCT IndicatorGId FROM _SelIUSNId)";
    const Records count = Select(QString::fromLatin1(rows), jet::CursorType::ForwardOnly);
    return count.atEnd() ? 0 : static_cast<int>(count.Number(std::size_t{0}));
}

} // namespace tessaro::selection
