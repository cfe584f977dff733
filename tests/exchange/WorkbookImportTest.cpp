#include "exchange/ImportReport.h"
#include "exchange/ImportSession.h"
#include "office/Error.h"
#include "office/ForeignWorkbook.h"
#include "office/SpreadsheetApplication.h"
#include "support/BombFiles.h"
#include "support/ReadXls.h"

#include <gmock/gmock.h>

namespace tessaro::test {
namespace {

class WorkbookImportTest : public ImportSession {
  protected:
    void SetUp() override {
        ImportSession::SetUp();
        office::SpreadsheetApplication::SetProfileFolder(Folder() + QStringLiteral("/Office"));
    }
    void TearDown() override {
        office::SpreadsheetApplication::QuitAll(); // before its profile goes with the folder
        ImportSession::TearDown();
    }

    /// A workbook whose second sheet has indicators over years, with merged heads, a formula, a per cent cell, a text
    /// that looks like a formula, and a day.
    [[nodiscard]] QString MakeWorkbook(const QString& ending) const {
        const QString xls = Folder() + QStringLiteral("/Book.xls");
        office::Workbook book = office::SpreadsheetApplication::Instance().NewWorkbook(2);
        office::Worksheet sheet = book.Sheet(2);
        sheet.SetName(QStringLiteral("Values, all"));
        using Row = std::vector<office::Cell>;
        sheet.Cells(1, 1).SetValues(
            {Row{QString(), QStringLiteral("Wheat"), QString(), QStringLiteral("Maize, \"dry\"")},
             Row{QStringLiteral("Area"), 2001.0, 2002.0, 2001.0}, Row{QStringLiteral("India"), 1234.5, 1e-7, 3.0},
             Row{QStringLiteral("China"), QStringLiteral("=1+1"), 36526.0, 0.125}});
        sheet.Cells(1, 2, 1, 3).Merge();
        sheet.Cells(3, 4).SetFormula(QStringLiteral("=B3*2"));
        sheet.Cells(4, 3).SetStyle({.numberFormat = QStringLiteral("YYYY-MM-DD")});
        sheet.Cells(4, 4).SetStyle({.numberFormat = QStringLiteral("0.0%")});
        book.SaveAs(xls);
        const QString file = Folder() + QStringLiteral("/Other.") + ending;
        if (ending != QLatin1String("xls")) office::SaveCopyAs(book, file);
        book.Close(false);
        return ending == QLatin1String("xls") ? xls : file;
    }
};

TEST_F(WorkbookImportTest, ReadsSheetsOfAllKindsOfWorkbooks) {
    for (const char* ending : {"xls", "xlsx", "ods"}) {
        const QString file = MakeWorkbook(QLatin1String(ending));
        const QString sheet = QStringLiteral("Values, all");
        const ImportDraft draft = GuessDraft(file, sheet);
        EXPECT_EQ(draft.kind, FileKind::Workbook) << ending;
        EXPECT_EQ(draft.headRows, 2) << ending;
        const auto checked = CheckImport(file, draft, Into(ImportInto::Copy));
        EXPECT_EQ(CountsOf(*checked), "new 4, same 0, changed 0, empty 0, refused 2") << ending;
        ASSERT_TRUE(WriteImport(*checked).made) << ending;
        const std::string stem = QFileInfo(file).completeBaseName().toStdString();
        const std::string tail = "|Number|Total|" + stem + "|";
        EXPECT_THAT(Values(Target()), testing::IsSupersetOf({"India|2001|Wheat" + tail + "1234.5|",
                                                             "India|2001|Maize, \"dry\"" + tail + "2469|",
                                                             "China|2001|Maize, \"dry\"" + tail + "12.5|"}))
            << ending;
    }
    EXPECT_EQ(Stages(), QStringList());
}

// A title, heads of three rows and names at the left in merged cells, months as days of the spreadsheet, a note below.
TEST_F(WorkbookImportTest, ReadsMergedCellsAndMonths) {
    office::Workbook book = office::SpreadsheetApplication::Instance().NewWorkbook(1);
    office::Worksheet sheet = book.Sheet(1);
    using Row = std::vector<office::Cell>;
    const QString none;
    sheet.Cells(1, 1).SetValues(
        {Row{QStringLiteral("Table 5. Prices"), none, none, none}, Row{none, none, none, none},
         Row{QStringLiteral("Country"), QStringLiteral("Subgroup"), QStringLiteral("Wheat"), none},
         Row{none, none, 43831.0, 43862.0}, Row{QStringLiteral("India"), QStringLiteral("Urban"), 1.5, 2.5},
         Row{none, QStringLiteral("Rural"), 3.5, QStringLiteral("..")},
         Row{QStringLiteral("China"), QStringLiteral("Urban"), 5.5, 6.5}, Row{none, QStringLiteral("Rural"), 7.5, 8.5},
         Row{none, none, none, none}, Row{QStringLiteral("Note: estimates"), none, none, none}});
    sheet.Cells(1, 1, 1, 4).Merge();
    sheet.Cells(3, 1, 4, 1).Merge();
    sheet.Cells(3, 2, 4, 2).Merge();
    sheet.Cells(3, 3, 3, 4).Merge();
    sheet.Cells(5, 1, 6, 1).Merge();
    sheet.Cells(7, 1, 8, 1).Merge();
    sheet.Cells(4, 3, 4, 4).SetStyle({.numberFormat = QStringLiteral("MMM YY")});
    const QString xls = Folder() + QStringLiteral("/Prices.xls");
    book.SaveAs(xls);
    for (const char* ending : {"xls", "xlsx", "ods"}) {
        const QString file = Folder() + QStringLiteral("/Prices.") + QLatin1String(ending);
        if (file != xls) office::SaveCopyAs(book, file);
        const auto checked = CheckImport(file, GuessDraft(file), Into(ImportInto::Copy));
        EXPECT_EQ(CountsOf(*checked).substr(0, 5), "new 7") << ending;
        EXPECT_EQ(checked->counts.refused, 0) << ending;
        ASSERT_TRUE(WriteImport(*checked).made) << ending;
        EXPECT_THAT(Values(Target()), testing::IsSupersetOf({"India|2020.01|Wheat|Number|Urban|Prices|1.5|",
                                                             "India|2020.02|Wheat|Number|Urban|Prices|2.5|",
                                                             "India|2020.01|Wheat|Number|Rural|Prices|3.5|",
                                                             "China|2020.02|Wheat|Number|Rural|Prices|8.5|"}))
            << ending;
    }
    book.Close(false);
}

TEST_F(WorkbookImportTest, RefusesWhatIsNoWorkbook) {
    const QString broken = Write("PK\x03\x04 and nothing more", QStringLiteral("broken.xlsx"));
    EXPECT_THROW(static_cast<void>(GuessDraft(broken)), office::Error);
    const QString bomb = Folder() + QStringLiteral("/bomb.ods");
    WriteZipBomb(bomb);
    EXPECT_THROW(static_cast<void>(GuessDraft(bomb)), office::Error);
    const QString good = MakeWorkbook(QStringLiteral("ods"));
    EXPECT_THROW(static_cast<void>(GuessDraft(good, QStringLiteral("no such sheet"))), ReadError);
    EXPECT_EQ(GuessDraft(good, QStringLiteral("Values, all")).ValueColumns(), 3) << "and then it goes on";
}

TEST_F(WorkbookImportTest, AnEmptySheetHasNoColumnsAndTheNextOneIsTaken) {
    const QString file = MakeWorkbook(QStringLiteral("xlsx"));
    const QStringList sheets = office::ForeignWorkbook(file).SheetNames();
    EXPECT_TRUE(GuessDraft(file, sheets.first()).columns.empty());
    EXPECT_EQ(GuessDraftOfSheets(file, sheets).sheet, "Values, all");
    EXPECT_EQ(GuessDraftOfSheets(file, sheets.mid(0, 1)).sheet, QString());
}

TEST_F(WorkbookImportTest, SavesTheReportAsAWorkbook) {
    const QString file =
        Write("Year,Area,Indicator,Unit,Subgroup,Source,Value\n2005,China,Population,Number,Total,Census,1\n"
              "2005,=1+1,Population,Number,Total,Census,1\n");
    const auto checked = CheckImport(file, GuessDraft(file), Into(ImportInto::Copy));
    const QString report = Folder() + QStringLiteral("/report.xls");
    ASSERT_TRUE(SaveReport(*checked, report));
    const std::vector<ReadSheet> sheets = ReadXls(report);
    ASSERT_EQ(sheets.size(), 5U);
    EXPECT_EQ(sheets[1].name, "Refused rows");
    EXPECT_EQ(sheets[1].Text(2, 4), "=1+1");
    EXPECT_EQ(sheets[2].Text(2, 2), "China; 2005; Population; Number; Total; Census");
}

} // namespace
} // namespace tessaro::test
