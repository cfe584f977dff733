#pragma once

#include "jet/columns/ScanBlock.h"
#include "jet/columns/ScanGroups.h"
#include "jet/columns/ScanPlaces.h"
#include "jet/columns/ScanPlan.h"

namespace jet {

/// Adds up the figures of groups from the rows of a block.
class ScanFigures final {
  public:
    ScanFigures(const ColumnImage& image, const ScanPlan& plan, const ScanInput& input, ScanGroups& groups);

    /// Makes room for so many places.
    void Grow(std::size_t places);
    void Take(const ScanBlock& block, const std::vector<SideKeys>& sides);
    /// Adds the figures of later rows, in places of the same meaning.
    void Join(const ScanGroups& later);

  private:
    void Grow(const ScanFigure& figure, std::size_t position, std::size_t places);
    void Take(const ScanFigure& figure, std::size_t position);
    void TakeSide(const ScanFigure& figure, std::vector<std::int32_t>& held);
    void TakeSums();
    void TakeSpreads();
    template <class Use> void Each(const Use& use) const;
    template <class Use> void EachValue(const Use& use) const;
    template <class Use> void EachNumber(const Use& use);
    template <bool least> void TakeExtreme(std::uint32_t& best, std::uint32_t row) const;
    template <bool least> void TakeText(std::uint32_t& best, std::uint32_t row) const;
    template <bool least> void TakeRanks(const ScanFigure& figure, std::vector<std::int32_t>& held);
    void JoinFigure(const ScanFigure& figure, std::size_t position, const ScanGroups& later);

    const ColumnImage& image_;
    const ScanPlan& plan_;
    const ScanInput& input_;
    const ImageColumn& value_;
    ScanGroups& groups_;
    const ScanBlock* block_ = nullptr;
    const std::vector<SideKeys>* sides_ = nullptr;
};

} // namespace jet
