#pragma once

namespace tessaro {

/// The rows in view as a statement reads them: the three selection tables joined with Data under the aliases IUS, A, T
/// and D, and the condition that keeps out what the panels took out. Statements are compared by their text, so each
/// reader keeps its own order and spacing; what they have in common is that the source is part of the join.
struct ViewJoin {
    const char* from;
    const char* where = " WHERE IUS.Deleted = False ";
};

/// Keeps out the combinations and sources that were taken out of the view.
inline constexpr auto kNotTakenOut = "IUS.Deleted = False";

namespace joins {

inline constexpr ViewJoin kGrid{
    " FROM _SelIUSNId IUS INNER JOIN (_SelArea A INNER JOIN (Data D INNER JOIN  _SelTimePeriod T ON D.TimePeriodNId = "
    "[T].TimePeriodNId)  ON [A].AreaNId = D.AreaNId) ON (IUS.SourceNId = D.SourceNId) AND (IUS.IUSNId = D.IUSNId)",
    " WHERE IUS.Deleted = False"};

inline constexpr ViewJoin kStatistics{
    " FROM _SelIUSNId AS IUS INNER JOIN ((_SelTimePeriod AS T INNER JOIN Data AS D ON T.TimePeriodNId = "
    "D.TimePeriodNId) "
    "INNER JOIN _SelArea AS A ON D.AreaNId = A.AreaNId) ON (IUS.SourceNId = D.SourceNId) AND (IUS.IUSNId = D.IUSNId)"};

/// The lists of the panels name what was taken out too, so the condition is not theirs.
inline constexpr ViewJoin kPanelLists{
    " FROM ((_SelIUSNId AS IUS INNER JOIN Data AS D ON (IUS.SourceNId = D.SourceNId) AND  (IUS.IUSNId = D.IUSNId)) "
    "INNER JOIN _SelArea AS A ON D.AreaNId = A.AreaNId) INNER  JOIN _SelTimePeriod AS T ON D.TimePeriodNId = "
    "T.TimePeriodNId"};

/// With the three tables that hold each indicator, unit and subgroup once, as SP, I and U.
inline constexpr ViewJoin kPivot{
    " FROM _Subpop AS SP INNER JOIN (_Indicator AS I INNER JOIN (_Unit AS U INNER JOIN  (_SelIUSNId AS IUS INNER JOIN "
    "((Data AS D INNER JOIN _SelTimePeriod AS T ON D.TimePeriodNId  = T.TimePeriodNId) INNER JOIN _SelArea AS A ON "
    "D.AreaNId = A.AreaNId) ON  (IUS.IUSNId = D.IUSNId) AND (IUS.SourceNId = D.SourceNId)) ON U.UnitGId = IUS.UnitGId) "
    " ON I.IndicatorGId = IUS.IndicatorGId) ON SP.SubpopGId = IUS.SubpopGId ",
    " Where (((IUS.Deleted) = False)) "};

inline constexpr ViewJoin kValueCount{
    " FROM ((Data AS D INNER JOIN _SelTimePeriod AS T ON D.TimePeriodNId = T.TimePeriodNId) INNER JOIN _SelArea AS A "
    "ON "
    "D.AreaNId = A.AreaNId) INNER JOIN _SelIUSNId AS IUS ON (D.SourceNId = IUS.SourceNId) AND (D.IUSNId = IUS.IUSNId)",
    " WHERE Len(Trim(D.Datavalue)) > 0 AND IUS.Deleted = False "};

inline constexpr ViewJoin kDistinct{
    " FROM _SelIUSNId AS IUS INNER JOIN (_SelArea AS A INNER JOIN (Data AS D INNER JOIN _SelTimePeriod AS  T ON "
    "D.TimePeriodNId = T.TimePeriodNId) ON A.AreaNId = D.AreaNId) ON (IUS.IUSNId = D.IUSNId) AND  (IUS.SourceNId = "
    "D.SourceNId)",
    " WHERE IUS.Deleted=False "};

inline constexpr ViewJoin kDistinctCount{
    " FROM ((_SelIUSNId AS IUS INNER JOIN Data AS D ON (IUS.SourceNId = D.SourceNId)  AND (IUS.IUSNId = D.IUSNId)) "
    "INNER JOIN _SelTimePeriod AS T ON D.TimePeriodNId = T.TimePeriodNId)  INNER JOIN _SelArea AS A ON D.AreaNId = "
    "A.AreaNId"};

/// The texts of the sources.
inline constexpr ViewJoin kSources{
    "  FROM _SelIUSNId AS IUS INNER JOIN (_SelArea AS A INNER JOIN (Data AS D INNER JOIN _SelTimePeriod AS T  ON "
    "D.TimePeriodNId = T.TimePeriodNId) ON A.AreaNId = D.AreaNId) ON (IUS.IUSNId = D.IUSNId) AND  (IUS.SourceNId = "
    "D.SourceNId)",
    " WHERE IUS.Deleted=False "};

/// The list of all values in a workbook.
inline constexpr ViewJoin kDataList{
    "  FROM ((Data AS D INNER JOIN _SelTimePeriod AS T ON D.TimePeriodNId = T.TimePeriodNId)  INNER JOIN _SelArea AS A "
    "ON D.AreaNId = A.AreaNId) INNER JOIN _SelIUSNId AS IUS ON  (D.SourceNId = IUS.SourceNId) AND (D.IUSNId = "
    "IUS.IUSNId)",
    "  WHERE IUS.Deleted = False "};

/// Rows that had been taken out, by their numbers, which the reader names.
inline constexpr ViewJoin kRestored{
    "  FROM _SelTimePeriod AS T INNER JOIN (_SelArea AS A INNER JOIN (_SelIUSNId AS IUS INNER JOIN  Data AS D ON "
    "(IUS.IUSNId = D.IUSNId) AND (IUS.SourceNId = D.SourceNId)) ON A.AreaNId = D.AreaNId)  ON T.TimePeriodNId = "
    "D.TimePeriodNId",
    " WHERE (((D.RowNId) In ("};

/// Whether rows that meet in one cell of a table differ in a field.
inline constexpr ViewJoin kSharedCells{
    "  FROM _SelIUSNId AS IUS INNER JOIN (_SelArea AS A INNER JOIN (Data AS D INNER  JOIN _SelTimePeriod AS T ON "
    "D.TimePeriodNId = T.TimePeriodNId) ON A.AreaNId = D.AreaNId)  ON (IUS.SourceNId = D.SourceNId) AND (IUS.IUSNId = "
    "D.IUSNId) "};

inline constexpr ViewJoin kValueRanges{
    "FROM (_SelTimePeriod AS T INNER JOIN (_SelIUSNId AS IUS INNER JOIN Data AS D ON "
    " (IUS.SourceNId = D.SourceNId) AND "
    "(IUS.IUSNId = D.IUSNId)) ON T.TimePeriodNId = D.TimePeriodNId)  INNER JOIN "
    "_SelArea AS A ON D.AreaNId = A.AreaNId "};

inline constexpr ViewJoin kRangeCount{
    " FROM _SelTimePeriod AS T INNER JOIN ((_SelIUSNId AS IUS INNER JOIN Data AS D ON "
    "(IUS.SourceNId = D.SourceNId) AND "
    "(IUS.IUSNId = D.IUSNId)) INNER JOIN _SelArea AS A ON D.AreaNId = A.AreaNId) ON "
    "T.TimePeriodNId = D.TimePeriodNId "};

/// The values that calculations begin from.
inline constexpr ViewJoin kCalculations{
    "  FROM _SelIUSNId AS IUS INNER JOIN (_SelArea AS A INNER JOIN (Data AS D INNER JOIN _SelTimePeriod  AS T ON "
    "D.TimePeriodNId = T.TimePeriodNId) ON A.AreaNId = D.AreaNId) ON (IUS.IUSNId = D.IUSNId)  AND (IUS.SourceNId = "
    "D.SourceNId)",
    "  WHERE IUS.Deleted = False "};

/// The values of a map; its reader names the theme before the condition.
inline constexpr ViewJoin kMapValues{
    "  FROM _SelIUSNId AS IUS INNER JOIN (_SelArea AS A INNER JOIN (Data AS D INNER JOIN _SelTimePeriod  AS T ON "
    "D.TimePeriodNId = T.TimePeriodNId) ON A.AreaNId = D.AreaNId) ON (IUS.IUSNId = D.IUSNId)  AND (IUS.SourceNId = "
    "D.SourceNId)",
    " AND IUS.Deleted=False "};

} // namespace joins

} // namespace tessaro
