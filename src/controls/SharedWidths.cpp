#include "controls/SharedWidths.h"

#include <algorithm>
#include <numeric>

namespace tessaro {

namespace {

constexpr qsizetype kKept = 8; ///< the longest by characters need not be the widest

int WidthAt(const ColumnWish& wish, double level) {
    return std::max(wish.least, std::min(wish.wanted, static_cast<int>(level * wish.weight)));
}

} // namespace

std::vector<int> SharedWidths(const std::vector<ColumnWish>& wishes, int room) {
    const auto total = [&wishes](double level) {
        return std::accumulate(wishes.begin(), wishes.end(), 0,
                               [level](int sum, const ColumnWish& wish) { return sum + WidthAt(wish, level); });
    };
    double low = 0;
    double high = 1;
    for (const ColumnWish& wish : wishes)
        high = std::max(high, wish.weight > 0 ? wish.wanted / wish.weight + 1 : 1);
    if (total(high) <= room) low = high;
    while (high - low > 0.01) {
        const double middle = (low + high) / 2;
        (total(middle) <= room ? low : high) = middle;
    }
    std::vector<int> widths;
    for (const ColumnWish& wish : wishes)
        widths.push_back(WidthAt(wish, low));
    return widths;
}

void LongestTexts::Take(const QString& text) {
    if (texts_.size() == kKept && text.size() <= texts_.back().size()) return;
    if (texts_.contains(text)) return;
    const auto place = std::ranges::find_if(texts_, [&text](const QString& kept) { return kept.size() < text.size(); });
    texts_.insert(place, text);
    if (texts_.size() > kKept) texts_.removeLast();
}

int LongestTexts::Width(const QFontMetrics& metrics) const {
    int width = 0;
    for (const QString& text : texts_)
        width = std::max(width, metrics.horizontalAdvance(text));
    return width;
}

} // namespace tessaro
