#include "selection/Search.h"

#include "selection/AreaSelection.h"
#include "selection/ClassificationViews.h"
#include "session/Query.h"
#include "session/Session.h"

namespace tessaro::selection {

QString SearchIndicatorsWhere(int view, const QString& text) {
    QString where = QStringLiteral(" InStr(1,I.[Indicator],") + Quoted(text) + QStringLiteral(") > 0 ");
    if (!DataExistsCriterion.isEmpty())
        where += QStringLiteral(" AND") + QLatin1String(Classification(view).alias) + DataExistsCriterion;
    return where;
}

QString SearchAreasSql(const QString& text) {
    QString sql = QStringLiteral("SELECT A.AreaID, A.AreaName, A.AreaNId, A.AreaGId From Area As A ") +
                  QStringLiteral(" WHERE InStr(1,A.[AreaName],") + Quoted(text) + QStringLiteral(") > 0 ");
    if (!DataExistsCriterion.isEmpty()) sql += QStringLiteral(" AND A.") + DataExistsCriterion;
    if (GlobalLocalFilter == 0) sql += QStringLiteral(" AND MID(A.AreaGId,1,1) = '-'");
    if (GlobalLocalFilter == 1) sql += QStringLiteral(" AND MID(A.AreaGId,1,1) <> '-'");
    return sql + QStringLiteral(" ORDER BY A.AreaName ");
}

std::vector<KeyedItem> SearchAreas(const QString& text) {
    return AreaItems(SearchAreasSql(text));
}

} // namespace tessaro::selection
