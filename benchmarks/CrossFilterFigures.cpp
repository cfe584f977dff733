#include "Figures.h"
#include "selection/ClassificationViews.h"
#include "selection/CrossFilters.h"
#include "selection/IndicatorSelection.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QStringList>

#include <array>

namespace tessaro::bench {

namespace {

using selection::IndicatorFilter;

/// A classification view as one would join it by hand.
struct ViewByHand {
    const char* name;
    const char* join;
    const char* marked; ///< the column that says whether the item has data
};

constexpr std::array<ViewByHand, 7> kViews = {{
    {"sectors",
     " JOIN Indicator_Sector L ON L.IndicatorGId = X.IndicatorGId COLLATE NOCASE JOIN Sector C ON C.SectorLabel2GId = "
     "L.SectorLabel2GId COLLATE NOCASE",
     "C.DataExists"},
    {"goals",
     " JOIN Indicator_Goal L ON L.IUSNId = X.IUSNId JOIN Goal C ON C.GoalLabel3GId = L.GoalLabel3GId COLLATE NOCASE",
     "C.DataExists"},
    {"frameworks", " JOIN Indicator_CF L ON L.IUSNId = X.IUSNId JOIN CF_en C ON C.CFGId = L.CFGId COLLATE NOCASE",
     "C.DataExists"},
    {"themes",
     " JOIN Indicator_Theme L ON L.IUSNId = X.IUSNId JOIN Theme_en C ON C.ThemeGId = L.ThemeGId COLLATE NOCASE",
     "C.DataExists"},
    {"sources", " JOIN Indicator_Source L ON L.IUSNId = X.IUSNId JOIN Source_en C ON C.SourceNId = L.SourceNId",
     "C.DataExists"},
    {"institutions",
     " JOIN Indicator_Institution L ON L.IUSNId = X.IUSNId JOIN Institution C ON C.InstitutionLabel2GId = "
     "L.InstitutionLabel2GId COLLATE NOCASE",
     "C.DataExists"},
    {"rights",
     " JOIN Indicator_Convention L ON L.IUSNId = X.IUSNId JOIN Convention C ON C.ConventionLabel3GId = "
     "L.ConventionLabel3GId COLLATE NOCASE",
     "C.DataExists"},
}};

constexpr auto kListHead =
    "SELECT DISTINCT X.IUSNId, X.IndicatorGId, X.UnitGId, X.SubpopGId, I.Indicator, U.Unit, S.Subpop "
    "FROM Indicator_Unit_Subpop X JOIN Indicator_en I ON I.IndicatorGId = X.IndicatorGId COLLATE "
    "NOCASE JOIN Unit_en U ON U.UnitGId = X.UnitGId COLLATE NOCASE JOIN Subpop_en S ON S.SubpopGId = "
    "X.SubpopGId COLLATE NOCASE";

/// DataExistsMode with its criterion, as the preferences set them.
void SetMode(long mode) {
    DataExistsMode = mode;
    DataExistsCriterion = mode == 0 ? QStringLiteral("DataExists = True ") : QString();
}

std::string Remake(const char* table, const std::string& select) {
    return std::string("DROP TABLE IF EXISTS work.") + table + "; CREATE TABLE work." + table + " AS " + select + ";";
}

/// The indicator filter by hand: the same working tables, then the list with a test for existence.
struct IndicatorsByHand {
    std::string tables;
    std::string list;
};

IndicatorsByHand ByHand(const IndicatorFilter& filter) {
    IndicatorsByHand hand;
    const bool byIus = filter.onlyList && selection::ByCombination();
    const std::string ids = filter.list.toStdString();
    const std::string limit = byIus ? " AND IUSNId IN (" + ids + ")" : "";
    std::string table = "Data";
    if (filter.byArea) {
        hand.tables +=
            Remake("h_DataArea", "SELECT DISTINCT IUSNId, TimePeriodNId FROM Data WHERE AreaNId IN (SELECT AreaNId "
                                 "FROM sel._SelArea)" +
                                     limit);
        table = "work.h_DataArea";
    }
    if (filter.byTime) {
        hand.tables +=
            Remake("h_DataTime", "SELECT DISTINCT IUSNId FROM " + table +
                                     " WHERE TimePeriodNId IN (SELECT TimePeriodNId FROM sel._SelTimePeriod)" +
                                     (filter.byArea ? "" : limit));
        table = "work.h_DataTime";
    }
    if (!filter.byArea && !filter.byTime && byIus) {
        hand.tables += Remake("h_DataAll", "SELECT DISTINCT IUSNId FROM Data WHERE IUSNId IN (" + ids + ")");
        table = "work.h_DataAll";
    }
    // Data has an index by IUSNId; the small tables are read once.
    const std::string exists = table == "Data" ? "EXISTS (SELECT 1 FROM Data D WHERE D.IUSNId = X.IUSNId)"
                                               : "X.IUSNId IN (SELECT IUSNId FROM " + table + ")";
    hand.list = kListHead;
    if (DataExistsMode == 0 && !filter.onlyList) {
        const ViewByHand& view = kViews.at(static_cast<std::size_t>(filter.view));
        hand.list += std::string(view.join) + " WHERE " + view.marked + " <> 0 AND X.DataExists <> 0 AND " + exists;
    } else {
        hand.list += " WHERE " + exists;
    }
    if (filter.onlyList && !byIus) hand.list += " AND X.IndicatorGId COLLATE NOCASE IN (" + ids + ")";
    hand.list += " ORDER BY I.Indicator COLLATE NOCASE";
    if (selection::ByCombination()) hand.list += ", U.Unit COLLATE NOCASE, S.Subpop COLLATE NOCASE";
    return hand;
}

class CrossFilterFigures {
  public:
    CrossFilterFigures(Report& report, HandWritten& hand) : report_(report), hand_(hand) {}

    void All() {
        for (const long mode : {1L, 0L}) {
            SetMode(mode);
            IndicatorsAll(mode);
            Times(mode);
            Areas(mode);
        }
        SetMode(0);
        IndicatorsOfEachView();
        IndicatorsOfList(60);
        IndicatorsOfList(500);
        AreasBelowNode();
        SelectionWritten();
    }

  private:
    void Indicators(const std::string& what, const IndicatorFilter& filter) {
        const IndicatorsByHand byHand = ByHand(filter);
        report_.Compare(
            "indicators, " + what, [&] { (void)selection::FindIndicators(filter); },
            [&] {
                if (!byHand.tables.empty()) hand_.Run(byHand.tables);
                hand_.Walk(byHand.list);
            });
    }

    static std::string Flags(bool first, bool second, const char* firstName, const char* secondName) {
        if (first && second) return std::string("by ") + firstName + " and " + secondName;
        if (first || second) return std::string("by ") + (first ? firstName : secondName);
        return "by nothing else";
    }
    static const char* ModeName(long mode) { return mode == 0 ? ", with data" : ", all"; }

    void IndicatorsAll(long mode) {
        IndicatorSelectBy = 1;
        for (const auto& [time, area] : kFlags) {
            const IndicatorFilter filter{time, area, 0, false, {}};
            Indicators(Flags(time, area, "time", "areas") + ModeName(mode), filter);
        }
    }

    void IndicatorsOfEachView() {
        for (std::size_t view = 1; view < kViews.size(); ++view) {
            const IndicatorFilter filter{true, false, static_cast<int>(view), false, {}};
            Indicators(std::string("by time, with data, in ") + kViews.at(view).name, filter);
        }
        IndicatorSelectBy = 0;
        Indicators("whole ones by time, with data", {true, false, 0, false, {}});
        IndicatorSelectBy = 1;
    }

    void IndicatorsOfList(int length) {
        const std::string of = "of a list of " + std::to_string(length) + ", ";
        QStringList numbers;
        QStringList gids;
        for (Records rows =
                 Select(QStringLiteral("SELECT TOP %1 IUSNId, IndicatorGId FROM Indicator_Unit_Subpop").arg(length));
             !rows.atEnd(); rows.MoveNext()) {
            numbers << rows.Text("IUSNId");
            gids << QLatin1Char('\'') + rows.Text("IndicatorGId") + QLatin1Char('\'');
        }
        for (const auto& [time, area] : kFlags) {
            const std::string flags = Flags(time, area, "time", "areas");
            IndicatorSelectBy = 1;
            Indicators(of + flags, {time, area, 0, true, numbers.join(QLatin1Char(','))});
            IndicatorSelectBy = 0;
            Indicators("whole ones " + of + flags, {time, area, 0, true, gids.join(QLatin1Char(','))});
        }
        IndicatorSelectBy = 1;
    }

    /// "… FROM Data D" with the two others' selections, as a test for one key.
    static std::string ExistsBy(const char* key, bool ius, const char* otherKey, const char* otherTable) {
        std::string exists = std::string("EXISTS (SELECT 1 FROM Data D WHERE D.") + key + " = X." + key;
        if (ius) exists += " AND D.IUSNId IN (SELECT IUSNId FROM sel._SelIUSNId)";
        if (otherTable != nullptr)
            exists += std::string(" AND D.") + otherKey + " IN (SELECT " + otherKey + " FROM sel." + otherTable + ")";
        return exists + ")";
    }

    void Times(long mode) {
        for (const auto& [ius, area] : kFlags) {
            const std::string byHand = "SELECT X.TimePeriodNId, X.TimePeriod FROM TimePeriod X WHERE " +
                                       ExistsBy("TimePeriodNId", ius, "AreaNId", area ? "_SelArea" : nullptr) +
                                       (mode == 0 ? " AND X.DataExists <> 0" : "");
            const bool first = ius;
            const bool second = area;
            report_.Compare(
                "times, " + Flags(ius, area, "indicators", "areas") + ModeName(mode),
                [&] { (void)selection::FindPeriods(first, second); }, [&] { hand_.Walk(byHand); }, kRatio, kFree);
        }
    }

    void Areas(long mode) {
        for (const auto& [ius, time] : kFlags) {
            const std::string byHand = "SELECT X.AreaNId FROM Area_en X WHERE " +
                                       ExistsBy("AreaNId", ius, "TimePeriodNId", time ? "_SelTimePeriod" : nullptr) +
                                       (mode == 0 ? " AND X.DataExists <> 0" : "");
            const QString sql = selection::AreaFilterSql(ius, time);
            report_.Compare(
                "areas, " + Flags(ius, time, "indicators", "time") + ModeName(mode),
                [&] { (void)selection::FindAreas(sql); }, [&] { hand_.Walk(byHand); }, kRatio, kFree);
        }
    }

    void AreasBelowNode() {
        const std::string exists = ExistsBy("AreaNId", true, "TimePeriodNId", "_SelTimePeriod");
        const QString top =
            Select(QStringLiteral("SELECT TOP 1 AreaID FROM Area WHERE Len(AreaID) = 3")).Text("AreaID");
        const std::string id = top.toStdString();
        struct Node {
            const char* name;
            QString key;
            std::string where;
        };
        for (const Node& node : {Node{"at the root", QStringLiteral("___"), "length(X.AreaID) = 3"},
                                 Node{"below a node", QLatin1Char('A') + top,
                                      "length(X.AreaID) > 3 AND length(X.AreaID) <= 6 AND substr(X.AreaID, 1, 3) = '" +
                                          id + "' COLLATE NOCASE"}}) {
            const std::string byHand =
                "SELECT X.AreaNId FROM Area_en X WHERE " + node.where + " AND X.DataExists <> 0 AND " + exists;
            const QString sql = selection::AreaFilterBelowSql(true, true, node.key);
            report_.Compare(
                std::string("areas ") + node.name + ", by indicators and time, with data",
                [&] { (void)selection::FindAreas(sql); }, [&] { hand_.Walk(byHand); }, kRatio, kFree);
        }
    }

    /// The rows that a filter writes in the end.
    void SelectionWritten() {
        const QString list = Select(QStringLiteral("SELECT DISTINCT IUSNId FROM _SelIUSNId")).Joined();
        const std::string byHand =
            "DELETE FROM sel._SelIUSNId; INSERT INTO sel._SelIUSNId (IUSNId, IndicatorGId, UnitGId, SubpopGId, "
            "Indicator, Unit, Subpop, SourceNId, Source, RecommendedSource, Deleted) SELECT DISTINCT X.IUSNId, "
            "X.IndicatorGId, "
            "X.UnitGId, X.SubpopGId, I.Indicator, U.Unit, S.Subpop, O.SourceNId, O.Source, L.RecommendedSource, 0 FROM "
            "Indicator_Unit_Subpop X JOIN Indicator_en I ON I.IndicatorGId = X.IndicatorGId COLLATE NOCASE JOIN "
            "Unit_en U ON "
            "U.UnitGId = X.UnitGId COLLATE NOCASE JOIN Subpop_en S ON S.SubpopGId = X.SubpopGId COLLATE NOCASE JOIN "
            "Indicator_Source L ON L.IUSNId = X.IUSNId JOIN Source_en O ON O.SourceNId = L.SourceNId WHERE X.IUSNId IN "
            "(" +
            list.toStdString() + ");";
        report_.Compare(
            "indicators written to the selection", [&] { selection::ReplaceIndicators(list); },
            [&] { hand_.Run(byHand); });
    }

    static constexpr std::array<std::pair<bool, bool>, 4> kFlags = {
        {{false, false}, {true, false}, {false, true}, {true, true}}};

    // Reading the selection beforehand costs tenths of a millisecond, and saves seconds where no row is met soon.
    static constexpr double kRatio = 1.2;
    static constexpr double kFree = 0.5;

    Report& report_;
    HandWritten& hand_;
};

} // namespace

void MeasureCrossFilters(Report& report, const BenchSession& session) {
    const BenchSession::Copies copies = session.CopyForHand();
    HandWritten hand(session.database, copies.selections, copies.working);
    CrossFilterFigures(report, hand).All();
}

} // namespace tessaro::bench
