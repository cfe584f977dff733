#include "calculate/WorkingTables.h"

#include "CalculationTest.h"
#include "support/DataChanges.h"

#include <random>
#include <tuple>

namespace tessaro {

namespace {

class WorkingTablesTest : public test::CalculationTest {
  protected:
    static QStringList Rows(const QString& sql) {
        QStringList rows;
        for (Records records = Select(sql); !records.atEnd(); records.MoveNext()) {
            QStringList fields;
            for (std::size_t i = 0; i < records.rows().FieldCount(); ++i)
                fields << records.Text(i);
            rows << fields.join(QLatin1Char('|'));
        }
        rows.sort();
        return rows;
    }
    static QStringList Kept() {
        return Rows(QStringLiteral(
            "SELECT AreaId, [Indicator], Subpop, TimePeriod, Source, Unit, DataValue FROM CalcTempNew2"));
    }
    static int CountOf(const QString& sql) { return static_cast<int>(Select(sql).Number(std::size_t{0})); }
};

QString LineOf(const test::DataRow& row) {
    return QStringList{row.area, row.indicator, row.subpop, row.time, row.source, row.unit, row.value}.join(
        QLatin1Char('|'));
}

/// The rule worked out by hand: the highest of time, then source, then unit.
QStringList KeptByHand(const std::vector<test::DataRow>& rows) {
    using Rank = std::tuple<QString, QString, QString>;
    const auto rank = [](const test::DataRow& row) { return Rank(row.time, row.source, row.unit); };
    std::map<QStringList, Rank> best;
    for (const test::DataRow& row : rows) {
        Rank& held = best[{row.area, row.indicator, row.subpop}];
        held = std::max(held, rank(row));
    }
    QStringList kept;
    for (const test::DataRow& row : rows)
        if (best[{row.area, row.indicator, row.subpop}] == rank(row)) kept << LineOf(row);
    kept.sort();
    return kept;
}

const QString kAll = QStringLiteral("('A' , 'B')");

} // namespace

TEST_F(WorkingTablesTest, DataIsTheViewWhenTheViewHasChanged) {
    test::ChangeData(
        QStringLiteral("INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile) SELECT "
                       "AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile FROM Area WHERE AreaNId <> 4"));
    test::ChangeData(QStringLiteral("INSERT INTO _SelTimePeriod SELECT TimePeriodNId, TimePeriod FROM TimePeriod"));
    test::ChangeData(QStringLiteral("INSERT INTO _SelIUSNId (IUSNId, IndicatorGId, [Indicator], UnitGId, Unit, "
                                    "SubpopGId, Subpop, SourceNId, Source, "
                                    "RecommendedSource, Deleted) VALUES (1, '-POP', 'Population', '-NUM', 'Number', "
                                    "'-TOT', 'Total', 1, 'Census', True, "
                                    "False)"));
    Put({{QStringLiteral("OLD"), QStringLiteral("Old"), QStringLiteral("1")}});
    bDataChanged = false;
    EXPECT_TRUE(CreateDataTable());
    EXPECT_EQ(CountOf(QStringLiteral("SELECT Count(*) FROM _Data")), 1) << "nothing has changed";
    bDataChanged = true;
    std::vector<int> steps;
    EXPECT_TRUE(CreateDataTable([&](int step, int of) { steps.push_back(10 * step + of); }));
    EXPECT_FALSE(bDataChanged);
    EXPECT_EQ(steps, (std::vector{12, 22}));
    EXPECT_EQ(Rows(QStringLiteral("SELECT AreaId, TimePeriod, DataValue FROM _Data")),
              Rows(QStringLiteral(
                  "SELECT A.AreaID, T.TimePeriod, D.Datavalue FROM (Data D INNER JOIN Area A ON D.AreaNId = "
                  "A.AreaNId) INNER JOIN TimePeriod T ON D.TimePeriodNId = T.TimePeriodNId WHERE D.IUSNId = 1 "
                  "AND D.SourceNId = 1 AND A.AreaNId <> 4")));
    test::ChangeData(QStringLiteral("UPDATE _SelIUSNId SET Deleted = True"));
    bDataChanged = true;
    EXPECT_TRUE(CreateDataTable());
    EXPECT_EQ(CountOf(QStringLiteral("SELECT Count(*) FROM _Data")), 0) << "what is taken out of the view stays out";
}

TEST_F(WorkingTablesTest, OneRecordIsPickedByTimeThenSourceThenUnit) {
    const QString a = QStringLiteral("A"), b = QStringLiteral("B"), asi = QStringLiteral("ASI"),
                  eur = QStringLiteral("EUR");
    const QString total = QStringLiteral("Total"), year = QStringLiteral("2000");
    const std::vector<test::DataRow> rows = {
        {asi, a, QStringLiteral("1"), QStringLiteral("1990")},
        {asi, a, QStringLiteral("2"), QStringLiteral("2000")},
        {asi, a, QStringLiteral("3"), year, total, QStringLiteral("Survey")},
        {asi, a, QStringLiteral("4"), QStringLiteral("1990"), QStringLiteral("Female"), QStringLiteral("Zoo")},
        {asi, b, QStringLiteral("5"), year, total, QStringLiteral("Survey"), QStringLiteral("Number")},
        {asi, b, QStringLiteral("6"), year, total, QStringLiteral("Survey"), QStringLiteral("Percent")},
        {eur, b, QStringLiteral("7"), year, total, QStringLiteral("Survey"), QStringLiteral("Percent")},
        {eur, b, QStringLiteral("8"), year, total, QStringLiteral("Survey"), QStringLiteral("Percent")},
        {eur, a, QStringLiteral("9"), QStringLiteral("1990-1995")},
        {eur, a, QStringLiteral("10"), QStringLiteral("1990")},
    };
    Put(rows);
    Put({{eur, QStringLiteral("C"), QStringLiteral("11")}});
    ASSERT_TRUE(CreateDistinctTempTables(kAll, {}));
    EXPECT_EQ(Kept(), KeptByHand(rows));
    EXPECT_EQ(Kept().size(), 6) << Kept().join('\n').toStdString();
    ASSERT_TRUE(CreateDistinctTempTables(kAll, QStringLiteral("('Female')")));
    EXPECT_EQ(Kept(), QStringList{LineOf(rows[3])});
}

TEST_F(WorkingTablesTest, NamesThatDifferInCaseAreOneAndBlankOnesNone) {
    Put({{QStringLiteral("asi"), QStringLiteral("ÉCOLE"), QStringLiteral("1"), QStringLiteral("1990")},
         {QStringLiteral("ASI"), QStringLiteral("école"), QStringLiteral("2"), QStringLiteral("2000")}});
    ASSERT_TRUE(CreateDistinctTempTables(QStringLiteral("('École')"), {}));
    EXPECT_EQ(Kept(), QStringList{QStringLiteral("ASI|école|Total|2000|Census|Number|2")});
    Execute(QStringLiteral("UPDATE _Data SET TimePeriod = Null"));
    ASSERT_TRUE(CreateDistinctTempTables(QStringLiteral("('École')"), {}));
    EXPECT_TRUE(Kept().isEmpty()) << "no time is the highest of none";
    Execute(QStringLiteral("UPDATE _Data SET TimePeriod = '1990', Source = Null"));
    for (const int rows : {2, 1}) {
        ASSERT_TRUE(CreateDistinctTempTables(QStringLiteral("('École')"), {}));
        EXPECT_EQ(CountOf(QStringLiteral("SELECT Count(*) FROM CalcTempNew")), rows);
        EXPECT_TRUE(Kept().isEmpty()) << "nor is a source";
        Execute(QStringLiteral("DELETE FROM _Data WHERE DataValue = '1'"));
    }
}

TEST_F(WorkingTablesTest, RandomRowsAreKeptAsByHand) {
    std::mt19937 random(5);
    const auto one = [&](const char* letters, int count) {
        return QString(QLatin1Char(letters[random() % static_cast<unsigned>(count)]));
    };
    std::vector<test::DataRow> rows;
    for (int i = 0; i < 400; ++i)
        rows.push_back({one("CDEFGHIJ", 8), one("AB", 2), QString::number(i), one("123", 3), one("TFM", 3),
                        one("xyz", 3), one("uv", 2)});
    Put(rows);
    for (const char* index : {"", "CREATE INDEX ByArea ON _Data (AreaId, [Indicator])"}) {
        if (*index) Execute(QString::fromLatin1(index));
        ASSERT_TRUE(CreateDistinctTempTables(kAll, {}));
        EXPECT_EQ(Kept(), KeptByHand(rows));
    }
    ASSERT_TRUE(CreateFormulaTables(QStringLiteral("('A{}T' , 'B{}F')")));
    std::erase_if(rows, [](const test::DataRow& row) {
        return row.indicator + row.subpop != QLatin1String("AT") && row.indicator + row.subpop != QLatin1String("BF");
    });
    EXPECT_EQ(Rows(QStringLiteral(
                  "SELECT AreaId, [Indicator], Subpop, TimePeriod, Source, Unit, DataValue FROM FormulaTempNew2")),
              KeptByHand(rows));
}

TEST_F(WorkingTablesTest, ListsHoldEachNameOnceAndWholeItemsAllTheirSubgroups) {
    CalculationDraft draft;
    draft.showSubpop = true;
    draft.items = {{QStringLiteral("it's"), QStringLiteral("Total")},
                   {QStringLiteral("it's"), QStringLiteral("Female")}};
    draft.denominators = {{QStringLiteral("B"), QStringLiteral("Total")}};
    DistinctRecords lists = ListsOf(draft);
    EXPECT_EQ(lists.indicators, QStringLiteral("('it''s' , 'B')"));
    EXPECT_EQ(lists.subpops, QStringLiteral("('Total' , 'Female')"));
    EXPECT_EQ(lists.pairs, QStringLiteral("('it''s{}Total' , 'it''s{}Female')"));
    EXPECT_EQ(lists.allPairs, QStringLiteral("('it''s{}Total' , 'it''s{}Female' , 'B{}Total')"));
    Put({{QStringLiteral("ASI"), QStringLiteral("B"), QStringLiteral("1"), {}, QStringLiteral("Male")}});
    draft.denominators = {{QStringLiteral("b"), {}}};
    lists = ListsOf(draft);
    EXPECT_EQ(lists.subpops, QString()) << "one item takes all subgroups";
    EXPECT_EQ(lists.denominators, QStringLiteral("('b{}Male')"));
}

TEST_F(WorkingTablesTest, DroppingLeavesNothing) {
    Put({{QStringLiteral("ASI"), QStringLiteral("A"), QStringLiteral("1")}});
    ASSERT_TRUE(CreateDistinctTempTables(kAll, {}));
    ASSERT_TRUE(CreateFormulaTables(QStringLiteral("('A{}Total')")));
    EXPECT_EQ(TablesLeft().size(), 8) << TablesLeft().join(' ').toStdString();
    DropAllWorkingTables();
    DropAllWorkingTables();
    EXPECT_EQ(TablesLeft(), QStringList());
}

} // namespace tessaro
