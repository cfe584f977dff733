#include "PresentationTest.h"
#include "presentation/PivotTable.h"

namespace tessaro {

namespace {

using F = PivotField;

class PivotQueryTest : public test::PresentationTest {};

RowsColumns Arranged(const RowsColumns::FieldList& rows, const RowsColumns::FieldList& columns) {
    RowsColumns arrangement;
    for (const F field : rows)
        arrangement.Place(field, Placement::Row);
    for (const F field : columns)
        arrangement.Place(field, Placement::Column);
    return arrangement;
}

int FirstInt(const QString& sql) {
    const Records records = Select(sql);
    return records.atEnd() ? -1 : static_cast<int>(records.Number(std::size_t{0}));
}

} // namespace

TEST_F(PivotQueryTest, FourForms) {
    const auto both = Arranged({F::AreaID, F::TimePeriod}, {F::Indicator, F::Subpop});
    const auto rowsOnly = Arranged({F::AreaName}, {});
    const struct {
        const RowsColumns& arrangement;
        bool footnotes;
        const char* start;
        const char* end;
    } cases[] = {
        {both, false, "TRANSFORM First([D].[Datavalue]) AS Expr2  SELECT A.AreaID,T.TimePeriod FROM _Subpop AS SP ",
         " GROUP BY A.AreaID,T.TimePeriod PIVOT Cstr(I.IndicatorNId)+ '{{}}' +Cstr(SP.SubpopNId)"},
        {both, true,
         "TRANSFORM First(IIf(IsNull([D].[FootNoteNId]) Or [D].[FootNoteNId] = 0,[D].[Datavalue],[D].[Datavalue] & "
         "'{{}}' & [D].[FootNoteNId])) AS Expr2  SELECT A.AreaID,T.TimePeriod FROM ",
         " PIVOT Cstr(I.IndicatorNId)+ '{{}}' +Cstr(SP.SubpopNId)"},
        {rowsOnly, false, " SELECT A.AreaName, First([D].[Datavalue]) as [Data Value]  FROM ",
         "Where (((IUS.Deleted) = False))  GROUP BY A.AreaName"},
        {rowsOnly, true,
         " SELECT A.AreaName, First(IIf(IsNull([D].[FootNoteNId]) or [D].[FootNoteNId] = 0,[D].[Datavalue],"
         "[D].[Datavalue] & '{{}}' & [D].[FootNoteNId])) as [Data Value]  FROM ",
         " GROUP BY A.AreaName"},
    };
    for (const auto& c : cases) {
        const QString sql = BuildPivotSQL(c.arrangement, c.footnotes).PivotSQL;
        EXPECT_TRUE(sql.startsWith(QLatin1String(c.start))) << sql.toStdString();
        EXPECT_TRUE(sql.endsWith(QLatin1String(c.end))) << sql.toStdString();
    }
    EXPECT_EQ(BuildPivotSQL(both, false).PivotKeyList, QStringLiteral("IUS.[Indicator]{[~]}IUS.Subpop"));
    EXPECT_TRUE(BuildPivotSQL(Arranged({}, {F::Unit}), false).PivotSQL.isEmpty());
}

TEST_F(PivotQueryTest, EachCellHoldsTheValueThatPlainSqlGives) {
    SelectEverything();
    CreateDistinctIUSTables();
    auto arrangement = Arranged({F::AreaID, F::TimePeriod, F::Source}, {F::Indicator, F::Unit, F::Subpop});
    EXPECT_TRUE(arrangement.Build_Records().empty());
    const PivotTable table = ReadPivot(BuildPivotSQL(arrangement, false));
    ASSERT_GT(table.RowCount(), 0);
    EXPECT_EQ(table.ColumnCount(), CountPivotColumns(arrangement));
    int values = 0;
    for (int row = 0; row < table.RowCount(); ++row) {
        for (int column = 0; column < table.ColumnCount(); ++column) {
            const auto& texts = table.rowTexts[static_cast<std::size_t>(row)];
            const QStringList head = table.columns[static_cast<std::size_t>(column)].head.split('\n');
            ASSERT_EQ(head.size(), 3);
            const Records found = Select(
                QStringLiteral("SELECT D.Datavalue FROM Data AS D, Area AS A, TimePeriod AS T, Source AS S, "
                               "Indicator_Unit_Subpop AS X, Indicator AS I, Unit AS U, Subpop AS SP WHERE D.AreaNId = "
                               "A.AreaNId AND D.TimePeriodNId = T.TimePeriodNId AND D.SourceNId = S.SourceNId AND "
                               "D.IUSNId = X.IUSNId AND X.IndicatorGId = I.IndicatorGId AND X.UnitGId = U.UnitGId AND "
                               "X.SubpopGId = SP.SubpopGId AND A.AreaID = '%1' AND T.TimePeriod = '%2' AND S.Source = "
                               "'%3' AND I.[Indicator] = '%4' AND U.Unit = '%5' AND SP.Subpop = '%6'")
                    .arg(texts[0], texts[1], texts[2], head[0], head[1], head[2]));
            const QString expected = found.atEnd() ? QString() : found.Text(std::size_t{0});
            EXPECT_EQ(table.cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)].value, expected);
            values += expected.isEmpty() ? 0 : 1;
        }
    }
    EXPECT_EQ(values, FirstInt(QStringLiteral("SELECT Count(*) FROM Data")));
}

TEST_F(PivotQueryTest, FootnotesComeWithTheirValues) {
    SelectEverything();
    CreateDistinctIUSTables();
    auto arrangement = Arranged({F::AreaID, F::TimePeriod, F::Source}, {F::Indicator, F::Subpop});
    const PivotTable with = ReadPivot(BuildPivotSQL(arrangement, true));
    const PivotTable without = ReadPivot(BuildPivotSQL(arrangement, false));
    ASSERT_EQ(with.cells.size(), without.cells.size());
    int notes = 0;
    for (std::size_t row = 0; row < with.cells.size(); ++row)
        for (std::size_t column = 0; column < with.columns.size(); ++column) {
            EXPECT_EQ(with.cells[row][column].value, without.cells[row][column].value);
            notes += with.cells[row][column].footnote == 1 ? 1 : 0;
        }
    EXPECT_EQ(notes, FirstInt(QStringLiteral("SELECT Count(*) FROM Data WHERE FootnoteNId = 1")));
    EXPECT_TRUE(with.HasFootnotes());
    EXPECT_FALSE(without.HasFootnotes());
}

TEST_F(PivotQueryTest, DecodesNamesAndSurvivesOddOnes) {
    SelectEverything();
    CreateDistinctIUSTables();
    const QString code =
        QString::number(FirstInt(QStringLiteral("SELECT IndicatorNId FROM _Indicator ORDER BY [Indicator]")));
    PivotHeaders headers(QStringLiteral("IUS.[Indicator]{[~]}T.TimePeriod"));
    EXPECT_EQ(headers.DecodePivotHeader(code + QStringLiteral("{{}}2")), QStringLiteral("Literacy{{}}2000"));
    EXPECT_EQ(headers.PartOf(F::Indicator, code + QStringLiteral("{{}}2")), QStringLiteral("Literacy"));
    EXPECT_EQ(headers.PartOf(F::Unit, code + QStringLiteral("{{}}2")), QString());
    EXPECT_EQ(headers.DecodePivotHeader(QStringLiteral("<>")), QString());
    EXPECT_EQ(headers.DecodePivotHeader(QStringLiteral("9999{{}}1 or 1=1{{}}7")), QStringLiteral("{{}}"));
    EXPECT_EQ(PivotHeaders(QString()).DecodePivotHeader(code), QString());
}

TEST_F(PivotQueryTest, NothingSelectedAndFailedStatementsGiveAnEmptyTable) {
    CreateDistinctIUSTables();
    const auto arrangement = Arranged({F::AreaID}, {F::Indicator});
    EXPECT_EQ(ReadPivot(BuildPivotSQL(arrangement, true)).RowCount(), 0);
    SelectEverything();
    RowFilter = QStringLiteral(" AND nonsense ");
    EXPECT_EQ(ReadPivot(BuildPivotSQL(arrangement, true)).RowCount(), 0);
    EXPECT_EQ(CountPivotColumns(arrangement), 0);
}

TEST(PivotTableTest, SplitsFootnotes) {
    const struct {
        const char* value;
        const char* number;
        qint64 footnote;
    } cases[] = {{"12.5{{}}3", "12.5", 3}, {"12.5", "12.5", 0},          {"", "", 0},     {"1{{}}", "1", 0},
                 {"1{{}}x", "1", 0},       {"a{{}}b{{}}2", "a{{}}b", 2}, {" 7 ", "7", 0}, {"{{}}4", "", 4}};
    for (const auto& c : cases)
        EXPECT_EQ(SplitFootnote(QLatin1String(c.value)), (PivotCell{QLatin1String(c.number), c.footnote})) << c.value;
}

TEST(PivotTableTest, SortsNumbersTextsThenNothing) {
    PivotTable table;
    table.columns = {{QStringLiteral("b"), {}}, {QStringLiteral("A"), {}}};
    for (const char* value : {"9", "", "nan", "-1", "inf", "10"}) {
        table.rowTexts.push_back({QLatin1String(value)});
        table.cells.push_back({{QLatin1String(value), 0}, {QStringLiteral("x"), 0}});
    }
    const auto order = [&table] {
        QStringList found;
        for (const QStringList& row : table.rowTexts)
            found << row.front();
        return found.join(',').toStdString();
    };
    table.SortRows(0, true);
    EXPECT_EQ(order(), "-1,9,10,inf,nan,");
    table.SortRows(0, false);
    EXPECT_EQ(order(), "nan,inf,10,9,-1,");
    table.SortRows(7, true);
    EXPECT_EQ(order(), "nan,inf,10,9,-1,");
    table.SortColumns();
    EXPECT_EQ(table.columns.front().head, QStringLiteral("A"));
    EXPECT_EQ(table.cells.front().back().value, QStringLiteral("nan"));
}

TEST(PivotTableTest, ColumnsAreOrderedAsPeopleCount) {
    const QStringList wanted{QStringLiteral("Households\nUnder 9,000"),
                             QStringLiteral("Households\nUnder 10,000"),
                             QStringLiteral("Households\nUnder 100,000"),
                             QStringLiteral("Households 2\nUnder 500"),
                             QStringLiteral("Households 10\nUnder 400"),
                             QStringLiteral("Share\n900"),
                             QStringLiteral("Share\n1,000")};
    PivotTable table;
    table.rowTexts = {{QStringLiteral("Area")}};
    table.cells.resize(1);
    for (const int at : {5, 2, 6, 0, 4, 1, 3}) {
        table.columns.push_back({wanted[at], {}});
        table.cells.front().push_back({QString::number(at), 0});
    }
    table.SortColumns();
    for (int i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(table.columns[static_cast<std::size_t>(i)].head, wanted[i]);
        EXPECT_EQ(table.cells.front()[static_cast<std::size_t>(i)].value, QString::number(i));
    }
}

} // namespace tessaro
