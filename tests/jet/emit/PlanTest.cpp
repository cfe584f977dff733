#include "jet/FixedCatalogue.h"

#include <gmock/gmock.h>

namespace jet::test {

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class PlanTest : public ::testing::Test {
  protected:
    PlanTest() {
        for (const std::string& line : CorpusLines("schema.txt"))
            catalogue_.define(line);
        for (const char* sql : {"CREATE INDEX a ON Data (AreaNId)", "CREATE INDEX i ON Data (IUSNId)",
                                "CREATE INDEX t ON Data (TimePeriodNId)", "CREATE INDEX u ON Unit (Unit)",
                                "CREATE INDEX g ON Unit (UnitGId)", "CREATE INDEX a ON Area (AreaID)",
                                "CREATE INDEX a ON _SelArea (AreaID)", "CREATE INDEX a ON Area_en (AreaID)"})
            catalogue_.run(Translate(sql, catalogue_).statements.front());
    }
    std::string planOf(std::string_view sql) {
        std::string plan;
        for (const std::string& row :
             catalogue_.run("EXPLAIN QUERY PLAN " + Translate(sql, catalogue_).statements.back()))
            plan += row + "\n";
        return plan;
    }
    FixedCatalogue catalogue_;
};

TEST_F(PlanTest, EqualityUsesTheIndexesThatAreThere) {
    const struct {
        const char* sql;
        const char* index;
    } Cases[] = {
        {"SELECT RowNId FROM Data WHERE AreaNId = 5", "Data.a"},
        {"SELECT RowNId FROM Data WHERE AreaNId = '5'", "Data.a"},
        {"SELECT RowNId FROM Data WHERE AreaNId IN (1, 2, 3)", "Data.a"},
        {"SELECT RowNId FROM Data WHERE AreaNId BETWEEN 1 AND 3", "Data.a"},
        {"SELECT UnitGId FROM Unit WHERE Unit = 'per cent'", "Unit.u"},
        {"SELECT UnitGId FROM Unit WHERE Unit Like 'per cent'", "Unit.u"},
        {"SELECT UnitGId FROM Unit WHERE Unit IN ('a', 'b')", "Unit.u"},
        {"SELECT Unit FROM Unit WHERE UnitGId = '-7'", "Unit.g"},
        {"SELECT U.Unit FROM Unit U INNER JOIN Indicator_Unit_Subpop I ON U.UnitGId = I.UnitGId", "Unit.g"},
        {"SELECT AreaName FROM Area WHERE AreaID = Mid('AFRDZA', 1, 3)", "Area.a"},
        {"SELECT AreaName FROM Area ORDER BY AreaID", "Area.a"},
        {"UPDATE Area_en AS A1, Area_en AS A2 SET A2.DataExists = True WHERE A2.AreaID Like "
         "Mid(A1.AreaID, 1, Len(A1.AreaID) - 3) AND A1.AreaLevel = 2",
         "Area_en.a"},
    };
    for (const auto& each : Cases)
        EXPECT_THAT(planOf(each.sql), HasSubstr(std::string("INDEX ") + each.index)) << each.sql;
}

// The order of a small table carries a join with a large one: no sorting of the large one's rows.
TEST_F(PlanTest, AJoinInTheOrderOfAnIndexIsNotSorted) {
    const std::string plan =
        planOf("SELECT D.RowNId FROM _SelArea A INNER JOIN Data D ON A.AreaNId = D.AreaNId ORDER BY A.AreaID");
    EXPECT_THAT(plan, Not(HasSubstr("TEMP B-TREE"))) << plan;
}

// Nearly all rows meet it; taken for a narrow choice it would be looked up anew for each period and area.
TEST_F(PlanTest, AYesNoTestIsNoPlaceToBeginAJoin) {
    EXPECT_THAT(planOf("SELECT Count(D.Datavalue) AS n FROM _SelIUSNId AS IUS INNER JOIN ((_SelTimePeriod AS T INNER "
                       "JOIN Data AS D ON T.TimePeriodNId = D.TimePeriodNId) INNER JOIN _SelArea AS A ON D.AreaNId = "
                       "A.AreaNId) ON (IUS.SourceNId = D.SourceNId) AND (IUS.IUSNId = D.IUSNId) WHERE IUS.Deleted = "
                       "False GROUP BY IUS.IndicatorGId"),
                Not(HasSubstr("Deleted=?")));
}

TEST_F(PlanTest, BracketedInnerJoinsLeaveNothingToMaterialise) {
    const std::string plan = planOf(
        "SELECT D.RowNId FROM _SelIUSNId IUS INNER JOIN (_SelArea A INNER JOIN (Data D INNER JOIN _SelTimePeriod T ON "
        "D.TimePeriodNId = T.TimePeriodNId) ON A.AreaNId = D.AreaNId) ON (IUS.SourceNId = D.SourceNId) AND (IUS.IUSNId "
        "= "
        "D.IUSNId)");
    EXPECT_THAT(plan, Not(HasSubstr("MATERIALIZE"))) << plan;
    EXPECT_THAT(plan, Not(HasSubstr("CO-ROUTINE"))) << plan;
}

// Each row of Data once; that must not mean a walk over all of them.
TEST_F(PlanTest, RowsAreToldApartAfterTheJoin) {
    EXPECT_THAT(planOf("SELECT DISTINCTROW D.RowNId FROM Data D INNER JOIN _SelArea A ON A.AreaNId = D.AreaNId"),
                HasSubstr("SEARCH D"));
}

TEST_F(PlanTest, ACorrelatedAggregateIsComputedOnceForAllGroups) {
    const std::string plan = planOf(
        "SELECT * FROM _Data p WHERE p.TimePeriod = (SELECT Max(q.TimePeriod) FROM _Data q WHERE q.AreaId = p.AreaId)");
    EXPECT_THAT(plan, HasSubstr("LIST SUBQUERY")) << plan;
    EXPECT_THAT(plan, Not(HasSubstr("CORRELATED"))) << plan;
}

// A collation on numbers, or one on text without letters, would cost each row a call.
TEST_F(PlanTest, WhatHasNoCaseCarriesNoCollation) {
    for (const char* sql :
         {"SELECT RowNId FROM Data WHERE AreaNId = IUSNId AND RowNId > 5 ORDER BY AreaNId",
          "SELECT Count(*) FROM Unit WHERE Mid(UnitGId,1,1) <> '-'",
          "SELECT Count(*) FROM Data WHERE CStr(AreaNId) & '{}' & CStr(IUSNId) = '1{}2'",
          "SELECT DISTINCT AreaNId, IUSNId FROM Data", "SELECT Count(*) FROM Area WHERE DataExists = True"}) {
        EXPECT_THAT(Translate(sql, catalogue_).statements.front(), Not(HasSubstr("COLLATE"))) << sql;
    }
}

} // namespace

} // namespace jet::test
