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
                                    "First(D.Datavalue)",
                                    "First(IIf(D.FootnoteNId = 0, D.Datavalue, D.Datavalue & '#' & D.FootnoteNId))",
                                    "Count(A.AreaName)",
                                    "Min(I.Indicator)",
                                    "Max(A.AreaID)",
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
                                       "D.SourceNId <> 2",
                                       "D.SourceNId <> -1",
                                       "-1 = D.SourceNId",
                                       "D.IUSNId Not In (-2, 3, -7)",
                                       "D.AreaNId in (-3,-2,1,2,3,4,5)",
                                       "D.Datavalue >= -5",
                                       "D.Datavalue Between -20.5 And 40",
                                       "D.Datavalue <> -12.5",
                                       "D.Datavalue Between 3 And CDbl('60.5')",
                                       "(A.AreaID = 'A1' OR A.AreaLevel = 2)",
                                       "Len(Trim(D.Datavalue)) > 0",
                                       "D.Datavalue Is Not Null"};
constexpr const char* kFields[] = {"I.Indicator", "A.AreaName", "A.AreaID", "T.TimePeriod", "I.UnitGId"};
constexpr const char* kCodes[] = {"D.IUSNId, D.TimePeriodNId", "D.IUSNId", "D.SourceNId"};
constexpr const char* kItems[] = {"T.TimePeriodNId, T.TimePeriod", "A.AreaNId", "A.AreaID",
                                  "I.IUSNId, I.Indicator, I.UnitGId", "I.SourceNId"};
constexpr const char* kCells[] = {"First(D.Datavalue)",
                                  "First(IIf(IsNull(D.FootnoteNId) Or D.FootnoteNId = 0, D.Datavalue, D.Datavalue & "
                                  "'{{}}' & D.FootnoteNId))",
                                  "Count(*)", "Max(D.Datavalue)", "Sum(D.Datavalue)"};
constexpr const char* kHavings[] = {"Count(*) > 3", "Max(T.TimePeriod) > '2003'", "Avg(D.Datavalue) > 20"};

constexpr const char* kFroms[] = {
    "Sel AS I INNER JOIN ((SelTime AS T INNER JOIN Data AS D ON T.TimePeriodNId = D.TimePeriodNId) INNER JOIN SelArea "
    "AS A ON D.AreaNId = A.AreaNId) ON (I.SourceNId = D.SourceNId) AND (I.IUSNId = D.IUSNId)",
    "SelTime AS T INNER JOIN (SelArea AS A INNER JOIN (Sel AS I INNER JOIN Data AS D ON I.IUSNId = D.IUSNId) ON "
    "A.AreaNId = D.AreaNId) ON T.TimePeriodNId = D.TimePeriodNId",
    "((Sel I INNER JOIN Data D ON (I.SourceNId = D.SourceNId)  AND (I.IUSNId = D.IUSNId)) INNER JOIN SelArea A ON "
    "D.AreaNId = A.AreaNId) INNER  JOIN SelTime AS T ON D.TimePeriodNId = T.TimePeriodNId",
    "Kinds AS K INNER JOIN (Sel AS I INNER JOIN ((Data AS D INNER JOIN SelTime AS T ON D.TimePeriodNId = "
    "T.TimePeriodNId) INNER JOIN SelArea AS A ON D.AreaNId = A.AreaNId) ON (I.IUSNId = D.IUSNId) AND (I.SourceNId = "
    "D.SourceNId)) ON K.UnitGId = I.UnitGId"};

constexpr const char* kRows[] = {"D.RowNId, D.Datavalue, D.FootnoteNId", "D.RowNId, D.IUSNId", "D.Datavalue AS V",
                                 "D.RowNId, D.Datavalue & '#' & D.SourceNId AS Noted"};
constexpr const char* kOrders[] = {"D.Datavalue", "T.TimePeriod", "A.AreaName",   "A.AreaID",
                                   "I.Indicator", "D.AreaNId",    "I.Deleted",    "A.AreaNId",
                                   "D.RowNId",    "A.AreaLevel",  "D.FootnoteNId"};
/// Tables that are joined with one another by numbers of the large table.
constexpr auto kLatest = "Sel AS I INNER JOIN ((SelArea AS A INNER JOIN Latest AS L ON A.AreaNId = L.AreaNId) INNER "
                         "JOIN (SelTime AS T INNER JOIN Data AS D ON T.TimePeriodNId = D.TimePeriodNId) ON "
                         "(L.TimePeriod = T.TimePeriod) AND (L.IUSNId = D.IUSNId) AND (L.AreaNId = D.AreaNId)) ON "
                         "(I.SourceNId = D.SourceNId) AND (I.IUSNId = L.IUSNId)";

constexpr const char* kPivots[] = {"CStr(T.TimePeriodNId) + '|' + CStr(I.IUSNId)", "CStr(A.AreaNId)", "D.SourceNId",
                                   "I.Indicator"};

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

std::string RandomScans::Group(int most) {
    std::string group;
    for (int terms = 0; terms < most && Chance(terms == 0 ? 90 : 65); ++terms) {
        const std::string term = OneOf(kGroups);
        if (group.find(term) == std::string::npos) group += (group.empty() ? "" : ", ") + term;
    }
    return group;
}

/// What the wizards ask: do values share a cell, which are there, and the table of them.
std::string RandomScans::OfWizards() {
    const std::string group = Group(6);
    const std::string from = " FROM " + From() + Conditions() + (group.empty() ? "" : " GROUP BY " + group);
    const std::string field = OneOf(kFields);
    if (Chance(15))
        return "SELECT DISTINCT D.Datavalue FROM " + From() + Conditions() +
               (Chance(30) ? " ORDER BY D.Datavalue" : "");
    if (Chance(15)) return CrossFilter();
    if (Chance(15) && !group.empty())
        return "SELECT Count(*)" + from + " HAVING Count(*) > " + std::to_string(random_() % 3);
    if (Chance(25)) return "SELECT Count(" + field + ") AS C" + from + " ORDER BY Count(" + field + ") DESC";
    if (Chance(33))
        return "SELECT Min(" + field + "), Max(" + field + ")" + from + " HAVING Min(" + field + ") <> Max(" + field +
               ")";
    if (Chance(50) || group.empty())
        return "SELECT DISTINCT " + (group.empty() ? field : group) + " FROM " + From() + Conditions();
    return "TRANSFORM " + std::string(OneOf(kCells)) + " AS E SELECT " + group + from + " PIVOT " + OneOf(kPivots);
}

/// What the automatic selections ask: for which items there are rows.
std::string RandomScans::CrossFilter() {
    if (Chance(30))
        return "SELECT DISTINCT " + std::string(OneOf(kCodes)) +
               " INTO Made FROM Data D, SelArea A WHERE D.AreaNId = "
               "A.AreaNId" +
               (Chance(50) ? " AND D.IUSNId in (2,3,5,7,11)" : "");
    return "SELECT DISTINCT " + std::string(OneOf(kItems)) + " FROM " + From() + Conditions();
}

/// What the grid asks: rows of the large table in an order.
std::string RandomScans::OfRows() {
    const bool distinct = Chance(50);
    std::string items = OneOf(kRows);
    if (!distinct && Chance(50)) items += ", " + std::string(OneOf(kFields));
    std::string sql = (distinct ? "SELECT DISTINCTROW " : "SELECT ") + items + " FROM " +
                      (distinct && Chance(60) ? kLatest : From()) + Conditions();
    for (int term = 0; term < 3 && Chance(term == 0 && !distinct ? 95 : 40); ++term)
        sql += (term == 0 ? " ORDER BY " : ", ") + std::string(OneOf(kOrders)) + (Chance(40) ? " DESC" : "");
    return sql;
}

std::string RandomScans::Next() {
    if (Chance(15)) return OfRows();
    if (Chance(40)) return OfWizards();
    const std::string group = Group(3);
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
