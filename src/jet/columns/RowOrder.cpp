#include "jet/columns/RowOrder.h"

#include "jet/columns/RankedValues.h"
#include "jet/columns/SideKeys.h"
#include "jet/values/Collation.h"

#include <algorithm>
#include <bit>
#include <memory>
#include <string>

namespace jet {

namespace {

/// Sorts rows by a rank of 32 bits each; those of the same rank keep their order.
class RankSort final {
  public:
    RankSort(std::vector<std::uint32_t>& rows, WorkWatch& watch) : rows_(rows), watch_(watch) {}

    /// `rankOf` puts the ranks of a block of rows, of which `greatest` is the last, into its places.
    template <class RankOf> void Sort(std::uint32_t greatest, bool descending, const RankOf& rankOf) {
        if (greatest > kHalf) return SortHalves(descending, rankOf, [](std::size_t, std::size_t) {});
        SortFew(greatest, [&](const auto& use) {
            EachRank(rankOf, 0, rows_.size(),
                     [&](std::uint32_t row, std::uint32_t rank) { use(row, descending ? greatest - rank : rank); });
        });
    }

    /// By the upper half of the bits first, and then those that are equal in it by the lower one, so that little memory
    /// is taken beside the rows. Calls `tie` with the bounds of each run of rows that have the same rank.
    template <class RankOf, class Tie> void SortHalves(bool descending, const RankOf& rankOf, const Tie& tie) {
        const auto ranked = [&](std::size_t from, std::size_t to, const auto& use) {
            EachRank(rankOf, from, to,
                     [&](std::uint32_t row, std::uint32_t rank) { use(row, descending ? ~rank : rank); });
        };
        const std::vector<std::uint32_t> ends = SortFew(kHalf, [&](const auto& use) {
            ranked(0, rows_.size(), [&](std::uint32_t row, std::uint32_t rank) { use(row, rank >> kHalfBits); });
        });
        std::size_t from = 0;
        for (const std::uint32_t end : ends) {
            const std::size_t to = std::min<std::size_t>(end, rows_.size());
            if (to > from + 1) {
                pairs_.clear();
                ranked(from, to,
                       [&](std::uint32_t row, std::uint64_t rank) { pairs_.push_back((rank & kHalf) << 32U | row); });
                SortPairs();
                std::ranges::transform(pairs_, rows_.begin() + static_cast<std::ptrdiff_t>(from),
                                       [](std::uint64_t pair) { return static_cast<std::uint32_t>(pair); });
                EachTie(from, tie);
            }
            from = to;
        }
    }

  private:
    static constexpr unsigned kHalfBits = 16;
    static constexpr std::uint32_t kHalf = 0xFFFF;
    static constexpr unsigned kDigitBits = 8;

    template <class RankOf, class Use>
    void EachRank(const RankOf& rankOf, std::size_t from, std::size_t to, const Use& use) {
        for (; from < to; from += kBlockRows) {
            block_->count = std::min(kBlockRows, to - from);
            std::copy_n(rows_.begin() + static_cast<std::ptrdiff_t>(from), block_->count, block_->rows.begin());
            rankOf(*block_);
            for (std::size_t i = 0; i < block_->count; ++i)
                use(block_->rows[i], block_->places[i]);
            watch_.Check();
        }
    }

    /// Counts first how many rows have each rank, and so where they go. Gives where those of each rank end.
    template <class Ranked> std::vector<std::uint32_t> SortFew(std::uint32_t greatest, const Ranked& ranked) {
        std::vector<std::uint32_t> places(std::size_t{greatest} + 1);
        ranked([&](std::uint32_t, std::uint32_t rank) { ++places[rank]; });
        std::uint32_t start = 0;
        for (std::uint32_t& each : places)
            each = std::exchange(start, start + each);
        std::vector<std::uint32_t> sorted(rows_.size());
        ranked([&](std::uint32_t row, std::uint32_t rank) {
            const std::uint32_t place = places[rank]++;
            if (place < sorted.size()) sorted[place] = row; // else the file was cut since the ranks were counted
        });
        rows_.swap(sorted);
        return places;
    }

    void SortPairs() {
        constexpr std::size_t kFew = 256;
        const auto rankOf = [](std::uint64_t pair) { return pair >> 32U; };
        if (std::ranges::is_sorted(pairs_, {}, rankOf)) return;
        if (pairs_.size() <= kFew) {
            std::ranges::stable_sort(pairs_, {}, rankOf);
            return;
        }
        for (unsigned shift = 0; shift < kHalfBits; shift += kDigitBits)
            SortDigit(32 + shift);
    }

    void SortDigit(unsigned shift) {
        constexpr std::size_t kDigits = std::size_t{1} << kDigitBits;
        const auto digitOf = [shift](std::uint64_t pair) { return pair >> shift & (kDigits - 1); };
        std::array<std::size_t, kDigits> starts{};
        for (const std::uint64_t pair : pairs_)
            ++starts[digitOf(pair)];
        std::size_t start = 0;
        for (std::size_t& each : starts)
            each = std::exchange(start, start + each);
        sorted_.resize(pairs_.size());
        for (const std::uint64_t pair : pairs_)
            sorted_[starts[digitOf(pair)]++] = pair;
        pairs_.swap(sorted_);
        watch_.Check();
    }

    template <class Tie> void EachTie(std::size_t first, const Tie& tie) const {
        for (std::size_t from = 0; from < pairs_.size();) {
            std::size_t to = from + 1;
            while (to < pairs_.size() && pairs_[to] >> 32U == pairs_[from] >> 32U)
                ++to;
            if (to - from > 1) tie(first + from, first + to);
            from = to;
        }
    }

    std::vector<std::uint32_t>& rows_;
    WorkWatch& watch_;
    std::unique_ptr<ScanBlock> block_ = std::make_unique<ScanBlock>();
    std::vector<std::uint64_t> pairs_; ///< lower half of the rank, and row
    std::vector<std::uint64_t> sorted_;
};

class RowOrder final {
  public:
    RowOrder(std::vector<std::uint32_t>& rows, const ColumnImage& image, const ScanPlan& plan, const ScanInput& input,
             WorkWatch& watch)
        : rows_(rows), image_(image), plan_(plan), input_(input), watch_(watch), value_(image.columns()[plan.value]),
          sort_(rows, watch) {}

    /// The last key first, since each sort keeps the order of the one before.
    void Run() {
        for (std::size_t i = plan_.order.size(); i-- > 0;) {
            const ScanOrder& order = plan_.order[i];
            if (order.kind == ScanOrderKind::Value)
                SortByValue(order.descending);
            else if (order.kind == ScanOrderKind::Number)
                SortByNumber(image_.columns()[order.place], order.descending);
            else
                SortByField(order);
        }
    }

  private:
    void SortByNumber(const ImageColumn& column, bool descending) {
        if (column.form == ColumnForm::Consecutive) {
            const auto last = static_cast<std::uint32_t>(image_.rows());
            return sort_.Sort(last, descending, [](ScanBlock& block) {
                std::copy_n(block.rows.begin(), block.count, block.places.begin());
            });
        }
        if (column.form != ColumnForm::Coded) Unfit("The rows can't be ordered by the number.");
        const auto greatest = static_cast<std::uint32_t>(column.numbers.size());
        sort_.Sort(greatest, descending, [&](ScanBlock& block) {
            WithCodes(column, [&](const auto& codeOf) {
                std::transform(block.rows.begin(), block.rows.begin() + static_cast<std::ptrdiff_t>(block.count),
                               block.places.begin(), codeOf);
            });
        });
    }

    void SortByField(const ScanOrder& order) {
        std::size_t side = 0;
        std::size_t field = order.place;
        for (; field >= input_.sides[side].fields.size(); ++side)
            field -= input_.sides[side].fields.size();
        const SideClasses& classes = input_.sides[side];
        const std::vector<std::uint32_t> ranks = OrderOf(classes.fields[field], plan_.sides[side].fields[field]);
        const std::uint32_t greatest = ranks.empty() ? 0 : std::ranges::max(ranks);
        const auto keys = std::make_unique<SideKeys>();
        sort_.Sort(greatest, order.descending, [&](ScanBlock& block) {
            FindSideKeys(image_, plan_.sides[side], classes, block, *keys);
            for (std::size_t i = 0; i < block.count; ++i)
                block.places[i] = ranks[static_cast<std::size_t>(std::max(classes.classOf[(*keys)[i]], 0))];
        });
    }

    // By the upper half of a number's bits; values that are equal in it are compared as a whole.
    void SortByValue(bool descending) {
        const auto rankOf = [&](ScanBlock& block) {
            for (std::size_t i = 0; i < block.count; ++i)
                block.places[i] = RankOf(block.rows[i]);
        };
        sort_.SortHalves(descending, rankOf, [&](std::size_t from, std::size_t to) {
            watch_.Check();
            SortRun(from, to, descending);
        });
    }

    void SortRun(std::size_t from, std::size_t to, bool descending) {
        const auto begin = rows_.begin() + static_cast<std::ptrdiff_t>(from);
        const auto end = rows_.begin() + static_cast<std::ptrdiff_t>(to);
        const std::uint32_t rank = RankOf(*begin);
        if (rank == 0) return; // Null
        const auto sort = [&](const auto& isLess) {
            const auto before = [&](std::uint32_t a, std::uint32_t b) {
                watch_.Step();
                return descending ? isLess(b, a) : isLess(a, b);
            };
            if (!std::is_sorted(begin, end, before)) std::stable_sort(begin, end, before);
        };
        if (rank != kTextRank) return sort([&](std::uint32_t a, std::uint32_t b) { return Value(a) < Value(b); });
        sort([&](std::uint32_t a, std::uint32_t b) {
            std::string roomA;
            std::string roomB;
            return CompareText(image_.TextOf(value_, a, roomA), image_.TextOf(value_, b, roomB)) < 0;
        });
    }

    [[nodiscard]] double Value(std::uint32_t row) const { return value_.values[row]; }

    /// Null, numbers in their order, then texts.
    [[nodiscard]] std::uint32_t RankOf(std::uint32_t row) const {
        const auto kind = static_cast<ValueKind>(value_.kinds[row]);
        if (kind == ValueKind::Null) return 0;
        if (kind == ValueKind::Unreadable) return kTextRank;
        constexpr std::uint64_t kSign = std::uint64_t{1} << 63U;
        const auto bits = std::bit_cast<std::uint64_t>(Value(row) + 0.0); // -0 becomes 0
        return static_cast<std::uint32_t>(((bits & kSign) != 0 ? ~bits : bits | kSign) >> 32U);
    }

    static constexpr std::uint32_t kTextRank = 0xFFFFFFFF;

    std::vector<std::uint32_t>& rows_;
    const ColumnImage& image_;
    const ScanPlan& plan_;
    const ScanInput& input_;
    WorkWatch& watch_;
    const ImageColumn& value_;
    RankSort sort_;
};

} // namespace

void SortRows(std::vector<std::uint32_t>& rows, const ColumnImage& image, const ScanPlan& plan, const ScanInput& input,
              WorkWatch& watch) {
    if (!plan.order.empty()) RowOrder(rows, image, plan, input, watch).Run();
}

} // namespace jet
