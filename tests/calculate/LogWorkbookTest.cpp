#include "calculate/LogWorkbook.h"

#include "CalculationTest.h"
#include "TestPlaces.h"
#include "calculate/DataEntryWorkbook.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Clock.h"
#include "sheets/SheetFont.h"
#include "support/ReadXls.h"
#include "support/SelectionTest.h"
#include "support/TimeBound.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

namespace tessaro {

namespace {

QString Q(const char* text) {
    return QString::fromUtf8(text);
}

/// Logs made by hand, written into true workbooks and read back.
class LogWorkbookTest : public test::CalculationTest {
  protected:
    void SetUp() override {
        CalculationTest::SetUp();
        test::UseSpreadsheet();
        for (const char* name : {"Log_Calculate.xls", "Data_DataEntry.xls"})
            ASSERT_TRUE(CopyFileOver(FindPath(Q(TESSARO_INSTALLATION "/Bin/Template/") + Q(name)), TemplatePath(name)));
        SetClock([] { return QDateTime({2026, 1, 31}, {14, 5, 9}); });
    }
    void TearDown() override {
        SetClock({});
        CalculationTest::TearDown();
    }
    static void TearDownTestSuite() { office::SpreadsheetApplication::QuitAll(); }

    static QString TemplatePath(const char* name) { return FindPath(AppPath + Q("/Bin/Template/")) + Q(name); }

    static CalculationDraft Draft(CalcType type = CalcType::PerCent) {
        CalculationDraft draft;
        draft.type = type;
        draft.sector = Q("Health");
        draft.indicatorClass = Q("Care");
        draft.indicator = Q("Share");
        draft.unit = Q("Per cent");
        draft.decimals = Q("2");
        return draft;
    }

    /// Areas in the first columns, a value and its double as a formula, from row 13 on.
    static CalculationLog Doubles(const std::vector<std::optional<double>>& values) {
        CalculationLog log;
        office::Block rows;
        int row = 13;
        for (const auto& value : values) {
            const QString id = Q("A%1").arg(row);
            office::Cell shown = value ? office::Cell(*value) : office::Cell();
            rows.push_back({id, Q("Area ") + id, shown, shown});
            DataEntryRow result{Q("2000"),  id,         Q("Area ") + id, value ? NumberText(2 * *value) : QString(),
                                Q("Total"), Q("Census")};
            log.results.push_back({result, row++, 4});
        }
        LogSheet& sheet = log.working;
        sheet.blocks = {{8, 3, {{Q("Value"), Q("Result")}}},
                        {10, 1, {{Q("ID"), Q("Name"), Q("One"), Q("Two")}, {{}, {}, Q("Total"), {}}}},
                        {13, 1, rows}};
        sheet.headRow = 10;
        sheet.firstRow = 13;
        sheet.lastRow = row - 1;
        sheet.lastColumn = 4;
        sheet.textColumns = {1, 2};
        sheet.formulas = {{4, {Q("= C13 * 2")}, Q("0.00"), true}};
        log.detail = sheet;
        log.detail.formulas.clear();
        return log;
    }

    static office::Workbook Open(const QString& file) {
        return office::SpreadsheetApplication::Instance().OpenWorkbook(file);
    }
};

} // namespace

TEST_F(LogWorkbookTest, WritesHeaderValuesAndFormulas) {
    CalculationLog log = Doubles({1.256, 3.0});
    log.remarks = {{Q("0007"), Q("Nowhere"), Q("No value")}};
    const WrittenWorkbook written = WriteLog(Draft(), log, true);
    EXPECT_EQ(written.file, TempFolder + Q("/Log_Per cent (2026-01-31 14.05.09).xls"));
    const std::vector<test::ReadSheet> sheets = test::ReadXls(written.file);
    ASSERT_EQ(sheets.size(), 3U) << "no ranks";
    const test::ReadSheet& sheet = sheets[0];
    EXPECT_EQ(sheet.Text(1, 1), Q("Log Per cent"));
    EXPECT_EQ(sheet.Look(1, 1).value(Q("size")).toDouble(), 14);
    EXPECT_TRUE(sheet.Look(1, 1).value(Q("bold")).toBool());
    EXPECT_TRUE(sheet.Look(1, 1).value(Q("italic")).toBool());
    const std::pair<int, QStringList> lines[] = {{3, {Q("Calculation"), Q("Per cent")}},
                                                 {4, {Q("Date and time"), Q("2026-01-31 14.05.09")}},
                                                 {5, {Q("Log file"), Q("Log_Per cent (2026-01-31 14.05.09).xls")}},
                                                 {7, {Q("Decimal places"), Q("2")}},
                                                 {10, {Q("ID"), Q("Name")}},
                                                 {13, {Q("A13"), Q("Area A13")}}};
    for (const auto& [row, texts] : lines) {
        EXPECT_EQ(sheet.Text(row, 1), texts[0]);
        EXPECT_EQ(sheet.Text(row, 2), texts[1]);
    }
    EXPECT_DOUBLE_EQ(sheet.At(13, 4).toDouble(), 2.51);
    EXPECT_DOUBLE_EQ(sheet.At(14, 4).toDouble(), 6);
    EXPECT_EQ(sheets[2].Text(2, 1), Q("0007"));
    EXPECT_EQ(sheets[2].Text(2, 3), Q("No value"));
    office::Workbook book = Open(written.file);
    EXPECT_EQ(book.Sheet(1).Cells(13, 4).Formula().remove(QLatin1Char(' ')), Q("=ROUND(C13*2,2)"));
    EXPECT_EQ(book.Sheet(1).Cells(14, 4).Formula().remove(QLatin1Char(' ')), Q("=ROUND(C14*2,2)"));
}

TEST_F(LogWorkbookTest, ResultsMayBeLeftToTheProgramThatShowsIt) {
    const QString file = WriteLog(Draft(), Doubles({1.256, 3.0}), true, LogResults::LeftToHost).file;
    EXPECT_EQ(test::ReadXls(file).front().At(14, 4).toDouble(), 0) << "not calculated yet";
    office::Workbook book = Open(file);
    EXPECT_EQ(book.Sheet(1).Cells(14, 4).Value(), office::Cell(6.0));
    book.Save();
    EXPECT_EQ(test::ReadXls(file).front().At(14, 4).toDouble(), 6);
}

TEST_F(LogWorkbookTest, ColumnsHaveRoomForTheDecimalsThatTheyShow) {
    constexpr double kDigit = 0.572; // of a font's size, in the usual font
    const QString shown = Q("123456789.00");
    CalculationLog log = Doubles({123456789.0});
    log.working.formulas.front().formulas = {Q("= C13")};
    const office::Workbook book = Open(WriteLog(Draft(), log, true).file);
    EXPECT_GT(book.Sheet(1).Cells(13, 4).Size().width(), ListFont().size * kDigit * static_cast<double>(shown.size()));
}

TEST_F(LogWorkbookTest, TheHeaderFollowsTheCalculation) {
    struct Case {
        CalcType type;
        bool isFirst;
        const char* title;
        const char* file;
        const char* named; ///< in the header
        const char* label; ///< of row 7
        const char* value;
    };
    const Case cases[] = {
        {CalcType::HundredMinus, true, "Log 100 minus", "/Log_100 Minus (", "Log_Per cent (", "Decimal places", "2"},
        {CalcType::Formula, false, "User-defined formula", "/Log_Formula (", "Log_Formula (", "Decimal places", "2"},
        {CalcType::CompositeIndex, true, "Composite index", "/Log_Composite Index (", "Log_Composite Index (",
         "Scale minimum", "5"},
        {CalcType::TransformUnit, true, "Log Transform unit", "/Log_Transform unit (", "Log_Transform unit (",
         "Decimal places", "2"},
        {CalcType::Subtotal, true, "Log Subtotal", "/Log_Sub total (", "Log_Sub total (", "Decimal places", "2"}};
    const QString stamp = Q("2026-01-31 14.05.09).xls");
    for (const Case& c : cases) {
        CalculationDraft draft = Draft(c.type);
        draft.scaleMin = Q("5");
        draft.scaleMax = Q("9");
        const WrittenWorkbook written = WriteLog(draft, Doubles({1.0}), c.isFirst);
        EXPECT_EQ(written.file, TempFolder + Q(c.file) + stamp);
        const test::ReadSheet sheet = test::ReadXls(written.file).front();
        EXPECT_EQ(sheet.Text(1, 1), Q(c.title));
        EXPECT_EQ(sheet.Text(5, 2), Q(c.named) + stamp);
        EXPECT_EQ(sheet.Text(7, 1), Q(c.label));
        EXPECT_EQ(sheet.At(7, 2).toVariant().toString(), Q(c.value)) << c.title;
        if (c.type == CalcType::CompositeIndex) {
            EXPECT_EQ(sheet.At(8, 2).toDouble(), 9) << "a number that formulas refer to";
        }
    }
}

TEST_F(LogWorkbookTest, AFormulaForEachRowLeavesGapsAsTheyAre) {
    CalculationLog log = Doubles({1.0, 2.0, 3.0});
    log.working.formulas = {{4, {Q("= (C13 + 1) / 3"), {}, Q("= C15 ^ 2")}, Q("0.00"), true}};
    log.working.blocks.back().cells[1][3] = {};
    office::Workbook book = Open(WriteLog(Draft(), log, true).file);
    const office::Worksheet sheet = book.Sheet(1);
    EXPECT_DOUBLE_EQ(std::get<double>(sheet.Cells(13, 4).Value()), 0.67);
    EXPECT_EQ(sheet.Cells(14, 4).Value(), office::Cell());
    EXPECT_DOUBLE_EQ(std::get<double>(sheet.Cells(15, 4).Value()), 9);
}

TEST_F(LogWorkbookTest, CellsShowTheirNumbersWholeAndTheirWords) {
    CalculationLog log = Doubles({123456.0, 1.0});
    log.working.formulas = {{4, {Q("= C13 * 2")}, Q("0.00"), false}};
    log.working.blocks.front() = {8, 1, {{Q("Name"), Q("High is good")}, {Q("A"), false}, {Q("B"), true}}};
    log.working.headRow = 11;
    log.working.blocks[1].row = 11;
    office::Workbook book = Open(WriteLog(Draft(), log, true).file);
    const office::Worksheet sheet = book.Sheet(1);
    const double width = sheet.Cells(13, 4).Size().width();
    sheet.Cells(13, 4, 14, 4).AutoFitColumns();
    EXPECT_GE(width, sheet.Cells(13, 4).Size().width()) << "room for 246912.00";
    EXPECT_EQ(sheet.Cells(9, 2).Text(), Q("FALSE"));
    EXPECT_EQ(sheet.Cells(10, 2).Text(), Q("TRUE"));
    EXPECT_EQ(book.Sheet(2).Cells(7, 1).Text(), QString()) << "the decimals stand on the first sheet alone";
}

TEST_F(LogWorkbookTest, RanksHaveTheirSheetAndAChart) {
    CalculationLog log = Doubles({1.0, 3.0});
    log.ranks = log.working;
    log.ranks->formulas = {{4, {Q("= RANK(C13,$C$13:$C$14)")}, Q("0"), false},
                           {3, {Q("= 'Sheet1'!C13 + 1")}, {}, false}};
    office::Workbook book = Open(WriteLog(Draft(CalcType::CompositeIndex), log, true).file);
    ASSERT_EQ(book.SheetCount(), 3) << "no remarks";
    const office::Worksheet ranks = book.Sheet(3);
    EXPECT_EQ(ranks.Name(), Q("Ranks"));
    EXPECT_EQ(ranks.ChartCount(), 1);
    EXPECT_EQ(ranks.ChartAt(1).SeriesCount(), 3);
    EXPECT_LT(ranks.ChartAt(1).Place().bottom(), ranks.Cells(1, 1, 9, 1).Size().height()) << "above the table";
    EXPECT_EQ(ranks.Cells(14, 3).Value(), office::Cell(4.0)) << "the first sheet is found under its new name";
    book.Sheet(1).Cells(13, 3).SetValue(9.0);
    EXPECT_EQ(ranks.Cells(13, 4).Value(), office::Cell(1.0)) << "live";
}

TEST_F(LogWorkbookTest, AMissingTemplateIsTold) {
    ASSERT_TRUE(QFile::remove(TemplatePath("Log_Calculate.xls")));
    ASSERT_TRUE(QFile::remove(TemplatePath("Data_DataEntry.xls")));
    EXPECT_EQ(WriteLog(Draft(), Doubles({1.0}), true).messageKey, Q("011"));
    EXPECT_EQ(WriteLog(Draft(CalcType::HundredMinus), Doubles({1.0}), true).messageKey, Q("012"));
    EXPECT_EQ(WriteDataEntrySheet({}).messageKey, Q("011"));
    EXPECT_TRUE(FilesOf(TempFolder).isEmpty());
}

TEST_F(LogWorkbookTest, ResultsAreWhatTheCellsHoldNow) {
    CalculationLog log = Doubles({1.0, 2.0, std::nullopt, std::nullopt, 5.0, 6.0});
    log.results.push_back(log.results.front());
    log.results.back().row.areaName = Q(" AREA a13 ");
    log.results.push_back({{Q("2000"), Q("B"), Q("Beside"), Q("7.5"), Q("Total"), Q("Census")}});
    office::Workbook book = Open(WriteLog(Draft(), log, true).file);
    const office::Worksheet sheet = book.Sheet(1);
    sheet.Cells(14, 3).SetValue(2.5);              // a value that the formula follows
    sheet.Cells(16, 3).SetValue(4.125);            // one that was missing
    sheet.Cells(17, 4).SetValue(Q("n/a"));         // no number any more
    sheet.Cells(18, 4).SetFormula(Q("= C18 / 0")); // an error
    const DataEntrySheet result = ReadResults(book, Draft(), log);
    const std::vector<std::pair<QString, QString>> expected = {
        {Q("A13"), Q("2.00")}, {Q("A14"), Q("5.00")}, {Q("A16"), Q("8.25")}, {Q("B"), Q("7.50")}};
    std::vector<std::pair<QString, QString>> values;
    for (const DataEntryRow& row : result.rows)
        values.emplace_back(row.areaId, row.value);
    EXPECT_EQ(values, expected);
    EXPECT_EQ(result.indicator, Q("Share"));
    EXPECT_EQ(result.unit, Q("Per cent"));
    sheet.Cells(7, 2).SetValue(Q("0")); // the decimals stand in the log as well
    EXPECT_EQ(ReadResults(book, Draft(), log).rows.front().value, Q("2"));
}

TEST_F(LogWorkbookTest, TheDataEntrySheetKeepsItsRows) {
    DataEntrySheet result{Q("Health"), Q("Care"), Q("A/B: C"), Q("Per \"cent\""), {}};
    result.rows = {{Q("2000"), Q("007"), Q("Bond"), Q(".75"), Q("Total"), Q("Census_2000")},
                   {Q("2000.10"), Q("AAA"), Q("Ümläut العربية"), Q("-12.50"), Q("Female"), Q("=1+1")},
                   {Q("2001"), Q("AAB"), Q("it's"), Q("1000000000000"), Q("Total"), Q("S")}};
    const WrittenWorkbook first = WriteDataEntrySheet(result);
    EXPECT_EQ(first.file, TempFolder + Q("/Data_A_B_ C_Per _cent_.xls"));
    const WrittenWorkbook second = WriteDataEntrySheet(result);
    EXPECT_EQ(second.file, first.file) << "the earlier one gives way";
    const test::ReadSheet sheet = test::ReadXls(second.file).front();
    EXPECT_EQ(sheet.Text(1, 1), Q("Data entry spreadsheet"));
    EXPECT_EQ(sheet.Text(5, 2), Q("A/B: C"));
    EXPECT_EQ(sheet.Text(10, 4), Q("Data value"));
    EXPECT_EQ(sheet.Text(11, 2), Q("007"));
    EXPECT_DOUBLE_EQ(sheet.At(11, 4).toDouble(), 0.75);
    const office::Workbook book = Open(second.file);
    const QString shown = book.Sheet(1).Cells(11, 4).Text(); // with the mark that the sheets have in the locale
    EXPECT_EQ(shown.size(), 3);
    EXPECT_EQ(shown.last(2), Q("75"));
    const DataEntrySheet read = ReadDataEntrySheet(book);
    EXPECT_EQ(read.sector, result.sector);
    EXPECT_EQ(read.indicator, result.indicator);
    EXPECT_EQ(read.unit, result.unit);
    ASSERT_EQ(read.rows.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(read.rows[i].timePeriod, result.rows[i].timePeriod);
        EXPECT_EQ(read.rows[i].areaId, result.rows[i].areaId);
        EXPECT_EQ(read.rows[i].areaName, result.rows[i].areaName);
        EXPECT_EQ(read.rows[i].value.toDouble(), result.rows[i].value.toDouble());
        EXPECT_EQ(read.rows[i].source, result.rows[i].source);
    }
}

TEST_F(LogWorkbookTest, NamesOfAnyLengthMakeFiles) {
    DataEntrySheet result{Q("S"), Q("C"), test::HardName(QLatin1Char('I')), QString(255, QChar(0x0645)), {}};
    result.rows = {{Q("2000"), Q("A"), Q("A"), Q("1"), Q("T"), Q("S")}};
    const WrittenWorkbook written = WriteDataEntrySheet(result);
    EXPECT_TRUE(QFile::exists(written.file));
    EXPECT_EQ(ReadDataEntrySheet(Open(written.file)).indicator, result.indicator.trimmed());
}

TEST_F(LogWorkbookTest, FiveThousandAreasAreWrittenInTime) {
    constexpr int kAreas = 5000;
    constexpr int kColumns = 22;
    CalculationLog log = Doubles(std::vector<std::optional<double>>(kAreas, 1.5));
    for (int column = 5; column <= kColumns; ++column)
        for (auto& row : log.working.blocks.back().cells)
            row.emplace_back(column * 1.25);
    log.working.lastColumn = kColumns;
    log.detail = log.working;
    log.detail.formulas.clear();
    static_cast<void>(WriteLog(Draft(), Doubles({1.0}), true)); // the program is running
    QElapsedTimer clock;
    clock.start();
    ASSERT_FALSE(WriteLog(Draft(), log, true).file.isEmpty());
    EXPECT_LT(clock.elapsed(), test::TimeBound(4000));
    RecordProperty("milliseconds", static_cast<int>(clock.elapsed()));
    std::printf("5,000 areas x 22 columns, both sheets: %lld ms\n", static_cast<long long>(clock.elapsed()));
}

} // namespace tessaro
