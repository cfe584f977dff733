#pragma once

#include <QFontMetrics>
#include <QStringList>

#include <vector>

namespace tessaro {

/// What a column asks for, in pixels, and how much it counts when not all columns get what they ask for.
struct ColumnWish {
    int wanted = 0;
    int least = 0;
    double weight = 1;
};

/// The widths of columns that share a room: what they want where that fits. Otherwise the widest for their weight give
/// way until it does, none below its least; where not even those fit, the least.
[[nodiscard]] std::vector<int> SharedWidths(const std::vector<ColumnWish>& wishes, int room);

/// Collects the longest of very many texts: measuring each would take longer than showing them.
class LongestTexts final {
  public:
    void Take(const QString& text);
    /// Width of the widest text that was met.
    [[nodiscard]] int Width(const QFontMetrics& metrics) const;

  private:
    QStringList texts_; ///< longest first
};

} // namespace tessaro
