#include "office/Error.h"
#include "office/SpreadsheetApplication.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTextStream>

/// make-templates DIR: makes the empty workbooks of content/templates. They are kept with the sources, so
/// that a build needs no spreadsheet program; run it again when one of them is to change.
namespace {

struct Template {
    const char* file;
    QStringList sheets;
};

void Make(const Template& wanted, const QString& folder) {
    tessaro::office::Workbook book =
        tessaro::office::SpreadsheetApplication::Instance().NewWorkbook(static_cast<int>(wanted.sheets.size()));
    int number = 0;
    for (const QString& name : wanted.sheets)
        book.Sheet(++number).SetName(name);
    book.SaveAs(QDir(folder).filePath(QLatin1String(wanted.file)));
    book.Close(false);
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    if (argc != 2) {
        QTextStream(stderr) << "usage: make-templates DIR\n";
        return 2;
    }
    const QTemporaryDir profile;
    tessaro::office::SpreadsheetApplication::SetProfileFolder(profile.path());
    const Template templates[] = {
        {"TemplateExcel.xls", {QStringLiteral("DataView")}},
        {"Blank.Xls", {QStringLiteral("Sheet1")}},
        {"INTERFACE_IND_TIME_AREA_DATA.xls", {QStringLiteral("Sheet1")}},
        {"TableTmp.Xls", {QStringLiteral("Sheet1"), QStringLiteral("Sheet2"), QStringLiteral("Sheet3")}},
        {"GraphTmp.Xls",
         {QStringLiteral("Sheet1"), QStringLiteral("Sheet2"), QStringLiteral("Sheet3"), QStringLiteral("Sheet4")}},
    };
    try {
        for (const Template& wanted : templates)
            Make(wanted, QString::fromLocal8Bit(argv[1]));
        tessaro::office::SpreadsheetApplication::QuitAll();
    } catch (const tessaro::office::Error& error) {
        QTextStream(stderr) << "make-templates: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
