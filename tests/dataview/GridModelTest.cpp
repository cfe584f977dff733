#include "dataview/GridModel.h"

#include "dataview/GridQuery.h"
#include "session/DisplayValue.h"
#include "session/Session.h"
#include "support/SelectionTest.h"
#include "support/TimeBound.h"
#include "view/InView.h"

#include <QBrush>
#include <QElapsedTimer>

#include <random>
#include <set>

namespace tessaro::test {

namespace {

GridRow RowOf(const QString& indicator, const QString& datavalue) {
    GridRow row;
    row.indicator = indicator;
    row.datavalue = datavalue;
    row.areaName = QStringLiteral("Area of ") + indicator;
    return row;
}

class GridModelTest : public SelectionTest {
  protected:
    /// A grid without the spare row that holds one row for each text as its indicator.
    void Fill(const QStringList& indicators) {
        grid.Clear();
        std::vector<GridRow> rows;
        for (const QString& indicator : indicators)
            rows.push_back(RowOf(indicator, QString::number(rows.size())));
        grid.InsertRows(static_cast<int>(rows.size()));
        grid.PutBlock(0, std::move(rows));
        grid.DeleteSpareRow();
    }
    QVariant Cell(int row, int column, int role = Qt::DisplayRole) const {
        return grid.data(grid.index(row, column - 1), role);
    }
    QString Column(int column) const {
        QStringList texts;
        for (int row = 0; row < grid.ValueRows(); ++row)
            texts << Cell(row, column).toString();
        return texts.join(QLatin1Char(' '));
    }

    GridModel grid;
};

TEST_F(GridModelTest, KeepsOneSpareRowWhileRowsCome) {
    EXPECT_EQ(grid.rowCount(), 0);
    EXPECT_EQ(grid.columnCount(), 12);
    grid.InsertRows(2);
    EXPECT_EQ(grid.MaxRows(), 3);
    grid.InsertRows(3);
    EXPECT_EQ(grid.MaxRows(), 6);
    EXPECT_EQ(grid.ValueRows(), 5);
    EXPECT_TRUE(Cell(5, 1, GridModel::SpareRole).toBool());
    EXPECT_EQ(grid.RowAt(5), nullptr);
    EXPECT_EQ(grid.headerData(5, Qt::Vertical, Qt::DisplayRole).toString(), QString());
    EXPECT_EQ(grid.headerData(4, Qt::Vertical, Qt::DisplayRole).toInt(), 5);
    grid.DeleteSpareRow();
    grid.DeleteSpareRow();
    EXPECT_EQ(grid.MaxRows(), 5) << "only the spare row goes";
}

TEST_F(GridModelTest, ValuesAsStoredOrWithTheUsersSeparators) {
    grid.InsertRows(4);
    grid.PutBlock(0, {RowOf({}, QStringLiteral("1234.50")), RowOf({}, {}), RowOf({}, QStringLiteral("n/a")),
                      RowOf({}, QStringLiteral("-0"))});
    SysNumFormat = false;
    EXPECT_EQ(Column(ColDatavalue), QStringLiteral("1234.50  n/a -0"));
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    SysNumFormat = true;
    EXPECT_EQ(Cell(2, ColDatavalue).toString(), QStringLiteral("n/a"));
    EXPECT_EQ(Cell(1, ColDatavalue).toString(), QString());
    EXPECT_TRUE(Cell(0, ColDatavalue).toString().endsWith(InDigitsOf(QLocale::system(), QStringLiteral("50"))));
    QLocale::setDefault(before);
    const auto alignment = [&](int row) {
        return Cell(row, ColDatavalue, Qt::TextAlignmentRole).value<Qt::Alignment>();
    };
    EXPECT_TRUE(alignment(0).testFlag(Qt::AlignRight));
    EXPECT_TRUE(alignment(0).testFlag(Qt::AlignAbsolute)) << "also from right to left";
    EXPECT_FALSE(alignment(2).testFlag(Qt::AlignRight)) << "what is no number stands like text";
}

TEST_F(GridModelTest, GlobalItemsAreColouredCellByCell) {
    FillData(3, 2, 1); // area 3 and indicator 2 are global, every unit, no subpopulation
    GlobalColor = 255;
    ShowGlobalColor = true;
    PageQuery query;
    PageBuilder builder;
    ASSERT_TRUE(query.Open(IdentifierStatement()));
    grid.InsertRows(6);
    grid.PutBlock(0, builder.CreateDataPage(query.GetRows(0, 6)));
    const auto coloured = [&](int row) {
        std::set<int> columns;
        for (int column = 1; column <= VisibleCols; ++column) {
            if (Cell(row, column, Qt::ForegroundRole).value<QBrush>().color() == QColor(255, 0, 0))
                columns.insert(column);
        }
        return columns;
    };
    EXPECT_EQ(coloured(0), (std::set<int>{ColUnit}));
    EXPECT_EQ(coloured(1), (std::set<int>{ColIndicator, ColUnit}));
    EXPECT_EQ(coloured(5), (std::set<int>{ColAreaName, ColIndicator, ColUnit}));
    ShowGlobalColor = false;
    EXPECT_EQ(coloured(5), std::set<int>());
}

TEST_F(GridModelTest, FootnotesAreMarkedAndTold) {
    GridRow noted = RowOf(QStringLiteral("I"), QStringLiteral("1"));
    noted.footNId = 7;
    GridRow unknown = noted;
    unknown.footNId = 8;
    grid.InsertRows(3);
    grid.PutBlock(0, {noted, unknown, RowOf({}, QStringLiteral("2"))});
    ShowFootnotes = true;
    EXPECT_TRUE(Cell(0, ColDatavalue, GridModel::FootnoteRole).toBool());
    EXPECT_EQ(Cell(0, ColDatavalue, Qt::ToolTipRole).toString(), QStringLiteral("Provisional"));
    EXPECT_EQ(Cell(1, ColDatavalue, Qt::ToolTipRole).toString(), QString()) << "a footnote without a text";
    EXPECT_FALSE(Cell(2, ColDatavalue, GridModel::FootnoteRole).toBool());
    EXPECT_FALSE(Cell(0, ColIndicator, GridModel::FootnoteRole).toBool());
    ShowFootnotes = false;
    EXPECT_FALSE(Cell(0, ColDatavalue, GridModel::FootnoteRole).toBool());
}

TEST_F(GridModelTest, SortsTextsIgnoringCaseAndKeepsTheOrderOfEqualOnes) {
    Fill({"b", "A", "B", "a", "é", "C"});
    grid.SortInGrid(ColIndicator, true);
    EXPECT_EQ(Column(ColIndicator).left(9), QStringLiteral("A a b B C").left(9));
    EXPECT_EQ(Cell(0, ColAreaName).toString(), QStringLiteral("Area of A")) << "rows move as a whole";
    grid.SortInGrid(ColIndicator, false);
    EXPECT_TRUE(Column(ColIndicator).endsWith(QLatin1String("C b B A a")));
    grid.SortInGrid(ColAreaID, true);
    EXPECT_TRUE(Column(ColIndicator).endsWith(QLatin1String("C b B A a"))) << "all equal: nothing moves";
    grid.SortInGrid(0, true);
    grid.SortInGrid(13, true);
    EXPECT_TRUE(Column(ColIndicator).endsWith(QLatin1String("C b B A a")));
}

TEST_F(GridModelTest, SortsFiftyThousandRowsWithinHalfASecond) {
    QStringList indicators;
    for (int row = 0; row < 50000; ++row)
        indicators << QStringLiteral("Indicator %1").arg(row * 7919 % 50000, 5, 10, QLatin1Char('0'));
    Fill(indicators);
    QElapsedTimer clock;
    clock.start();
    grid.SortInGrid(ColIndicator, true);
    EXPECT_LT(clock.elapsed(), TimeBound(500));
    EXPECT_EQ(Cell(0, ColIndicator).toString(), QStringLiteral("Indicator 00000"));
    EXPECT_EQ(Cell(49999, ColIndicator).toString(), QStringLiteral("Indicator 49999"));
}

TEST_F(GridModelTest, AMillionRowsAreMadeAgainWhenLookedAt) {
    int made = 0;
    grid.SetFetch([&](qint64 first, int count) {
        ++made;
        std::vector<GridRow> rows;
        for (int place = 0; place < count; ++place)
            rows.push_back(RowOf(QString::number(first + place), {}));
        return rows;
    });
    grid.InsertRows(1000000);
    EXPECT_EQ(made, 0);
    for (int row = 0; row < 1000000; row += 50)
        ASSERT_EQ(Cell(row, ColIndicator).toInt(), row);
    EXPECT_EQ(made, 20000);
    EXPECT_EQ(Cell(999999, ColIndicator).toInt(), 999999);
    EXPECT_EQ(made, 20000) << "rows in view stay";
    EXPECT_EQ(Cell(0, ColIndicator).toInt(), 0);
    EXPECT_EQ(made, 20001) << "rows long out of view had given way";
    grid.SortInGrid(ColIndicator, false);
    EXPECT_EQ(Cell(0, ColIndicator).toInt(), 0) << "too many rows for a sort in the grid";
}

TEST_F(GridModelTest, RowsThatCannotBeMadeStayBlankAndAreNotAskedForAgain) {
    int asked = 0;
    grid.SetFetch([&](qint64, int) {
        ++asked;
        return std::vector<GridRow>();
    });
    grid.InsertRows(10);
    for (int row = 0; row < 10; ++row)
        EXPECT_EQ(Cell(row, ColIndicator).toString(), QString());
    EXPECT_EQ(asked, 1);
}

TEST_F(GridModelTest, RemovedRowsCloseUpWhateverTheOrderOfRemovals) {
    std::mt19937 random(7);
    for (int round = 0; round < 20; ++round) {
        QStringList left;
        for (int row = 0; row < 120; ++row)
            left << QString::number(row);
        Fill(left);
        const bool sorted = round % 2 == 1;
        if (sorted) {
            grid.SortInGrid(ColIndicator, false);
            left = Column(ColIndicator).split(QLatin1Char(' '));
        }
        while (left.size() > 3) {
            std::set<int> rows;
            for (int n = 0; n < 1 + round % 5; ++n)
                rows.insert(static_cast<int>(random() % static_cast<unsigned>(left.size())));
            grid.RemoveRows({rows.begin(), rows.end()});
            for (auto row = rows.rbegin(); row != rows.rend(); ++row)
                left.removeAt(*row);
            ASSERT_EQ(Column(ColIndicator), left.join(QLatin1Char(' '))) << "round " << round;
        }
        EXPECT_EQ(grid.RemovedRows(), 120 - left.size());
        EXPECT_EQ(grid.QueryRows(), 120);
    }
}

TEST_F(GridModelTest, RowsOutsideTheGridCannotBeRemoved) {
    Fill({"a", "b", "c"});
    grid.RemoveRows({-1, 3, 99, 1, 1});
    EXPECT_EQ(Column(ColIndicator), QStringLiteral("a c"));
    grid.RemoveRows({});
    grid.InsertRows(1);
    grid.RemoveRows({3});
    EXPECT_EQ(grid.MaxRows(), 4) << "the spare row stays";
}

TEST_F(GridModelTest, ManyScatteredRowsAreRemovedAtOnce) {
    QStringList texts;
    for (int row = 0; row < 2000; ++row)
        texts << QString::number(row);
    Fill(texts);
    std::vector<int> odd;
    for (int row = 1; row < 2000; row += 2)
        odd.push_back(row);
    grid.RemoveRows(odd);
    EXPECT_EQ(grid.ValueRows(), 1000);
    EXPECT_EQ(Cell(999, ColIndicator).toString(), QStringLiteral("1998"));
}

TEST_F(GridModelTest, RowsThatCameAfterARemovalStandInTheirPlaces) {
    Fill({"a", "b", "c"});
    grid.RemoveRows({0});
    grid.InsertRows(2);
    grid.PutBlock(3, {RowOf("d", {}), RowOf("e", {})});
    EXPECT_EQ(Column(ColIndicator), QStringLiteral("b c d e"));
}

TEST_F(GridModelTest, AppendedRowsAreMadeWhenLookedAt) {
    Fill({"a", "b"});
    grid.RemoveRows({1});
    grid.SetFetch([](qint64 first, int count) {
        std::vector<GridRow> rows;
        for (int n = 0; n < count; ++n)
            rows.push_back(RowOf(QStringLiteral("q%1").arg(first + n), {}));
        return rows;
    });
    grid.AppendRows(2);
    EXPECT_EQ(Column(ColIndicator), QStringLiteral("q0 q2 q3"));
    grid.SortInGrid(ColIndicator, false);
    grid.AppendRows(1);
    EXPECT_EQ(Column(ColIndicator), QStringLiteral("q3 q2 q0 q4"));
    grid.SetFetch({});
}

} // namespace

} // namespace tessaro::test
