#include "presentation/SheetParts.h"

#include "controls/SheetLook.h"
#include "office/SpreadsheetApplication.h"
#include "session/DisplayValue.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"

#include <QFontMetricsF>
#include <QGuiApplication>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace tessaro {

namespace {

constexpr int kRowsOfSheet = 65535; ///< of values, below the head
constexpr int kLongestText = 32767; ///< of a cell
constexpr int kMostDecimals = 15;
constexpr int kFewValues = 10000;
constexpr std::size_t kRunsAtOnce = 3500; ///< fewer than go over at once
constexpr int kValueColumn = 5;           ///< of the data list
constexpr int kListColumns = 8;
constexpr double kColumnGap = 2;     ///< digits that a column is wider than its text
constexpr double kUsualSize = 10;    ///< points of the font whose digits widths are counted in
constexpr double kBoldFactor = 1.1;  ///< how much wider bold texts are
constexpr double kLeastScale = 0.65; ///< a table that would be printed smaller goes over several pages
constexpr int kMeasuredPixels = 100;
constexpr double kDigitWidth = 0.556; ///< of a font's size
constexpr double kGapHeight = 11;     ///< points, of the line between titles and table
constexpr double kTallRow = 1.8;      ///< height of a row in sizes of a font with high letters

QString Plain(const char* key) {
    return GetText(QLatin1String(key)).remove(QLatin1Char('&'));
}

/// How many digits would be as wide as the letter.
double WidthOf(QChar letter) {
    const ushort code = letter.unicode();
    if (letter.category() == QChar::Mark_NonSpacing) return 0;
    if ((code >= 0x2E80 && code < 0xD7B0) || (code >= 0xF900 && code < 0xFB00) || (code >= 0xFF00 && code < 0xFF60))
        return 1.9; // East Asian
    const bool wide =
        letter.isUpper() || letter.script() == QChar::Script_Cyrillic || QStringLiteral("mw%").contains(letter);
    return wide ? 1.25 : 1;
}

double SizeFactor(const TableFont& font) {
    return std::max(font.size, 6.0) / kUsualSize * (font.bold ? kBoldFactor : 1);
}

/// Scripts whose letters change their width with their neighbours.
bool HasJoinedLetters(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar letter) {
        return letter.script() == QChar::Script_Arabic || letter.script() == QChar::Script_Devanagari;
    });
}

/// The same by the language's own font, where there is one to measure with.
double MeasuredWidth(const QString& text) {
    QFont font(ProductFont);
    font.setPixelSize(kMeasuredPixels);
    const QFontMetricsF metrics(font);
    double widest = 0;
    for (const QString& line : text.split(QLatin1Char('\n')))
        widest = std::max(widest, metrics.horizontalAdvance(line));
    return widest / (kMeasuredPixels * kDigitWidth);
}

/// Width of the longest line, in digits.
double WidthOf(const QString& text) {
    if (HasJoinedLetters(text) && qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return MeasuredWidth(text);
    double widest = 0;
    double width = 0;
    for (const QChar letter : text) {
        width = letter == QLatin1Char('\n') ? 0 : width + WidthOf(letter);
        widest = std::max(widest, width);
    }
    return widest;
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
    SetLeading(text);
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
    widths.WriteTo(sheet, font);
    SetTallRows(sheet, 1, rows, kListColumns, font);
}

} // namespace

office::CellStyle TableFont::Style() const {
    office::CellStyle style;
    if (!name.isEmpty()) style.fontName = name;
    if (const QString latin = LatinFontBeside(name); !name.isEmpty() && !latin.isEmpty()) style.latinFontName = latin;
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

int DecimalsOf(const QString& value) {
    const QString text = value.trimmed();
    const qsizetype point = text.indexOf(QLatin1Char('.'));
    if (point < 0 || !ReadsAsNumber(text) || text.contains(QLatin1Char('e'), Qt::CaseInsensitive)) return 0;
    return static_cast<int>(std::min<qsizetype>(text.size() - point - 1, kMostDecimals));
}

QString WithZeros(const QString& value, int decimals) {
    const QString text = value.trimmed();
    const int has = DecimalsOf(text);
    if (has >= decimals || !ReadsAsNumber(text) || text.contains(QLatin1Char('e'), Qt::CaseInsensitive)) return value;
    const bool point = text.contains(QLatin1Char('.'));
    return text + (point ? QString() : QStringLiteral(".")) + QString(decimals - has, QLatin1Char('0'));
}

QString ValueFormat(const QString& value) {
    const QString text = value.trimmed();
    if (!ReadsAsNumber(text) || text.contains(QLatin1Char('e'), Qt::CaseInsensitive)) return QStringLiteral("General");
    const int decimals = DecimalsOf(text);
    const QString whole = SysNumFormat ? QStringLiteral("#,##0") : QStringLiteral("0");
    return decimals == 0 ? whole : whole + QLatin1Char('.') + QString(decimals, QLatin1Char('0'));
}

double TextWidth(const QString& text, const TableFont& font) {
    return WidthOf(text) * SizeFactor(font);
}

void ColumnWidths::AddHead(int column, const QString& text) {
    double& width = widths_[column];
    width = std::max(width, std::min(WidthOf(text), WidestHead));
}

void ColumnWidths::Add(int column, const QString& text) {
    double& width = widths_[column];
    const double length = WidthOf(text);
    if (length > WidestCell) wraps_[column] = true;
    width = std::max(width, std::min(length, WidestCell));
}

bool ColumnWidths::Wraps(int column) const {
    return wraps_.count(column) > 0;
}

double ColumnWidths::SheetWidth(int column, const TableFont& font) const {
    const auto found = widths_.find(column);
    if (found == widths_.end()) return 0;
    // Texts are as large as the language's font says, numbers as large as the table's.
    return (found->second + kColumnGap) * std::max(SizeFactor(font), SizeFactor(TextFont(font)));
}

int ColumnWidths::PagesFor(int titleColumns, const TableFont& font) const {
    double titles = 0;
    double rest = 0;
    for (const auto& [column, width] : widths_)
        (column <= titleColumns ? titles : rest) += SheetWidth(column, font);
    const double page = PageDigits / kLeastScale;
    const double room = std::max(page - titles, page / 4); // beside the titles, which every page repeats
    return std::max(1, static_cast<int>(std::ceil(rest / room)));
}

void ColumnWidths::WriteTo(office::Worksheet& sheet, const TableFont& font) const {
    for (const auto& [column, width] : widths_)
        sheet.SetColumnWidth(column, SheetWidth(column, font));
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
    SetLeading(look);
    look.vertical = office::VerticalAlign::Top;
    list.SetStyle(look);
    sheet.Cells(1, 1).SetStyle({.bold = true, .interiorColorIndex = 34});
    sheet.Cells(1, 1).SetBorders(office::EdgeBottom, {});
    sheet.Cells(1, 1).SetValues(block);
    widths.WriteTo(sheet, font);
    list.AutoFitRows();
}

void SetUpSheet(office::Worksheet& sheet, int titleRows, int firstColumn, int pagesWide) {
    if (titleRows > 0) sheet.FreezePanes(titleRows + 1, firstColumn);
    if (titleRows > 0 && LanguageIsRightToLeft()) sheet.SetRightToLeft(true);
    sheet.SetPageSetup({.landscape = true,
                        .fitToPagesWide = pagesWide,
                        .header = office::PageLine(),
                        .footer = office::PageLine(QStringLiteral("&P / &N")),
                        .titleRows = titleRows,
                        .titleColumns = pagesWide > 1 ? firstColumn - 1 : 0,
                        .centered = titleRows == 0});
}

void SetGap(office::Worksheet& sheet, int first, int last) {
    sheet.SetRowHeight(first, kGapHeight);
    if (last > first) sheet.HideRows(first + 1, last);
}

void SetLeading(office::CellStyle& look) {
    look.horizontal = LanguageIsRightToLeft() ? office::Align::Right : office::Align::Left;
    if (LanguageIsRightToLeft()) look.rightToLeft = true;
}

void SetTallRows(office::Worksheet& sheet, int first, int last, int columns, const TableFont& font) {
    if (LatinFontBeside(ProductFont).isEmpty()) return;
    sheet.Cells(first, 1, last, columns).SetStyle({.vertical = office::VerticalAlign::Center});
    sheet.SetRowHeights(first, last, std::max(font.size, TextFont(font).size) * kTallRow);
}

} // namespace tessaro
