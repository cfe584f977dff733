#include "sheets/LookRuns.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr std::size_t kRunsAtOnce = 3500; ///< fewer than go over at once

} // namespace

void LookRuns::Add(int row, int column, const office::CellStyle& look) {
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

void LookRuns::WriteTo(const office::Worksheet& sheet) const {
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

} // namespace tessaro
