#pragma once

#include "office/Worksheet.h"
#include "sheets/SheetFont.h"

#include <QString>

#include <map>

/// How wide the columns of a sheet are to be.
namespace tessaro {

/// Digits of the usual size that a landscape page has room for, and that a text takes.
constexpr double kPageDigits = 140;
[[nodiscard]] double TextWidth(const QString& text, const SheetFont& font);

/// Finds widths of columns from their texts.
class ColumnWidths final {
  public:
    /// Longest text of a head, which is wrapped, and of any other cell, in digits.
    static constexpr double kWidestHead = 28;
    static constexpr double kWidestCell = 60;

    void AddHead(int column, const QString& text);
    void Add(int column, const QString& text);
    /// A cell that is longer than the widest, so that it has to be wrapped.
    [[nodiscard]] bool Wraps(int column) const;
    /// Narrows the widest columns, whose longer cells then wrap, until one page holds the table in a readable size.
    /// None becomes narrower than a head may be; where that isn't enough, all stay as they are.
    void FitToPage(const SheetFont& font);
    /// How many pages the columns need side by side to stay readable; those up to `titleColumns` stand on each.
    [[nodiscard]] int PagesFor(int titleColumns, const SheetFont& font) const;
    void WriteTo(office::Worksheet& sheet, const SheetFont& font) const;
    /// Width of a column in digits of the usual size, with a gap.
    [[nodiscard]] double SheetWidth(int column, const SheetFont& font) const;

  private:
    std::map<int, double> widths_;
    std::map<int, bool> wraps_;
};

} // namespace tessaro
