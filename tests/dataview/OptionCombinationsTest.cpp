#include "database/Database.h"
#include "dataview/DataOptions.h"
#include "dataview/GridQuery.h"
#include "dataview/Statistics.h"
#include "platform/Paths.h"
#include "session/Query.h"
#include "session/Session.h"
#include "support/TestSession.h"
#include "view/DataFilters.h"
#include "view/InView.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <sqlite3.h>
#include <vector>

namespace tessaro::test {

namespace {

/// The options that can be on at the same time, one bit each.
enum OptionBit : unsigned {
    SourceOut = 1,
    UnitOut = 2,
    SubpopOut = 4,
    RowsOut = 8,
    MostRecent = 16,
    ValueRange = 32,
    MissingData = 64,
    AllOptions = 127
};

constexpr double kFrom = 50;
constexpr double kTo = 20'000'000;
constexpr const char* kAreas = "'Brazil', 'India', 'France', 'Zambia', 'Alabama', 'California', 'Texas'";
constexpr const char* kPeriods = "'1960', '2007', '2013', '2015', '2016'";
constexpr const char* kCombinations = "6, 44, 48, 52, 53, 62, 63";

/// The sample database twice: as the program has it open, and as a bare file for statements that know nothing of the
/// program. Two countries' worth of sources, two units and two subgroups of one indicator.
class OptionCombinationsTest : public SessionTest {
  protected:
    void SetUp() override {
        StartInstallation();
        const QString file = FindPath(JoinPath({AppPath, QStringLiteral("Data/Tessaro World.mdb")}));
        ASSERT_TRUE(OpenDatabaseFile(file));
        ASSERT_EQ(sqlite3_open_v2(file.toUtf8().constData(), &plain_, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
        SelectPlainly();
        SelectInProgram();
    }
    void TearDown() override { sqlite3_close(plain_); }

    void SelectInProgram() {
        Execute(QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) SELECT TimePeriodNId, "
                               "TimePeriod FROM TimePeriod WHERE TimePeriod IN (%1)")
                    .arg(QLatin1String(kPeriods)));
        Execute(QStringLiteral("INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel) SELECT AreaGId, "
                               "AreaNId, AreaID, AreaName, AreaLevel FROM Area WHERE AreaName IN (%1)")
                    .arg(QLatin1String(kAreas)));
        const auto pairs = Plainly(QStringLiteral(
            "SELECT DISTINCT Cells.IUSNId, I.IndicatorGId, I.Indicator, U.UnitGId, U.Unit, S.SubpopGId, "
            "S.Subpop, Q.SourceNId, Q.Source FROM Cells JOIN Indicator_Unit_Subpop X USING (IUSNId) JOIN "
            "Indicator_en I USING (IndicatorGId) JOIN Unit_en U USING (UnitGId) JOIN Subpop_en S USING "
            "(SubpopGId) JOIN Source_en Q USING (SourceNId)"));
        for (const QStringList& pair : pairs)
            Execute(QStringLiteral(
                        "INSERT INTO _SelIUSNId (IUSNId, IndicatorGId, [Indicator], UnitGId, Unit, SubpopGId, Subpop, "
                        "SourceNId, Source, RecommendedSource, Deleted) VALUES (%1, '%2', '%3', '%4', '%5', '%6', "
                        "'%7', %8, '%9', False, False)")
                        .arg(pair[0], pair[1], pair[2], pair[3], pair[4], pair[5], pair[6], pair[7], pair[8]));
    }

    void SelectPlainly() {
        Plainly(QStringLiteral("CREATE TEMP TABLE Areas AS SELECT * FROM Area_en WHERE AreaName IN (%1)")
                    .arg(QLatin1String(kAreas)));
        Plainly(QStringLiteral("CREATE TEMP TABLE Periods AS SELECT * FROM TimePeriod WHERE TimePeriod IN (%1)")
                    .arg(QLatin1String(kPeriods)));
        // The values of the selection alone: what they are asked is asked a thousand times.
        Plainly(QStringLiteral("CREATE TEMP TABLE Cells AS SELECT D.* FROM Data D JOIN Areas USING (AreaNId) JOIN "
                               "Periods USING (TimePeriodNId) WHERE D.IUSNId IN (%1)")
                    .arg(QLatin1String(kCombinations)));
        Plainly(QStringLiteral("CREATE INDEX temp.CellPlaces ON Cells (IUSNId, AreaNId, TimePeriodNId, SourceNId)"));
        Plainly(QStringLiteral("CREATE TEMP TABLE Pairs AS SELECT DISTINCT D.IUSNId, D.SourceNId, X.UnitGId, "
                               "X.SubpopGId, X.IndicatorGId, 0 AS Gone FROM Cells D JOIN Indicator_Unit_Subpop X "
                               "USING (IUSNId) WHERE D.IUSNId IN (%1)")
                    .arg(QLatin1String(kCombinations)));
    }

    /// Rows of a bare statement; a missing value is an empty text.
    std::vector<QStringList> Plainly(const QString& sql) {
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(plain_, sql.toUtf8().constData(), -1, &statement, nullptr), SQLITE_OK)
            << sqlite3_errmsg(plain_) << sql.toStdString();
        std::vector<QStringList> rows;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            QStringList row;
            for (int column = 0; column < sqlite3_column_count(statement); ++column)
                row << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)));
            rows.push_back(row);
        }
        sqlite3_finalize(statement);
        return rows;
    }

    /// The panels of a view in which nothing was taken out before.
    void TakeOut(unsigned options) {
        Execute(QStringLiteral("UPDATE _SelIUSNId SET [Deleted] = False"));
        Plainly(QStringLiteral("UPDATE Pairs SET Gone = 0"));
        DataOptions panels;
        for (const OptionList list : {OptionList::Sources, OptionList::Units, OptionList::Subpops})
            EXPECT_GE(panels.LoadDataInto_SOURCES_UNIT_SUBPOPS(list).size(), 3U);
        if (options & SourceOut) {
            EXPECT_TRUE(panels.RemoveIndicatorFromSel(OptionList::Sources, {"IS_48_4", "IS_6_1"}));
            Plainly(QStringLiteral("UPDATE Pairs SET Gone = 1 WHERE (IUSNId = 48 AND SourceNId = 4) OR (IUSNId = 6 "
                                   "AND SourceNId = 1)"));
        }
        if (options & UnitOut) {
            EXPECT_TRUE(panels.RemoveIndicatorFromSel(OptionList::Units, {"IU_HOUSEHOLD_INCOME_-U_HOUSEHOLDS"}));
            Plainly(QStringLiteral("UPDATE Pairs SET Gone = 1 WHERE IndicatorGId = 'HOUSEHOLD_INCOME' AND UnitGId = "
                                   "'-U_HOUSEHOLDS'"));
        }
        if (options & SubpopOut) {
            EXPECT_TRUE(panels.RemoveIndicatorFromSel(OptionList::Subpops, {"IS_HOUSEHOLD_INCOME_SP_G02"}));
            Plainly(QStringLiteral("UPDATE Pairs SET Gone = 1 WHERE IndicatorGId = 'HOUSEHOLD_INCOME' AND SubpopGId "
                                   "= 'SP_G02'"));
        }
    }

    static DataFilters FiltersOf(unsigned options) {
        return {.MostRecentOn = (options & MostRecent) != 0,
                .MissingDataOn = (options & MissingData) != 0,
                .ValueRangeOn = (options & ValueRange) != 0,
                .DataValueFrom = kFrom,
                .DataValueTo = kTo};
    }

    /// What the screen does before it opens the grid's statement.
    static void Prepare(const DataFilters& filters) {
        DeletedRowNIds.clear();
        MostRecentClause.clear();
        if (filters.MostRecentOn && MakeMostRecentTables()) SetMostRecentClause();
        if (filters.MissingDataOn) {
            ASSERT_TRUE(MakeMissingDataTable());
        }
        RowFilter = BuildRowFilter(filters);
    }

    /// Numbers of Data's rows that the options let through, by a statement of its own.
    std::vector<qint64> RowsByHand(unsigned options, const std::vector<qint64>& removed) {
        QString sql = QStringLiteral(
            "SELECT D.RowNId FROM Cells D JOIN Pairs ON Pairs.IUSNId = D.IUSNId AND Pairs.SourceNId = D.SourceNId AND "
            "Gone = 0 JOIN Areas USING (AreaNId) JOIN Periods P USING (TimePeriodNId) WHERE 1");
        if (options & ValueRange)
            sql += QStringLiteral(" AND CAST(D.Datavalue AS REAL) BETWEEN %1 AND %2").arg(kFrom).arg(kTo, 0, 'f', 0);
        if (options & MostRecent)
            sql += QStringLiteral(
                " AND P.TimePeriod = (SELECT MAX(L.TimePeriod) FROM Cells E JOIN Periods L USING (TimePeriodNId) WHERE "
                "E.IUSNId = D.IUSNId AND E.AreaNId = D.AreaNId)");
        std::vector<qint64> rows;
        for (const QStringList& row : Plainly(sql)) {
            const qint64 number = row.front().toLongLong();
            if (std::ranges::find(removed, number) == removed.end()) rows.push_back(number);
        }
        std::ranges::sort(rows);
        return rows;
    }

    /// Cells of the selection in view that have no value.
    qint64 EmptyCellsByHand() {
        return Plainly(
                   QStringLiteral(
                       "SELECT COUNT(*) FROM Pairs, Areas, Periods LEFT JOIN Cells D ON D.IUSNId = Pairs.IUSNId AND "
                       "D.SourceNId = Pairs.SourceNId AND D.AreaNId = Areas.AreaNId AND D.TimePeriodNId = "
                       "Periods.TimePeriodNId WHERE Gone = 0 AND D.RowNId IS NULL"))
            .front()
            .front()
            .toLongLong();
    }

    struct Found {
        std::vector<qint64> rows; ///< sorted
        qint64 empty = 0;
    };
    static Found Read(const QString& statement) {
        Found found;
        Records rows = tessaro::Select(statement, jet::CursorType::ForwardOnly);
        EXPECT_TRUE(rows.isOpen()) << statement.toStdString();
        for (; !rows.atEnd(); rows.MoveNext()) {
            if (rows.IsNull(6))
                ++found.empty;
            else
                found.rows.push_back(rows.Number(std::size_t{6}));
        }
        std::ranges::sort(found.rows);
        return found;
    }

    /// Statistics count the values of the view; the lines of one level hold each value once.
    static qsizetype ValuesInStatistics() {
        qsizetype values = 0;
        for (const StatsLine& line : ReadStatistics(RowFilter))
            if (line.level == StatsLevel::Subpop) values += line.count.toLongLong();
        return values;
    }

    sqlite3* plain_ = nullptr;
};

std::string NameOf(unsigned options) {
    std::string name;
    for (const auto& [bit, word] :
         {std::pair(SourceOut, "source "), std::pair(UnitOut, "unit "), std::pair(SubpopOut, "subgroup "),
          std::pair(RowsOut, "rows "), std::pair(MostRecent, "recent "), std::pair(ValueRange, "range "),
          std::pair(MissingData, "missing ")})
        if (options & bit) name += word;
    return name.empty() ? "nothing" : name;
}

TEST_F(OptionCombinationsTest, TheViewIsWhatEveryCombinationLetsThrough) {
    std::vector<std::vector<qint64>> seen;
    for (unsigned options = 0; options <= AllOptions; ++options) {
        SCOPED_TRACE(NameOf(options));
        TakeOut(options);
        const DataFilters filters = FiltersOf(options);
        Prepare(filters);
        const Found grid = Read(FilteredStatement({filters, {}}, DefaultDataOrderBy()));
        EXPECT_EQ(grid.rows, RowsByHand(options, {}));
        EXPECT_EQ(grid.empty, (options & MissingData) ? EmptyCellsByHand() : 0);

        // Rows go one by one once everything else is settled: the first and the last.
        std::vector<qint64> removed;
        if ((options & RowsOut) && !grid.rows.empty()) removed = {grid.rows.front(), grid.rows.back()};
        for (const qint64 row : removed)
            DeletedRowNIds += (DeletedRowNIds.isEmpty() ? QString() : QStringLiteral(",")) + QString::number(row);
        RowFilter = BuildRowFilter(filters);
        const std::vector<qint64> expected = RowsByHand(options, removed);
        EXPECT_EQ(Read(RequeryStatement(RowFilter, {})).rows, expected) << "what the later readers get";
        EXPECT_EQ(ValuesInStatistics(), static_cast<qsizetype>(expected.size()));
        if ((options & MissingData) == 0) seen.push_back(expected);
    }
    std::ranges::sort(seen);
    EXPECT_GE(std::distance(seen.begin(), std::unique(seen.begin(), seen.end())), 40) << "the options do something";
}

/// What stands in a visible column of a row of the view, as the sorts compare it.
constexpr std::array<const char*, VisibleCols> kSortedBy = {
    "P.TimePeriod",
    "A.AreaID",
    "A.AreaName",
    "I.Indicator",
    "CAST(D.Datavalue AS REAL)",
    "(SELECT Unit FROM Unit_en U WHERE U.UnitGId = Pairs.UnitGId)",
    "(SELECT Subpop FROM Subpop_en S WHERE S.SubpopGId = Pairs.SubpopGId)",
    "(SELECT Source FROM Source_en Q WHERE Q.SourceNId = Pairs.SourceNId)",
};

TEST_F(OptionCombinationsTest, EveryColumnSortsEveryCombinationBothWays) {
    for (unsigned options = 0; options <= AllOptions; ++options) {
        if (options & RowsOut) continue; // a new order brings them back
        SCOPED_TRACE(NameOf(options));
        TakeOut(options);
        const DataFilters filters = FiltersOf(options);
        Prepare(filters);
        for (int column = 1; column <= VisibleCols; ++column) {
            // The rank of each cell's text, worked out by the bare file: equal texts share one.
            const auto ranks = Plainly(
                QStringLiteral("SELECT Pairs.IUSNId, Pairs.SourceNId, A.AreaNId, P.TimePeriodNId, DENSE_RANK() OVER "
                               "(ORDER BY %1 %2) FROM Pairs JOIN Indicator_en I USING (IndicatorGId), Areas A, Periods "
                               "P LEFT JOIN Cells D ON D.IUSNId = Pairs.IUSNId AND D.SourceNId = Pairs.SourceNId AND "
                               "D.AreaNId = A.AreaNId AND D.TimePeriodNId = P.TimePeriodNId")
                    .arg(QLatin1String(kSortedBy.at(static_cast<std::size_t>(column - 1))),
                         column == ColDatavalue ? QString() : QStringLiteral("COLLATE NOCASE")));
            QHash<QString, int> rankOf;
            for (const QStringList& row : ranks)
                rankOf.insert(row.mid(0, 4).join(QLatin1Char(' ')), row[4].toInt());
            for (const bool ascending : {true, false}) {
                Records rows = tessaro::Select(FilteredStatement({filters, {}}, DataOrderByColumn(column, ascending)),
                                               jet::CursorType::ForwardOnly);
                ASSERT_TRUE(rows.isOpen());
                std::vector<int> order;
                for (; !rows.atEnd(); rows.MoveNext()) {
                    // time, area, combination, value, source
                    const QString cell = QStringLiteral("%1 %2 %3 %4")
                                             .arg(rows.Number(std::size_t{2}))
                                             .arg(rows.Number(std::size_t{4}))
                                             .arg(rows.Number(std::size_t{1}))
                                             .arg(rows.Number(std::size_t{0}));
                    ASSERT_TRUE(rankOf.contains(cell)) << cell.toStdString();
                    order.push_back(rankOf.value(cell));
                }
                const bool sorted =
                    ascending ? std::ranges::is_sorted(order) : std::ranges::is_sorted(order, std::greater());
                EXPECT_TRUE(sorted) << "column " << column << (ascending ? " up" : " down");
            }
        }
    }
}

} // namespace

} // namespace tessaro::test
