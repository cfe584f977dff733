#include "metadata/Information.h"

#include "session/Query.h"

namespace tessaro::metadata {

namespace {

struct Kind {
    const char* code;
    const char* table;
    const char* key;
    const char* list;
};

constexpr Kind kKinds[] = {
    {"IND", "Indicator", "IndicatorGId",
     "SELECT [Indicator] AS LST, [INFO], [IndicatorGId] as sGid  FROM [Indicator] ORDER BY [Indicator]"},
    {"GOALS", "GoalLabel3", "GoalLabel3GId",
     "SELECT [GoalLabel3] AS LST, [INFO], [GoalLabel3GId] as sGid  FROM [GoalLabel3] ORDER BY [GoalLabel3]"},
    {"CF", "CF", "CFGId", "SELECT [CFLabel1] AS LST, [INFO], [CFGId] as sGid  FROM [CF] ORDER BY [CFLabel1]"},
    {"THEMES", "Theme", "ThemeGId",
     "SELECT [ThemeLabel1] AS LST, [INFO], [ThemeGId] as sGid  FROM [Theme] ORDER BY [ThemeLabel1]"},
    {"RIGHTS", "ConventionLabel3", "ConventionLabel3GId",
     "SELECT [ConventionLabel3] AS LST, [INFO], [ConventionLabel3GId] as sGid FROM [ConventionLabel3] ORDER BY "
     "[ConventionLabel3]"},
    {"SOURCES", "Source", "SourceGId",
     "SELECT [Source] AS LST, [INFO], [SourceGId] as sGid FROM [Source] ORDER BY [Source]"},
};

const Kind* KindOf(const QString& code) {
    for (const Kind& kind : kKinds)
        if (code.compare(QLatin1String(kind.code), Qt::CaseInsensitive) == 0) return &kind;
    return nullptr;
}

bool IsWorthShowing(const QString& text) {
    const QString plain = text.trimmed();
    return !plain.isEmpty() && plain.compare(QLatin1String("NULL"), Qt::CaseInsensitive) != 0;
}

} // namespace

QString InformationSql(const QString& id, const QString& code, const QString& formName, bool idIsGId) {
    const Kind* kind = KindOf(code);
    if (!kind) return {};
    const bool isIndicator = qstrcmp(kind->code, "IND") == 0;
    if (isIndicator && formName.toUpper() == QLatin1String("FRMDATA") && !idIsGId)
        return QStringLiteral(
                   "SELECT I.Info FROM [Indicator] AS I INNER JOIN Indicator_Unit_Subpop AS IUS ON I.IndicatorGId = "
                   "IUS.IndicatorGId WHERE IUS.IUSNId=") +
               id;
    if (isIndicator) return QStringLiteral("SELECT Info FROM [Indicator] WHERE IndicatorGId = ") + Quoted(id);
    if (qstrcmp(kind->code, "SOURCES") == 0) return QStringLiteral("SELECT Info FROM Source WHERE SourceNId = ") + id;
    return QStringLiteral("SELECT Info FROM ") + QLatin1String(kind->table) + QStringLiteral(" WHERE ") +
           QLatin1String(kind->key) + QStringLiteral(" = ") + Quoted(id);
}

std::optional<QString> InformationOf(const QString& id, const QString& code, const QString& formName, bool idIsGId) {
    const QString sql = InformationSql(id, code, formName, idIsGId);
    if (sql.isEmpty()) return std::nullopt;
    const Records rows = Select(sql);
    if (rows.atEnd()) return std::nullopt;
    QString text = rows.Text(std::size_t{0});
    return IsWorthShowing(text) ? std::optional(std::move(text)) : std::nullopt;
}

QString InformationListSql(const QString& code) {
    const Kind* kind = KindOf(code);
    return kind ? QString::fromLatin1(kind->list) : QString();
}

std::vector<InformationItem> InformationList(const QString& code) {
    std::vector<InformationItem> items;
    const QString sql = InformationListSql(code);
    if (sql.isEmpty()) return items;
    for (Records rows = Select(sql, jet::CursorType::ForwardOnly); !rows.atEnd(); rows.MoveNext())
        if (IsWorthShowing(rows.Text("INFO"))) items.push_back({rows.Text("sGid"), rows.Text("LST")});
    return items;
}

QString InformationText(const QString& code, const QString& gid) {
    const Kind* kind = KindOf(code);
    if (!kind) return {};
    const Records rows =
        Select(QStringLiteral("SELECT [Info] FROM [") + QLatin1String(kind->table) + QStringLiteral("] WHERE [") +
               QLatin1String(kind->key) + QStringLiteral("] = ") + Quoted(gid));
    return rows.atEnd() ? QString() : rows.Text(std::size_t{0});
}

} // namespace tessaro::metadata
