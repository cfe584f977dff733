#include "controls/SheetLook.h"

#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>

#include <map>
#include <set>

namespace tessaro {

namespace {

constexpr int kWideTable = 5;             ///< columns from which a page lies across
constexpr std::size_t kRowsFitted = 500;  ///< of which every text counts for the width of its column
constexpr std::size_t kLongestTexts = 12; ///< of the rest: the longest by characters need not be the widest

/// The longest different texts of a column and the rows where each was met first.
class LongestTexts final {
  public:
    void Take(const office::Cell& cell, std::size_t row) {
        const auto* text = std::get_if<QString>(&cell);
        const auto* number = std::get_if<double>(&cell);
        if (!text && !number) return;
        const QString shown = text ? *text : QString::number(*number, 'g', 10);
        if (texts_.size() == kLongestTexts && shown.size() <= texts_.begin()->first.first) return;
        texts_.try_emplace({shown.size(), shown}, row);
        if (texts_.size() > kLongestTexts) texts_.erase(texts_.begin());
    }
    void AddRows(std::set<std::size_t>& rows) const {
        for (const auto& [text, row] : texts_)
            rows.insert(row);
    }

  private:
    std::map<std::pair<qsizetype, QString>, std::size_t> texts_; ///< shortest first
};

} // namespace

office::CellStyle SheetFont() {
    const bool english = Language.compare(Setting(QStringLiteral("ENG_LNG")), Qt::CaseInsensitive) == 0;
    double size = ProductFontSize;
    if (!english && SettingFlag(QStringLiteral("USE DEFAULT FONT SIZE")))
        size = SettingNumber(QStringLiteral("DEFAULT FONT SIZE"));
    return {.fontName = english ? Setting(QStringLiteral("DEFAULT FONT")) : ProductFont,
            .fontSize = size > 0 ? size : 10,
            .bold = ProductFontStyle == 2 || ProductFontStyle == 3,
            .italic = ProductFontStyle == 1 || ProductFontStyle == 3};
}

QString LatinFontBeside(const QString& family) {
    const QList<QFontDatabase::WritingSystem> systems = QFontDatabase::writingSystems(family);
    return systems.isEmpty() || systems.contains(QFontDatabase::Latin) ? QString()
                                                                       : Setting(QStringLiteral("DEFAULT FONT"));
}

office::Block RowsToFit(const office::Block& table) {
    if (table.size() <= kRowsFitted) return table;
    office::Block rows(table.begin(), table.begin() + kRowsFitted);
    std::vector<LongestTexts> columns(table.front().size());
    for (std::size_t row = kRowsFitted; row < table.size(); ++row)
        for (std::size_t column = 0; column < columns.size(); ++column)
            columns[column].Take(table[row][column], row);
    std::set<std::size_t> longest;
    for (const LongestTexts& column : columns)
        column.AddRows(longest);
    for (const std::size_t row : longest)
        rows.push_back(table[row]);
    return rows;
}

double TallRowHeight(const office::CellStyle& font) {
    constexpr double kUsual = 1.5; // of the size: what a sheet gives its rows
    constexpr int kMeasured = 100;
    if (!font.fontName || !font.fontSize || !qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return 0;
    QFont face(*font.fontName);
    face.setPixelSize(kMeasured);
    const double height = QFontMetricsF(face).height() / kMeasured;
    return height > kUsual ? height * *font.fontSize : 0;
}

// The columns are fitted while the sheet holds just the rows that decide it: over tens of thousands of rows that would
// take longer than all else together. So would the division into pages.
void WriteTable(office::Worksheet& sheet, const office::Block& table) {
    if (table.empty() || table.front().empty()) return;
    const int rows = static_cast<int>(table.size());
    const int columns = static_cast<int>(table.front().size());
    const office::Block fitted = RowsToFit(table);
    sheet.Cells(1, 1).SetValues(fitted);
    office::Range used = sheet.Cells(1, 1, rows, columns);
    used.SetStyle(SheetFont());
    sheet.Cells(1, 1, 1, columns).SetStyle({.bold = true, .interiorColorIndex = HeaderSlot});
    used.AutoFitColumns();
    sheet.SetPageSetup({.landscape = columns >= kWideTable,
                        .fitToPagesWide = 1,
                        .header = office::PageLine(),
                        .footer = office::PageLine(QStringLiteral("&P / &N")),
                        .titleRows = 1});
    sheet.FreezePanes(2, 1);
    if (LanguageIsRightToLeft()) sheet.SetRightToLeft(true);
    used.SetBorders(office::AllEdges, {office::LineWeight::Thin, office::LineStyle::Continuous, LineSlot});
    if (fitted.size() < table.size()) sheet.Cells(1, 1).SetValues(table);
    if (const double height = TallRowHeight(SheetFont()); height > 0) {
        sheet.SetRowHeights(1, rows, height);
        used.SetStyle({.vertical = office::VerticalAlign::Center}); // beside the smaller latin letters and digits
    }
}

} // namespace tessaro
