#include "dataview/DataOptions.h"

#include "dataview/GridQuery.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Strings.h"

#include <QSet>

namespace tessaro {

namespace {

constexpr auto kPanelFrom =
    " FROM ((_SelIUSNId AS IUS INNER JOIN Data AS D ON (IUS.SourceNId = D.SourceNId) AND  (IUS.IUSNId = D.IUSNId)) "
    "INNER "
    "JOIN _SelArea AS A ON D.AreaNId = A.AreaNId) INNER  JOIN _SelTimePeriod AS T ON D.TimePeriodNId = T.TimePeriodNId";

bool IsGlobal(const QString& gid) {
    return gid.startsWith(QLatin1Char('-'));
}

/// What stands before and behind the "_" of a key, after its first three characters. Identifiers hold no "_".
std::pair<QString, QString> Parts(const QString& key) {
    const QString pair = key.mid(3);
    return {pair.section(QLatin1Char('_'), 0, 0), pair.section(QLatin1Char('_'), 1)};
}

QString RowsStatement(DataPanel panel, const QString& key) {
    const auto [a, b] = Parts(key);
    QString sql = QStringLiteral("SELECT RowNId FROM [_SelIUSNId] as IUS ");
    switch (panel) {
    case DataPanel::Sources:
        return sql + QStringLiteral(" WHERE IUSNId = ") + a + QStringLiteral(" AND SourceNId = ") + b;
    case DataPanel::Units:
        return sql + QStringLiteral(" WHERE IndicatorGId = '") + QuoteDoubled(a) + QStringLiteral("' AND UnitGID = '") +
               QuoteDoubled(b) + QStringLiteral("'");
    case DataPanel::Subpops:
        return sql + QStringLiteral(" WHERE IndicatorGId = '") + QuoteDoubled(a) +
               QStringLiteral("' AND SubpopGID = '") + QuoteDoubled(b) + QStringLiteral("'");
    }
    return sql;
}

QString WithoutLastComma(const QString& list) {
    return list.endsWith(QLatin1Char(',')) ? list.chopped(1) : list;
}

/// Leaves out the rows that the other two panels hold.
QString NotInOthers(DataPanel panel, const PanelRows& rows) {
    QString clause;
    for (const DataPanel other : DataPanels) {
        const QString list = WithoutLastComma(rows.Of(other));
        if (other != panel && !list.trimmed().isEmpty())
            clause += QStringLiteral(" AND IUS.RowNId not in(") + list + QStringLiteral(") ");
    }
    return clause;
}

QStringList RowsOf(DataPanel panel, const QStringList& keys, const QString& tail) {
    QStringList found;
    for (const QString& key : keys) {
        Records rows = Select(RowsStatement(panel, key) + tail);
        for (; !rows.atEnd(); rows.MoveNext())
            found << QString::number(rows.Number(std::size_t{0}));
    }
    return found;
}

} // namespace

QString& PanelRows::Of(DataPanel panel) {
    return panel == DataPanel::Sources ? SourceDeletedRows
           : panel == DataPanel::Units ? UnitDeletedRows
                                       : SubpopDeletedRows;
}

const QString& PanelRows::Of(DataPanel panel) const {
    return const_cast<PanelRows&>(*this).Of(panel);
}

QString PanelStatement(DataPanel panel) {
    switch (panel) {
    case DataPanel::Sources:
        return QStringLiteral("SELECT DISTINCT IUS.IUSNId, IUS.IndicatorGId, IUS.[Indicator], IUS.Unit, IUS.Subpop, "
                              "IUS.Source,  IUS.SourceNId, IUS.RecommendedSource, IUS.UnitGId, IUS.SubpopGId ") +
               QLatin1String(kPanelFrom);
    case DataPanel::Units:
        return QStringLiteral("SELECT DISTINCT IUS.IndicatorGId, IUS.[Indicator], IUS.Unit, IUS.UnitGId ") +
               QLatin1String(kPanelFrom);
    case DataPanel::Subpops:
        return QStringLiteral("SELECT DISTINCT IUS.IndicatorGId, IUS.[Indicator], IUS.Subpop, IUS.SubpopGId ") +
               QLatin1String(kPanelFrom);
    }
    return {};
}

std::vector<KeyedItem> PanelItems(DataPanel panel) {
    std::vector<KeyedItem> items;
    Records rows = Select(PanelStatement(panel));
    for (; !rows.atEnd(); rows.MoveNext()) {
        const QString indicatorGId = rows.Text("IndicatorGId");
        KeyedItem item;
        item.cells << rows.Text("Indicator");
        if (IsGlobal(indicatorGId)) item.globalCells |= 1;
        const auto cell = [&](const char* text, const char* gid) {
            if (gid && IsGlobal(rows.Text(gid))) item.globalCells |= static_cast<quint8>(1U << item.cells.size());
            item.cells << rows.Text(text);
        };
        switch (panel) {
        case DataPanel::Sources:
            item.key = QStringLiteral("IS_%1_%2").arg(rows.Number("IUSNId")).arg(rows.Number("SourceNId"));
            cell("Unit", "UnitGId");
            cell("Subpop", "SubpopGId");
            cell("Source", nullptr);
            item.marked = rows.Flag("RecommendedSource");
            break;
        case DataPanel::Units:
            item.key = QStringLiteral("IU_") + indicatorGId + QLatin1Char('_') + rows.Text("UnitGId");
            cell("Unit", "UnitGId");
            break;
        case DataPanel::Subpops:
            item.key = QStringLiteral("IS_") + indicatorGId + QLatin1Char('_') + rows.Text("SubpopGId");
            cell("Subpop", "SubpopGId");
            break;
        }
        items.push_back(std::move(item));
    }
    return items;
}

QStringList PanelHeads(DataPanel panel) {
    const QString indicator = QStringLiteral("Comm_Indicator");
    switch (panel) {
    case DataPanel::Sources:
        return {indicator, QStringLiteral("Comm_Unit"), QStringLiteral("Subpop"), QStringLiteral("Comm_Source")};
    case DataPanel::Units:
        return {indicator, QStringLiteral("Comm_Unit")};
    case DataPanel::Subpops:
        return {indicator, QStringLiteral("Subpop")};
    }
    return {};
}

void TakeOut(DataPanel panel, const QStringList& keys, bool all, PanelRows& rows) {
    if (all) {
        Execute(QStringLiteral("UPDATE _SelIUSNId SET [Deleted] = True"));
        return;
    }
    const QStringList found = RowsOf(panel, keys, NotInOthers(panel, rows));
    if (found.isEmpty()) return;
    const QString list = found.join(QLatin1Char(','));
    rows.Of(panel) += list + QLatin1Char(',');
    Execute(QStringLiteral("UPDATE _SelIUSNId IUS SET IUS.[Deleted] = True  WHERE IUS.RowNId in(") + list +
            QStringLiteral(")"));
}

void PutBack(DataPanel panel, const QStringList& keys, PanelRows& rows) {
    const QStringList found = RowsOf(panel, keys, NotInOthers(panel, rows) + QStringLiteral(" AND DELETED = True"));
    if (found.isEmpty()) return;
    const QSet<QString> gone(found.begin(), found.end());
    QString kept;
    const QStringList held = rows.Of(panel).split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString& row : held)
        if (!gone.contains(row)) kept += row + QLatin1Char(',');
    rows.Of(panel) = kept;
    Execute(QStringLiteral("UPDATE _SelIUSNId IUS SET IUS.[Deleted] = False  WHERE IUS.RowNId in(") +
            found.join(QLatin1Char(',')) + QStringLiteral(")"));
}

std::vector<KeyedItem> SortItems() {
    struct SortColumn {
        const char* expression;
        const char* caption;
    };
    constexpr SortColumn columns[] = {{"T.[TimePeriod]", "Comm_Time"},   {"A.AreaID", "Comm_Area Id"},
                                      {"A.AreaName", "Comm_Area Name"},  {"IUS.[Indicator]", "Comm_Indicator"},
                                      {"D.DataValue", "Comm_Datavalue"}, {"IUS.Unit", "Comm_Unit"},
                                      {"IUS.Subpop", "Subpop"},          {"IUS.Source", "Comm_Source"}};
    std::vector<KeyedItem> items;
    for (const SortColumn& column : columns)
        items.push_back({QLatin1String(column.expression), {GetText(QLatin1String(column.caption))}});
    return items;
}

QString OrderByOf(const std::vector<KeyedItem>& chosen) {
    QString order;
    for (const KeyedItem& item : chosen)
        order += QStringLiteral(", ") + item.key + (item.marked ? QStringLiteral(" Desc") : QString());
    return order.isEmpty() ? QString() : QStringLiteral(" ORDER BY ") + order.mid(1).trimmed();
}

} // namespace tessaro
