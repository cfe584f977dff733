#include "presentation/SheetParts.h"

#include "office/SpreadsheetApplication.h"
#include "session/DisplayValue.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"

#include <algorithm>
#include <chrono>

namespace tessaro {

namespace {

constexpr int kRowsOfSheet = 65535; ///< of values, below the head
constexpr int kLongestText = 32767; ///< of a cell
constexpr int kMostDecimals = 15;
constexpr int kFewValues = 10000;
constexpr std::size_t kRunsAtOnce = 3500; ///< fewer than go over at once
constexpr int kValueColumn = 5;           ///< of the data list
constexpr int kListColumns = 8;

QString Plain(const char* key) {
    return GetText(QLatin1String(key)).remove(QLatin1Char('&'));
}

int LengthOf(const QString& text) {
    qsizetype longest = 0;
    for (const QString& line : text.split(QLatin1Char('\n')))
        longest = std::max(longest, line.size());
    return static_cast<int>(longest);
}

std::vector<office::Cell> ListHead() {
    std::vector<office::Cell> head;
    for (const char* key : {"Comm_Time", "Comm_Area Id", "Comm_Area Name", "Comm_Indicator", "Comm_Datavalue",
                            "Comm_Unit", "Subpop", "Comm_Source"})
        head.emplace_back(Plain(key));
    return head;
}

Records ListRows() {
    return Select(QStringLiteral("SELECT T.TimePeriod, A.AreaId, A.AreaName, IUS.[Indicator], D.Datavalue, IUS.Unit, "
                                 "IUS.Subpop, IUS.Source  FROM ((Data AS D INNER JOIN _SelTimePeriod AS T ON "
                                 "D.TimePeriodNId = T.TimePeriodNId)  INNER JOIN _SelArea AS A ON D.AreaNId = "
                                 "A.AreaNId) INNER JOIN _SelIUSNId AS IUS ON  (D.SourceNId = IUS.SourceNId) AND "
                                 "(D.IUSNId = IUS.IUSNId)  WHERE IUS.Deleted = False ") +
                      RowFilter,
                  jet::CursorType::ForwardOnly);
}

/// The look of a list of values: body font on the numbers, the language's font on all that is text.
void DressList(office::Worksheet& sheet, int rows, const TableFont& font) {
    office::CellStyle text = TextFont(font).Style();
    text.numberFormat = QStringLiteral("@");
    text.horizontal = office::Align::Left;
    office::CellStyle value = font.Style();
    value.horizontal = office::Align::Right;
    sheet.Cells(1, 1, rows, kValueColumn - 1).SetStyle(text);
    sheet.Cells(1, kValueColumn + 1, rows, kListColumns).SetStyle(text);
    if (rows > 1) sheet.Cells(2, kValueColumn, rows, kValueColumn).SetStyle(value);
    office::CellStyle head = TextFont(font).Style();
    head.bold = true;
    head.interiorColorIndex = 34;
    sheet.Cells(1, 1, 1, kListColumns).SetStyle(head);
    sheet.Cells(1, kValueColumn).SetStyle({.horizontal = office::Align::Right});
    sheet.Cells(1, 1, 1, kListColumns).SetBorders(office::EdgeBottom, {});
}

/// One sheet of values from the record on; gives the number of rows written, head included.
void FillListSheet(office::Worksheet sheet, Records& records, const TableFont& font) {
    SetUpSheet(sheet, 1, 1);
    office::Block block{ListHead()};
    LookCollector formats;
    ColumnWidths widths;
    for (int column = 1; column <= kListColumns; ++column)
        widths.AddHead(column, std::get<QString>(block.front()[static_cast<std::size_t>(column - 1)]));
    for (; !records.atEnd() && block.size() <= kRowsOfSheet; records.MoveNext()) {
        std::vector<office::Cell> row;
        for (int column = 1; column <= kListColumns; ++column) {
            const QString text = records.Text(static_cast<std::size_t>(column - 1));
            widths.Add(column, text);
            row.push_back(column == kValueColumn ? ValueCell(text) : office::Cell(text.left(kLongestText)));
            if (column == kValueColumn)
                formats.Add(static_cast<int>(block.size()) + 1, column, {.numberFormat = ValueFormat(text)});
        }
        block.push_back(std::move(row));
    }
    const int rows = static_cast<int>(block.size());
    DressList(sheet, rows, font);
    formats.WriteTo(sheet);
    SendLooks(sheet);
    sheet.Cells(1, 1).SetValues(block);
    widths.WriteTo(sheet);
}

} // namespace

office::CellStyle TableFont::Style() const {
    office::CellStyle style;
    if (!name.isEmpty()) style.fontName = name;
    if (size > 0) style.fontSize = size;
    style.bold = bold;
    style.italic = italic;
    return style;
}

bool LanguageIsEnglish() {
    return Language.contains(QLatin1String("[en]"), Qt::CaseInsensitive);
}

TableFont TextFont(const TableFont& body) {
    if (LanguageIsEnglish()) return body;
    return {ProductFont.isEmpty() ? body.name : ProductFont, ProductFontSize > 0 ? double(ProductFontSize) : body.size,
            body.bold, body.italic};
}

void LookCollector::Add(int row, int column, const office::CellStyle& look) {
    auto found = std::find_if(looks_.begin(), looks_.end(), [&](const Look& other) { return other.style == look; });
    if (found == looks_.end()) found = looks_.insert(looks_.end(), {look, {}, {}});
    const auto [latest, isNew] = found->latest.try_emplace(column, found->runs.size());
    if (!isNew && found->runs[latest->second].last == row - 1) {
        found->runs[latest->second].last = row;
        return;
    }
    latest->second = found->runs.size();
    found->runs.push_back({column, row, row});
}

void LookCollector::WriteTo(const office::Worksheet& sheet) const {
    std::vector<Run> runs;
    for (std::size_t i = 0; i < looks_.size(); ++i)
        for (Run run : looks_[i].runs) {
            run.look = i;
            runs.push_back(run);
        }
    std::stable_sort(runs.begin(), runs.end(), [](const Run& a, const Run& b) { return a.first < b.first; });
    for (std::size_t start = 0; start < runs.size(); start += kRunsAtOnce) {
        const auto from = runs.begin() + static_cast<std::ptrdiff_t>(start);
        const auto to = runs.begin() + static_cast<std::ptrdiff_t>(std::min(start + kRunsAtOnce, runs.size()));
        std::stable_sort(from, to, [](const Run& a, const Run& b) { return a.look < b.look; });
        for (auto run = from; run != to; ++run)
            sheet.Cells(run->first, run->column, run->last, run->column).SetStyle(looks_[run->look].style);
    }
}

office::Cell ValueCell(const QString& value) {
    if (value.trimmed().isEmpty()) return {};
    bool isNumber = false;
    const double number = value.trimmed().toDouble(&isNumber);
    if (isNumber && ReadsAsNumber(value)) return number;
    return value.left(kLongestText);
}

QString ValueFormat(const QString& value) {
    const QString text = value.trimmed();
    if (!ReadsAsNumber(text) || text.contains(QLatin1Char('e'), Qt::CaseInsensitive)) return QStringLiteral("General");
    const qsizetype point = text.indexOf(QLatin1Char('.'));
    const qsizetype decimals = point < 0 ? 0 : std::min<qsizetype>(text.size() - point - 1, kMostDecimals);
    const QString whole = SysNumFormat ? QStringLiteral("#,##0") : QStringLiteral("0");
    return decimals == 0 ? whole : whole + QLatin1Char('.') + QString(decimals, QLatin1Char('0'));
}

QString ValueText(const QString& value) {
    return SysNumFormat ? WithSeparators(value.trimmed(), QLocale::system()) : value.trimmed();
}

void ColumnWidths::AddHead(int column, const QString& text) {
    int& width = widths_[column];
    const int length = LengthOf(text);
    width = std::max(width, std::min(length, WidestHead));
}

void ColumnWidths::Add(int column, const QString& text) {
    int& width = widths_[column];
    const int length = LengthOf(text);
    if (length > WidestCell) wraps_[column] = true;
    width = std::max(width, std::min(length, WidestCell));
}

bool ColumnWidths::Wraps(int column) const {
    return wraps_.count(column) > 0;
}

void ColumnWidths::WriteTo(office::Worksheet& sheet) const {
    for (const auto& [column, width] : widths_)
        sheet.SetColumnWidth(column, width + 3.0);
}

void GiveTimeFor(int values) {
    if (values > 0 && values <= kFewValues) return;
    const std::chrono::seconds limit(30 + values / 1000);
    office::SpreadsheetApplication::Instance().SetTimeLimit(limit);
    office::SpreadsheetApplication::Hosted().SetTimeLimit(limit);
}

QStringList SourcesOfSelection() {
    QStringList sources;
    for (Records rows = Select(
             QStringLiteral("SELECT DISTINCT IUS.[Source]  FROM _SelIUSNId AS IUS INNER JOIN (_SelArea AS A INNER JOIN "
                            "(Data AS D INNER JOIN _SelTimePeriod AS T  ON D.TimePeriodNId = T.TimePeriodNId) ON "
                            "A.AreaNId = D.AreaNId) ON (IUS.IUSNId = D.IUSNId) AND  (IUS.SourceNId = D.SourceNId) "
                            "WHERE IUS.Deleted=False ") +
             RowFilter);
         !rows.atEnd(); rows.MoveNext())
        sources << rows.Text(std::size_t{0});
    return sources;
}

QString FootnoteText(qint64 id) {
    const Records rows =
        Select(QStringLiteral("SELECT FootNote FROM FootNote WHERE FootNoteNId = ") + QString::number(id));
    return rows.atEnd() || rows.IsNull(0) ? QString() : rows.Text(std::size_t{0});
}

void SendLooks(const office::Worksheet& sheet) {
    static_cast<void>(sheet.Cells(1, 1).Value()); // whatever is read has to be up to date
}

void WriteDataList(office::Workbook& book, int first, const TableFont& font) {
    office::Worksheet sheet = book.Sheet(first);
    const office::Cell corner = sheet.Cells(1, 1).Value();
    if (const auto* text = std::get_if<QString>(&corner); text && *text == Plain("Comm_Time")) return;
    const QString name = Plain("TS_SheetData");
    sheet.SetName(name);
    Records records = ListRows();
    FillListSheet(sheet, records, font);
    for (int number = 2; !records.atEnd(); ++number)
        FillListSheet(book.AddSheet(name + QStringLiteral(" %1").arg(number)), records, font);
}

void WriteSourceSheet(office::Worksheet sheet, const TableFont& font) {
    sheet.SetName(Plain("Comm_Source"));
    SetUpSheet(sheet, 1, 1);
    office::Block block{{Plain("Comm_Source")}};
    ColumnWidths widths;
    widths.AddHead(1, Plain("Comm_Source"));
    for (const QString& source : SourcesOfSelection()) {
        block.push_back({source.left(kLongestText)});
        widths.Add(1, source);
    }
    office::Range list = sheet.Cells(1, 1, static_cast<int>(block.size()), 1);
    office::CellStyle look = TextFont(font).Style();
    look.numberFormat = QStringLiteral("@");
    look.wrapText = true;
    look.vertical = office::VerticalAlign::Top;
    list.SetStyle(look);
    sheet.Cells(1, 1).SetStyle({.bold = true, .interiorColorIndex = 34});
    sheet.Cells(1, 1).SetBorders(office::EdgeBottom, {});
    sheet.Cells(1, 1).SetValues(block);
    widths.WriteTo(sheet);
    list.AutoFitRows();
}

void SetUpSheet(office::Worksheet& sheet, int titleRows, int firstColumn) {
    if (titleRows > 0) sheet.FreezePanes(titleRows + 1, firstColumn);
    sheet.SetPageSetup(
        {.landscape = true, .fitToPagesWide = 1, .footer = QStringLiteral("&P / &N"), .titleRows = titleRows});
}

} // namespace tessaro
