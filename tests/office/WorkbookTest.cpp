#include "OfficeTest.h"
#include "support/ReadXls.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>

#include <algorithm>

namespace tessaro::office {

namespace {

using test::ReadSheet;
using test::ReadXls;

using WorkbookTest = OfficeTest;

QByteArray RedSquare() {
    QImage image(40, 40, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QString TextOfPdf(const QString& file) {
    QProcess reader;
    reader.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")});
    reader.waitForFinished();
    return QString::fromUtf8(reader.readAllStandardOutput());
}

} // namespace

TEST_F(WorkbookTest, KeepsValuesAsTheyAreMeant) {
    Workbook book = Application().NewWorkbook(2);
    const Worksheet sheet = book.Sheet(1);
    sheet.Cells(1, 1).SetValues({{QStringLiteral("00123"), QStringLiteral("=1+1"), 12.5, std::monostate{}},
                                 {QStringLiteral("العربية"), QStringLiteral("a\nb"), -1e300, QStringLiteral("'x'")}});
    sheet.Cells(3, 1).SetValue(7.0);
    sheet.Cells(3, 2).SetValue(8.0);
    sheet.Cells(4, 1).SetValue(9.0);
    sheet.Cells(4, 2).SetFormula(QStringLiteral("=SUM(A3,A4)*2"));
    sheet.Cells(5, 2).SetFormula(QStringLiteral("=1/0"));
    EXPECT_EQ(sheet.Cells(4, 2).Value(), Cell(32.0));
    EXPECT_TRUE(std::holds_alternative<QString>(sheet.Cells(5, 2).Value()));
    EXPECT_EQ(sheet.UsedRange().Address(), QStringLiteral("$A$1:$D$5"));
    book.SaveAs(File("values %20#ü.xls"));

    const auto sheets = ReadXls(File("values %20#ü.xls"));
    ASSERT_EQ(sheets.size(), 2U);
    EXPECT_EQ(sheets[0].Text(1, 1), QStringLiteral("00123"));
    EXPECT_EQ(sheets[0].Text(1, 2), QStringLiteral("=1+1"));
    EXPECT_EQ(sheets[0].At(1, 3).toDouble(), 12.5);
    EXPECT_TRUE(sheets[0].At(1, 4).isNull());
    EXPECT_EQ(sheets[0].Text(2, 1), QStringLiteral("العربية"));
    EXPECT_EQ(sheets[0].At(2, 3).toDouble(), -1e300);
    EXPECT_EQ(sheets[0].At(4, 2).toDouble(), 32.0);
}

TEST_F(WorkbookTest, KeepsLooks) {
    Workbook book = Application().NewWorkbook();
    book.SetColors(35, QColor(12, 34, 56));
    Worksheet sheet = book.Sheet(1);
    sheet.SetName(QStringLiteral("Quarter [1]: a/b"));
    sheet.Cells(1, 1, 3, 3).SetValue(QStringLiteral("x"));
    sheet.Cells(1, 1, 3, 3).SetStyle({.fontName = QStringLiteral("Noto Sans"), .fontSize = 12});
    sheet.Cells(1, 1, 1, 3).SetStyle({.bold = true, .interiorColorIndex = 35, .horizontal = Align::Center});
    // The later look wins where two meet.
    sheet.Cells(2, 1).SetStyle({.bold = true});
    sheet.Cells(2, 1, 2, 2).SetStyle({.bold = false, .fontColorIndex = 35});
    sheet.Cells(3, 3).SetValue(0.5);
    sheet.Cells(3, 3).SetStyle({.numberFormat = QStringLiteral("0.00")});
    sheet.Cells(1, 1, 3, 3).SetBorders(Outline, {LineWeight::Thick});
    sheet.Cells(5, 1, 5, 3).SetValue(QStringLiteral("m"));
    sheet.Cells(5, 1, 5, 3).Merge();
    sheet.Cells(1, 1, 3, 3).AutoFitColumns();
    sheet.FreezePanes(2, 1);
    sheet.SetPageSetup({.landscape = true,
                        .fitToPagesWide = 1,
                        .header = PageLine(QStringLiteral("Top")),
                        .footer = PageLine(QStringLiteral("&P / &N")),
                        .titleRows = 1});
    book.SaveAs(File("looks.xls"));

    const ReadSheet read = ReadXls(File("looks.xls")).front();
    EXPECT_EQ(read.name, QStringLiteral("Quarter _1__ a_b"));
    EXPECT_EQ(read.Look(1, 2).value(QLatin1String("font")).toString(), QStringLiteral("Noto Sans"));
    EXPECT_TRUE(read.Look(1, 1).value(QLatin1String("bold")).toBool());
    EXPECT_EQ(read.Look(1, 1).value(QLatin1String("back")).toString(), QStringLiteral("0C2238"));
    EXPECT_EQ(read.Look(1, 1).value(QLatin1String("align")).toInt(), 2);
    EXPECT_FALSE(read.Look(2, 1).value(QLatin1String("bold")).toBool());
    EXPECT_EQ(read.Look(2, 2).value(QLatin1String("colour")).toString(), QStringLiteral("0C2238"));
    EXPECT_EQ(read.Look(3, 3).value(QLatin1String("format")).toString(), QStringLiteral("0.00"));
    EXPECT_EQ(read.Look(1, 1).value(QLatin1String("borders")).toArray(), (QJsonArray{5, 5, 0, 0}));
    EXPECT_EQ(read.merged.at(0).toArray(), (QJsonArray{5, 1, 5, 3}));
    EXPECT_EQ(read.frozen.at(0).toInt(), 1);
}

TEST_F(WorkbookTest, KeepsNotesRichTextAndSorts) {
    Workbook book = Application().NewWorkbook();
    const Worksheet sheet = book.Sheet(1);
    sheet.Cells(1, 1).SetRichText(
        {{QStringLiteral("12.5 "), false, {}}, {QStringLiteral("1"), true, {.fontColorIndex = 3}}});
    sheet.Cells(1, 2).AddComment(QStringLiteral("a note"));
    sheet.Cells(2, 1).SetValues({{QStringLiteral("name"), QStringLiteral("value")},
                                 {QStringLiteral("b"), 2.0},
                                 {QStringLiteral("A"), 10.0},
                                 {QStringLiteral("c"), 1.0}});
    sheet.Cells(2, 1, 5, 2).SortRows({{2, false}}, true);
    EXPECT_EQ(sheet.Cells(1, 2).Comment(), QStringLiteral("a note"));
    sheet.Cells(7, 1).SetValue(3.0);
    sheet.Cells(7, 2).SetFormula(QStringLiteral("=A7*2"));
    sheet.Cells(7, 1, 9, 2).FillDown();
    book.SaveAs(File("notes.xls"));

    const ReadSheet read = ReadXls(File("notes.xls")).front();
    EXPECT_EQ(read.Text(1, 1), QStringLiteral("12.5 1"));
    EXPECT_GE(read.runs.value(QLatin1String("1,1")).toInt(), 1);
    EXPECT_EQ(read.Note(1, 2), QStringLiteral("a note"));
    EXPECT_EQ(read.Text(3, 1), QStringLiteral("A"));
    EXPECT_EQ(read.Text(5, 1), QStringLiteral("c"));
    EXPECT_EQ(read.At(9, 1).toDouble(), 3.0);
    EXPECT_EQ(read.At(9, 2).toDouble(), 6.0);
}

TEST_F(WorkbookTest, DrawsChartsPicturesAndShapes) {
    Workbook book = Application().NewWorkbook();
    Worksheet sheet = book.Sheet(1);
    sheet.Cells(1, 1).SetValues({{QStringLiteral("year"), QStringLiteral("a"), QStringLiteral("b")},
                                 {QStringLiteral("2001"), 1.0, 5.0},
                                 {QStringLiteral("2002"), 2.0, 4.0},
                                 {QStringLiteral("2003"), 3.0, 3.0}});
    for (const ChartKind kind :
         {ChartKind::Column, ChartKind::Bar, ChartKind::Line, ChartKind::Pie, ChartKind::Area, ChartKind::Scatter}) {
        Chart chart = sheet.AddChart(kind, sheet.Cells(1, 1, 4, 3), true, true, {200, 10, 300, 200});
        EXPECT_EQ(chart.Kind(), kind);
        chart.SetTitle(QStringLiteral("Title"));
        chart.SetFont(QStringLiteral("Liberation Sans"), 9);
        const QImage picture = QImage::fromData(chart.AsPicture(QStringLiteral("image/png"), 400));
        EXPECT_EQ(picture.width(), 400);
    }
    EXPECT_EQ(sheet.ChartAt(1).SeriesCount(), 2);
    sheet.AddPicture(QStringLiteral("Picture 1"), RedSquare(), {10, 200, 60, 60});
    Shape star = sheet.AddShape(QStringLiteral("star"), ShapeKind::Star, {100, 200, 50, 50});
    star.SetFill(3);
    star.SetText(QStringLiteral("t"), {.bold = true});
    EXPECT_FALSE(sheet.Cells(1, 1, 4, 3).AsPicture(QStringLiteral("image/x-emf")).isEmpty());
    EXPECT_FALSE(QImage::fromData(sheet.Cells(1, 1, 4, 3).AsPicture(QStringLiteral("image/png"))).isNull());
    book.SaveAs(File("drawn.xls"));
    book.Close(false);

    const Workbook again = Application().OpenWorkbook(File("drawn.xls"));
    EXPECT_EQ(again.Sheet(1).ChartCount(), 6);
    EXPECT_EQ(again.Sheet(1).ChartAt(3).Title(), QStringLiteral("Title"));
    EXPECT_TRUE(again.Sheet(1).HasShape(QStringLiteral("Picture 1")));
    EXPECT_NEAR(again.Sheet(1).ShapeNamed(QStringLiteral("star")).Place().width(), 50, 1);
}

TEST_F(WorkbookTest, PanesAndGridLinesStayOnTheirSheet) {
    {
        Workbook book = Application().NewWorkbook(3);
        book.SaveAs(File("panes.xls"));
    }
    Workbook book = Application().OpenWorkbook(File("panes.xls"));
    book.Sheet(2).FreezePanes(8, 3); // the first call makes the view visible
    book.Sheet(1).SetGridLines(false);
    book.Sheet(2).SetGridLines(true);
    book.Sheet(3).FreezePanes(2, 1);
    book.Save();
    const auto read = test::ReadXls(File("panes.xls"));
    EXPECT_EQ(read.at(0).frozen, (QJsonArray{0, 0}));
    EXPECT_EQ(read.at(1).frozen, (QJsonArray{7, 2}));
    EXPECT_EQ(read.at(2).frozen, (QJsonArray{1, 0}));
    EXPECT_FALSE(read.at(0).gridLines);
    EXPECT_TRUE(read.at(1).gridLines);
    EXPECT_TRUE(read.at(2).gridLines);
}

TEST_F(WorkbookTest, FindsTheLastUsedCellInAnyColumn) {
    Workbook book = Application().NewWorkbook();
    Worksheet sheet = book.Sheet(1);
    EXPECT_EQ(sheet.UsedRange().Address(), QStringLiteral("$A$1")) << "nothing is used";
    const struct {
        int row;
        int column;
        const char* address;
    } cases[] = {{3, 26, "$A$1:$Z$3"}, {2, 27, "$A$1:$AA$3"}, {9, 1, "$A$1:$AA$9"}, {1, 256, "$A$1:$IV$9"}};
    for (const auto& c : cases) {
        sheet.Cells(c.row, c.column).SetValue(1.0);
        EXPECT_EQ(sheet.UsedRange().Address(), QLatin1String(c.address));
    }
}

TEST_F(WorkbookTest, KeepsTheUsedBlockWithinTheFormat) {
    Workbook book = Application().NewWorkbook();
    Worksheet sheet = book.Sheet(1);
    sheet.Cells(3, 256).SetRichText({{QStringLiteral("note "), false, {}}, {QStringLiteral("1"), true, {}}});
    sheet.Cells(65536, 1).SetValue(1.0);
    sheet.Cells(65535, 250, 65536, 256).Merge();
    EXPECT_EQ(sheet.UsedRange().Address(), QStringLiteral("$A$1:$IV$65536"));
}

TEST_F(WorkbookTest, WritesTrueAndFalse) {
    Workbook book = Application().NewWorkbook();
    const Worksheet sheet = book.Sheet(1);
    sheet.Cells(1, 1).SetValues({{true, false, 1.0}, {QStringLiteral("x"), std::monostate{}, true}});
    sheet.Cells(3, 1).SetFormula(QStringLiteral("=IF(AND(A1,NOT(B1)),\"yes\",\"no\")"));
    const bool german = qEnvironmentVariable("LC_ALL").startsWith(QLatin1String("de")); // its words follow the locale
    EXPECT_EQ(sheet.Cells(1, 1).Text(), german ? QStringLiteral("WAHR") : QStringLiteral("TRUE"));
    EXPECT_EQ(sheet.Cells(3, 1).Value(), Cell(QStringLiteral("yes")));
    book.SaveAs(File("truths.xls"));
    const ReadSheet read = ReadXls(File("truths.xls")).front();
    EXPECT_EQ(read.At(1, 1), QJsonValue(true));
    EXPECT_EQ(read.At(1, 2), QJsonValue(false));
    EXPECT_EQ(read.At(1, 3), QJsonValue(1.0));
    EXPECT_EQ(read.At(2, 3), QJsonValue(true));
}

TEST_F(WorkbookTest, PrintsHeadersAtEachSideWithTheirFonts) {
    Workbook book = Application().NewWorkbook(2);
    Worksheet sheet = book.Sheet(1);
    sheet.Cells(1, 1).SetValue(QStringLiteral("body"));
    sheet.SetPageSetup({.landscape = true,
                        .header = PageLine({QStringLiteral("Left & Co"),
                                            {.fontName = QStringLiteral("Noto Sans"), .fontSize = 14, .bold = true}},
                                           {QStringLiteral("mid&&dle")}, {QStringLiteral("right"), {.italic = true}}),
                        .footer = PageLine({QStringLiteral("مصدر")}, {}, {QStringLiteral("&P of &N")})});
    book.SaveAs(File("template.xls"));
    book.Close(false);
    const QByteArray file = [&] {
        QFile source(File("template.xls"));
        return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
    }();
    EXPECT_TRUE(file.contains("&L&\"Noto Sans,Bold\"&14Left && Co&C")) << "the header's record";

    // A workbook made from it as a template keeps its page but for what is told.
    Workbook copy = Application().OpenCopy(File("template.xls"), File("copy.xls"));
    copy.Sheet(1).SetPageSetup({.paper = Paper::Own, .footer = PageLine(QStringLiteral("foot"))});
    copy.ExportPdf(File("copy.pdf"));
    const QString printed = TextOfPdf(File("copy.pdf"));
    for (const char* text : {"Left & Co", "mid&dle", "right", "body", "foot"})
        EXPECT_TRUE(printed.contains(QLatin1String(text))) << text << " in\n" << printed.toStdString();
    EXPECT_FALSE(printed.contains(QLatin1String("1 of 1")));
    QProcess about;
    about.start(QStringLiteral("pdfinfo"), {File("copy.pdf")});
    about.waitForFinished();
    EXPECT_TRUE(about.readAllStandardOutput().contains("841.89 x 595.3")) << "A4 across";
}

/// The number in the last cell of the first column on the first page.
int LastRowOfFirstPage(Workbook& book, const QString& file) {
    book.ExportPdf(file);
    static const QRegularExpression cell(QStringLiteral("row (\\d+)"));
    const QString page = TextOfPdf(file).section(QLatin1Char('\f'), 0, 0);
    int last = 0;
    for (const auto& match : cell.globalMatch(page))
        last = std::max(last, match.captured(1).toInt());
    return last;
}

// The program itself reports the page breaks of fitted pages as if they were printed at a tenth of their size.
TEST_F(WorkbookTest, ARowIsKeptWithTheNextOne) {
    struct Page {
        int columns;
        double width; ///< of a column
        int pagesWide;
        double rowHeight;
    };
    // Printed as large as they are, smaller, smaller on two pages side by side, and with tall rows.
    for (const Page& page : {Page{2, 10, 1, 12.8}, Page{9, 20, 1, 12.8}, Page{20, 20, 2, 12.8}, Page{9, 20, 1, 31}}) {
        const std::string shown = std::to_string(page.columns) + " columns, rows of " + std::to_string(page.rowHeight);
        constexpr int rows = 120;
        Workbook book = Application().NewWorkbook();
        Worksheet sheet = book.Sheet(1);
        sheet.SetPageSetup({.landscape = true,
                            .fitToPagesWide = page.pagesWide,
                            .header = PageLine(),
                            .footer = PageLine(QStringLiteral("&P / &N")),
                            .titleRows = 2,
                            .titleColumns = page.pagesWide > 1 ? 1 : 0});
        for (int column = 1; column <= page.columns; ++column)
            sheet.SetColumnWidth(column, page.width);
        sheet.Cells(1, 1, rows, page.columns).SetValue(QStringLiteral("text"));
        for (int row = 1; row <= rows; ++row)
            sheet.Cells(row, 1).SetValue(QStringLiteral("row %1").arg(row));
        sheet.SetRowHeights(1, rows, page.rowHeight);
        const int last = LastRowOfFirstPage(book, File("page.pdf"));
        ASSERT_GT(last, 5) << shown;
        ASSERT_LT(last, rows) << shown;
        sheet.KeepWithNext(last - 8);
        EXPECT_EQ(LastRowOfFirstPage(book, File("page.pdf")), last) << shown << ": that row has its next";
        sheet.KeepWithNext(last);
        EXPECT_EQ(LastRowOfFirstPage(book, File("page.pdf")), last - 1) << shown;
        book.SaveAs(File("kept.xls"));
        Workbook again = Application().OpenWorkbook(File("kept.xls"));
        EXPECT_EQ(LastRowOfFirstPage(again, File("page.pdf")), last - 1) << shown << ", read from its file";
    }
}

TEST_F(WorkbookTest, FillsShapesWithAnyColourAndPattern) {
    constexpr FillPattern kVertical{0xF0, 0xF0, 0xF0, 0xF0, 0xF0, 0xF0, 0xF0, 0xF0};
    constexpr FillPattern kHorizontal{0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0};
    const QColor odd(18, 52, 86);
    Workbook book = Application().NewWorkbook();
    Worksheet sheet = book.Sheet(1);
    sheet.AddShape(QStringLiteral("plain"), ShapeKind::Rectangle, {10, 10, 60, 60}).SetFillColor(odd);
    sheet.AddShape(QStringLiteral("down"), ShapeKind::Rectangle, {110, 10, 60, 60})
        .SetPattern(kVertical, odd, Qt::yellow);
    sheet.AddShape(QStringLiteral("across"), ShapeKind::Rectangle, {210, 10, 60, 60})
        .SetPattern(kHorizontal, odd, Qt::yellow);
    for (const QString& name : sheet.ShapeNames())
        sheet.ShapeNamed(name).SetLineColor({}, 0);
    book.SaveAs(File("shapes.xls"));
    book.Close(false);
    const Workbook again = Application().OpenWorkbook(File("shapes.xls"));
    const auto picture = [&](const char* name) {
        return QImage::fromData(again.Sheet(1).ShapeNamed(QLatin1String(name)).AsPng(240))
            .convertToFormat(QImage::Format_RGB32);
    };
    EXPECT_EQ(picture("plain").pixelColor(120, 120), odd);
    // Along a stripe one colour, across it both.
    const auto reds = [](const QImage& image, bool across) {
        int least = 255;
        int most = 0;
        for (int place = 20; place < 220; ++place) {
            const int red = (across ? image.pixelColor(place, 118) : image.pixelColor(118, place)).red();
            least = std::min(least, red);
            most = std::max(most, red);
        }
        return most - least;
    };
    for (const auto& [name, across] : {std::pair("down", true), std::pair("across", false)}) {
        EXPECT_LT(reds(picture(name), !across), 10) << name;
        EXPECT_GT(reds(picture(name), across), 200) << name;
    }
}

TEST_F(WorkbookTest, ChangesWhatStands) {
    Workbook book = Application().NewWorkbook(2);
    Worksheet sheet = book.Sheet(1);
    sheet.Cells(1, 1).SetValues({{QStringLiteral("c"), QStringLiteral("a"), QStringLiteral("b")}, {3.0, 1.0, 2.0}});
    sheet.Cells(1, 1, 2, 3).SortColumns({{1, true}});
    EXPECT_EQ(sheet.Cells(2, 1, 2, 3).Values(), (Block{{1.0, 2.0, 3.0}}));
    sheet.Cells(4, 1, 5, 2).SetValue(7.0);
    sheet.Cells(4, 1, 5, 1).ClearContents();
    EXPECT_EQ(sheet.Cells(4, 1).Value(), Cell());
    EXPECT_EQ(sheet.Cells(5, 2).Value(), Cell(7.0));
    sheet.Cells(6, 1).SetFormula(QStringLiteral("=SUM(B4,B5)"));
    EXPECT_TRUE(sheet.Cells(6, 1).Formula().startsWith(QStringLiteral("=SUM(")));

    Chart chart = sheet.AddChart(ChartKind::Column, sheet.Cells(1, 1, 2, 3), true, false, {200, 10, 300, 200});
    chart.SetKind(ChartKind::Bar);
    EXPECT_EQ(chart.Kind(), ChartKind::Bar);
    chart.SetAxisTitles(QStringLiteral("x"), QStringLiteral("y"));
    chart.SetLegend(false);
    chart.SetAxisFont(QStringLiteral("Noto Sans"), 8);
    const QByteArray before = chart.AsPicture(QStringLiteral("image/png"), 200);
    chart.SetSeriesColor(1, 3);
    EXPECT_NE(chart.AsPicture(QStringLiteral("image/png"), 200), before);

    Shape square = sheet.AddPicture(QStringLiteral("square"), RedSquare(), {10, 200, 60, 60});
    EXPECT_EQ(QImage::fromData(square.AsPng(30)).pixelColor(15, 15), QColor(Qt::red));
    const std::vector<QString> shapes = sheet.ShapeNames();
    EXPECT_EQ(std::count(shapes.begin(), shapes.end(), QStringLiteral("square")), 1);
    square.Remove();
    EXPECT_FALSE(sheet.HasShape(QStringLiteral("square")));

    sheet.SetColumnWidth(1, 30);
    sheet.SetRowHeight(1, 40);
    sheet.SetGridLines(false);
    book.ActivateSheet(2);
    EXPECT_EQ(book.ActiveSheet().Number(), 2);
}

// Columns from right to left lie on the other side of the first cell's corner, where the file keeps nothing of the
// left.
TEST_F(WorkbookTest, AChartStandsOnTheColumnsOfEitherDirection) {
    constexpr QRectF kPlace(20, 30, 300, 200);
    const auto expectNear = [&](const QRectF& place, const QRectF& wanted) {
        EXPECT_NEAR(place.left(), wanted.left(), 1);
        EXPECT_NEAR(place.top(), wanted.top(), 1);
        EXPECT_NEAR(place.width(), wanted.width(), 2);
    };
    for (const bool rightToLeft : {false, true}) {
        const QString file = File("chart.xls");
        Workbook book = Application().NewWorkbook();
        Worksheet sheet = book.Sheet(1);
        sheet.SetRightToLeft(rightToLeft);
        sheet.Cells(1, 1).SetValues({{QStringLiteral("a"), QStringLiteral("b")}, {1.0, 2.0}});
        sheet.AddChart(ChartKind::Line, sheet.Cells(1, 1, 2, 2), true, false, kPlace);
        expectNear(sheet.ChartAt(1).Place(), kPlace);
        book.SaveAs(file);
        book.Close(false);
        book = Application().OpenWorkbook(file);
        Chart chart = book.Sheet(1).ChartAt(1);
        expectNear(chart.Place(), kPlace);
        chart.SetPlace(kPlace.translated(40, 0));
        expectNear(chart.Place(), kPlace.translated(40, 0));
    }
}

TEST_F(WorkbookTest, RefusesWhatTheFormatCanNotHold) {
    Workbook book = Application().NewWorkbook();
    const Worksheet sheet = book.Sheet(1);
    EXPECT_EQ(FailureOf([&] { sheet.Cells(65536, 1).SetValues({{1.0}, {2.0}}); }), Failure::Limit);
    EXPECT_EQ(FailureOf([&] { sheet.Cells(1, 257).SetValue(1.0); }), Failure::Limit);
    EXPECT_EQ(FailureOf([&] { sheet.Cells(1, 1).SetValue(QString(32768, u'x')); }), Failure::Limit);
    EXPECT_EQ(FailureOf([&] { static_cast<void>(sheet.Address(QStringLiteral("A0:"))); }), Failure::Call);
    EXPECT_EQ(FailureOf([&] { static_cast<void>(book.Sheet(QStringLiteral("none"))); }), Failure::Call);
    EXPECT_TRUE(book.IsOpen());
}

TEST_F(WorkbookTest, RefusesForeignAndDamagedFiles) {
    Workbook book = Application().NewWorkbook();
    book.Sheet(1).Cells(1, 1).SetValue(1.0);
    book.SaveAs(File("good.xls"));
    book.Close(false);
    QFile good(File("good.xls"));
    ASSERT_TRUE(good.open(QIODevice::ReadOnly));
    const QByteArray bytes = good.readAll();
    const QList<QByteArray> contents{
        {}, "a,b\n1,2\n", "<html></html>", bytes.left(8), bytes.left(600), bytes.left(bytes.size() / 2)};
    for (const QByteArray& content : contents) {
        QFile bad(File("bad.xls"));
        ASSERT_TRUE(bad.open(QIODevice::WriteOnly | QIODevice::Truncate));
        bad.write(content);
        bad.close();
        EXPECT_EQ(FailureOf([&] { static_cast<void>(Application().OpenWorkbook(File("bad.xls"))); }), Failure::File)
            << content.size();
    }
    EXPECT_EQ(FailureOf([&] { static_cast<void>(Application().OpenWorkbook(File("none.xls"))); }), Failure::File);
    EXPECT_EQ(Application().OpenWorkbook(File("good.xls")).Sheet(1).Cells(1, 1).Value(), Cell(1.0));
}

TEST_F(WorkbookTest, MakesSlides) {
    SlideShow slides = Application().NewSlideShow();
    EXPECT_EQ(slides.AppendPictures({RedSquare()}), 2);
    slides.RemoveSlide(1);
    slides.SaveAs(File("slides.ppt"));
    slides.Close();
    SlideShow again = Application().OpenSlideShow(File("slides.ppt"));
    EXPECT_EQ(again.SlideCount(), 1);
    EXPECT_EQ(again.AppendPictures({RedSquare()}), 2);
    again.Save();
    EXPECT_EQ(Application().OpenSlideShow(File("slides.ppt")).SlideCount(), 2);
    EXPECT_EQ(FailureOf([&] { static_cast<void>(Application().OpenWorkbook(File("slides.ppt"))); }), Failure::File);
}

TEST_F(WorkbookTest, WhatIsLargeMayTakeLonger) {
    Workbook book = Application().NewWorkbook();
    const Block rows(40'000, std::vector<Cell>(10, QStringLiteral("a text")));
    Application().SetTimeLimit(std::chrono::milliseconds(200));
    const auto failure = FailureOf([&] {
        book.Sheet(1).Cells(1, 1).SetValues(rows);
        book.SaveAs(File("large.xls"));
    });
    Application().SetTimeLimit(std::chrono::seconds(30));
    EXPECT_FALSE(failure) << "neither the writing nor the saving is done within the usual time";
}

TEST_F(WorkbookTest, WritesManyRowsInBlocks) {
    Workbook book = Application().NewWorkbook();
    const Worksheet sheet = book.Sheet(1);
    QElapsedTimer timer;
    timer.start();
    for (int row = 1; row <= 20000; ++row)
        for (int column = 1; column <= 4; ++column)
            sheet.Cells(row, column).SetValue(row * 10.0 + column);
    sheet.Cells(1, 1, 20000, 4).SetStyle({.bold = true});
    book.SaveAs(File("many.xls"));
    EXPECT_LT(timer.elapsed(), 5000);
    const ReadSheet read = ReadXls(File("many.xls")).front();
    EXPECT_EQ(read.rows.size(), 20000);
    EXPECT_EQ(read.At(20000, 4).toDouble(), 200004);
}

} // namespace tessaro::office
