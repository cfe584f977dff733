#include "dataview/SortOrder.h"

#include "session/Strings.h"

namespace tessaro {

namespace sorting {

namespace {

struct SortColumn {
    const char* expression;
    const char* captionKey;
};

constexpr SortColumn kColumns[] = {
    {"T.[TimePeriod]", "Comm_Time"},   {"A.AreaID", "Comm_Area Id"},
    {"A.AreaName", "Comm_Area Name"},  {"IUS.[Indicator]", "Comm_Indicator"},
    {"D.DataValue", "Comm_Datavalue"}, {"IUS.Unit", "Comm_Unit"},
    {"IUS.Subpop", "Subpop"},          {"IUS.Source", "Comm_Source"},
};

} // namespace

std::vector<KeyedItem> AvailableColumns() {
    std::vector<KeyedItem> columns;
    for (const SortColumn& column : kColumns)
        columns.push_back({QLatin1String(column.expression), {GetText(QLatin1String(column.captionKey))}});
    return columns;
}

QString DefaultColumn() {
    return QStringLiteral("A.AreaID");
}

} // namespace sorting

QString OrderByColumns(const std::vector<KeyedItem>& columns) {
    QString order;
    for (const KeyedItem& column : columns) {
        order += QStringLiteral(", ") + column.key;
        if (column.marked) order += QStringLiteral(" Desc");
    }
    if (order.isEmpty()) return {};
    return QStringLiteral(" ORDER BY ") + order.mid(1);
}

} // namespace tessaro
