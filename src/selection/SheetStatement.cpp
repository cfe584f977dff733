#include "selection/SheetStatement.h"

#include <array>

namespace tessaro::selection {

namespace {

struct SheetView {
    std::array<const char*, 3> heads;   ///< caption keys; null beyond the last
    std::array<const char*, 3> columns; ///< what shows
    std::array<const char*, 3> gids;
    const char* from; ///< indicators, combinations and the classification
};

constexpr auto kCombinations =
    "([Indicator] AS I INNER JOIN Indicator_Unit_subpop AS IUS ON I.IndicatorGId = IUS.IndicatorGId)";

// clang-format off
constexpr std::array<SheetView, 7> kViews{{
    {{"Comm_Sector", "Comm_Class", nullptr},
     {"SL1.SectorLabel1", "SL2.SectorLabel2", nullptr},
     {"SL1.SectorLabel1GId", "SL2.SectorLabel2GId", nullptr},
     " INNER JOIN Indicator_Sector AS I_S ON I.IndicatorGId = I_S.IndicatorGId) INNER JOIN (Sector AS S INNER JOIN SectorLabel1 AS SL1 ON S.SectorLabel1GId = SL1.SectorLabel1GId) ON I_S.SectorLabel2GId = S.SectorLabel2GId) INNER JOIN SectorLabel2 AS SL2 ON S.SectorLabel2GId = SL2.SectorLabel2GId"},
    {{"PRINT_PLAN", "PRINT_CATEGORY", "PRINT_GOAL"},
     {"GL1.GoalLabel1", "GL2.GoalLabel2", "GL3.GoalLabel3"},
     {"GL1.GoalLabel1GId", "GL2.GoalLabel2GId", "GL3.GoalLabel3GId"},
     " INNER JOIN Indicator_Goal AS I_G ON IUS.IUSNId = I_G.IUSNId) INNER JOIN ((Goal AS G INNER JOIN GoalLabel1 AS GL1 ON G.GoalLabel1GId = GL1.GoalLabel1GId) INNER JOIN GoalLabel2 AS GL2 ON G.GoalLabel2GId = GL2.GoalLabel2GId) ON I_G.GoalLabel3GId = G.GoalLabel3GId) INNER JOIN GoalLabel3 AS GL3 ON G.GoalLabel3GId = GL3.GoalLabel3GId"},
    {{"CF", nullptr, nullptr}, {"C.CFLabel1", nullptr, nullptr}, {"C.CFGId", nullptr, nullptr},
     " INNER JOIN Indicator_CF AS I_C ON IUS.IUSNId = I_C.IUSNId) INNER JOIN CF AS C ON I_C.CFGId = C.CFGId"},
    {{"Theme", nullptr, nullptr}, {"TH.ThemeLabel1", nullptr, nullptr}, {"TH.ThemeGId", nullptr, nullptr},
     " INNER JOIN Indicator_Theme AS I_T ON IUS.IUSNId = I_T.IUSNId) INNER JOIN Theme AS TH ON I_T.ThemeGId = TH.ThemeGId"},
    {{"PRINT_REGION", "Comm_Source", nullptr},
     {"R.Region", "S.Source", nullptr},
     {"R.RegionGId", "S.SourceGId", nullptr},
     " INNER JOIN Indicator_Source AS I_S ON IUS.IUSNId = I_S.IUSNId) INNER JOIN Source AS S ON I_S.SourceNId = S.SourceNId) INNER JOIN Region AS R ON S.RegionNId = R.RegionNId"},
    {{"PRINT_AGENCY", "PRINT_PROGRAM", nullptr},
     {"IL1.InstitutionLabel1", "IL2.InstitutionLabel2", nullptr},
     {"IL1.InstitutionLabel1GId", "IL2.InstitutionLabel2GId", nullptr},
     " INNER JOIN Indicator_Institution AS I_I ON IUS.IUSNId = I_I.IUSNId) INNER JOIN (Institution AS Inst INNER JOIN InstitutionLabel1 AS IL1 ON Inst.InstitutionLabel1GId = IL1.InstitutionLabel1GId) ON I_I.InstitutionLabel2GId = Inst.InstitutionLabel2GId) INNER JOIN InstitutionLabel2 AS IL2 ON Inst.InstitutionLabel2GId = IL2.InstitutionLabel2GId"},
    {{"PRINT_CLUSTER", "PRINT_ARTICLE", "Right"},
     {"CL1.ConventionLabel1", "CL2.ConventionLabel2", "CL3.ConventionLabel3"},
     {"CL1.ConventionLabel1GId", "CL2.ConventionLabel2GId", "CL3.ConventionLabel3GId"},
     " INNER JOIN Indicator_Convention AS I_C ON IUS.IUSNId = I_C.IUSNId) INNER JOIN ((Convention AS C INNER JOIN ConventionLabel1 AS CL1 ON C.ConventionLabel1GId = CL1.ConventionLabel1GId) INNER JOIN ConventionLabel2 AS CL2 ON C.ConventionLabel2GId = CL2.ConventionLabel2GId) ON I_C.ConventionLabel3GId = C.ConventionLabel3GId) INNER JOIN ConventionLabel3 AS CL3 ON C.ConventionLabel3GId = CL3.ConventionLabel3GId"},
}};
// clang-format on

constexpr int kSectors = 0;
constexpr int kGoals = 1;
constexpr int Sources = 4;

const SheetView& ViewOf(int view) {
    return kViews[static_cast<std::size_t>(view)];
}

QStringList Listed(const std::array<const char*, 3>& texts) {
    QStringList list;
    for (const char* text : texts)
        if (text) list << QLatin1String(text);
    return list;
}

QString FromOf(int view, bool byCombination) {
    const QString tail = QLatin1String(ViewOf(view).from);
    // Sectors listed by indicator don't need the combinations. Sources listed by combination come from the selection,
    // which also holds the texts.
    const QString table = view == kSectors && !byCombination ? QStringLiteral("[Indicator] AS I")
                          : view == Sources && byCombination ? QStringLiteral("_SelIUSNId AS IUS")
                                                             : QLatin1String(kCombinations);
    const auto open = tail.count(QLatin1Char(')')) - tail.count(QLatin1Char('('));
    const QString from = QString(open, QLatin1Char('(')) + table + tail;
    if (!byCombination || view == Sources) return QLatin1Char(' ') + from + QLatin1Char(' ');
    return QStringLiteral(" Unit AS U INNER JOIN (Subpop AS SP INNER JOIN (") + from +
           QStringLiteral(") ON SP.SubpopGId = IUS.SubpopGId) ON U.UnitGId = IUS.UnitGId ");
}

} // namespace

QStringList SheetHeads(int view, bool byCombination) {
    QStringList heads = Listed(ViewOf(view).heads) << QStringLiteral("Comm_Indicator");
    if (byCombination) heads << QStringLiteral("Comm_Unit") << QStringLiteral("Subpop");
    return heads;
}

QString SheetStatement(int view, bool byCombination, const QString& idList) {
    const bool fromSelection = view == Sources && byCombination;
    QStringList shown = Listed(ViewOf(view).columns);
    shown << (fromSelection ? QStringLiteral("IUS.[Indicator]") : QStringLiteral("I.[Indicator]"));
    if (fromSelection)
        shown << QStringLiteral("IUS.Unit") << QStringLiteral("IUS.Subpop");
    else if (byCombination)
        shown << QStringLiteral("U.Unit") << QStringLiteral("SP.Subpop");
    const QString order = shown.join(QStringLiteral(", "));
    // With an empty item in the select list; the statement has always been so.
    if (view == kGoals && !byCombination) shown << QString();
    QStringList gids = Listed(ViewOf(view).gids);
    if (byCombination)
        gids << QStringLiteral("IUS.IndicatorGId") << QStringLiteral("IUS.UnitGId") << QStringLiteral("IUS.SubpopGID");
    else
        gids << QStringLiteral("I.IndicatorGId");
    const QString test = byCombination      ? QStringLiteral(" IUS.IUSNId In (")
                         : view == kSectors ? QStringLiteral(" I.IndicatorGId IN (")
                                            : QStringLiteral(" IUS.IndicatorGId In (");
    return (view == kGoals ? QStringLiteral("SELECT DISTINCTROW ") : QStringLiteral("SELECT DISTINCT ")) +
           (shown + gids).join(QStringLiteral(", ")) + QStringLiteral("  FROM ") + FromOf(view, byCombination) +
           QStringLiteral(" WHERE ") + test + idList + QStringLiteral(") ORDER BY  ") + order + QLatin1Char(' ');
}

} // namespace tessaro::selection
