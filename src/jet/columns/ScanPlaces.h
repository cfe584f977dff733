#pragma once

#include "jet/columns/KeyTable.h"
#include "jet/columns/ScanBlock.h"
#include "jet/columns/ScanGroups.h"
#include "jet/columns/ScanPlan.h"
#include "jet/columns/SideKeys.h"
#include "jet/columns/WorkWatch.h"
#include "jet/values/Collation.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace jet {

/// Which codes of a column pass a list. Null is in no list, and outside of none.
[[nodiscard]] std::vector<std::uint8_t> CodesInList(const ImageColumn& column, const ScanListTest& test);

/// Numbers the groups of a scan. When there are few combinations each has its place from the beginning; else places are
/// given out in the order in which groups are met.
class ScanPlaces final {
  public:
    /// `watch` may be nullptr; else it must live as long.
    ScanPlaces(const ColumnImage& image, const ScanPlan& plan, const ScanInput& input, WorkWatch* watch);

    /// Puts the places of a block's rows into it. `sides` has the keys of each side of the plan. Rows that Mark has
    /// found to be alone are left out.
    void Find(ScanBlock& block, const std::vector<SideKeys>& sides);
    /// True when only groups of several rows are asked for among very many: all rows are to be marked first then.
    [[nodiscard]] bool wantsMarks() const;
    void Mark(const ScanBlock& block, const std::vector<SideKeys>& sides);
    /// True when all rows have been marked, and none has a group in common with another.
    [[nodiscard]] bool allAreAlone() const { return !seen_.empty() && !anyShared_; }
    /// Places given out so far.
    [[nodiscard]] std::uint32_t count() const;
    [[nodiscard]] bool growing() const { return growing_; }
    /// Hands over what the places stand for.
    void Describe(ScanGroups& groups);

  private:
    /// One column's share in a place: the codes that pass are numbered anew, without gaps.
    struct Column {
        const ImageColumn* column = nullptr;
        std::vector<std::uint32_t> shareOf;  ///< by code
        std::vector<std::uint32_t> standing; ///< the code of each share
    };
    [[nodiscard]] Column ColumnFor(std::size_t position) const;
    [[nodiscard]] std::vector<std::uint8_t> PassingCodesOf(std::size_t position) const;
    void AddSize(std::size_t size);
    void FindKeys(const ScanBlock& block, const std::vector<SideKeys>& sides);
    void FindValueKeys(const ScanBlock& block);
    [[nodiscard]] std::uint64_t KeyOfText(std::uint32_t row);
    void CheckSpellings(const ScanBlock& block);
    [[nodiscard]] bool AreSpelledAlike(std::uint32_t row, std::uint32_t other) const;
    [[nodiscard]] bool IsAlone(std::uint64_t key) const;

    const ColumnImage& image_;
    const ScanPlan& plan_;
    const ScanInput& input_;
    WorkWatch* watch_;
    std::vector<Column> columns_;
    std::vector<std::uint32_t> sizes_;
    std::uint64_t combinations_ = 1;
    bool growing_ = false;
    std::array<std::uint64_t, kBlockRows> found_{}; ///< the keys of a block
    std::vector<std::uint64_t> seen_;               ///< a bit for each key that a row has
    std::vector<std::uint64_t> shared_;             ///< a bit for each that several have
    bool anyShared_ = false;
    KeyTable met_; ///< the keys of the places given out
    struct Before {
        bool operator()(const std::string& a, const std::string& b) const { return CompareValueText(a, b) < 0; }
    };
    std::map<std::string, std::uint64_t, Before> texts_; ///< values that are no numbers, and their keys
    std::vector<std::uint32_t> firsts_;                  ///< of groups of equal values: the first row of each
};

} // namespace jet
