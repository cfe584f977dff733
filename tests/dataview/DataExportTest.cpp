#include "dataview/DataExport.h"

#include "TestPlaces.h"
#include "dataview/GridQuery.h"
#include "formats/CsvLook.h"
#include "formats/CsvText.h"
#include "office/Error.h"
#include "office/ForeignWorkbook.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "support/ReadXls.h"
#include "support/SelectionTest.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QProcess>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <optional>

namespace tessaro::test {

namespace {

GridRow Row(const QString& areaId, const QString& areaName, const QString& datavalue, quint16 globalCells = 0) {
    GridRow row;
    row.timePeriod = QStringLiteral("2001");
    row.areaId = areaId;
    row.areaName = areaName;
    row.indicator = QStringLiteral("Births");
    row.datavalue = datavalue;
    row.unit = QStringLiteral("Number");
    row.subpop = QStringLiteral("Total");
    row.source = QStringLiteral("Census");
    row.globalCells = globalCells;
    return row;
}

class DataExportTest : public SessionTest {
  protected:
    DataExportTest() {
        StartInstallation();
        UseSpreadsheet();
        ShowGlobalColor = true;
        GlobalColor = 0x00331A; // red 26, green 51
        rows = {Row(QStringLiteral("00123"), QStringLiteral("A <b>&amp; \"'x\""), QStringLiteral("1234.50")),
                Row(QStringLiteral("=1+1"), QString::fromUtf8("\u0627\u0644\u0639\u0631\u0627\u0642"),
                    QStringLiteral("n/a"), quint16{1} << ColAreaName | quint16{1} << ColIndicator),
                Row(QStringLiteral("B\tC"), QStringLiteral("two\nlines"), QString())};
    }

    [[nodiscard]] ExportRows All() const {
        return {static_cast<int>(rows.size()), [this](int row) { return &rows.at(static_cast<std::size_t>(row)); }};
    }
    [[nodiscard]] QString File(const char* name) const { return JoinPath({Folder(), QLatin1String(name)}); }
    [[nodiscard]] static QStringList Heads() {
        QStringList heads;
        for (const char* key : {"Comm_Time", "Comm_Area Id", "Comm_Area Name", "Comm_Indicator", "Comm_Datavalue",
                                "Comm_Unit", "Subpop", "Comm_Source"})
            heads << GetText(QLatin1String(key));
        return heads;
    }
    [[nodiscard]] QJsonObject ReadPage(const char* name) const {
        QProcess reader;
        reader.start(QStringLiteral("/usr/bin/python3"),
                     {QStringLiteral(TESSARO_TESTS "/support/read_html.py"), File(name)});
        EXPECT_TRUE(reader.waitForFinished(60000) && reader.exitCode() == 0)
            << reader.readAllStandardError().toStdString();
        return QJsonDocument::fromJson(reader.readAllStandardOutput()).object();
    }
    static QStringList Texts(const QJsonValue& row) {
        QStringList texts;
        const QJsonArray cells = row.toArray();
        for (const QJsonValue& cell : cells)
            texts << cell.toString();
        return texts;
    }
    template <class Call> static std::optional<office::Failure> FailureOf(Call&& call) {
        try {
            call();
        } catch (const office::Error& error) {
            return error.failure;
        }
        return std::nullopt;
    }

    std::vector<GridRow> rows;
};

TEST_F(DataExportTest, APageHoldsTheRowsAsTheyAreAndNothingElse) {
    SysNumFormat = false;
    ASSERT_TRUE(SaveDataViewHtm(File("DataView.htm"), All()));
    const QJsonObject page = ReadPage("DataView.htm");
    EXPECT_EQ(page.value("doctype").toString().toLower(), QStringLiteral("doctype html"));
    EXPECT_EQ(page.value("charset").toString().toLower(), QStringLiteral("utf-8"));
    EXPECT_EQ(page.value("lang").toString(), QStringLiteral("en"));
    EXPECT_EQ(page.value("dir").toString(), QStringLiteral("ltr"));
    EXPECT_EQ(page.value("title").toString(), QStringLiteral("Data View"));
    EXPECT_TRUE(page.value("wrong").toArray().isEmpty()) << Texts(page.value("wrong")).join(u' ').toStdString();
    EXPECT_EQ(Texts(page.value("heads")), Heads());
    const QJsonArray read = page.value("rows").toArray();
    ASSERT_EQ(read.size(), 3);
    EXPECT_EQ(Texts(read.at(0)),
              (QStringList{"2001", "00123", "A <b>&amp; \"'x\"", "Births", "1234.50", "Number", "Total", "Census"}));
    EXPECT_EQ(Texts(read.at(1)).value(2), QString::fromUtf8("\u0627\u0644\u0639\u0631\u0627\u0642"));
    const QJsonArray classes = page.value("classes").toArray();
    EXPECT_EQ(Texts(classes.at(1)), (QStringList{"", "", "g", "g", "", "", "", ""})) << "global cells have their class";
    EXPECT_EQ(Texts(classes.at(0)).value(4), QStringLiteral("n"));
}

TEST_F(DataExportTest, APageListsTheSourcesOfItsRows) {
    ExportRows all = All();
    all.aboutSource = [](const QString& source) { return QStringLiteral("About <%1>").arg(source); };
    ASSERT_TRUE(SaveDataViewHtm(File("DataView.htm"), all));
    const QByteArray page = ReadWholeFile(File("DataView.htm")).value_or(QByteArray());
    EXPECT_EQ(page.count("<dt>Census</dt>\n<dd>About &lt;Census&gt;</dd>"), 1);
    EXPECT_TRUE(ReadPage("DataView.htm").value("wrong").toArray().isEmpty());
}

TEST_F(DataExportTest, APageAndASheetRunTheWayTheirLanguageDoes) {
    Language = QStringLiteral("Arabic [ar]");
    ASSERT_TRUE(SaveDataViewHtm(File("DataView.htm"), All()));
    const QJsonObject page = ReadPage("DataView.htm");
    EXPECT_EQ(page.value("lang").toString(), QStringLiteral("ar"));
    EXPECT_EQ(page.value("dir").toString(), QStringLiteral("rtl"));
    ASSERT_EQ(SaveDataViewXls(File("DataView.xls"), All()), 1);
    EXPECT_TRUE(ReadXls(File("DataView.xls")).front().rightToLeft);
}

TEST_F(DataExportTest, ATextHasOneLineARow) {
    SysNumFormat = false;
    ASSERT_TRUE(SaveDataViewTxt(File("DataView.txt"), All()));
    const QByteArray text = ReadWholeFile(File("DataView.txt")).value();
    const QList<QByteArray> lines = text.split('\n');
    ASSERT_EQ(lines.size(), 5) << "header, three rows, nothing behind the last line feed";
    EXPECT_FALSE(text.contains('\r'));
    EXPECT_EQ(QString::fromUtf8(lines[0]).split(u'\t'), Heads());
    EXPECT_EQ(lines[1], QByteArray("2001\t00123\tA <b>&amp; \"'x\"\tBirths\t1234.50\tNumber\tTotal\tCensus"));
    EXPECT_EQ(lines[3], QByteArray("2001\tB C\ttwo lines\tBirths\t\tNumber\tTotal\tCensus"));
}

TEST_F(DataExportTest, TextsThatSpreadsheetsWouldTakeForFormulasAreMarked) {
    for (const char* formula : {"=1+1", " =1+1", "\t=1+1", "\r=1", "@SUM(1,1)", "+A1", "-A1", "-1+1", "\"=1+1\"",
                                "\u00A0=1", "\u200B=1", "\uFF1D1+1", "=cmd|'/c calc'!A1", "\tx"})
        EXPECT_EQ(WithoutFormula(QString::fromUtf8(formula)), QLatin1Char('\'') + QString::fromUtf8(formula));
    for (const char* plain : {"", " ", "-12.5", "+5", " -1e3 ", "a=b", "0-14", "'=1", "\"quoted\" name", "<b>=1</b>"})
        EXPECT_EQ(WithoutFormula(QString::fromUtf8(plain)), QString::fromUtf8(plain));
}

/// Cells of a file as the spreadsheet program opens it: each as its kind ("float", "string", "formula") and its text.
QStringList OpenedBySpreadsheet(const QString& file, const QString& reader, const QString& folder) {
    QProcess program;
    // The files are read back as an English user would: in other locales it reads other numbers.
    QProcessEnvironment english = QProcessEnvironment::systemEnvironment();
    english.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    program.setProcessEnvironment(english);
    program.start(QStringLiteral("soffice"),
                  {QStringLiteral("-env:UserInstallation=file://") + folder + QStringLiteral("/profile"),
                   QStringLiteral("--headless"), QStringLiteral("--infilter=") + reader, QStringLiteral("--convert-to"),
                   QStringLiteral("fods:OpenDocument Spreadsheet Flat XML"), QStringLiteral("--outdir"), folder, file});
    EXPECT_TRUE(program.waitForFinished(120000));
    const QString made = QString(file).replace(QFileInfo(file).suffix(), QStringLiteral("fods"));
    QXmlStreamReader xml(ReadWholeFile(made).value_or(QByteArray()));
    QStringList cells;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("table-cell")) {
            const QXmlStreamAttributes about = xml.attributes();
            const bool formula = !about.value(QLatin1String("table:formula")).isEmpty();
            cells << (formula ? QStringLiteral("formula") : about.value(QLatin1String("office:value-type")).toString());
        } else if (xml.isCharacters() && !xml.isWhitespace() && !cells.isEmpty()) {
            cells.last() += QLatin1Char(' ') + xml.text().toString().simplified();
        }
    }
    return cells;
}

TEST_F(DataExportTest, OpenedInASpreadsheetTextsStayTextsAndNumbersNumbers) {
    SysNumFormat = false;
    rows = {Row(QStringLiteral("=DDE(\"soffice\";\"x\";\"a1\")"), QStringLiteral("=cmd|'/c calc'!A1"),
                QStringLiteral("-12.5")),
            Row(QStringLiteral(" =WEBSERVICE(\"http://localhost\")"), QStringLiteral("\"=1+1\""), QStringLiteral("+5")),
            Row(QStringLiteral("=1+1"), QStringLiteral("\"not closed"), QStringLiteral("=2+2"))};
    ASSERT_TRUE(SaveDataViewHtm(File("view.htm"), All()));
    ASSERT_TRUE(SaveDataViewTxt(File("view.txt"), All()));
    for (const auto& [name, reader] :
         {std::pair{"view.htm", "HTML (StarCalc)"}, std::pair{"view.txt", "Text - txt - csv (StarCalc):9,34,76,1"}}) {
        const QStringList cells = OpenedBySpreadsheet(File(name), QLatin1String(reader), Folder());
        EXPECT_GE(cells.size(), 4 * VisibleCols) << name;
        EXPECT_TRUE(cells.filter(QRegularExpression(QStringLiteral("^formula"))).isEmpty())
            << name << ": " << cells.join(u'|').toStdString();
        EXPECT_TRUE(cells.contains(QLatin1String("float -12.5"))) << name;
        EXPECT_TRUE(cells.contains(QLatin1String("float 5"))) << name;
        EXPECT_TRUE(cells.contains(QLatin1String("string '=1+1"))) << name << ": " << cells.join(u'|').toStdString();
        EXPECT_TRUE(cells.contains(QLatin1String("string '=2+2"))) << name << ": a value that is no number";
    }
}

TEST_F(DataExportTest, AWorkbookHasNumbersTextsAndLooks) {
    ASSERT_EQ(SaveDataViewXls(File("DataView.xls"), All()), 1);
    const std::vector<ReadSheet> sheets = ReadXls(File("DataView.xls"));
    ASSERT_EQ(sheets.size(), 1U);
    const ReadSheet& sheet = sheets.front();
    EXPECT_EQ(sheet.name, QStringLiteral("DataView"));
    EXPECT_FALSE(sheet.rightToLeft);
    ASSERT_EQ(sheet.rows.size(), 4);
    EXPECT_EQ(Texts(sheet.rows.at(0)), Heads());
    EXPECT_EQ(sheet.Text(2, ColAreaID), QStringLiteral("00123"));
    EXPECT_EQ(sheet.Text(3, ColAreaID), QStringLiteral("=1+1")) << "a text, not a formula";
    EXPECT_TRUE(sheet.At(2, ColDatavalue).isDouble());
    EXPECT_EQ(sheet.At(2, ColDatavalue).toDouble(), 1234.5);
    EXPECT_EQ(sheet.Text(3, ColDatavalue), QStringLiteral("n/a"));
    EXPECT_TRUE(sheet.At(4, ColDatavalue).isNull());
    for (int column = 1; column <= VisibleCols; ++column) {
        EXPECT_TRUE(sheet.Look(1, column).value("bold").toBool()) << column;
        EXPECT_FALSE(sheet.Look(2, column).value("bold").toBool()) << column;
        EXPECT_EQ(sheet.Look(2, column).value("borders").toArray(), (QJsonArray{1, 1, 1, 1})) << column;
    }
    const QString global = QStringLiteral("1A3300");
    EXPECT_EQ(sheet.Look(3, ColAreaName).value("colour").toString(), global);
    EXPECT_EQ(sheet.Look(3, ColIndicator).value("colour").toString(), global);
    EXPECT_NE(sheet.Look(3, ColUnit).value("colour").toString(), global);
    EXPECT_NE(sheet.Look(2, ColAreaName).value("colour").toString(), global);
    EXPECT_EQ(sheet.Look(3, ColAreaName).value("font"), sheet.Look(2, ColAreaName).value("font"));
}

TEST_F(DataExportTest, OtherKindsOfWorkbooksHoldTheSame) {
    for (const char* name : {"DataView.xlsx", "DataView.ods"}) {
        EXPECT_EQ(SaveDataViewXls(File(name), All()), 1) << name;
        const office::ForeignWorkbook book(File(name));
        EXPECT_EQ(book.SheetNames(), QStringList{"DataView"});
        book.SaveSheetAsText(1, File("sheet.csv"));
        TableRow row;
        const auto reader = OpenCsv(File("sheet.csv"), {});
        ASSERT_TRUE(reader->Next(row) && reader->Next(row));
        EXPECT_EQ(row.fields[1] + row.fields[4], "001231234.5") << name;
        ASSERT_TRUE(reader->Next(row));
        EXPECT_EQ(row.fields[1] + row.fields[4], "=1+1n/a") << name;
    }
}

TEST_F(DataExportTest, FilesOfValuesHoldThemAsTheyAreStored) {
    const std::pair<const char*, const char*> files[] = {
        {"a.csv", "2001,00123,\"A <b>&amp; \"\"'x\"\"\",Births,1234.50,Number,Total,Census,"},
        {"a.wide.csv", "00123,\"A <b>&amp; \"\"'x\"\"\",Births,Number,Total,Census,1234.50"},
        {"a.sdmx.csv", "TESSARO:DATA(1.0),00123,\"A <b>&amp; \"\"'x\"\"\",Births,Number,Total,Census,2001,1234.50,"},
        {"a.json", "\"value\":{\"0\":1234.5,"},
        {"a.px", "\"A <b>&amp; ''x'\",\"Births\",\"Number\",\"Total\",\"Census\",1234.5 "}};
    for (const auto& [name, line] : files) {
        EXPECT_NE(ValueFormOf(File(name)), nullptr);
        ASSERT_TRUE(SaveDataViewValues(File(name), All())) << name;
        const QByteArray text = ReadWholeFile(File(name)).value_or(QByteArray());
        EXPECT_TRUE(text.contains(line)) << name << ": " << text.toStdString();
    }
    EXPECT_TRUE(ReadWholeFile(File("a.csv")).value_or(QByteArray()).contains("2001,'=1+1,"));
    EXPECT_FALSE(SaveDataViewValues(QStringLiteral("/proc/a.csv"), All()));
    EXPECT_EQ(ValueFormOf(File("a.txt")), nullptr);
}

TEST_F(DataExportTest, RowsBeyondOneSheetGoOnOnTheNext) {
    const GridRow row = Row(QStringLiteral("001"), QStringLiteral("Area"), QStringLiteral("7"));
    GridRow last = row;
    last.areaName = QStringLiteral("the last one");
    constexpr int count = 65535 + 2;
    ASSERT_EQ(SaveDataViewXls(File("long.xls"), {count, [&](int n) { return n == count - 1 ? &last : &row; }}), 2);
    const std::vector<ReadSheet> sheets = ReadXls(File("long.xls"));
    ASSERT_EQ(sheets.size(), 2U);
    EXPECT_EQ(sheets[0].rows.size(), 65536);
    EXPECT_EQ(sheets[1].name, QStringLiteral("DataView 2"));
    ASSERT_EQ(sheets[1].rows.size(), 3);
    EXPECT_EQ(Texts(sheets[1].rows.at(0)), Heads());
    EXPECT_EQ(sheets[1].Text(3, ColAreaName), QStringLiteral("the last one"));
}

TEST_F(DataExportTest, ReplacesAFileWithoutAQuestion) {
    for (const char* name : {"old.htm", "old.txt", "old.xls"})
        ASSERT_TRUE(ReplaceFile(File(name), "old"));
    EXPECT_TRUE(SaveDataViewHtm(File("old.htm"), All()));
    EXPECT_TRUE(SaveDataViewTxt(File("old.txt"), All()));
    EXPECT_EQ(SaveDataViewXls(File("old.xls"), All()), 1);
    EXPECT_EQ(ReadPage("old.htm").value("rows").toArray().size(), 3);
    EXPECT_GT(ReadWholeFile(File("old.txt")).value().size(), 3);
    EXPECT_EQ(ReadXls(File("old.xls")).front().rows.size(), 4);
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(DataExportTest, ABlankNameDoesNothing) {
    for (const QString& name : {QString(), QStringLiteral("  ")}) {
        EXPECT_TRUE(SaveDataViewHtm(name, All()));
        EXPECT_TRUE(SaveDataViewTxt(name, All()));
        EXPECT_EQ(SaveDataViewXls(name, All()), 0);
    }
    EXPECT_TRUE(FilesOf(TempFolder).isEmpty());
}

TEST_F(DataExportTest, SaysWhenAFileCanNotBeWritten) {
    // A folder in the way stops everybody, also those who may write anywhere.
    for (const char* name : {"way.htm", "way.txt", "way.xls"})
        ASSERT_TRUE(QDir().mkpath(File(name)));
    EXPECT_FALSE(SaveDataViewHtm(File("way.htm"), All()));
    EXPECT_FALSE(SaveDataViewTxt(File("way.txt"), All()));
    EXPECT_EQ(FailureOf([&] { SaveDataViewXls(File("way.xls"), All()); }), office::Failure::File);
    EXPECT_EQ(SaveDataViewXls(File("after.xls"), All()), 1) << "the next export goes through";
}

TEST_F(DataExportTest, WithoutItsTemplateTheOldWorkbookStays) {
    ASSERT_TRUE(ReplaceFile(File("kept.xls"), "old"));
    AppPath = File("nowhere");
    EXPECT_EQ(FailureOf([&] { SaveDataViewXls(File("kept.xls"), All()); }), office::Failure::File);
    EXPECT_EQ(ReadWholeFile(File("kept.xls")).value(), QByteArray("old"));
}

TEST_F(DataExportTest, NoRowsGiveAHeaderAlone) {
    const ExportRows none{0, [](int) { return nullptr; }};
    ASSERT_TRUE(SaveDataViewHtm(File("none.htm"), none));
    ASSERT_EQ(SaveDataViewXls(File("none.xls"), none), 1);
    EXPECT_TRUE(ReadPage("none.htm").value("rows").toArray().isEmpty());
    EXPECT_EQ(ReadXls(File("none.xls")).front().rows.size(), 1);
}

} // namespace

} // namespace tessaro::test
