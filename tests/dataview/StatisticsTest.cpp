#include "dataview/Statistics.h"

#include "session/Query.h"
#include "session/Session.h"
#include "support/SelectionTest.h"

#include <QMap>

#include <cmath>

namespace tessaro::test {

namespace {

class StatisticsTest : public SelectionTest {
  protected:
    /// One selected pair of combination and source, with names of its own.
    void Ius(int ius, const QString& indicatorGId, const QString& indicator, const QString& unit, const QString& subpop,
             const QString& unitGId = {}, const QString& subpopGId = {}) {
        Run(QStringLiteral("INSERT INTO _SelIUSNId (IUSNId, IndicatorGId, [Indicator], UnitGId, Unit, SubpopGId, "
                           "Subpop, SourceNId, Source, RecommendedSource, Deleted) VALUES (%1, '%2', '%3', '%4', '%5', "
                           "'%6', '%7', 1, 'Census', False, False)")
                .arg(QString::number(ius), indicatorGId, indicator,
                     unitGId.isEmpty() ? QLatin1Char('U') + unit : unitGId, unit,
                     subpopGId.isEmpty() ? QLatin1Char('S') + subpop : subpopGId, subpop));
    }
    void Values(int ius, const QStringList& values) {
        int area = 0;
        for (const QString& value : values)
            AddData(1, ++area, ius, QLatin1Char('\'') + value + QLatin1Char('\''));
    }
    static QString Shown(const StatsLine& line) {
        return QStringList{QString(static_cast<int>(line.level), QLatin1Char('>')) + line.name,
                           line.count,
                           line.minimum,
                           line.maximum,
                           line.average,
                           line.deviation}
            .join(QLatin1Char(' '));
    }
    static QStringList Lines(const QString& filter = {}) {
        QStringList shown;
        for (const StatsLine& line : ReadStatistics(filter))
            shown << Shown(line);
        return shown;
    }
};

/// The figures of one group worked out from the bare values, without the engine's aggregates.
struct ByHand {
    std::vector<double> values;

    [[nodiscard]] QString Average() const { return QString::number(Mean(), 'f', 2); }
    [[nodiscard]] QString Deviation() const {
        double squares = 0;
        for (const double value : values)
            squares += (value - Mean()) * (value - Mean());
        return QString::number(std::sqrt(squares / static_cast<double>(values.size() - 1)), 'f', 2);
    }
    [[nodiscard]] double Mean() const {
        double sum = 0;
        for (const double value : values)
            sum += value;
        return sum / static_cast<double>(values.size());
    }
};

TEST_F(StatisticsTest, OneCombinationGivesThreeLinesOfEqualFigures) {
    SelectTimes(1);
    SelectAreas(4);
    Ius(1, QStringLiteral("I1"), QStringLiteral("Births"), QStringLiteral("Number"), QStringLiteral("Total"));
    Values(1, {"10", "9", "100", "2.5"});
    // 9 is less than 10 and 100: the values are compared as numbers, though they are texts.
    EXPECT_EQ(Lines(), (QStringList{"Births 4 2.5 100 30.38 46.54", ">Number 4 2.5 100 30.38 46.54",
                                    ">>Total 4 2.5 100 30.38 46.54"}));
}

TEST_F(StatisticsTest, PutsEveryLineBelowItsParent) {
    SelectTimes(1);
    SelectAreas(3);
    Ius(1, QStringLiteral("I2"), QStringLiteral("Zinc"), QStringLiteral("Tons"), QStringLiteral("Total"));
    Ius(2, QStringLiteral("I1"), QStringLiteral("Births"), QStringLiteral("Per cent"), QStringLiteral("Male"));
    Ius(3, QStringLiteral("I1"), QStringLiteral("Births"), QStringLiteral("Number"), QStringLiteral("Total"));
    Ius(4, QStringLiteral("I1"), QStringLiteral("Births"), QStringLiteral("Per cent"), QStringLiteral("Female"));
    for (int ius = 1; ius <= 4; ++ius)
        Values(ius, {QString::number(ius), QString::number(ius + 2)});
    EXPECT_EQ(Lines(), (QStringList{"Births 6 2 6 4.00 1.41", ">Number 2 3 5 4.00 1.41", ">>Total 2 3 5 4.00 1.41",
                                    ">Per cent 4 2 6 4.00 1.63", ">>Female 2 4 6 5.00 1.41", ">>Male 2 2 4 3.00 1.41",
                                    "Zinc 2 1 3 2.00 1.41", ">Tons 2 1 3 2.00 1.41", ">>Total 2 1 3 2.00 1.41"}));
}

TEST_F(StatisticsTest, KeepsIndicatorsOfOneNameApart) {
    SelectTimes(1);
    SelectAreas(2);
    Ius(1, QStringLiteral("-A"), QStringLiteral("Births"), QStringLiteral("Number"), QStringLiteral("Total"));
    Ius(2, QStringLiteral("B"), QStringLiteral("Births"), QStringLiteral("Number"), QStringLiteral("Total"));
    Values(1, {"1", "3"});
    Values(2, {"5", "7"});
    const std::vector<StatsLine> lines = ReadStatistics({});
    ASSERT_EQ(lines.size(), 6U);
    for (const std::size_t indicator : {std::size_t{0}, std::size_t{3}}) {
        EXPECT_EQ(lines[indicator].level, StatsLevel::Indicator);
        EXPECT_EQ(lines[indicator + 1].level, StatsLevel::Unit);
        EXPECT_EQ(lines[indicator + 2].level, StatsLevel::Subpop);
        EXPECT_EQ(lines[indicator + 2].average, lines[indicator].average) << "a line stands below the other indicator";
    }
    EXPECT_NE(lines[0].average, lines[3].average);
    EXPECT_NE(lines[0].isGlobal, lines[3].isGlobal);
}

TEST_F(StatisticsTest, LeavesOutWhatIsNotInView) {
    SelectTimes(1);
    SelectAreas(4);
    Ius(1, QStringLiteral("I1"), QStringLiteral("Births"), QStringLiteral("Number"), QStringLiteral("Total"));
    Ius(2, QStringLiteral("I2"), QStringLiteral("Deaths"), QStringLiteral("Number"), QStringLiteral("Total"));
    Values(1, {"10", "20", "30", "90"});
    Values(2, {"1", "2", "3", "4"});
    Run(QStringLiteral("UPDATE _SelIUSNId SET [Deleted] = True WHERE IUSNId = 2"));
    EXPECT_EQ(Lines().front(), QStringLiteral("Births 4 10 90 37.50 35.94"));
    EXPECT_EQ(Lines().size(), 3) << "the pair that was taken out has no line";
    struct Case {
        const char* filter;
        const char* indicator;
    };
    for (const Case& c :
         {Case{" AND D.RowNID not in(4) ", "Births 3 10 30 20.00 10.00"},
          Case{" AND (D.Datavalue >= 15 AND D.Datavalue <= 100)", "Births 3 20 90 46.67 37.86"},
          Case{" AND D.RowNId in (1,2) ", "Births 2 10 20 15.00 7.07"},
          Case{" AND D.RowNID not in(4)  AND (D.Datavalue >= 15 AND D.Datavalue <= 100)", "Births 2 20 30 25.00 7.07"}})
        EXPECT_EQ(Lines(QLatin1String(c.filter)).value(0), QLatin1String(c.indicator)) << c.filter;
    EXPECT_TRUE(Lines(QStringLiteral(" AND D.RowNId in (0) ")).isEmpty());
}

TEST_F(StatisticsTest, ValuesThatAreNoNumbersAreNamedAndLeftOut) {
    SelectTimes(1);
    SelectAreas(6);
    Ius(1, QStringLiteral("I1"), QStringLiteral("Births"), QStringLiteral("Number"), QStringLiteral("Total"));
    Ius(2, QStringLiteral("I2"), QStringLiteral("Deaths"), QStringLiteral("Number"), QStringLiteral("Total"));
    Values(1, {"10", "n/a", "30", "1,5", "nan", ""});
    Values(2, {"1", "3"});
    AddData(1, 3, 2, QStringLiteral("Null"));
    EXPECT_EQ(Lines().value(0), QStringLiteral("Births 2 10 30 20.00 14.14"));
    EXPECT_EQ(Lines().value(3), QStringLiteral("Deaths 2 1 3 2.00 1.41")) << "the other indicator stands as it is";
    const UnreadableValues values = FindUnreadableValues({});
    EXPECT_EQ(values.count, 4) << "a value that is missing is none of them";
    ASSERT_EQ(values.first.size(), 3U);
    for (const UnreadableValues::Value& value : values.first) {
        EXPECT_EQ(value.indicator, QStringLiteral("Births"));
        EXPECT_EQ(value.timePeriod, QStringLiteral("2001"));
        if (value.text == QLatin1String("n/a")) {
            EXPECT_EQ(value.area, QStringLiteral("Area 2"));
        }
    }
    EXPECT_EQ(FindUnreadableValues(QStringLiteral(" AND D.RowNID not in(2) ")).count, 3) << "under the row filter";
    Run(QStringLiteral("DELETE * FROM Data WHERE IUSNId = 1"));
    EXPECT_EQ(FindUnreadableValues({}).count, 0);
}

TEST_F(StatisticsTest, ASingleValueHasNoDeviation) {
    SelectTimes(1);
    SelectAreas(1);
    Ius(1, QStringLiteral("I1"), QStringLiteral("Births"), QStringLiteral("Number"), QStringLiteral("Total"));
    Values(1, {"0.5"});
    for (const StatsLine& line : ReadStatistics({})) {
        EXPECT_EQ(line.average, QStringLiteral(".50"));
        EXPECT_EQ(line.deviation, QString());
    }
}

/// The sample database, opened as the program opens it.
using StatisticsSampleTest = SessionTest;

TEST_F(StatisticsSampleTest, AgreesWithTheBareValues) {
    ASSERT_TRUE(OpenSample());
    Execute(
        QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) SELECT TimePeriodNId, TimePeriod FROM "
                       "TimePeriod"));
    Execute(QStringLiteral("INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel) SELECT AreaGId, "
                           "AreaNId, AreaID, AreaName, AreaLevel FROM Area"));
    Execute(QStringLiteral(
        "INSERT INTO _SelIUSNId (IUSNId, IndicatorGId, [Indicator], UnitGId, Unit, SubpopGId, Subpop, SourceNId, "
        "Source, "
        "RecommendedSource, Deleted) SELECT DISTINCT D.IUSNId, I.IndicatorGId, I.[Indicator], U.UnitGId, U.Unit, "
        "S.SubpopGId, S.Subpop, D.SourceNId, 'any', False, False FROM (((Data AS D INNER JOIN Indicator_Unit_Subpop AS "
        "X "
        "ON D.IUSNId = X.IUSNId) INNER JOIN [Indicator] AS I ON X.IndicatorGId = I.IndicatorGId) INNER JOIN Unit AS U "
        "ON "
        "X.UnitGId = U.UnitGId) INNER JOIN Subpop AS S ON X.SubpopGId = S.SubpopGId"));
    QMap<QString, ByHand> byHand;
    for (Records rows =
             Select(QStringLiteral("SELECT I.[Indicator], D.Datavalue FROM (Data AS D INNER JOIN "
                                   "Indicator_Unit_Subpop AS X ON D.IUSNId = X.IUSNId) INNER JOIN [Indicator] "
                                   "AS I ON X.IndicatorGId = I.IndicatorGId"));
         !rows.atEnd(); rows.MoveNext())
        byHand[rows.Text(std::size_t{0})].values.push_back(rows.Text(std::size_t{1}).toDouble());
    ASSERT_GE(byHand.size(), 2);
    qsizetype indicators = 0;
    for (const StatsLine& line : ReadStatistics({})) {
        if (line.level != StatsLevel::Indicator) continue;
        ++indicators;
        const ByHand& group = byHand[line.name];
        ASSERT_GE(group.values.size(), 2U);
        EXPECT_EQ(line.count.toULongLong(), group.values.size()) << line.name.toStdString();
        EXPECT_EQ(line.minimum.toDouble(), *std::ranges::min_element(group.values));
        EXPECT_EQ(line.maximum.toDouble(), *std::ranges::max_element(group.values));
        EXPECT_EQ(line.average, group.Average()) << line.name.toStdString();
        EXPECT_EQ(line.deviation, group.Deviation()) << line.name.toStdString();
    }
    EXPECT_EQ(indicators, byHand.size());
}

} // namespace

} // namespace tessaro::test
