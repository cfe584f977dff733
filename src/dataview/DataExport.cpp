#include "dataview/DataExport.h"

#include "controls/SheetLook.h"
#include "dataview/GridQuery.h"
#include "office/Error.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/DisplayValue.h"
#include "session/Frame.h"
#include "session/LanguageName.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"

#include <QDateTime>
#include <QFile>

#include <array>

namespace tessaro {

namespace {

constexpr int kRowsOfSheet = 65535; ///< of values, below the header

constexpr int kFootnoteColumn = VisibleCols + 1;

int ColumnsOf(const ExportRows& rows) {
    return rows.footnoteOf ? kFootnoteColumn : VisibleCols;
}

QStringList Heads(const ExportRows& rows) {
    QStringList heads;
    for (int column = 1; column <= VisibleCols; ++column)
        heads << GetText(QLatin1String(GridColumns().at(static_cast<std::size_t>(column - 1)).headerKey));
    if (rows.footnoteOf) heads << GetText(QStringLiteral("FootNotes"));
    return heads;
}

QString TextOf(const ExportRows& rows, const GridRow& row, int column) {
    if (column < kFootnoteColumn) return row.Text(column);
    return row.footNId != 0 ? rows.footnoteOf(row) : QString();
}

bool BeginsFormula(QChar c) {
    // The wide forms are read like the others where Chinese or Japanese is written.
    return QStringView(u"=+-@\uFF1D\uFF0B\uFF0D\uFF20").contains(c);
}

/// What the grid's own export would say: one line about the last one.
void WriteLog(const char* name, const QString& file, int rows) {
    if (TempFolder.isEmpty()) return;
    static_cast<void>(ReplaceFile(JoinPath({TempFolder, QLatin1String(name)}),
                                  QStringLiteral("%1\t%2\t%3\n")
                                      .arg(QDateTime::currentDateTime().toString(Qt::ISODate), file)
                                      .arg(rows)
                                      .toUtf8()));
}

QString CellOf(const ExportRows& rows, const GridRow& row, int column) {
    if (column == ColDatavalue && ReadsAsNumber(row.datavalue))
        return SysNumFormat ? WithSeparators(row.datavalue, QLocale::system()) : row.datavalue;
    return WithoutFormula(TextOf(rows, row, column));
}

/// A cell of a text file. One that begins with a quotation mark would reach up to the next one, over other cells.
QString OneLine(QString text) {
    for (QChar& c : text)
        if (c == QLatin1Char('\t') || c == QLatin1Char('\n') || c == QLatin1Char('\r')) c = QLatin1Char(' ');
    return text.startsWith(QLatin1Char('"')) ? QLatin1Char('\'') + text : text;
}

QString HtmlHead() {
    const QString code = CodeOfLanguage(Language);
    return QStringLiteral(
               "<!DOCTYPE html>\n<html lang=\"%1\" dir=\"%2\">\n<head>\n<meta charset=\"utf-8\">\n"
               "<title>Data View</title>\n<style>\nbody{font-family:%4,sans-serif;margin:16px}\n"
               "table{border-collapse:collapse}\nth,td{border:1px solid #ccc;padding:2px 8px;text-align:start}\n"
               "th{background:#eee;position:sticky;top:0}\ntd.n{text-align:right}\n.g{color:%5}\n</style>\n"
               "</head>\n<body>\n<h1>%3</h1>\n<table>\n<thead>\n<tr>")
        .arg(code.isEmpty() ? QStringLiteral("en") : code.toHtmlEscaped(),
             RightToLeft || LanguageIsRightToLeft() ? QStringLiteral("rtl") : QStringLiteral("ltr"),
             GetText(QStringLiteral("TS_OptionView")).toHtmlEscaped(),
             QLatin1Char('\'') + QString(ProductFont).remove(QLatin1Char('\'')) + QLatin1Char('\''),
             ColorFromNumber(GlobalColor).name());
}

void AppendHtmlRow(QByteArray& page, const ExportRows& rows, const GridRow& row) {
    page += "<tr>";
    for (int column = 1; column <= ColumnsOf(rows); ++column) {
        const bool isNumber = column == ColDatavalue && ReadsAsNumber(row.datavalue);
        const bool isGlobal = ShowGlobalColor && row.IsGlobal(column);
        page += isNumber ? "<td class=\"n\">" : isGlobal ? "<td class=\"g\">" : "<td>";
        page += CellOf(rows, row, column).toHtmlEscaped().toUtf8();
        page += "</td>";
    }
    page += "</tr>\n";
}

} // namespace

QString WithoutFormula(const QString& text) {
    if (text.isEmpty() || ReadsAsNumber(text)) return text;
    qsizetype first = 0;
    while (first < text.size() &&
           (text[first].isSpace() || text[first] == QLatin1Char('"') || text[first].category() == QChar::Other_Format ||
            text[first].category() == QChar::Other_Control))
        ++first;
    const bool marked = text[0] == QLatin1Char('\t') || text[0] == QLatin1Char('\r') ||
                        (first < text.size() && BeginsFormula(text[first]));
    return marked ? QLatin1Char('\'') + text : text;
}

bool SaveDataViewHtm(const QString& file, const ExportRows& rows) {
    if (file.trimmed().isEmpty()) return true;
    QByteArray page = HtmlHead().toUtf8();
    const QStringList heads = Heads(rows);
    for (const QString& head : heads)
        page += "<th scope=\"col\">" + head.toHtmlEscaped().toUtf8() + "</th>";
    page += "</tr>\n</thead>\n<tbody>\n";
    for (int row = 0; row < rows.count; ++row)
        if (const GridRow* values = rows.rowAt(row)) AppendHtmlRow(page, rows, *values);
    page += "</tbody>\n</table>\n</body>\n</html>\n";
    if (!ReplaceFile(file, page)) return false;
    WriteLog("htm Log", file, rows.count);
    return true;
}

bool SaveDataViewTxt(const QString& file, const ExportRows& rows) {
    if (file.trimmed().isEmpty()) return true;
    QByteArray text = Heads(rows).join(QLatin1Char('\t')).toUtf8() + '\n';
    for (int row = 0; row < rows.count; ++row) {
        const GridRow* values = rows.rowAt(row);
        if (!values) continue;
        for (int column = 1; column <= ColumnsOf(rows); ++column) {
            if (column > 1) text += '\t';
            text += OneLine(CellOf(rows, *values, column)).toUtf8();
        }
        text += '\n';
    }
    return ReplaceFile(file, text);
}

namespace {

office::Cell XlsCell(const ExportRows& rows, const GridRow& row, int column) {
    const QString text = TextOf(rows, row, column);
    bool isNumber = false;
    const double number = column == ColDatavalue ? text.trimmed().toDouble(&isNumber) : 0;
    if (column == ColDatavalue && isNumber && ReadsAsNumber(text)) return number;
    return text.isEmpty() ? office::Cell() : office::Cell(text.left(32767));
}

std::vector<office::Cell> HeadCells(const ExportRows& rows) {
    std::vector<office::Cell> cells;
    const QStringList heads = Heads(rows);
    for (const QString& head : heads)
        cells.emplace_back(head);
    return cells;
}

/// Cells of global items in one column, handed over as blocks: neighbours below each other are mostly of one kind, and
/// a look for each cell would cost more than all values.
class GlobalRuns final {
  public:
    explicit GlobalRuns(office::Worksheet sheet) : sheet_(std::move(sheet)) {}

    void Next(int sheetRow, const GridRow& row) {
        for (Run& run : runs_) {
            const bool isGlobal = row.IsGlobal(run.column);
            if (isGlobal && run.first == 0) run.first = sheetRow;
            if (!isGlobal) End(run, sheetRow - 1);
        }
    }
    void Finish(int lastRow) {
        for (Run& run : runs_)
            End(run, lastRow);
    }

  private:
    struct Run {
        int column;
        int first = 0; ///< 0: none is open
    };

    void End(Run& run, int lastRow) {
        if (run.first == 0) return;
        sheet_.Cells(run.first, run.column, lastRow, run.column).SetStyle({.fontColorIndex = GlobalSlot});
        run.first = 0;
    }

    office::Worksheet sheet_;
    std::array<Run, 4> runs_{{{ColAreaName}, {ColIndicator}, {ColUnit}, {ColSubpop}}};
};

/// One sheet: the header and the rows from `first` on.
void FillSheet(office::Worksheet sheet, const ExportRows& rows, int first, int count) {
    office::Block block;
    block.reserve(static_cast<std::size_t>(count) + 1);
    block.push_back(HeadCells(rows));
    GlobalRuns globals(sheet);
    for (int row = first; row < first + count; ++row) {
        const GridRow* values = rows.rowAt(row);
        if (!values) continue;
        std::vector<office::Cell> cells;
        for (int column = 1; column <= ColumnsOf(rows); ++column)
            cells.push_back(XlsCell(rows, *values, column));
        block.push_back(std::move(cells));
        if (ShowGlobalColor) globals.Next(static_cast<int>(block.size()), *values);
    }
    const int last = static_cast<int>(block.size());
    WriteTable(sheet, block);
    globals.Finish(last);
}

} // namespace

int SaveDataViewXls(const QString& file, const ExportRows& rows) {
    if (file.trimmed().isEmpty()) return 0;
    const QString work = JoinPath({TempFolder, QStringLiteral("DataView.xls")});
    office::Workbook book = office::SpreadsheetApplication::Instance().OpenCopy(
        FindPath(JoinPath({AppPath, QStringLiteral("Bin/Template/TemplateExcel.xls")})), work);
    if (ShowGlobalColor) book.SetColors(GlobalSlot, ColorFromNumber(GlobalColor));
    const int sheets = std::max(1, (rows.count + kRowsOfSheet - 1) / kRowsOfSheet);
    for (int number = 1; number <= sheets; ++number) {
        const office::Worksheet sheet = number == 1 ? book.Sheet(QStringLiteral("DataView"))
                                                    : book.AddSheet(QStringLiteral("DataView %1").arg(number));
        const int first = (number - 1) * kRowsOfSheet;
        FillSheet(sheet, rows, first, std::min(kRowsOfSheet, rows.count - first));
        TheFrame().SetProgress(90 * number / sheets);
    }
    book.ActivateSheet(1);
    book.Save();
    book.Close(false);
    if (!SamePath(work, file) && !CopyFileOver(work, file)) throw office::Error(office::Failure::File, file);
    WriteLog("Exc Log", file, rows.count);
    return sheets;
}

} // namespace tessaro
