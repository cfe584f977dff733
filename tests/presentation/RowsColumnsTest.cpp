#include "presentation/RowsColumns.h"

#include "PresentationTest.h"

namespace tessaro {

namespace {

using test::PresentationTest;
using F = PivotField;
using Fields = RowsColumns::FieldList;

class RowsColumnsTest : public PresentationTest {};

} // namespace

TEST_F(RowsColumnsTest, AFieldStandsInOnePlaceOnly) {
    RowsColumns arrangement;
    arrangement.Place(F::Unit, Placement::Row);
    arrangement.Place(F::Source, Placement::Row);
    arrangement.Place(F::Unit, Placement::Row); // keeps its place
    EXPECT_EQ(arrangement.Rows(), (Fields{F::Unit, F::Source}));
    arrangement.Place(F::Unit, Placement::Column);
    EXPECT_EQ(arrangement.Rows(), (Fields{F::Source}));
    EXPECT_EQ(arrangement.Columns(), (Fields{F::Unit}));
    arrangement.PlaceAt(F::TimePeriod, Placement::Row, 0);
    EXPECT_EQ(arrangement.Rows(), (Fields{F::TimePeriod, F::Source}));
    EXPECT_EQ(arrangement.Available(), (Fields{F::AreaID, F::AreaName, F::Indicator, F::Subpop}));
    arrangement.Reset();
    EXPECT_EQ(arrangement.Available().size(), static_cast<std::size_t>(kPivotFieldCount));
}

TEST_F(RowsColumnsTest, DefaultsFollowWhatTheSelectionHasSeveralOf) {
    RowsColumns arrangement;
    arrangement.SetDefaultRowsColumns(); // nothing selected
    EXPECT_EQ(arrangement.Rows(), (Fields{F::AreaID, F::AreaName}));
    EXPECT_TRUE(arrangement.Columns().empty());

    SelectAreas(QStringLiteral("WHERE AreaNId = 2"));
    SelectTimes(QStringLiteral("WHERE TimePeriodNId = 2"));
    SelectIus(QStringLiteral("WHERE S.SourceNId = 1"));
    arrangement.SetDefaultRowsColumns();
    EXPECT_EQ(arrangement.Rows(), (Fields{F::AreaID, F::AreaName}));
    EXPECT_EQ(arrangement.Columns(), (Fields{F::Indicator, F::Unit}));

    SelectTimes(QStringLiteral("WHERE TimePeriodNId <> 2"));
    arrangement.SetDefaultRowsColumns(); // several times take the place of the one area
    EXPECT_EQ(arrangement.Rows(), (Fields{F::TimePeriod}));

    SelectAreas(QStringLiteral("WHERE AreaNId <> 2"));
    Run(QStringLiteral("DELETE * FROM _SelIUSNId"));
    SelectIus();
    arrangement.SetDefaultRowsColumns();
    EXPECT_EQ(arrangement.Rows(), (Fields{F::AreaID, F::AreaName, F::TimePeriod, F::Source}));
    EXPECT_EQ(arrangement.Columns(), (Fields{F::Indicator, F::Unit, F::Subpop}));
}

TEST_F(RowsColumnsTest, GraphsRunAlongTheTimeOrElseTheAreas) {
    RowsColumns axes;
    axes.SetDefaultAxes(); // nothing selected: both axes have something all the same
    EXPECT_FALSE(axes.Rows().empty() || axes.Columns().empty());
    SelectEverything();
    axes.SetDefaultAxes();
    EXPECT_EQ(axes.Columns(), (Fields{F::TimePeriod}));
    EXPECT_EQ(axes.Rows(), (Fields{F::AreaName, F::Indicator, F::Subpop})); // neither units nor sources
    Run(QStringLiteral("DELETE * FROM _SelTimePeriod WHERE TimePeriodNId <> 2"));
    axes.SetDefaultAxes();
    EXPECT_EQ(axes.Columns(), (Fields{F::AreaName}));
    Run(QStringLiteral("DELETE * FROM _SelArea WHERE AreaNId <> 2"));
    axes.SetDefaultAxes();
    EXPECT_EQ(axes.Columns(), (Fields{F::Indicator}));
}

TEST_F(RowsColumnsTest, AFieldThatWouldDropValuesGoesToTheRows) {
    SelectAreas();
    SelectTimes(QStringLiteral("WHERE TimePeriodNId = 2"));
    SelectIus(QStringLiteral("WHERE IUS.IUSNId = 1"));
    RowsColumns arrangement;
    arrangement.Place(F::AreaID, Placement::Row);
    arrangement.Place(F::AreaName, Placement::Row);
    RowsColumns before = arrangement;
    if (GetDistinctCount(F::Source) < 2) AddValue(2, 1, 2, 2, QStringLiteral("7"));
    std::vector<int> told;
    EXPECT_EQ(arrangement.Build_Records([&](int percent) { told.push_back(percent); }), (Fields{F::Source}));
    EXPECT_EQ(arrangement.Rows(), (Fields{F::AreaID, F::AreaName, F::Source}));
    EXPECT_EQ(told, (std::vector<int>{20, 35, 50, 65, 80, 95, 110}));
    EXPECT_TRUE(arrangement.Build_Records().empty());

    // With one source taken out of the view there is nothing to tell apart.
    Run(QStringLiteral("UPDATE _SelIUSNId SET [Deleted] = True WHERE SourceNId = 2"));
    EXPECT_TRUE(before.Build_Records().empty());
}

TEST_F(RowsColumnsTest, AreasAreToldApartByTheirNamesUnlessTwoShareOne) {
    SelectAreas(QStringLiteral("WHERE AreaNId In (2, 4)"));
    SelectTimes(QStringLiteral("WHERE TimePeriodNId = 2"));
    SelectIus(QStringLiteral("WHERE IUS.IUSNId = 1 AND S.SourceNId = 1"));
    Run(QStringLiteral("DELETE * FROM Data"));
    AddValue(2, 1, 2, 1, QStringLiteral("1"));
    AddValue(2, 1, 4, 1, QStringLiteral("2"));
    RowsColumns names;
    names.Place(F::AreaName, Placement::Row);
    EXPECT_TRUE(names.Build_Records().empty());
    RowsColumns ids;
    ids.Place(F::AreaID, Placement::Row);
    EXPECT_TRUE(ids.Build_Records().empty()); // the name never moves by itself
    RowsColumns none;
    none.Place(F::Indicator, Placement::Column);
    EXPECT_EQ(none.Build_Records(), (Fields{F::AreaID}));

    Run(QStringLiteral("UPDATE _SelArea SET AreaName = 'Springfield'"));
    EXPECT_EQ(names.Build_Records().size(), 1u);
    EXPECT_EQ(names.PlacementOf(F::AreaID), Placement::Row);
}

TEST_F(RowsColumnsTest, EmptyRowsTakeAreasOrElseWhatIsAside) {
    RowsColumns arrangement;
    arrangement.Place(F::TimePeriod, Placement::Column);
    arrangement.FillEmptyRows();
    EXPECT_EQ(arrangement.Rows(), (Fields{F::AreaID, F::AreaName}));
    arrangement.Place(F::AreaID, Placement::Column);
    arrangement.Place(F::AreaName, Placement::Column);
    arrangement.FillEmptyRows();
    EXPECT_EQ(arrangement.Rows(), Fields{F::Indicator});
    arrangement.FillEmptyRows(); // what is there stays
    EXPECT_EQ(arrangement.Rows(), Fields{F::Indicator});
    for (int i = 0; i < kPivotFieldCount; ++i)
        arrangement.Place(static_cast<F>(i), Placement::Column);
    arrangement.FillEmptyRows();
    EXPECT_TRUE(arrangement.Rows().empty());
}

TEST_F(RowsColumnsTest, TheRowFilterCounts) {
    SelectEverything();
    EXPECT_TRUE(GetDistinctVal(F::TimePeriod).isEmpty()); // several
    RowFilter = QStringLiteral(" AND T.TimePeriod = '2000' ");
    EXPECT_EQ(GetDistinctVal(F::TimePeriod), QStringLiteral("2000"));
    EXPECT_EQ(DistinctValues(F::TimePeriod, 9), QStringList{QStringLiteral("2000")});
    RowFilter = QStringLiteral(" AND D.RowNId not in(no number) ");
    EXPECT_TRUE(GetDistinctVal(F::TimePeriod).isEmpty());
    RowsColumns arrangement;
    EXPECT_TRUE(arrangement.Build_Records().empty()); // failed statements move nothing
}

TEST_F(RowsColumnsTest, KeysIgnoreCase) {
    EXPECT_EQ(FieldOfKey(QStringLiteral("a.areaNAME")), F::AreaName);
    EXPECT_EQ(FieldOfKey(QStringLiteral("ius.[INDICATOR]")), F::Indicator);
    EXPECT_EQ(FieldOfName(QStringLiteral("areaid")), F::AreaID);
    EXPECT_FALSE(FieldOfKey(QStringLiteral("A.Area")).has_value());
    EXPECT_FALSE(FieldOfName(QString()).has_value());
}

} // namespace tessaro
