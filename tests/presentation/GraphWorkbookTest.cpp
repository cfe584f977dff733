#include "presentation/GraphWorkbook.h"

#include "PresentationTest.h"
#include "office/SpreadsheetApplication.h"
#include "support/ReadXls.h"

#include <QFile>

namespace tessaro {

namespace {

using F = PivotField;
using K = office::ChartKind;

/// Real graphs, their tables read back by another reader.
class GraphWorkbookTest : public test::PresentationTest {
  protected:
    void SetUp() override {
        PresentationTest::SetUp();
        static const QTemporaryDir profile;
        office::SpreadsheetApplication::SetProfileFolder(profile.path());
        InstallTemplates();
        Run(QStringLiteral("DELETE * FROM Data"));
    }
    static void TearDownTestSuite() { office::SpreadsheetApplication::QuitAll(); }

    /// Population (1) and literacy (2) of two areas in times 1 to 3.
    static void FillTwoByTwo() {
        for (int time = 1; time <= 3; ++time)
            for (int area = 1; area <= 2; ++area) {
                AddValue(time, 1, area, 1, QString::number(20000 * time + area), time == 2 ? 1 : 0);
                AddValue(time, 2, area, 1, QString::number(70 + time + area));
            }
        SelectAreas(QStringLiteral("WHERE AreaNId < 3"));
        SelectTimes();
        SelectIus(QStringLiteral("WHERE S.SourceNId = 1"));
    }
    static void NamePeriods(const QStringList& periods) {
        for (int time = 1; time <= periods.size(); ++time)
            for (const char* table : {"TimePeriod", "_SelTimePeriod"})
                Run(QStringLiteral("UPDATE %1 SET TimePeriod = '%2' WHERE TimePeriodNId = %3")
                        .arg(QLatin1String(table), periods[time - 1])
                        .arg(time));
    }
    static office::Chart ChartIn(office::Workbook& book) { return book.Sheet(1).ChartAt(1); }
    static office::Workbook Opened(const QString& file, const char* keepAs) {
        const QString folder = qEnvironmentVariable("TESSARO_PICTURES");
        if (!folder.isEmpty()) QFile::copy(file, folder + QLatin1Char('/') + QLatin1String(keepAs));
        return office::SpreadsheetApplication::Instance().OpenWorkbook(file);
    }
};

} // namespace

TEST_F(GraphWorkbookTest, TheFirstGraphOfTwoIndicatorsIsUsableAtOnce) {
    FillTwoByTwo();
    ShowFootnotes = true;
    RowsColumns arrangement;
    arrangement.SetDefaultAxes();
    EXPECT_EQ(arrangement.Columns(), (RowsColumns::FieldList{F::TimePeriod}));
    EXPECT_EQ(arrangement.Rows(), (RowsColumns::FieldList{F::AreaName, F::Indicator}));
    QString asked;
    const ShowOutcome outcome =
        ShowGraphXLS(arrangement, {.kind = DefaultKind(arrangement)}, {}, [&](const QString& question) {
            asked = question;
            return true;
        });
    ASSERT_EQ(outcome.result, ShowResult::Built);
    EXPECT_EQ(asked, QString());
    office::Workbook book = Opened(outcome.WorkbookFile, "default-graph.xls");
    const office::Chart chart = ChartIn(book);
    EXPECT_EQ(chart.Kind(), K::Line);
    EXPECT_EQ(chart.SeriesCount(), 4);
    EXPECT_TRUE(chart.SeriesInRows());
    EXPECT_TRUE(chart.HasSecondAxis());
    EXPECT_EQ(chart.Title(), QStringLiteral("Literacy, Population"));
    const QStringList titles = chart.AxisTitles();
    ASSERT_EQ(titles.size(), 3);
    EXPECT_TRUE(titles[0].contains(QStringLiteral("Source: "))) << titles[0].toStdString();
    EXPECT_TRUE(titles[0].contains(QStringLiteral("Footnotes: Estimate"))) << titles[0].toStdString();
    EXPECT_EQ(QSet<QString>({titles[1], titles[2]}),
              QSet<QString>({QStringLiteral("Number"), QStringLiteral("Percent")}));
    const test::ReadSheet table = test::ReadXls(outcome.WorkbookFile).at(1);
    EXPECT_FALSE(table.Text(8, 3).contains(QStringLiteral("Census")));
    QStringList below;
    for (int row = 13; row <= table.rows.size(); ++row)
        below << table.Text(row, 1);
    EXPECT_TRUE(below.contains(QStringLiteral("Estimate"))) << below.join('|').toStdString();
}

TEST_F(GraphWorkbookTest, MonthsAndSpansStandWhereTheyBelong) {
    FillTwoByTwo();
    Run(QStringLiteral("DELETE * FROM _SelIUSNId WHERE IUSNId <> 1"));
    const struct {
        QStringList periods;
        std::vector<double> places;
    } cases[] = {{{QStringLiteral("2000.02"), QStringLiteral("2000.10"), QStringLiteral("2001.01")},
                  {36571.5, 36815.5, 36907.5}},
                 {{QStringLiteral("1999"), QStringLiteral("2001-2003"), QStringLiteral("2005")}, {1999, 2002, 2005}}};
    for (const auto& c : cases) {
        NamePeriods(c.periods);
        for (const K kind : {K::Scatter, K::Line}) {
            RowsColumns arrangement;
            arrangement.SetDefaultAxes();
            const ShowOutcome outcome = ShowGraphXLS(arrangement, {.kind = kind});
            ASSERT_EQ(outcome.result, ShowResult::Built);
            office::Workbook book = Opened(outcome.WorkbookFile, kind == K::Line ? "months-line.xls" : "months.xls");
            EXPECT_EQ(ChartIn(book).SeriesCount(), 2);
            const test::ReadSheet table = test::ReadXls(outcome.WorkbookFile).at(1);
            const int first = static_cast<int>(table.rows.at(6).toArray().size()) - 2;
            for (int i = 0; i < 3; ++i) {
                EXPECT_TRUE(kind != K::Line || table.Text(7, first + i) == c.periods[i]) << i;
                EXPECT_TRUE(kind != K::Scatter ||
                            table.At(7, first + i).toDouble() == c.places[static_cast<std::size_t>(i)])
                    << i;
            }
        }
    }
}

TEST_F(GraphWorkbookTest, EachKindDrawsWhatItCan) {
    FillTwoByTwo();
    const struct {
        const char* what;
        K kind;
        F along;
        ShowResult result;
        int series;
    } cases[] = {
        {"columns of areas", K::Column, F::AreaName, ShowResult::Built, 6},
        {"bars of indicators", K::Bar, F::Indicator, ShowResult::Built, 6},
        {"areas over time", K::Area, F::TimePeriod, ShowResult::Built, 4},
        {"a pie", K::Pie, F::AreaName, ShowResult::Built, 1},
        {"indicators against each other, over times", K::Scatter, F::Indicator, ShowResult::Built, 1},
        {"one unit", K::Scatter, F::Source, ShowResult::NothingToCompare, 0},
    };
    for (const auto& c : cases) {
        RowsColumns arrangement;
        arrangement.Place(c.along, Placement::Column);
        const ShowOutcome outcome = ShowGraphXLS(arrangement, {.kind = c.kind});
        ASSERT_EQ(outcome.result, c.result) << c.what;
        if (c.result != ShowResult::Built) {
            EXPECT_FALSE(outcome.MessageKey().isEmpty());
            EXPECT_TRUE(outcome.WorkbookFile.isEmpty());
            continue;
        }
        office::Workbook book = Opened(outcome.WorkbookFile, c.what);
        EXPECT_EQ(ChartIn(book).Kind(), c.kind) << c.what;
        EXPECT_FALSE(ChartIn(book).Title().contains(QStringLiteral("Total"))) << c.what;
        EXPECT_EQ(ChartIn(book).Title().contains(QStringLiteral("Population")), c.kind != K::Pie) << c.what;
        EXPECT_TRUE(c.kind == K::Pie || ChartIn(book).SeriesCount() == c.series) << c.what;
    }
}

} // namespace tessaro
