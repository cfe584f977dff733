#pragma once

#include <QFontMetrics>
#include <QStringList>

#include <vector>

/// Shares the width of a table among its columns.
namespace tessaro {

/// What a column asks for, in pixels, and how much it counts when not all columns get what they ask for.
struct ColumnWish {
    int wanted = 0;
    int least = 0;
    double weight = 1;
};

/// The widths of columns in a given room: what they want, if that fits. Otherwise the columns that are widest in
/// proportion to their weight are narrowed until all fit, none below its least width; where not even those fit, all
/// have their least.
[[nodiscard]] std::vector<int> SharedWidths(const std::vector<ColumnWish>& wishes, int room);

/// The width of the widest of very many texts. Only the longest are kept and measured, since to measure all would take
/// too long.
class LongestTexts final {
  public:
    void Take(const QString& text);
    /// Width of the widest text that was met.
    [[nodiscard]] int Width(const QFontMetrics& metrics) const;

  private:
    QStringList texts_; ///< longest first
};

} // namespace tessaro
