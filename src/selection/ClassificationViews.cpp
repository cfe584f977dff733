#include "selection/ClassificationViews.h"

#include "selection/IndicatorSelection.h"
#include "selection/SelectionTexts.h"
#include "session/Query.h"
#include "session/Session.h"

namespace tessaro::selection {

namespace {

constexpr const char* kSeparator = "{[~]}";
constexpr ChildQuery kNoChildren{nullptr, nullptr, nullptr};

// clang-format off
constexpr std::array<ClassificationView, kClassificationCount> kTable{{
    {"TV_IND", "Sectors", "SECTOR", "SEC",
     "SELECT DISTINCT SL1.SectorLabel1GId, SL1.SectorLabel1  FROM SectorLabel1 AS SL1 INNER JOIN Sector AS Sec ON SL1.SectorLabel1GId = Sec.SectorLabel1GId ",
     "SL1.SectorLabel1GId", " ORDER BY SL1.SectorLabel1 ", 0, 0, 1,
     " (Sector AS S INNER JOIN (Indicator_Sector AS I_S INNER JOIN [Indicator] AS I ON I_S.IndicatorGId = I.IndicatorGId) ON S.SectorLabel2GId = I_S.SectorLabel2GId) INNER JOIN Indicator_Unit_subpop AS IUS ON I.IndicatorGId = IUS.IndicatorGId ",
     " S.", true,
     {" S.SectorLabel1GId = ", " AND S.SectorLabel2GId = ", nullptr},
     {ChildQuery{"SELECT SL2.SectorLabel2GId, SL2.SectorLabel2  FROM SectorLabel2 AS SL2 INNER JOIN Sector AS S ON SL2.SectorLabel2GId = S.SectorLabel2GId  WHERE",
                 "SL2.SectorLabel2GId", " ORDER BY SL2.SectorLabel2"}, kNoChildren},
     "  (Sector AS Sec INNER JOIN Indicator_Sector AS I_Sec ON Sec.SectorLabel2GId = I_Sec.SectorLabel2GId) INNER JOIN ",
     " ON I_Sec.IndicatorGId = IUS.IndicatorGId ", " WHERE Sec."},
    {"TV_GOALS", "Goals", "GOAL", "GLS",
     "SELECT DISTINCT GL1.GoalLabel1GId, GL1.GoalLabel1  FROM GoalLabel1 AS GL1 INNER JOIN Goal AS G ON GL1.GoalLabel1GId = G.GoalLabel1GId ",
     "GL1.GoalLabel1GId", " ORDER BY GL1.GoalLabel1 ", 0, 0, 1,
     " (Goal AS G INNER JOIN (Indicator_Goal AS I_G INNER JOIN Indicator_Unit_subpop AS IUS ON I_G.IUSNId = IUS.IUSNId) ON G.GoalLabel3GId = I_G.GoalLabel3GId) INNER JOIN [Indicator] AS I ON I.IndicatorGId = IUS.IndicatorGId ",
     " G.", true,
     {" G.GoalLabel1GId = ", " AND G.GoalLabel2GId = ", " AND G.GoalLabel3GId = "},
     {ChildQuery{"SELECT GL2.GoalLabel2GId, GL2.GoalLabel2  FROM GoalLabel2 AS GL2 INNER JOIN Goal AS G ON GL2.GoalLabel2GId = G.GoalLabel2GId  WHERE",
                 "GL2.GoalLabel2GId", " GROUP BY GL2.GoalLabel2GId, GL2.GoalLabel2 ORDER BY GL2.GoalLabel2"},
      ChildQuery{"SELECT GL3.GoalLabel3GId, GL3.GoalLabel3  FROM GoalLabel3 AS GL3 INNER JOIN Goal AS G ON GL3.GoalLabel3GId = G.GoalLabel3GId  WHERE",
                 "GL3.GoalLabel3GId", " GROUP BY GL3.GoalLabel3GId, GL3.GoalLabel3 ORDER BY GL3.GoalLabel3"}},
     "  (Goal AS G INNER JOIN Indicator_Goal AS I_G ON G.GoalLabel3GId = I_G.GoalLabel3GId) INNER JOIN ",
     " ON I_G.IUSNId = IUS.IUSNId ", " WHERE G."},
    {"TV_CF", "Conceptual Framework", "Conceptual Framework", "",
     "SELECT CFNId, CFGId, CFLabel1 FROM CF ORDER BY CFNId",
     "", "", 1, 1, 2,
     " (CF INNER JOIN (Indicator_CF AS I_C INNER JOIN Indicator_Unit_subpop AS IUS ON I_C.IUSNId = IUS.IUSNId) ON CF.CFGId = I_C.CFGId) INNER JOIN [Indicator] AS I ON I.IndicatorGId = IUS.IndicatorGId ",
     " CF.", true,
     {" CF.CFGId = ", nullptr, nullptr}, {kNoChildren, kNoChildren},
     "  (CF INNER JOIN Indicator_CF AS I_C ON CF.CFGId = I_C.CFGId) INNER JOIN ",
     " ON I_C.IUSNId = IUS.IUSNId ", " WHERE CF."},
    {"TV_Themes", "Themes", "THEME", "THM",
     "SELECT ThemeGId, ThemeLabel1 FROM Theme ",
     "ThemeGId", " ORDER BY ThemeLabel1 ", 0, 0, 1,
     " (Theme AS T INNER JOIN (Indicator_Theme AS I_T INNER JOIN Indicator_Unit_subpop AS IUS ON I_T.IUSNId = IUS.IUSNId) ON T.ThemeGId = I_T.ThemeGId) INNER JOIN [Indicator] AS I ON I.IndicatorGId = IUS.IndicatorGId ",
     " T.", true,
     {" T.ThemeGId = ", nullptr, nullptr}, {kNoChildren, kNoChildren},
     "  (Theme AS TH INNER JOIN Indicator_Theme AS I_T ON TH.ThemeGId = I_T.ThemeGId) INNER JOIN ",
     " ON I_T.IUSNId = IUS.IUSNId ", " WHERE TH."},
    {"TV_Sources", "Sources", "Comm_Source", "SRC",
     "SELECT DISTINCT Region.RegionGId,Region.RegionNId, Region.Region FROM Region INNER JOIN Source ON Region.RegionNId = Source.RegionNId ",
     "Region.RegionGId", " ORDER BY Region.Region", 1, 0, 2,
     " (Source AS S INNER JOIN (Indicator_Source AS I_S INNER JOIN Indicator_Unit_subpop AS IUS ON I_S.IUSNId = IUS.IUSNId) ON S.SourceNId = I_S.SourceNId) INNER JOIN [Indicator] AS I ON I.IndicatorGId = IUS.IndicatorGId ",
     " S.", false,
     {" S.RegionNId = ", " AND S.SourceNId = ", nullptr},
     {ChildQuery{"SELECT SourceNId, Source, SourceGId FROM Source As S  WHERE", "S.SourceGId", " Order BY Source", 2}, kNoChildren},
     "  (Source AS S INNER JOIN Indicator_Source AS I_S ON S.SourceNId = I_S.SourceNId) INNER JOIN ",
     " ON I_S.IUSNId = IUS.IUSNId ", " WHERE S."},
    {"TV_INST", "Institutions", "INSTITUTION", "INST",
     "SELECT DISTINCT IL1.InstitutionLabel1GId, IL1.InstitutionLabel1  FROM InstitutionLabel1 AS IL1 INNER JOIN Institution AS I ON IL1.InstitutionLabel1GId = I.InstitutionLabel1GId ",
     "IL1.InstitutionLabel1GId", " ORDER BY IL1.InstitutionLabel1", 0, 0, 1,
     " (Institution AS Inst INNER JOIN (Indicator_Institution AS I_I INNER JOIN Indicator_Unit_subpop AS IUS ON I_I.IUSNId = IUS.IUSNId) ON Inst.InstitutionLabel2GId = I_I.InstitutionLabel2GId) INNER JOIN [Indicator] AS I ON I.IndicatorGId = IUS.IndicatorGId ",
     " Inst.", true,
     {" Inst.InstitutionLabel1GId = ", " AND Inst.InstitutionLabel2GId = ", nullptr},
     {ChildQuery{"SELECT IL2.InstitutionLabel2GId, IL2.InstitutionLabel2  FROM InstitutionLabel2 AS IL2 INNER JOIN Institution AS Inst ON IL2.InstitutionLabel2GId = Inst.InstitutionLabel2GId  WHERE",
                 "IL2.InstitutionLabel2GId", " ORDER BY IL2.InstitutionLabel2"}, kNoChildren},
     "  (Institution AS Inst INNER JOIN Indicator_Institution AS I_I ON Inst.InstitutionLabel2GId = I_I.InstitutionLabel2GId) INNER JOIN ",
     " ON I_I.IUSNId = IUS.IUSNId ", " WHERE Inst."},
    {"TV_Rights", "Rights", "RIGHT", "RGT",
     "SELECT DISTINCT CL1.ConventionLabel1GId, CL1.ConventionLabel1  FROM ConventionLabel1 AS CL1 INNER JOIN Convention AS C ON CL1.ConventionLabel1GId = C.ConventionLabel1GId ",
     "CL1.ConventionLabel1GId", " ORDER BY CL1.ConventionLabel1", 0, 0, 1,
     " (Convention AS C INNER JOIN (Indicator_Convention AS I_C INNER JOIN Indicator_Unit_subpop AS IUS ON I_C.IUSNId = IUS.IUSNId) ON C.ConventionLabel3GId = I_C.ConventionLabel3GId) INNER JOIN [Indicator] AS I ON I.IndicatorGId = IUS.IndicatorGId ",
     " C.", true,
     {" C.ConventionLabel1GId = ", " AND C.ConventionLabel2GId = ", " AND C.ConventionLabel3GId = "},
     {ChildQuery{"SELECT CL2.ConventionLabel2GId, CL2.ConventionLabel2  FROM ConventionLabel2 AS CL2 INNER JOIN Convention AS C ON CL2.ConventionLabel2GId = C.ConventionLabel2GId  WHERE",
                 "CL2.ConventionLabel2GId", " GROUP BY CL2.ConventionLabel2GId, CL2.ConventionLabel2 ORDER BY CL2.ConventionLabel2"},
      ChildQuery{"SELECT CL3.ConventionLabel3GId, CL3.ConventionLabel3  FROM ConventionLabel3 AS CL3 INNER JOIN Convention AS C ON CL3.ConventionLabel3GId = C.ConventionLabel3GId  WHERE",
                 "CL3.ConventionLabel3GId", " GROUP BY CL3.ConventionLabel3GId, CL3.ConventionLabel3 ORDER BY CL3.ConventionLabel3"}},
     "  (Convention AS C INNER JOIN Indicator_Convention AS I_C ON C.ConventionLabel3GId = I_C.ConventionLabel3GId) INNER JOIN ",
     " ON I_C.IUSNId = IUS.IUSNId ", " WHERE C."},
}};
// clang-format on

QString Text(const char* text) {
    return QString::fromLatin1(text);
}

int DepthOf(const ClassificationView& view) {
    int depth = 0;
    while (depth < 3 && view.conditions[static_cast<std::size_t>(depth)] != nullptr)
        ++depth;
    return depth;
}

/// The terms that name the nodes of a path: " S.SectorLabel1GId = 'a' AND S.SectorLabel2GId = 'b'".
QString PathConditions(const ClassificationView& view, const QStringList& path) {
    QString terms;
    for (qsizetype level = 0; level < path.size() && level < DepthOf(view); ++level) {
        const QString id = IdOfNodeKey(path[level]);
        terms += Text(view.conditions[static_cast<std::size_t>(level)]) + (view.quoted ? Quoted(id) : QuoteDoubled(id));
    }
    return terms;
}

} // namespace

const std::array<ClassificationView, kClassificationCount>& Classifications() {
    return kTable;
}

bool IsViewEnabled(int view) {
    return view >= 0 && view < kClassificationCount && IndicatorViews[static_cast<std::size_t>(view)].wanted;
}

int FirstView() {
    bool isNumber = false;
    const int wanted = IndicatorOpenWith.trimmed().toInt(&isNumber);
    if (isNumber && IsViewEnabled(wanted)) return wanted;
    if (IsViewEnabled(1)) return 1;
    for (int view = 0; view < kClassificationCount; ++view)
        if (IsViewEnabled(view)) return view;
    return 0;
}

QString NodeKey(const QString& id, char tag, int counter) {
    return id + Text(kSeparator) + QLatin1Char(tag) + Text(kSeparator) + QString::number(counter);
}

QString IdOfNodeKey(const QString& key) {
    return key.section(Text(kSeparator), 0, 0);
}

bool IsRootKey(const QString& key) {
    return !key.contains(Text(kSeparator));
}

QString FirstLevelSql(int view) {
    const ClassificationView& row = Classification(view);
    QString sql = Text(row.firstLevel);
    if (*row.firstFilterColumn != '\0') sql += GlobalLocal(QStringLiteral(" WHERE "), {Text(row.firstFilterColumn)});
    return sql + Text(row.firstOrder);
}

std::vector<KeyedNode> FirstLevelNodes(int view, int& counter) {
    const ClassificationView& row = Classification(view);
    const bool deeper = DepthOf(row) > 1;
    std::vector<KeyedNode> nodes;
    for (Records rows = Select(FirstLevelSql(view)); !rows.atEnd(); rows.MoveNext())
        nodes.push_back({NodeKey(rows.Text(row.idField), 'S', counter++), NameOf(rows.Text(row.textField)),
                         IsGlobal(rows.Text(row.gidField)), deeper});
    return nodes;
}

QString ChildSql(int view, const QStringList& path) {
    const ClassificationView& row = Classification(view);
    const qsizetype level = path.size();
    if (level < 1 || level >= DepthOf(row)) return {};
    const ChildQuery& query = row.children[static_cast<std::size_t>(level - 1)];
    return Text(query.select) + PathConditions(row, path) +
           GlobalLocal(QStringLiteral(" AND "), {Text(query.gidColumn)}) + Text(query.tail);
}

std::vector<KeyedNode> ChildNodes(int view, const QStringList& path, int& counter) {
    const QString sql = ChildSql(view, path);
    if (sql.isEmpty()) return {};
    const bool deeper = path.size() + 1 < DepthOf(Classification(view));
    const std::size_t gidField = Classification(view).children[static_cast<std::size_t>(path.size() - 1)].gidField;
    std::vector<KeyedNode> nodes;
    for (Records rows = Select(sql); !rows.atEnd(); rows.MoveNext()) {
        const QString id = rows.Text(std::size_t{0});
        if (id.isEmpty()) continue;
        nodes.push_back(
            {NodeKey(id, 'C', counter++), NameOf(rows.Text(std::size_t{1})), IsGlobal(rows.Text(gidField)), deeper});
    }
    return nodes;
}

QString FromOf(int view) {
    const QString from = Text(Classification(view).from);
    if (!ByCombination()) return from;
    return QStringLiteral(" ((") + from +
           QStringLiteral(") INNER JOIN Subpop AS SP ON IUS.SubpopGId = SP.SubpopGId) ") +
           QStringLiteral("INNER JOIN Unit AS U ON IUS.UnitGId = U.UnitGId ");
}

QString WhereOf(int view, const QStringList& path) {
    const ClassificationView& row = Classification(view);
    const QString criterion = Criterion(Text(row.alias));
    if (path.isEmpty()) return criterion;
    return (criterion.isEmpty() ? QString() : criterion + QStringLiteral(" AND ")) + PathConditions(row, path);
}

} // namespace tessaro::selection
