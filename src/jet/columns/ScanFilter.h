#pragma once

#include "jet/columns/ScanBlock.h"
#include "jet/columns/ScanGroups.h"
#include "jet/columns/ScanPlaces.h"
#include "jet/columns/ScanPlan.h"
#include "jet/values/NumberList.h"

#include <vector>

namespace jet {

/// Keeps the rows of a block that pass all tests of a plan.
class ScanFilter final {
  public:
    ScanFilter(const ColumnImage& image, const ScanPlan& plan, const ScanInput& input);

    void Apply(ScanBlock& block) const;
    /// False when no row of a block of the image can pass.
    [[nodiscard]] bool MayPass(std::size_t block) const;

  private:
    /// A column of which only some codes pass.
    struct CodeTest {
        const ImageColumn* column = nullptr;
        std::vector<std::uint8_t> passes;
    };
    /// How many of the codes below each one pass.
    struct BlockTest {
        const ImageColumn* column = nullptr;
        std::vector<std::uint32_t> before;
    };
    void AddBlockTest(const ImageColumn& column, const std::vector<std::uint8_t>& passes);
    void AddCodeTest(const ImageColumn& column, std::vector<std::uint8_t> passes);
    void AddListTest(const ScanListTest& test);
    void AddSideTest(std::size_t side);
    void KeepSide(ScanBlock& block, std::size_t side) const;
    [[nodiscard]] bool ValuePasses(std::uint32_t row, const ScanValueTest& test) const;

    const ColumnImage& image_;
    const ScanPlan& plan_;
    const ScanInput& input_;
    const ImageColumn& value_;
    std::vector<CodeTest> codes_;
    std::vector<BlockTest> blocks_;
    std::vector<std::size_t> sides_; ///< those that are met by several numbers at a time
    struct NumberTest {
        const ImageColumn* column = nullptr;
        bool negated = false;
        NumberList numbers;
    };
    std::vector<NumberTest> numbers_;
};

} // namespace jet
