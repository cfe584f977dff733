#include "TestPlaces.h"
#include "exchange/DatabaseRows.h"
#include "exchange/DatabaseWorkbook.h"
#include "exchange/ImportSession.h"
#include "exchange/OpenSource.h"
#include "layers/AreaOutlines.h"
#include "layers/LayerReader.h"
#include "office/SpreadsheetApplication.h"

#include <QScopeGuard>

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

/// A session on the database that the program comes with.
class DatabaseRoundTripTest : public ImportSession {
  protected:
    void SetUp() override {
        ImportSession::SetUp();
        ASSERT_TRUE(OpenDatabaseFile(sample_));
    }
    const QString sample_ = FindPath(QStringLiteral(TESSARO_INSTALLATION "/Data/Tessaro World.mdb"));
};

// Every form that is also read brings each value of a whole database back, with its footnote where it holds these.
TEST_F(DatabaseRoundTripTest, EveryFormBringsAllValuesBack) {
    const std::int64_t values = PlainReader(sample_.toStdString()).Number("SELECT Count(*) FROM Data");
    ASSERT_GT(values, 350'000);
    for (const char* name : {"All.csv", "All.wide.csv", "All.sdmx.csv", "All.json", "All.px"}) {
        const QString file = Folder() + QLatin1Char('/') + QLatin1String(name);
        DatabaseRows rows;
        ValueLosses losses;
        const ValueTable table{rows.Count(), [&rows](int number) { return rows.At(number); },
                               [&losses](const ValueLosses& told) { losses = told; }};
        ASSERT_EQ(rows.Count(), values);
        ASSERT_TRUE(ValueFormOf(file)->save(file, table)) << name;
        EXPECT_EQ(losses.texts + losses.doubles, 0) << name;
        ImportTarget target = Into(ImportInto::Copy);
        target.base = sample_;
        const ImportDraft draft = GuessDraft(file);
        ASSERT_EQ(ProblemOf(draft), QString()) << name;
        const auto checked = CheckImport(file, draft, target);
        EXPECT_EQ(checked->counts.same, values) << name;
        EXPECT_EQ(checked->counts.fresh + checked->counts.changed + checked->counts.refused, 0)
            << name << ": " << CountsOf(*checked);
        QFile::remove(file);
    }
}

// Workbooks too, sheet by sheet. The whole database takes minutes; the environment variable TESSARO_WHOLE asks for it.
TEST_F(DatabaseRoundTripTest, EveryKindOfWorkbookBringsItsValuesBack) {
    office::SpreadsheetApplication::SetProfileFolder(Folder() + QStringLiteral("/Office"));
    const auto quit = qScopeGuard([] { office::SpreadsheetApplication::QuitAll(); });
    const bool whole = qEnvironmentVariableIsSet("TESSARO_WHOLE");
    AppPath = QStringLiteral(TESSARO_INSTALLATION);
    for (const char* name : {"All.xls", "All.xlsx", "All.ods"}) {
        const QString file = Folder() + QLatin1Char('/') + QLatin1String(name);
        DatabaseRows rows;
        const int step = whole ? 1 : 97; // values of all indicators and areas
        const int values = (rows.Count() + step - 1) / step;
        const ValueTable table{rows.Count(), [&](int number) {
                                   std::optional<ValueRow> row = rows.At(number);
                                   return number % step == 0 ? row : std::nullopt;
                               }};
        const int sheets = SaveDatabaseWorkbook(file, table);
        EXPECT_EQ(sheets, whole ? 7 : 1) << name;
        ImportTarget target = Into(ImportInto::Copy);
        target.base = sample_;
        qint64 same = 0;
        ImportDraft draft = GuessDraft(file);
        ASSERT_EQ(ProblemOf(draft), QString()) << name;
        for (const QString& sheet : SheetsOf(file)) {
            draft.sheet = sheet; // all have the same heads
            const auto checked = CheckImport(file, draft, target);
            same += checked->counts.same;
            EXPECT_EQ(checked->counts.fresh + checked->counts.changed + checked->counts.refused, 0)
                << name << ": " << CountsOf(*checked);
        }
        EXPECT_EQ(same, values) << name;
        QFile::remove(file);
    }
}

// What the spreadsheet program makes of such texts is read back as it stands: a formula would give its result.
TEST_F(DatabaseRoundTripTest, TextsLikeFormulasStayTextsInWorkbooks) {
    office::SpreadsheetApplication::SetProfileFolder(Folder() + QStringLiteral("/Office"));
    const auto quit = qScopeGuard([] { office::SpreadsheetApplication::QuitAll(); });
    AppPath = QStringLiteral(TESSARO_INSTALLATION);
    const ValueTable table{1, [](int) {
                               return ValueRow{"2001", "+A1", "=1+1",  "=cmd|'/c calc'!A1",       "@SUM(1,1)",
                                               "-1+1", " =2", "-12.5", "=HYPERLINK(\"http://x\")"};
                           }};
    for (const char* ending : {"xls", "xlsx", "ods"}) {
        const QString file = Folder() + QStringLiteral("/Texts.") + QLatin1String(ending);
        ASSERT_EQ(SaveDatabaseWorkbook(file, table), 1) << ending;
        ImportDraft draft;
        draft.kind = FileKind::Workbook;
        const std::unique_ptr<TableReader> reader = OpenSource(file, draft);
        TableRow row;
        ASSERT_TRUE(reader->Next(row) && reader->Next(row)) << ending;
        std::string read;
        for (std::size_t i = 0; i < row.count; ++i)
            read += row.fields[i] + '|';
        EXPECT_EQ(read, "2001|+A1|=1+1|=cmd|'/c calc'!A1|-12.5|@SUM(1,1)|-1+1| =2|=HYPERLINK(\"http://x\")|") << ending;
    }
}

// A map for other programs: the values of one period with the outlines of their areas.
TEST_F(DatabaseRoundTripTest, AreasOfTheDatabaseHaveTheirOutlines) {
    AppPath = QStringLiteral(TESSARO_INSTALLATION);
    DatabaseRows rows;
    AreaOutlines outlines;
    ValueLosses losses;
    const ValueTable table{rows.Count(),
                           [&rows](int number) {
                               std::optional<ValueRow> row = rows.At(number);
                               return row && row->period == QLatin1String("2009") ? row : std::nullopt;
                           },
                           [&losses](const ValueLosses& told) { losses = told; },
                           [&outlines](const QString& area) { return outlines.RingsOf(area); }};
    const QString file = Folder() + QStringLiteral("/Map.shp");
    ASSERT_TRUE(SaveShapefile(file, table));
    EXPECT_EQ(losses.columns, 0);
    const LayerReading map = ReadLayer(file);
    ASSERT_TRUE(map.layer);
    const std::int64_t areas = PlainReader(sample_.toStdString())
                                   .Number("SELECT Count(DISTINCT AreaNId) FROM Data D JOIN TimePeriod T ON "
                                           "T.TimePeriodNId = D.TimePeriodNId WHERE T.TimePeriod = '2009'");
    EXPECT_EQ(static_cast<std::int64_t>(map.layer->features.size()), areas);
    EXPECT_GT(areas, 3000);
    EXPECT_LT(losses.withoutShape, areas / 20);
    const int there = map.layer->FeatureAt({37.9, 0.5}, 0);
    ASSERT_GE(there, 0);
    EXPECT_EQ(map.layer->Text(there, map.layer->IdField()), "AFRKEN");
    EXPECT_EQ(map.layer->Text(there, map.layer->NameField()), "Kenya");
}

} // namespace
} // namespace tessaro::test
