#include "selection/Search.h"

#include "selection/ClassificationViews.h"
#include "session/Query.h"
#include "session/Session.h"

namespace tessaro::selection {

QString SearchIndicatorsWhere(int view, const QString& text) {
    QString where = QStringLiteral(" InStr(1,I.[Indicator],'") + QuoteDoubled(text) + QStringLiteral("') > 0 ");
    if (!DataExistsCriterion.isEmpty())
        where += QStringLiteral(" AND") + QLatin1String(Classification(view).alias) + DataExistsCriterion;
    return where;
}

QString SearchAreasSql(const QString& text) {
    QString sql = QStringLiteral("SELECT A.AreaID, A.AreaName, A.AreaNId, A.AreaGId From Area As A ") +
                  QStringLiteral(" WHERE InStr(1,A.[AreaName],'") + QuoteDoubled(text) + QStringLiteral("') > 0 ");
    if (!DataExistsCriterion.isEmpty()) sql += QStringLiteral(" AND A.") + DataExistsCriterion;
    if (GlobalLocalFilter == 0) sql += QStringLiteral(" AND MID(A.AreaGId,1,1) = '-'");
    if (GlobalLocalFilter == 1) sql += QStringLiteral(" AND MID(A.AreaGId,1,1) <> '-'");
    return sql + QStringLiteral(" ORDER BY A.AreaName ");
}

std::vector<KeyedItem> SearchAreas(const QString& text) {
    std::vector<KeyedItem> items;
    Records rows = Select(SearchAreasSql(text));
    for (; !rows.atEnd(); rows.MoveNext()) {
        const bool global = rows.Text("AreaGId").startsWith(QLatin1Char('-'));
        items.push_back({QStringLiteral("A%1").arg(rows.Number("AreaNId")),
                         {rows.Text("AreaID"), rows.Text("AreaName")},
                         static_cast<quint8>(global ? 3 : 0)});
    }
    return items;
}

} // namespace tessaro::selection
