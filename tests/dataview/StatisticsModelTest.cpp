#include "dataview/StatisticsModel.h"

#include "session/Session.h"
#include "support/TestSession.h"
#include "support/TimeBound.h"

#include <QAbstractItemModelTester>
#include <QBrush>
#include <QElapsedTimer>

namespace tessaro::test {

namespace {

StatsLine Line(StatsLevel level, const char* name, bool global = false) {
    return {level,
            QLatin1String(name),
            QStringLiteral("2"),
            QStringLiteral("1"),
            QStringLiteral("3"),
            QStringLiteral("2.00"),
            QStringLiteral("1.41"),
            global};
}

class StatisticsModelTest : public SessionTest {
  protected:
    StatisticsModelTest() {
        model.SetLines({Line(StatsLevel::Indicator, "Births", true), Line(StatsLevel::Unit, "Number"),
                        Line(StatsLevel::Subpop, "Female"), Line(StatsLevel::Subpop, "Male"),
                        Line(StatsLevel::Unit, "Per cent"), Line(StatsLevel::Subpop, "Total", true),
                        Line(StatsLevel::Indicator, "Zinc"), Line(StatsLevel::Unit, "Tons")});
    }
    QVariant Cell(int row, int column, int role = Qt::DisplayRole) const {
        return model.data(model.index(row, column), role);
    }
    /// Marks and names in view.
    QString Shown() const {
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row) {
            QString marks;
            for (int column = 0; column < StatisticsModel::kNameColumn; ++column) {
                const QString picture = Cell(row, column, StatisticsModel::kMarkRole).toString();
                if (!picture.isEmpty()) marks += picture == QLatin1String("plus.bmp") ? '+' : '-';
            }
            rows << marks + Cell(row, StatisticsModel::kNameColumn).toString().trimmed();
        }
        return rows.join(QLatin1Char(' '));
    }

    StatisticsModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(StatisticsModelTest, OpensOneLevelAtATimeAndClosesAllBelow) {
    EXPECT_EQ(Shown(), QStringLiteral("+Births +Zinc"));
    model.Toggle(0);
    EXPECT_EQ(Shown(), QStringLiteral("-Births +Number +Per cent +Zinc"));
    model.Toggle(1);
    model.Toggle(4);
    EXPECT_EQ(Shown(), QStringLiteral("-Births -Number Female Male -Per cent Total +Zinc"));
    model.Toggle(0);
    EXPECT_EQ(Shown(), QStringLiteral("+Births +Zinc"));
    model.Toggle(0);
    EXPECT_EQ(Shown(), QStringLiteral("-Births +Number +Per cent +Zinc")) << "what was below opens closed";
}

TEST_F(StatisticsModelTest, WhatHasNothingBelowHasNoMarkAndStays) {
    model.Toggle(1);
    EXPECT_EQ(Shown(), QStringLiteral("+Births -Zinc Tons")) << "a unit without subpopulations";
    for (const int row : {2, -1, 99})
        model.Toggle(row);
    EXPECT_EQ(Shown(), QStringLiteral("+Births -Zinc Tons"));
}

TEST_F(StatisticsModelTest, ShadesLevelsAndColoursGlobalNamesOnly) {
    model.Toggle(0);
    model.Toggle(2);
    ShowGlobalColor = true;
    GlobalColor = 255;
    EXPECT_EQ(Cell(0, 4, Qt::BackgroundRole).value<QBrush>().color(), QColor(0xE1, 0xE1, 0xE1));
    EXPECT_EQ(Cell(1, 4, Qt::BackgroundRole).value<QBrush>().color(), QColor(0xF0, 0xF0, 0xF0));
    EXPECT_FALSE(Cell(3, 4, Qt::BackgroundRole).isValid());
    EXPECT_EQ(Cell(0, StatisticsModel::kNameColumn, Qt::ForegroundRole).value<QBrush>().color(), QColor(255, 0, 0));
    EXPECT_EQ(Cell(3, StatisticsModel::kNameColumn, Qt::ForegroundRole).value<QBrush>().color(), QColor(255, 0, 0));
    EXPECT_FALSE(Cell(1, StatisticsModel::kNameColumn, Qt::ForegroundRole).isValid());
    EXPECT_FALSE(Cell(0, 5, Qt::ForegroundRole).isValid()) << "figures are not coloured";
    ShowGlobalColor = false;
    EXPECT_FALSE(Cell(0, StatisticsModel::kNameColumn, Qt::ForegroundRole).isValid());
}

TEST_F(StatisticsModelTest, FiguresStandToTheRightInEveryScript) {
    for (int column = StatisticsModel::kNameColumn + 1; column < StatisticsModel::MaxCols; ++column) {
        const auto align = Cell(0, column, Qt::TextAlignmentRole).value<Qt::Alignment>();
        EXPECT_TRUE(align.testFlag(Qt::AlignRight) && align.testFlag(Qt::AlignAbsolute)) << column;
    }
}

TEST_F(StatisticsModelTest, ManyLinesOpenAtOnce) {
    std::vector<StatsLine> lines;
    for (int indicator = 0; indicator < 200; ++indicator) {
        lines.push_back(Line(StatsLevel::Indicator, "I"));
        for (int unit = 0; unit < 10; ++unit) {
            lines.push_back(Line(StatsLevel::Unit, "U"));
            lines.insert(lines.end(), 5, Line(StatsLevel::Subpop, "S"));
        }
    }
    StatisticsModel large; // without the tester, which looks at every row after every change
    QElapsedTimer clock;
    clock.start();
    large.SetLines(std::move(lines));
    for (int row = large.rowCount() - 1; row >= 0; --row)
        large.Toggle(row);
    for (int row = large.rowCount() - 1; row >= 0; --row)
        if (large.LevelOf(row) == StatsLevel::Unit) large.Toggle(row);
    EXPECT_EQ(large.rowCount(), 200 * (1 + 10 * 6));
    EXPECT_LT(clock.elapsed(), TimeBound(500));
}

} // namespace

} // namespace tessaro::test
