#include "dataview/GridQuery.h"

#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Strings.h"
#include "view/InView.h"

namespace tessaro {

namespace {

constexpr std::array<GridColumn, MaxCols> kColumns = {{
    {"TimePeriod", "Comm_Time", "T.TimePeriod"},
    {"AreaID", "Comm_Area Id", "A.AreaID"},
    {"AreaName", "Comm_Area Name", "A.AreaName"},
    {"Indicator", "Comm_Indicator", "IUS.[Indicator]"},
    {"Datavalue", "Comm_Datavalue", "D.DataValue"},
    {"Unit", "Comm_Unit", "IUS.[Unit]"},
    {"Subpop", "Subpop", "IUS.[Subpop]"},
    {"Source", "Comm_Source", "IUS.[Source]"},
    {"IndicatorGID", "", ""},
    {"SourceNID", "", ""},
    {"RowNID", "", ""},
    {"FootNID", "", ""},
}};

constexpr auto Restored =
    "SELECT T.TimePeriod, A.AreaId, A.AreaName, IUS.[Indicator], D.Datavalue, IUS.Unit,  IUS.Subpop, IUS.Source, "
    "IUS.IndicatorGId, IUS.SourceNId, D.RowNId, A.AreaGID,  IUS.UnitGID, IUS.SubpopGID";

} // namespace

const std::array<GridColumn, MaxCols>& GridColumns() {
    return kColumns;
}

QString DefaultDataOrderBy() {
    return QStringLiteral(" ORDER BY [A].AreaNId");
}

QString DataOrderByColumn(int column, bool ascending) {
    if (column < 1 || column > VisibleCols) return {};
    return QStringLiteral(" ORDER BY ") +
           QLatin1String(kColumns.at(static_cast<std::size_t>(column - 1)).sortExpression) +
           (ascending ? QStringLiteral(" Asc") : QStringLiteral(" desc"));
}

QString RestoreStatement(const QString& rowNIds) {
    return QLatin1String(Restored) + InView(joins::kRestored, rowNIds) + QStringLiteral(")));");
}

QStringList LongestTextsOf(int column) {
    const ErrorTrap trap("LongestTextsOf");
    constexpr int kTexts = 8; // the longest by characters need not be the widest
    if (column == ColDatavalue || column < 1 || column > VisibleCols) return {};
    const QString field = QLatin1String(kColumns.at(static_cast<std::size_t>(column - 1)).field);
    const QString table = column == ColTimePeriod                        ? QStringLiteral("_SelTimePeriod")
                          : column == ColAreaID || column == ColAreaName ? QStringLiteral("_SelArea")
                                                                         : QStringLiteral("_SelIUSNId");
    QStringList texts;
    Records rows = Select(QStringLiteral("SELECT DISTINCT TOP %1 [%2], Len([%2]) AS Characters FROM %3 ORDER BY "
                                         "Len([%2]) DESC")
                              .arg(kTexts)
                              .arg(field, table),
                          jet::CursorType::ForwardOnly);
    for (; !rows.atEnd() && texts.size() < kTexts; rows.MoveNext())
        texts << GetText(rows.Text(std::size_t{0}), true);
    return texts;
}

} // namespace tessaro
