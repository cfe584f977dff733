#include "dataview/DataExport.h"

#include "dataview/GridQuery.h"
#include "formats/CsvText.h"
#include "formats/PageText.h"
#include "formats/ValueFile.h"
#include "office/Error.h"
#include "office/ForeignWorkbook.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/DisplayValue.h"
#include "session/Frame.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "session/Templates.h"
#include "sheets/ListSheet.h"
#include "sheets/ValueCells.h"

#include <QDateTime>
#include <QFile>
#include <QSet>

#include <utility>

namespace tessaro {

namespace {

constexpr int kFootnoteColumn = VisibleCols + 1;
constexpr qsizetype kPiece = qsizetype{1} << 20; ///< bytes that are written at once

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

/// Writes the log file of the export: one line about the last file written.
void WriteLog(const char* name, const QString& file, int rows) {
    if (TempFolder.isEmpty()) return;
    static_cast<void>(ReplaceFile(JoinPath({TempFolder, QLatin1String(name)}),
                                  QStringLiteral("%1\t%2\t%3\n")
                                      .arg(QDateTime::currentDateTime().toString(Qt::ISODate), file)
                                      .arg(rows)
                                      .toUtf8()));
}

QString CellOf(const ExportRows& rows, const GridRow& row, int column) {
    if (column == ColDatavalue && ReadsAsNumber(row.datavalue)) return FiledValue(row.datavalue);
    return WithoutFormula(TextOf(rows, row, column));
}

/// A cell of a text file: one line, without tabs. A leading quotation mark gets an apostrophe before it, since a
/// spreadsheet would take everything up to the next quotation mark for one cell.
QString OneLine(QString text) {
    for (QChar& c : text)
        if (c == QLatin1Char('\t') || c == QLatin1Char('\n') || c == QLatin1Char('\r')) c = QLatin1Char(' ');
    return text.startsWith(QLatin1Char('"')) ? QLatin1Char('\'') + text : text;
}

void AppendPageRow(QByteArray& page, const ExportRows& rows, const GridRow& row) {
    page += "<tr>";
    for (int column = 1; column <= ColumnsOf(rows); ++column) {
        const bool isNumber = column == ColDatavalue && ReadsAsNumber(row.datavalue);
        const bool isGlobal = ShowGlobalColor && row.IsGlobal(column);
        page += PageCell(CellOf(rows, row, column), isNumber   ? PageCellKind::Number
                                                    : isGlobal ? PageCellKind::Global
                                                               : PageCellKind::Text);
    }
    page += "</tr>\n";
}

} // namespace

bool SaveDataViewHtm(const QString& file, const ExportRows& rows) {
    if (file.trimmed().isEmpty()) return true;
    ValueFile out(file);
    QByteArray page = PageBegin({GetText(QStringLiteral("TS_OptionView")), {}, QStringLiteral("Data View")},
                                {Heads(rows), ColDatavalue - 1, 1});
    PageEnd end{{}, {}, rows.aboutSource};
    QSet<QString> listed;
    for (int row = 0; row < rows.count; ++row) {
        const GridRow* const values = rows.rowAt(row);
        if (!values) continue;
        AppendPageRow(page, rows, *values);
        if (page.size() > kPiece) out.Write(std::exchange(page, {}));
        if (!rows.aboutSource || listed.contains(values->source)) continue;
        listed.insert(values->source);
        end.sources << values->source;
    }
    out.Write(page + PageEndText(end));
    if (!out.Finish()) return false;
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

bool SaveDataViewValues(const QString& file, const ExportRows& rows) {
    const auto at = [&](int number) -> std::optional<ValueRow> {
        const GridRow* const row = rows.rowAt(number);
        if (row == nullptr) return std::nullopt;
        return ValueRow{
            row->timePeriod, row->areaId,    row->areaName,
            row->indicator,  row->unit,      row->subpop,
            row->source,     row->datavalue, rows.footnoteOf ? TextOf(rows, *row, kFootnoteColumn) : QString()};
    };
    const ValueForm* const form = ValueFormOf(file);
    return form != nullptr && form->save(file, {rows.count, at, rows.beforeLoss, rows.ringsOf, rows.aboutSource});
}

namespace {

ListRow XlsRow(const ExportRows& rows, const GridRow& row) {
    ListRow line;
    for (int column = 1; column <= ColumnsOf(rows); ++column) {
        const QString text = TextOf(rows, row, column);
        line.cells.push_back(column == ColDatavalue ? ValueCell(text) : TextCell(text));
        if (row.IsGlobal(column)) line.global |= 1U << (column - 1);
    }
    return line;
}

} // namespace

int SaveDataViewXls(const QString& file, const ExportRows& rows) {
    if (file.trimmed().isEmpty()) return 0;
    const QString work = JoinPath({TempFolder, QStringLiteral("DataView.xls")});
    office::Workbook book =
        office::SpreadsheetApplication::Instance().OpenCopy(TemplateFile(QStringLiteral("TemplateExcel.xls")), work);
    SetGlobalColor(book);
    int row = 0;
    const auto next = [&]() -> std::optional<ListRow> {
        while (row < rows.count)
            if (const GridRow* values = rows.rowAt(row++)) return XlsRow(rows, *values);
        return std::nullopt;
    };
    const QString name = QStringLiteral("DataView");
    const auto written = [&](int) { TheFrame().SetProgress(rows.count > 0 ? 90 * row / rows.count : 90); };
    const int sheets =
        WriteList(book, book.Sheet(name), {.name = name, .heads = Heads(rows), .next = next, .sheetWritten = written});
    book.ActivateSheet(1);
    book.Save();
    const bool isXls = file.endsWith(QLatin1String(".xls"), Qt::CaseInsensitive);
    if (!isXls) office::SaveCopyAs(book, file);
    book.Close(false);
    if (isXls && !SamePath(work, file) && !CopyFileOver(work, file)) throw office::Error(office::Failure::File, file);
    WriteLog("Exc Log", file, rows.count);
    return sheets;
}

} // namespace tessaro
