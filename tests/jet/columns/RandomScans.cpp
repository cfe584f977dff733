#include "jet/columns/RandomScans.h"

#include <iterator>
#include <vector>

namespace jet::test {

namespace {

constexpr const char* kGroups[] = {"I.Indicator", "I.UnitGId",   "A.AreaName",      "A.AreaID",    "D.IUSNId",
                                   "D.AreaNId",   "D.SourceNId", "D.TimePeriodNId", "T.TimePeriod"};
constexpr const char* kFigures[] = {"Count(*)",
                                    "Count(D.Datavalue)",
                                    "Min(D.Datavalue)",
                                    "Max(D.Datavalue)",
                                    "Sum(D.Datavalue)",
                                    "Avg(D.Datavalue)",
                                    "StDev(D.Datavalue)",
                                    "StDevP(D.Datavalue)",
                                    "Var(D.Datavalue)",
                                    "VarP(D.Datavalue)",
                                    "format(Avg(D.Datavalue), '#.00')",
                                    "Max(T.TimePeriod)",
                                    "Min(T.TimePeriod)",
                                    "Max(A.AreaLevel)",
                                    "Min(I.UnitGId)",
                                    "Max(D.SourceNId)",
                                    "Count(DISTINCT D.AreaNId)",
                                    "Count(I.UnitGId)",
                                    "Count(T.TimePeriodNId)",
                                    "Count(D.IUSNId)",
                                    "Max(D.Datavalue) & '/' & Count(*)",
                                    "First(D.IUSNId) - First(D.IUSNId)"};
constexpr const char* kConditions[] = {"I.Deleted = False",
                                       "D.Datavalue >= 10",
                                       "D.Datavalue <= 40.5",
                                       "-3 < D.Datavalue",
                                       "D.Datavalue <> 5",
                                       "D.RowNId in (1,2,3,5,8,13,21,34,55,89,144,233,377,610,987)",
                                       "D.RowNId not in (4,6,7,9,500,700)",
                                       "D.IUSNId not in(2,3)",
                                       "D.SourceNId = 2",
                                       "(D.SourceNId = 1 OR A.AreaLevel > 1)",
                                       "A.AreaLevel > 1",
                                       "T.TimePeriod Like '2*'",
                                       "I.Indicator <> 'Indicator 3'",
                                       "D.AreaNId <= A.AreaNId",
                                       "1 = 1",
                                       "D.FootnoteNId = 0",
                                       "Len(Trim(D.Datavalue)) > 0",
                                       "D.Datavalue Is Not Null"};
constexpr const char* kHavings[] = {"Count(*) > 3", "Max(T.TimePeriod) > '2003'", "Avg(D.Datavalue) > 20"};

constexpr const char* kFroms[] = {
    "Sel AS I INNER JOIN ((SelTime AS T INNER JOIN Data AS D ON T.TimePeriodNId = D.TimePeriodNId) INNER JOIN SelArea "
    "AS A ON D.AreaNId = A.AreaNId) ON (I.SourceNId = D.SourceNId) AND (I.IUSNId = D.IUSNId)",
    "SelTime AS T INNER JOIN (SelArea AS A INNER JOIN (Sel AS I INNER JOIN Data AS D ON I.IUSNId = D.IUSNId) ON "
    "A.AreaNId = D.AreaNId) ON T.TimePeriodNId = D.TimePeriodNId",
    "((Sel I INNER JOIN Data D ON (I.SourceNId = D.SourceNId)  AND (I.IUSNId = D.IUSNId)) INNER JOIN SelArea A ON "
    "D.AreaNId = A.AreaNId) INNER  JOIN SelTime AS T ON D.TimePeriodNId = T.TimePeriodNId"};

} // namespace

std::string RandomScans::From() {
    return OneOf(kFroms);
}

std::string RandomScans::Conditions() {
    std::string all;
    while (Chance(60))
        all += (all.empty() ? " WHERE " : " AND ") + std::string(OneOf(kConditions));
    return all;
}

std::string RandomScans::Arm(const std::string& group, bool into) {
    std::string items = group;
    for (int figure = 0; figure == 0 || (figure < 4 && Chance(60)); ++figure)
        items += (items.empty() ? "" : ", ") + std::string(OneOf(kFigures)) + " AS F" + std::to_string(figure);
    std::string sql = "SELECT " + items + (into ? " INTO Made FROM " : " FROM ") + From() + Conditions();
    if (!group.empty()) sql += " GROUP BY " + group;
    if (!group.empty() && Chance(20)) sql += " HAVING " + std::string(OneOf(kHavings));
    return sql;
}

std::string RandomScans::Next() {
    std::string group;
    for (int terms = 0; terms < 3 && Chance(60); ++terms) {
        const std::string term = OneOf(kGroups);
        if (group.find(term) == std::string::npos) group += (group.empty() ? "" : ", ") + term;
    }
    if (Chance(10)) {
        const std::string from = From() + Conditions() + " GROUP BY I.Indicator";
        return "SELECT I.Indicator, '--' AS U, Count(D.Datavalue) AS C, Avg(D.Datavalue) AS V FROM " + from +
               " UNION SELECT I.Indicator, I.UnitGId, Count(D.Datavalue), Avg(D.Datavalue) FROM " + from +
               ", I.UnitGId ORDER BY I.Indicator";
    }
    std::string sql = Arm(group, Chance(10));
    if (!group.empty() && Chance(20)) sql += " ORDER BY " + (Chance(50) ? group : "Count(A.AreaID) DESC");
    return sql;
}

} // namespace jet::test
