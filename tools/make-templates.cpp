#include "office/Error.h"
#include "office/SpreadsheetApplication.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTextStream>

#include <initializer_list>

/// make-templates DIR [NAME]: makes the empty workbooks of content/templates, or the one of this name. They are kept
/// with the sources, so that a build needs no spreadsheet program; run it again when one of them is to change.
namespace {

namespace office = tessaro::office;

struct Template {
    const char* file;
    int sheets;
    void (*layOut)(office::Workbook& book) = nullptr;
    const char* name = "Sheet%1"; ///< of each sheet
};

/// Widths of columns from the first on, in characters.
void SetWidths(office::Worksheet sheet, std::initializer_list<double> widths) {
    int column = 0;
    for (const double width : widths)
        sheet.SetColumnWidth(++column, width);
}

/// The sheets of data and of sources, and the page of the map: a margin column, then eight columns that the map
/// stands over.
void LayOutMap(office::Workbook& book, double mapPoints, bool landscape) {
    constexpr int kPairs = 4;
    constexpr double kDigit = 5.25; // points
    constexpr double kSwatch = 30;
    office::Worksheet map = book.Sheet(1);
    map.SetColumnWidth(1, 1);
    for (int pair = 0; pair < kPairs; ++pair) {
        map.SetColumnWidth(2 + 2 * pair, kSwatch / kDigit);
        map.SetColumnWidth(3 + 2 * pair, (mapPoints / kPairs - kSwatch) / kDigit);
    }
    map.SetGridLines(false);
    map.SetPageSetup({.landscape = landscape, .fitToPagesWide = 1, .fitToPagesTall = 1});
    SetWidths(book.Sheet(2), {12, 16, 30, 16, 24, 24, 40});
    SetWidths(book.Sheet(3), {14, 60});
    for (const int sheet : {2, 3})
        book.Sheet(sheet).SetPageSetup({.landscape = sheet == 2, .fitToPagesWide = 1});
}

/// The legend below the map, in pairs of columns for swatches and their texts.
void LayOutSquare(office::Workbook& book) {
    LayOutMap(book, 544, false);
}
void LayOutHorizontal(office::Workbook& book) {
    LayOutMap(book, 480, false);
}

/// The legend beside the map: swatches in the eleventh column, texts in the twelfth.
void LayOutVertical(office::Workbook& book) {
    LayOutMap(book, 736, true);
    book.Sheet(1).SetColumnWidth(10, 2);
    book.Sheet(1).SetColumnWidth(11, 6);
    book.Sheet(1).SetColumnWidth(12, 24);
}

/// The working, its details, remarks on areas, and the ranks of an index.
void LayOutLog(office::Workbook& book) {
    for (const int sheet : {1, 2, 3, 4}) {
        SetWidths(book.Sheet(sheet), {18, 18, 30, 16, 16, 16, 30});
        book.Sheet(sheet).SetPageSetup({.landscape = true, .fitToPagesWide = 1});
    }
}

void LayOutDataEntry(office::Workbook& book) {
    SetWidths(book.Sheet(1), {14, 16, 30, 16, 24, 40});
    book.Sheet(1).SetPageSetup({.landscape = true, .fitToPagesWide = 1});
}

constexpr Template kTemplates[] = {
    {"TemplateExcel.xls", 1, nullptr, "DataView"},
    {"Blank.Xls", 1},
    {"INTERFACE_IND_TIME_AREA_DATA.xls", 1},
    {"TableTmp.Xls", 3},
    {"GraphTmp.Xls", 4},
    {"Log_Calculate.xls", 4, LayOutLog},
    {"Data_DataEntry.xls", 1, LayOutDataEntry},
    {"MapLayoutSquare.xls", 3, LayOutSquare},
    {"MapLayoutHorizontal.xls", 3, LayOutHorizontal},
    {"MapLayoutVertical.xls", 3, LayOutVertical},
};

void Make(const Template& wanted, const QString& folder) {
    office::Workbook book = office::SpreadsheetApplication::Instance().NewWorkbook(wanted.sheets);
    for (int number = 1; number <= wanted.sheets; ++number) {
        QString name = QLatin1String(wanted.name);
        book.Sheet(number).SetName(name.replace(QStringLiteral("%1"), QString::number(number)));
    }
    if (wanted.layOut) wanted.layOut(book);
    book.SaveAs(QDir(folder).filePath(QLatin1String(wanted.file)));
    book.Close(false);
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    if (argc != 2 && argc != 3) {
        QTextStream(stderr) << "usage: make-templates DIR [NAME]\n";
        return 2;
    }
    const QTemporaryDir profile;
    tessaro::office::SpreadsheetApplication::SetProfileFolder(profile.path());
    try {
        for (const Template& wanted : kTemplates)
            if (argc == 2 || qstrcmp(wanted.file, argv[2]) == 0) Make(wanted, QString::fromLocal8Bit(argv[1]));
        tessaro::office::SpreadsheetApplication::QuitAll();
    } catch (const tessaro::office::Error& error) {
        QTextStream(stderr) << "make-templates: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
