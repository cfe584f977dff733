#include "view/DataFilters.h"

#include "dataview/FilterCounter.h"
#include "dataview/GridQuery.h"
#include "jet/engine/ColumnImages.h"
#include "session/ColumnCache.h"
#include "session/Query.h"
#include "session/Session.h"
#include "support/SelectionTest.h"
#include "view/InView.h"

#include <QTemporaryDir>

#include <algorithm>

namespace tessaro::test {

namespace {

/// Two combinations with the sources 1 and 2, three areas and the periods 2001, 2002 and 2001-2002 (3).
class DataFiltersTest : public SelectionTest {
  protected:
    DataFiltersTest() {
        SelectTimes(2);
        Run(QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) VALUES (3, '2001-2002')"));
        Run(QStringLiteral("CREATE TABLE TimePeriod (TimePeriodNId LONG, TimePeriod TEXT(30))"));
        Run(QStringLiteral("INSERT INTO TimePeriod SELECT TimePeriodNId, TimePeriod FROM _SelTimePeriod"));
        SelectAreas(3);
        SelectIus(2);
        Run(QStringLiteral(
            "INSERT INTO _SelIUSNId (IUSNId, IndicatorGId, [Indicator], UnitGId, Unit, SubpopGId, Subpop, "
            "SourceNId, Source, RecommendedSource, Deleted) SELECT IUSNId, IndicatorGId, [Indicator], "
            "UnitGId, Unit, SubpopGId, Subpop, 2, 'Survey', False, False FROM _SelIUSNId"));
        // time, area, ius, value, source
        AddData(1, 1, 1, QStringLiteral("'9'"), 1);    // 1
        AddData(3, 1, 1, QStringLiteral("'10'"), 1);   // 2: "2001-2002" is behind "2001"
        AddData(2, 1, 1, QStringLiteral("'100'"), 1);  // 3: latest
        AddData(2, 1, 1, QStringLiteral("'11.5'"), 2); // 4: latest, the other source
        AddData(1, 2, 1, QStringLiteral("'-5'"), 2);   // 5: latest
        AddData(1, 1, 2, QStringLiteral("'20'"), 1);   // 6
        AddData(3, 1, 2, QStringLiteral("'1e2'"), 2);  // 7: latest
    }
    static QString RowsOf(const QString& statement) {
        std::vector<qint64> numbers;
        int blank = 0;
        Records rows = Select(statement);
        EXPECT_TRUE(rows.isOpen()) << statement.toStdString();
        for (; !rows.atEnd(); rows.MoveNext()) {
            if (rows.IsNull(6))
                ++blank;
            else
                numbers.push_back(rows.Number(std::size_t{6}));
        }
        std::ranges::sort(numbers);
        QStringList texts;
        for (const qint64 number : numbers)
            texts << QString::number(number);
        if (blank > 0) texts << QStringLiteral("+%1").arg(blank);
        return texts.join(QLatin1Char(' '));
    }
    /// The grid's statement under these filters, and RowFilter with it, as the screen goes about it.
    static QString GridStatement(const DataFilters& filters) {
        MostRecentClause.clear();
        if (filters.MostRecentOn && MakeMostRecentTables()) SetMostRecentClause();
        if (filters.MissingDataOn) {
            EXPECT_TRUE(MakeMissingDataTable());
        }
        RowFilter = BuildRowFilter(filters);
        return FilteredStatement({filters, {}}, DefaultDataOrderBy());
    }
    /// What any later reader of the view gets.
    static QString ReaderStatement() { return RequeryStatement(RowFilter, {}); }

    DataFilters filters;
};

TEST_F(DataFiltersTest, EveryFilterWithEveryOther) {
    struct Case {
        bool range, recent, missing, sourceTwoOut;
        const char* grid;
        const char* readers;
    };
    // 4 pairs of combination and source, 3 areas and 3 periods are 36 cells, 18 without source 2.
    const Case cases[] = {
        {false, false, false, false, "1 2 3 4 5 6 7", "1 2 3 4 5 6 7"},
        {true, false, false, false, "1 2 4 6", "1 2 4 6"},
        {false, true, false, false, "3 4 5 7", "3 4 5 7"},
        {true, true, false, false, "4", "4"},
        {false, false, true, false, "1 2 3 4 5 6 7 +29", "1 2 3 4 5 6 7"},
        {true, false, true, false, "1 2 4 6 +29", "1 2 4 6"},
        {false, true, true, false, "3 4 5 7 +29", "3 4 5 7"},
        {true, true, true, false, "4 +29", "4"},
        {false, false, false, true, "1 2 3 6", "1 2 3 6"},
        {true, false, false, true, "1 2 6", "1 2 6"},
        // Source 2 still decides which period is the latest of combination 2, where source 1 then has no row.
        {false, true, false, true, "3", "3"},
        {false, false, true, true, "1 2 3 6 +14", "1 2 3 6"},
        {true, false, true, true, "1 2 6 +14", "1 2 6"},
        {false, true, true, true, "3 +14", "3"},
    };
    filters.DataValueFrom = 9;
    filters.DataValueTo = 20;
    for (const Case& c : cases) {
        const std::string name =
            QStringLiteral("%1%2%3%4").arg(c.range).arg(c.recent).arg(c.missing).arg(c.sourceTwoOut).toStdString();
        Run(QStringLiteral("UPDATE _SelIUSNId SET [Deleted] = False"));
        if (c.sourceTwoOut) Run(QStringLiteral("UPDATE _SelIUSNId SET [Deleted] = True WHERE SourceNId = 2"));
        filters.ValueRangeOn = c.range;
        filters.MostRecentOn = c.recent;
        filters.MissingDataOn = c.missing;
        EXPECT_EQ(RowsOf(GridStatement(filters)), QLatin1String(c.grid)) << name;
        EXPECT_EQ(RowsOf(ReaderStatement()), QLatin1String(c.readers)) << name;

        FilterCounter counter;
        counter.Start();
        while (counter.ReadSome(2)) {
        }
        if (c.recent) {
            EXPECT_TRUE(counter.ReadMostRecent());
        }
        Records grid = Select(GridStatement(filters));
        EXPECT_EQ(counter.RowsLeft(filters), grid.rows().RecordCount()) << name;
    }
}

TEST_F(DataFiltersTest, AValueThatIsNoNumberIsPassedOverByARangeInsteadOfFailingIt) {
    AddData(1, 3, 1, QStringLiteral("'n/a'"), 1);
    AddData(2, 3, 1, QStringLiteral("Null"), 1);
    filters.ValueRangeOn = true;
    filters.DataValueFrom = -1e300;
    filters.DataValueTo = 1e300;
    EXPECT_EQ(RowsOf(GridStatement(filters)), QStringLiteral("1 2 3 4 5 6 7"));
}

TEST_F(DataFiltersTest, AValueThatIsMissingButHasANoteIsOneOfTheMissingCells) {
    AddData(2, 3, 1, QStringLiteral("Null"), 1, 7); // 8
    AddData(1, 3, 1, QStringLiteral("Null"), 1, 7); // 9: not the latest
    AddData(1, 3, 2, QStringLiteral("''"), 1, 7);   // 10
    struct Case {
        bool range, recent;
        const char* grid;
    };
    for (const Case& c : {Case{false, false, "1 2 3 4 5 6 7 8 9 10 +26"}, Case{true, false, "1 2 4 6 8 9 10 +26"},
                          Case{false, true, "3 4 5 7 8 9 10 +26"}, Case{true, true, "4 8 9 10 +26"}}) {
        filters = {.MostRecentOn = c.recent,
                   .MissingDataOn = true,
                   .ValueRangeOn = c.range,
                   .DataValueFrom = 9,
                   .DataValueTo = 20};
        EXPECT_EQ(RowsOf(GridStatement(filters)), QLatin1String(c.grid));
        FilterCounter counter;
        counter.Start();
        while (counter.ReadSome(100)) {
        }
        EXPECT_TRUE(counter.ReadMostRecent());
        EXPECT_EQ(counter.RowsLeft(filters), Select(GridStatement(filters)).rows().RecordCount()) << c.grid;
    }
}

TEST_F(DataFiltersTest, ARangeTakesWhatNumbersMadeOfTheTextsWouldTake) {
    for (const char* value : {"'1e1'", "' 15 '", "'010.0'", "'-0'", "'+12'", "'1E-2'", "'9.9999999999999999'", "'.5'"})
        AddData(1, 3, 1, QLatin1String(value), 1);
    for (const auto& [from, to] : {std::pair{10.0, 10.0}, {-5.0, 0.0}, {0.01, 12.0}, {9.5, 1e2}, {1e-3, 0.5}}) {
        filters = {.ValueRangeOn = true, .DataValueFrom = from, .DataValueTo = to};
        const QString asNumbers = QStringLiteral(" AND (Cdbl(D.Datavalue) >= %1 AND Cdbl(D.Datavalue) <= %2)")
                                      .arg(NumberText(from), NumberText(to));
        EXPECT_EQ(RowsOf(GridStatement(filters)), RowsOf(RequeryStatement(asNumbers, {}))) << from << " to " << to;
    }
}

TEST_F(DataFiltersTest, MostRecentDataWithoutAnyRowLetsNothingThrough) {
    Run(QStringLiteral("UPDATE _SelIUSNId SET [Deleted] = True"));
    ASSERT_TRUE(MakeMostRecentTables());
    SetMostRecentClause();
    RowFilter = BuildRowFilter(filters);
    Run(QStringLiteral("UPDATE _SelIUSNId SET [Deleted] = False"));
    EXPECT_EQ(RowsOf(ReaderStatement()), QString());
}

TEST_F(DataFiltersTest, ALaterPeriodOfASourceThatIsNotSelectedStillDecides) {
    Run(QStringLiteral("DELETE * FROM _SelIUSNId WHERE SourceNId = 2"));
    filters.MostRecentOn = true;
    EXPECT_EQ(RowsOf(GridStatement(filters)), QStringLiteral("3"))
        << "the rule knows combinations and areas, not sources";
}

TEST_F(DataFiltersTest, RowFilterJoinsItsPartsInOrder) {
    EXPECT_EQ(BuildRowFilter(filters), QString());
    DeletedRowNIds = QStringLiteral("5,3");
    filters.ValueRangeOn = true;
    filters.DataValueFrom = -0.5;
    filters.DataValueTo = 1234567.25;
    MostRecentClause = QStringLiteral(" AND D.RowNId in (3,4) ");
    EXPECT_EQ(BuildRowFilter(filters),
              QStringLiteral(" AND D.RowNID not in(5,3)  AND (D.Datavalue >= -0.5 AND D.Datavalue <= "
                             "1234567.25) AND D.RowNId in (3,4) "));
    DeletedRowNIds = QStringLiteral("  ");
    MostRecentClause.clear();
    filters.ValueRangeOn = false;
    EXPECT_EQ(BuildRowFilter(filters), QString()) << "a blank list takes nothing out";
}

TEST_F(DataFiltersTest, RestoreReadsTheRowsTakenOut) {
    std::vector<qint64> rows;
    for (Records found = Select(RestoreStatement(QStringLiteral("7,2"))); !found.atEnd(); found.MoveNext())
        rows.push_back(found.Number(kRestoredRowNId));
    std::ranges::sort(rows);
    EXPECT_EQ(rows, (std::vector<qint64>{2, 7}));
}

TEST_F(DataFiltersTest, TheCounterKnowsNothingUntilItHasReadEverything) {
    FilterCounter counter;
    counter.Start();
    EXPECT_TRUE(counter.ReadSome(3));
    EXPECT_EQ(counter.TotalRows(), 3);
    EXPECT_FALSE(counter.RowsLeft({}));
    while (counter.ReadSome(3)) {
    }
    EXPECT_EQ(counter.RowsLeft({}), 7);
    EXPECT_EQ(counter.Extent(), std::pair(-5.0, 100.0));
    EXPECT_EQ(counter.RowsLeft({.ValueRangeOn = true, .DataValueFrom = 100, .DataValueTo = 1e300}), 2)
        << "1e2 is a hundred too";
    EXPECT_FALSE(counter.RowsLeft({.MostRecentOn = true}));
    Run(QStringLiteral("DELETE * FROM Data"));
    counter.Start();
    EXPECT_TRUE(counter.isComplete());
    EXPECT_EQ(counter.RowsLeft({.MissingDataOn = true}), 36);
}

TEST_F(DataFiltersTest, TheCounterAsksAColumnImageWhereThereIsOne) {
    AddData(2, 2, 2, QStringLiteral("Null"), 1, 7);
    AddData(1, 1, 2, QStringLiteral("'20.5'"), 1); // beside 6
    const QTemporaryDir folder;
    jet::ColumnImages::Settings settings;
    settings.folder = folder.path().toStdString();
    settings.leastRows = 1;
    const auto images = std::make_shared<jet::ColumnImages>(std::move(settings));
    Connection->UseColumnImages(images);
    const auto start = [&](FilterCounter& counter) {
        const QString all = QStringLiteral("SELECT Count(*) AS Numbers FROM Data");
        (void)Select(all); // sees that the values have changed
        for (int i = 0; i < 10 && !RunsOnColumns(all); ++i)
            images->Wait();
        ASSERT_TRUE(RunsOnColumns(all));
        counter.Start();
    };
    FilterCounter counter;
    start(counter);
    ASSERT_TRUE(counter.isComplete()) << "without reading the rows";
    EXPECT_EQ(counter.TotalRows(), 9);
    EXPECT_EQ(counter.Extent(), std::pair(-5.0, 100.0));
    EXPECT_EQ(counter.MissingCells(), 36 - 8);
    for (const bool missing : {false, true})
        for (const auto& [from, to] : {std::pair{10.0, 100.0}, {20.0, 20.0}, {-5.0, 9.5}, {1e3, 1e4}}) {
            filters = {.MissingDataOn = missing, .ValueRangeOn = true, .DataValueFrom = from, .DataValueTo = to};
            EXPECT_EQ(counter.RowsLeft(filters), Select(GridStatement(filters)).rows().RecordCount()) << from;
        }
    AddData(1, 3, 2, QStringLiteral("'n/a'"), 1);
    start(counter);
    ASSERT_TRUE(counter.isComplete());
    EXPECT_EQ(counter.TotalRows(), 10);
    EXPECT_EQ(counter.Extent(), std::pair(-5.0, 100.0)) << "of the numbers";
    EXPECT_EQ(counter.RowsLeft({.ValueRangeOn = true, .DataValueFrom = -1e300, .DataValueTo = 1e300}), 8);
    AddData(2, 3, 2, QStringLiteral("''"), 1);
    start(counter);
    EXPECT_FALSE(counter.isComplete()) << "empty texts are counted one by one";
}

} // namespace

} // namespace tessaro::test
