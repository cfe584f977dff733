#include "jet/columns/SideKeys.h"

#include <algorithm>

namespace jet {

namespace {

template <class Number>
void FindCombinations(const ColumnImage& image, const ScanSide& side, const ScanBlock& block,
                      std::array<Number, kBlockRows>& keys) {
    std::fill_n(keys.begin(), block.count, Number{0});
    for (const std::size_t position : side.columns) {
        const ImageColumn& column = image.columns()[position];
        const auto size = static_cast<Number>(column.numbers.size());
        WithCodes(column, [&](const auto& codeOf) {
            for (std::size_t i = 0; i < block.count; ++i)
                keys[i] = keys[i] * size + codeOf(block.rows[i]);
        });
    }
}

} // namespace

void FindSideKeys(const ColumnImage& image, const ScanSide& side, const SideClasses& classes, const ScanBlock& block,
                  SideKeys& keys) {
    if (!classes.met) return FindCombinations(image, side, block, keys);
    std::array<std::uint64_t, kBlockRows> combinations;
    FindCombinations(image, side, block, combinations);
    const auto others = static_cast<std::uint32_t>(classes.met->keys().size());
    for (std::size_t i = 0; i < block.count; ++i)
        keys[i] = std::min(classes.met->find(combinations[i]), others);
}

std::uint32_t ClassOfRow(const ColumnImage& image, const ScanSide& side, const SideClasses& classes,
                         std::uint32_t row) {
    std::uint64_t combination = 0;
    for (const std::size_t position : side.columns) {
        const ImageColumn& column = image.columns()[position];
        WithCodes(column, [&](const auto& codeOf) { combination = combination * column.numbers.size() + codeOf(row); });
    }
    const std::size_t keys = classes.met ? classes.met->find(combination) : combination;
    return static_cast<std::uint32_t>(std::max(classes.classOf[keys], 0)); // below 0 in a file that was just cut
}

std::vector<std::vector<std::uint8_t>> CodesThatPass(const ColumnImage& image, const ScanSide& side,
                                                     const SideClasses& classes) {
    std::vector<std::vector<std::uint8_t>> codes(side.columns.size());
    std::uint64_t after = 1; // combinations of the columns behind
    for (std::size_t i = side.columns.size(); i-- > 0;) {
        const std::size_t size = image.columns()[side.columns[i]].numbers.size();
        codes[i].resize(size);
        for (std::size_t keys = 0; keys < classes.classOf.size(); ++keys)
            if (classes.classOf[keys] >= 0)
                codes[i][(classes.met ? classes.met->keys()[keys] : keys) / after % size] = 1;
        after *= size;
    }
    return codes;
}

} // namespace jet
