#include "OfficeTest.h"
#include "support/ReadXls.h"
#include "support/TimeBound.h"
#include "support/WriteLimit.h"

#include <QElapsedTimer>
#include <QFile>

#include <cmath>
#include <limits>
#include <sys/stat.h>

namespace tessaro::office {

namespace {

using test::ReadXls;
using test::WriteLimit;

class DocumentTest : public OfficeTest {
  protected:
    /// A workbook file with this number in its first cell.
    Workbook Saved(const char* name, double value) {
        Workbook book = Application().NewWorkbook();
        book.Sheet(1).Cells(1, 1).SetValue(value);
        book.SaveAs(File(name));
        return book;
    }
    [[nodiscard]] QStringList AllFiles() const {
        return QDir(folder_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
};

} // namespace

TEST_F(DocumentTest, KeepsTheOldFileOnAFullDisk) {
    Workbook book = Saved("kept.xls", 1);
    {
        const WriteLimit full(Application().ProcessId(), 1024);
        book.Sheet(1).Cells(1, 1).SetValue(2.0);
        EXPECT_EQ(FailureOf([&] { book.Save(); }), Failure::File);
    }
    EXPECT_EQ(ReadXls(File("kept.xls")).front().At(1, 1).toDouble(), 1.0);
    EXPECT_EQ(AllFiles(), QStringList{QStringLiteral("kept.xls")});
    EXPECT_TRUE(book.IsModified());
    book.Save();
    EXPECT_FALSE(book.IsModified());
    EXPECT_EQ(ReadXls(File("kept.xls")).front().At(1, 1).toDouble(), 2.0);
}

// Here the process itself may give up; what stood before stays all the same.
TEST_F(DocumentTest, KeepsTheOldPdfOnAFullDisk) {
    Workbook book = Saved("kept.xls", 1);
    book.ExportPdf(File("kept.pdf"));
    const qint64 size = QFileInfo(File("kept.pdf")).size();
    ASSERT_GT(size, 2000);
    {
        const WriteLimit full(Application().ProcessId(), 1024);
        EXPECT_TRUE(FailureOf([&] { book.ExportPdf(File("kept.pdf")); }));
    }
    EXPECT_EQ(QFileInfo(File("kept.pdf")).size(), size);
    EXPECT_EQ(AllFiles(), (QStringList{QStringLiteral("kept.pdf"), QStringLiteral("kept.xls")}));
}

TEST_F(DocumentTest, TakesThePlaceOfAFileWithoutChangingWhatItIs) {
    Workbook book = Saved("real.xls", 1);
    const mode_t mask = ::umask(0);
    ::umask(mask);
    struct stat now {};
    ASSERT_EQ(::stat(QFile::encodeName(File("real.xls")).constData(), &now), 0);
    EXPECT_EQ(now.st_mode & 0777U, 0666U & ~mask); // a new one is like any other
    ASSERT_EQ(::chmod(QFile::encodeName(File("real.xls")).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(File("real.xls"), File("link.xls")));
    Workbook linked = Application().OpenWorkbook(File("link.xls"));
    linked.Sheet(1).Cells(1, 1).SetValue(5.0);
    linked.Save();
    EXPECT_TRUE(QFileInfo(File("link.xls")).isSymLink());
    EXPECT_EQ(ReadXls(File("real.xls")).front().At(1, 1).toDouble(), 5.0);
    ASSERT_EQ(::stat(QFile::encodeName(File("real.xls")).constData(), &now), 0);
    EXPECT_EQ(now.st_mode & 0777U, 0600U);
}

TEST_F(DocumentTest, RefusesToSaveWhereItCanNot) {
    Workbook book = Application().NewWorkbook();
    EXPECT_EQ(FailureOf([&] { book.Save(); }), Failure::File); // it has no name yet
    EXPECT_EQ(FailureOf([&] { book.SaveAs(File("no/such/folder.xls")); }), Failure::File);
    ASSERT_TRUE(QDir().mkpath(File("folder.xls")));
    EXPECT_EQ(FailureOf([&] { book.SaveAs(File("folder.xls")); }), Failure::File);
    EXPECT_TRUE(book.FileName().isEmpty());
    EXPECT_EQ(AllFiles(), QStringList{QStringLiteral("folder.xls")});
}

TEST_F(DocumentTest, SavesUnderTheLongestName) {
    const QByteArray name = QByteArray(251, 'n') + ".xls";
    Saved(name.constData(), 3).Close(false);
    EXPECT_EQ(Application().OpenWorkbook(File(name.constData())).Sheet(1).Cells(1, 1).Value(), Cell(3.0));
}

TEST_F(DocumentTest, KeepsTheOldFileWhenACopyFails) {
    Saved("old.xls", 1).Close(false);
    EXPECT_EQ(FailureOf([&] { static_cast<void>(Application().OpenCopy(File("none.xls"), File("old.xls"))); }),
              Failure::File);
    EXPECT_EQ(ReadXls(File("old.xls")).front().At(1, 1).toDouble(), 1.0);
    // Nor does a failure leave a new one behind.
    QFile damaged(File("damaged.xls"));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("no workbook");
    damaged.close();
    EXPECT_EQ(FailureOf([&] { static_cast<void>(Application().OpenCopy(File("damaged.xls"), File("new.xls"))); }),
              Failure::File);
    Application().Quit();
    qputenv("TESSARO_OFFICE", "/nowhere");
    EXPECT_EQ(FailureOf([&] { static_cast<void>(Application().OpenCopy(File("old.xls"), File("new.xls"))); }),
              Failure::Missing);
    qunsetenv("TESSARO_OFFICE");
    EXPECT_FALSE(QFileInfo::exists(File("new.xls")));
    // A copy onto itself is the file.
    EXPECT_EQ(Application().OpenCopy(File("old.xls"), File("old.xls")).Sheet(1).Cells(1, 1).Value(), Cell(1.0));
}

TEST_F(DocumentTest, AnswersForHandlesOfNothing) {
    const Workbook none;
    EXPECT_FALSE(none.IsOpen());
    EXPECT_EQ(FailureOf([&] { static_cast<void>(none.SheetCount()); }), Failure::Call);
    EXPECT_EQ(FailureOf([&] { static_cast<void>(none.Sheet(1)); }), Failure::Call);
    EXPECT_EQ(FailureOf([&] { static_cast<void>(none.Colors(1)); }), Failure::Call);
    const SlideShow noShow;
    EXPECT_EQ(FailureOf([&] { static_cast<void>(noShow.SlideCount()); }), Failure::Call);
    Workbook closed = Application().NewWorkbook();
    const Range cell = closed.Sheet(1).Cells(1, 1);
    closed.Close(false);
    EXPECT_EQ(FailureOf([&] { static_cast<void>(cell.Value()); }), Failure::Call);
    EXPECT_EQ(FailureOf([&] { Range(cell).SetValue(1.0); }), Failure::Call);
    closed.Close(true);
}

TEST_F(DocumentTest, SurvivesOddValues) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    Workbook book = Application().NewWorkbook();
    const Worksheet sheet = book.Sheet(1);
    sheet.Cells(1, 1).SetValues({{std::nan(""), kInfinity, -kInfinity, 5e-324}});
    sheet.Cells(2, 1).SetValues(
        {{QString(QChar(u'\0')), QStringLiteral("a\x01z"), QString(QChar(0xD800)), QStringLiteral("\U0001F600")}});
    sheet.Cells(3, 1).SetValues(
        {{QString(32767, u'x'), QStringLiteral("+1"), QStringLiteral("TRUE"), QStringLiteral("1/2/2003")}});
    EXPECT_EQ(FailureOf([&] { sheet.Cells(4, 1).SetValues({{1.0, 2.0}, {3.0}}); }), Failure::Call); // ragged
    EXPECT_EQ(FailureOf([&] { sheet.Cells(4, 1).SetRichText({{QString(32768, u'x'), false, {}}}); }), Failure::Limit);
    EXPECT_EQ(FailureOf([&] { sheet.Cells(4, 1).SetFormula(QString(32768, u'x')); }), Failure::Limit);
    EXPECT_EQ(FailureOf([&] { sheet.Cells(0, 1).SetValue(1.0); }), Failure::Limit);
    book.SaveAs(File("odd.xls"));
    const auto read = ReadXls(File("odd.xls")).front();
    for (int column = 1; column <= 3; ++column)
        EXPECT_TRUE(read.At(1, column).isNull()) << column; // no number: an empty cell
    EXPECT_EQ(read.Text(2, 4), QStringLiteral("\U0001F600"));
    EXPECT_EQ(read.Text(3, 1).size(), 32767);
    EXPECT_EQ(read.Text(3, 2), QStringLiteral("+1"));
    EXPECT_EQ(read.Text(3, 3), QStringLiteral("TRUE"));
    EXPECT_EQ(read.Text(3, 4), QStringLiteral("1/2/2003"));
    EXPECT_FALSE(book.Colors(1).name().isEmpty());
    EXPECT_FALSE(book.Colors(57).isValid());
    EXPECT_FALSE(book.Colors(-1).isValid());
}

TEST_F(DocumentTest, OneBadWriteDoesNotTakeTheOthersAway) {
    Workbook book = Application().NewWorkbook();
    const Worksheet sheet = book.Sheet(1);
    const Worksheet gone = book.AddSheet(QStringLiteral("gone"));
    book.RemoveSheet(2);
    gone.Cells(1, 1).SetValue(1.0);
    gone.Cells(1, 1).SetStyle({.italic = true});
    sheet.Cells(2, 1).SetValue(QStringLiteral("x"));
    sheet.Cells(2, 1).SetStyle({.bold = true});
    EXPECT_EQ(FailureOf([&] { book.SaveAs(File("looks.xls")); }), Failure::Call);
    book.SaveAs(File("looks.xls"));
    EXPECT_TRUE(ReadXls(File("looks.xls")).front().Look(2, 1).value(QLatin1String("bold")).toBool());
}

TEST_F(DocumentTest, NamesSheetsAsTheFormatAllows) {
    Workbook book = Application().NewWorkbook();
    Worksheet sheet = book.Sheet(1);
    const std::pair<QString, QString> cases[] = {
        {QString(40, u'n'), QString(31, u'n')},
        {QString(30, u'n') + QStringLiteral("\U0001F600"), QString(30, u'n')}, // no half of a pair
        {QString(), QStringLiteral("_")},
        {QStringLiteral("'a'"), QStringLiteral("_a_")},
        {QStringLiteral("a/b\\c?"), QStringLiteral("a_b_c_")},
        {QStringLiteral("новый лист"), QStringLiteral("новый лист")}};
    for (const auto& [name, expected] : cases) {
        sheet.SetName(name);
        EXPECT_EQ(sheet.Name(), expected);
    }
    static_cast<void>(book.AddSheet(QStringLiteral("Second")));
    EXPECT_EQ(FailureOf([&] { static_cast<void>(book.AddSheet(QStringLiteral("second"))); }), Failure::Call);
    EXPECT_EQ(book.SheetCount(), 2);
    EXPECT_EQ(FailureOf([&] { sheet.SetName(QStringLiteral("SECOND")); }), Failure::Call);
    book.RemoveSheet(2);
    EXPECT_EQ(FailureOf([&] { book.RemoveSheet(1); }), Failure::Call); // the last one
    EXPECT_EQ(FailureOf([&] { static_cast<void>(book.Sheet(9)); }), Failure::Call);
    EXPECT_EQ(book.SheetCount(), 1);
}

TEST_F(DocumentTest, TakesManyScatteredLooks) {
    Workbook book = Application().NewWorkbook();
    const Worksheet sheet = book.Sheet(1);
    QElapsedTimer timer;
    timer.start();
    for (int row = 1; row <= 30000; ++row) {
        sheet.Cells(row, 1).SetValue(1.0);
        sheet.Cells(row, 1).SetStyle({.bold = row % 2 == 0});
    }
    book.SaveAs(File("striped.xls"));
    EXPECT_LT(timer.elapsed(), test::TimeBound(10000));
    const auto read = ReadXls(File("striped.xls")).front();
    EXPECT_EQ(read.rows.size(), 30000);
    EXPECT_TRUE(read.Look(50, 1).value(QLatin1String("bold")).toBool());
    EXPECT_FALSE(read.Look(51, 1).value(QLatin1String("bold")).toBool());
}

TEST_F(DocumentTest, WritesFormulasAsTheyAreUsuallyWritten) {
    Workbook book = Application().NewWorkbook(2);
    book.Sheet(2).SetName(QStringLiteral("My Data's"));
    const Worksheet sheet = book.Sheet(1);
    book.Sheet(2).Cells(1, 1).SetValue(40.0);
    sheet.Cells(1, 1).SetValues({{1.0, 2.0, 3.0}});
    const std::pair<const char*, Cell> cases[] = {{"=SUM(A1,C1)", 4.0},
                                                  {"=SUM(A1:C1)+'My Data''s'!A1", 46.0},
                                                  {"=MIN('My Data''s'!$A$1,LOG10(A1 * 10) + 6)", 7.0},
                                                  {"=SUM((A1,C1))", 4.0},
                                                  {"=IF($A$1>2,\"big\",\"small\")", QStringLiteral("small")},
                                                  {"=SUMPRODUCT({1,2,3},A1:C1)", 14.0},
                                                  {"=1/0", QStringLiteral("#DIV/0!")},
                                                  {"12.5", 12.5}};
    int row = 2;
    for (const auto& [formula, expected] : cases) {
        sheet.Cells(row, 1).SetFormula(QString::fromLatin1(formula));
        EXPECT_EQ(sheet.Cells(row, 1).Value(), expected) << formula;
        ++row;
    }
    sheet.Cells(row, 1).SetFormula(QString());
    EXPECT_EQ(sheet.Cells(row, 1).Value(), Cell());
}

TEST_F(DocumentTest, ReadsFormulasAsTheyAreSet) {
    Workbook book = Application().NewWorkbook(2);
    book.Sheet(2).SetName(QStringLiteral("My Data"));
    const Worksheet sheet = book.Sheet(1);
    book.Sheet(2).Cells(1, 1).SetValue(40.0);
    sheet.Cells(1, 1).SetValues({{1.0, QStringLiteral("00123"), 3.5}});
    const FormulaBlock formulas{{QStringLiteral("=SUM(A1,C1)"), QStringLiteral("=A1*$C$1-2")},
                                {QStringLiteral("=SUM(A1:C1)+'My Data'!A1"), QStringLiteral("=ROUND(C1/3,2)")},
                                {QStringLiteral("=IF($A$1>2,\"a;b,c\",\"d|\")"), QStringLiteral("=A1&\", \"&B1")},
                                {QStringLiteral("=SUMPRODUCT({1,2,3;4,5,6})"), QStringLiteral("-12.5")},
                                {QStringLiteral("text"), QString()}};
    Range block = sheet.Cells(2, 1, 6, 2);
    block.SetFormulas(formulas);
    EXPECT_EQ(block.Formulas(), formulas);
    const Block values = block.Values();
    block.SetFormulas(block.Formulas());
    EXPECT_EQ(block.Values(), values);
    EXPECT_EQ(values.at(0), (std::vector<Cell>{4.5, 1.5}));
    EXPECT_EQ(values.at(1), (std::vector<Cell>{44.5, 1.17}));
    EXPECT_EQ(values.at(2), (std::vector<Cell>{QStringLiteral("d|"), QStringLiteral("1, 00123")}));
    EXPECT_EQ(values.at(3), (std::vector<Cell>{21.0, -12.5}));
    EXPECT_EQ(sheet.Cells(1, 2).Formula(), QStringLiteral("'00123"));
    sheet.Cells(1, 2).SetFormula(sheet.Cells(1, 2).Formula());
    EXPECT_EQ(sheet.Cells(1, 2).Value(), Cell(QStringLiteral("00123")));
}

TEST_F(DocumentTest, TellsBrokenFormulas) {
    Workbook book = Application().NewWorkbook();
    const Worksheet sheet = book.Sheet(1);
    sheet.Cells(1, 1).SetValues({{1.0, QStringLiteral("kept")}});
    for (const char* broken : {"=SUM(((", "=1+", "=SUM(A1;B1)", "=NOSUCH(1)", "=IF(1,2,3,4)", "=A1 B2 2", "=\"a"}) {
        const QString formula = QLatin1String(broken);
        try {
            sheet.Cells(1, 1).SetFormulas({{QStringLiteral("=1/0"), formula}});
            ADD_FAILURE() << broken << " is taken as " << sheet.Cells(1, 2).Formula().toStdString();
        } catch (const Error& error) {
            EXPECT_EQ(error.failure, Failure::Formula) << broken;
            EXPECT_NE(std::string(error.what()).find("B1: " + std::string(broken)), std::string::npos) << error.what();
        }
        EXPECT_EQ(sheet.Cells(1, 1, 1, 2).Values(), (Block{{1.0, QStringLiteral("kept")}})) << broken;
    }
    // An error of the values is none of the formula.
    sheet.Cells(2, 1).SetFormulas({{QStringLiteral("=1/0"), QStringLiteral("=SQRT(-1)"), QStringLiteral("=B1*2")}});
    EXPECT_EQ(sheet.Cells(2, 1).Text(), QStringLiteral("#DIV/0!"));
    EXPECT_EQ(FailureOf([&] { sheet.Cells(3, 1).SetFormulas({{QString()}, {QString(), QString()}}); }), Failure::Call);
    EXPECT_EQ(FailureOf([&] { sheet.Cells(65536, 1).SetFormulas({{QString()}, {QString()}}); }), Failure::Limit);
}

TEST_F(DocumentTest, WritesManyFormulasAtOnce) {
    Workbook book = Application().NewWorkbook();
    const Worksheet sheet = book.Sheet(1);
    FormulaBlock formulas;
    for (int row = 1; row <= 200; ++row) {
        sheet.Cells(row, 1).SetValue(double(row));
        formulas.push_back({QStringLiteral("=ROUND(A%1/3,1)").arg(row), QStringLiteral("=A%1*2").arg(row)});
    }
    static_cast<void>(sheet.Cells(1, 1).Value());
    QElapsedTimer timer;
    timer.start();
    sheet.Cells(1, 2).SetFormulas(formulas);
    EXPECT_LT(timer.elapsed(), test::TimeBound(400));
    FormulaBlock alike;
    for (int row = 1; row <= 5000; ++row)
        alike.push_back({QStringLiteral("=ROUND(A%1 * 2 + B%1 * 2,2)").arg(row)});
    timer.restart();
    sheet.Cells(1, 7).SetFormulas(alike);
    EXPECT_LT(timer.elapsed(), test::TimeBound(1500));
    EXPECT_EQ(sheet.Cells(101, 7).Value(), Cell(269.4));
    EXPECT_EQ(sheet.Cells(1, 7, 5000, 7).Formulas(), alike);
    EXPECT_EQ(sheet.Cells(200, 2, 200, 3).Values(), (Block{{66.7, 400.0}}));
    sheet.Cells(1, 4, 20000, 5).FillFormula(QStringLiteral("=$A1+COLUMN()"));
    EXPECT_EQ(sheet.Cells(200, 4, 200, 5).Values(), (Block{{204.0, 205.0}}));
    EXPECT_EQ(sheet.Cells(20000, 5).Formula(), QStringLiteral("=$A20000+COLUMN()"));
}

TEST_F(DocumentTest, CalculatesPausedFormulasWhenItIsSaved) {
    Workbook book = Application().NewWorkbook();
    const Worksheet sheet = book.Sheet(1);
    sheet.Cells(1, 1).SetValue(20.0);
    book.PauseCalculation();
    sheet.Cells(1, 2).SetFormula(QStringLiteral("=A1*2"));
    sheet.Cells(2, 2, 100, 2).FillFormula(QStringLiteral("=B1+1"));
    EXPECT_EQ(FailureOf([&] { sheet.Cells(1, 3).SetFormula(QStringLiteral("=SUM(((")); }), Failure::Formula);
    book.SaveAs(File("paused.xls"));
    EXPECT_EQ(ReadXls(File("paused.xls")).front().At(100, 2), QJsonValue(139.0));
    sheet.Cells(1, 1).SetValue(30.0);
    EXPECT_EQ(sheet.Cells(100, 2).Value(), Cell(159.0)) << "calculated at once again";
}

TEST_F(DocumentTest, KeepsRichTextOfAnyKind) {
    Workbook book = Application().NewWorkbook();
    const Worksheet sheet = book.Sheet(1);
    const std::vector<TextRun> runs{{QStringLiteral("a\U0001F600\nb"), false, {.bold = true}},
                                    {QStringLiteral("x"), true, {.fontColorIndex = 3}},
                                    {QString(), false, {}},
                                    {QStringLiteral(" tail"), false, {}}};
    sheet.Cells(1, 1).SetRichText(runs);
    sheet.Cells(2, 1).SetRichText({});
    book.SaveAs(File("rich.xls"));
    const auto read = ReadXls(File("rich.xls")).front();
    EXPECT_EQ(read.Text(1, 1), QStringLiteral("a\U0001F600\nbx tail"));
    EXPECT_GE(read.runs.value(QLatin1String("1,1")).toInt(), 2);
}

TEST_F(DocumentTest, PrintingWithoutAPrinterIsAnAnswer) {
    Workbook book = Saved("printed.xls", 1);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(FailureOf([&] { book.Print(QStringLiteral("no such printer")); }), Failure::Printer);
    EXPECT_LT(timer.elapsed(), test::TimeBound(10000));
    EXPECT_EQ(book.SheetCount(), 1); // and the workbook is still there
}

} // namespace tessaro::office
