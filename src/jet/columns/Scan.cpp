#include "jet/columns/Scan.h"

#include "jet/values/Collation.h"
#include "jet/values/Error.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace jet {

namespace {

constexpr std::size_t kBlockRows = 4096;
constexpr std::size_t kMostPlaces = 4U << 20U;
constexpr auto kNullKind = static_cast<std::uint8_t>(ValueKind::Null);
constexpr auto kUnreadableKind = static_cast<std::uint8_t>(ValueKind::Unreadable);

/// The rows of a block that are still in, as numbers of the image, and the place of each.
struct Block {
    std::array<std::uint32_t, kBlockRows> rows;
    std::array<std::uint32_t, kBlockRows> places;
    std::size_t count = 0;

    /// Keeps the rows for which the test gives true.
    template <class Test> void Keep(const Test& test) {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint32_t row = rows[i];
            rows[kept] = row;
            kept += test(row) ? 1U : 0U;
        }
        count = kept;
    }
};

template <class Code> std::uint32_t CodeAt(const unsigned char* codes, std::uint32_t row) {
    Code code = 0;
    std::memcpy(&code, codes + row * sizeof(Code), sizeof(Code));
    return code;
}

/// Calls `work` with a function that gives the code of a row.
template <class Work> void WithCodes(const ImageColumn& column, const Work& work) {
    const unsigned char* const codes = column.codes;
    if (column.width == 1) work([codes](std::uint32_t row) { return CodeAt<std::uint8_t>(codes, row); });
    if (column.width == 2) work([codes](std::uint32_t row) { return CodeAt<std::uint16_t>(codes, row); });
    if (column.width == 4) work([codes](std::uint32_t row) { return CodeAt<std::uint32_t>(codes, row); });
}

/// One column's share in the place of a group: the codes that pass are numbered anew, without gaps.
struct PlaceColumn {
    const ImageColumn* column = nullptr;
    std::vector<std::uint32_t> shareOf; ///< by code
    std::uint32_t size = 0;
};

bool Compares(double value, ScanOperator op, double number) {
    switch (op) {
    case ScanOperator::Equal:
        return value == number;
    case ScanOperator::NotEqual:
        return value != number;
    case ScanOperator::Less:
        return value < number;
    case ScanOperator::LessOrEqual:
        return value <= number;
    case ScanOperator::Greater:
        return value > number;
    case ScanOperator::GreaterOrEqual:
        return value >= number;
    }
    return false;
}

/// Text is greater than every number.
bool TextCompares(ScanOperator op) {
    return op == ScanOperator::NotEqual || op == ScanOperator::Greater || op == ScanOperator::GreaterOrEqual;
}

class Scanner final {
  public:
    Scanner(const ColumnImage& image, const ScanPlan& plan, const std::vector<PassingCodes>& keys)
        : image_(image), plan_(plan), keys_(keys), value_(image.columns()[plan.value]) {}

    std::shared_ptr<const ScanGroups> Run() {
        LayOut();
        for (const ScanListTest& test : plan_.lists)
            lists_.emplace_back(test.numbers);
        for (std::size_t from = 0; from < image_.rows(); from += kBlockRows) {
            // a cut file must not be read beyond its end
            if (from % (64 * kBlockRows) == 0 && !image_.isIntact())
                throw Error(ErrorNumber::ColumnsUnfit, "The column image was changed.");
            Fill(from);
            Filter();
            if (block_.count == 0) continue;
            FindPlaces();
            Count();
            for (std::size_t i = 0; i < plan_.figures.size(); ++i)
                Take(plan_.figures[i], i);
        }
        for (std::uint32_t place = 0; place < places_; ++place)
            if (groups_->rows[place] > 0) groups_->filled.push_back(place);
        return groups_;
    }

  private:
    // --- Places ---

    void LayOut() {
        std::size_t places = 1;
        for (const std::size_t position : plan_.codes) {
            columns_.push_back(ColumnFor(position));
            places *= std::max<std::size_t>(columns_.back().size, 1);
            if (places > kMostPlaces) throw Error(ErrorNumber::ColumnsUnfit, "There are too many groups.");
        }
        places_ = static_cast<std::uint32_t>(places);
        groups_->rows.resize(places_);
        groups_->ranks.resize(plan_.figures.size());
        for (std::size_t i = 0; i < plan_.figures.size(); ++i)
            MakeRoom(plan_.figures[i].kind, i);
    }

    PlaceColumn ColumnFor(std::size_t position) {
        PlaceColumn made{&image_.columns()[position], {}, 0};
        const std::size_t codes = made.column->numbers.size();
        made.shareOf.resize(codes);
        std::vector<std::uint32_t>& standing = groups_->codes.emplace_back();
        for (std::uint32_t code = 0; code < codes; ++code) {
            if (!Passes(position, code)) continue;
            made.shareOf[code] = made.size++;
            standing.push_back(code);
        }
        return made;
    }

    [[nodiscard]] bool Passes(std::size_t position, std::uint32_t code) const {
        for (std::size_t i = 0; i < keys_.size(); ++i)
            if (plan_.keys[i].column == position && keys_[i].passes[code] == 0) return false;
        return true;
    }

    void MakeRoom(ScanFigureKind kind, std::size_t figure) {
        switch (kind) {
        case ScanFigureKind::Rows:
            break;
        case ScanFigureKind::Values:
            groups_->values.resize(places_);
            break;
        case ScanFigureKind::Least:
            groups_->least.assign(places_, kNoRow);
            break;
        case ScanFigureKind::Greatest:
            groups_->greatest.assign(places_, kNoRow);
            break;
        case ScanFigureKind::Sum:
            groups_->sums.resize(places_);
            groups_->unreadable.assign(places_, kNoRow);
            break;
        case ScanFigureKind::Spread:
            groups_->spreads.resize(places_);
            groups_->unreadable.assign(places_, kNoRow);
            break;
        case ScanFigureKind::LeastRanked:
        case ScanFigureKind::GreatestRanked:
            groups_->ranks[figure].assign(places_, -1);
            break;
        }
    }

    // --- Rows ---

    void Fill(std::size_t from) {
        block_.count = std::min(kBlockRows, image_.rows() - from);
        for (std::size_t i = 0; i < block_.count; ++i)
            block_.rows[i] = static_cast<std::uint32_t>(from + i);
    }

    void Filter() {
        for (std::size_t i = 0; i < keys_.size(); ++i) {
            const std::uint8_t* const passes = keys_[i].passes.data();
            if (std::ranges::find(keys_[i].passes, 0) == keys_[i].passes.end()) continue;
            WithCodes(image_.columns()[plan_.keys[i].column], [&](const auto& codeOf) {
                block_.Keep([&](std::uint32_t row) { return passes[codeOf(row)] != 0; });
            });
        }
        for (const ScanValueTest& test : plan_.values)
            block_.Keep([&](std::uint32_t row) { return ValuePasses(row, test); });
        for (std::size_t i = 0; i < lists_.size(); ++i)
            block_.Keep([&](std::uint32_t row) { return ListPasses(row, plan_.lists[i], lists_[i]); });
    }

    [[nodiscard]] bool ValuePasses(std::uint32_t row, const ScanValueTest& test) const {
        const std::uint8_t kind = value_.kinds[row];
        if (kind == kNullKind) return false;
        return kind == kUnreadableKind ? TextCompares(test.op) : Compares(value_.values[row], test.op, test.number);
    }

    [[nodiscard]] bool ListPasses(std::uint32_t row, const ScanListTest& test, const NumberList& list) const {
        const ImageColumn& column = image_.columns()[test.column];
        if (column.form == ColumnForm::Consecutive) return list.contains(column.first + row) != test.negated;
        if (column.form == ColumnForm::Plain) return list.contains(column.plain[row]) != test.negated;
        std::uint32_t code = 0;
        std::memcpy(&code, column.codes + std::size_t{row} * column.width, column.width);
        if (column.hasNull && code == 0) return false;
        return list.contains(column.numbers[code]) != test.negated;
    }

    void FindPlaces() {
        std::fill_n(block_.places.begin(), block_.count, 0U);
        for (const PlaceColumn& each : columns_) {
            const std::uint32_t* const shareOf = each.shareOf.data();
            WithCodes(*each.column, [&](const auto& codeOf) {
                for (std::size_t i = 0; i < block_.count; ++i)
                    block_.places[i] = block_.places[i] * each.size + shareOf[codeOf(block_.rows[i])];
            });
        }
    }

    // --- Figures ---

    template <class Take> void Each(const Take& take) {
        for (std::size_t i = 0; i < block_.count; ++i)
            take(block_.rows[i], block_.places[i]);
    }
    /// The rows that have a value.
    template <class Take> void EachValue(const Take& take) {
        const std::uint8_t* const kinds = value_.kinds.data();
        Each([&](std::uint32_t row, std::uint32_t place) {
            if (kinds[row] != kNullKind) take(row, place);
        });
    }
    /// The rows that hold a number; of the others the first of its group is noted.
    template <class Take> void EachNumber(const Take& take) {
        const std::uint8_t* const kinds = value_.kinds.data();
        EachValue([&](std::uint32_t row, std::uint32_t place) {
            if (kinds[row] != kUnreadableKind) return take(row, place);
            std::uint32_t& first = groups_->unreadable[place];
            first = std::min(first, row);
        });
    }

    void Count() {
        std::int64_t* const rows = groups_->rows.data();
        Each([&](std::uint32_t, std::uint32_t place) { ++rows[place]; });
    }

    void Take(const ScanFigure& figure, std::size_t place) {
        switch (figure.kind) {
        case ScanFigureKind::Rows:
            break; // counted already
        case ScanFigureKind::Values:
            EachValue([&](std::uint32_t, std::uint32_t group) { ++groups_->values[group]; });
            break;
        case ScanFigureKind::Least:
            EachValue([&](std::uint32_t row, std::uint32_t group) { TakeExtreme<true>(groups_->least[group], row); });
            break;
        case ScanFigureKind::Greatest:
            EachValue(
                [&](std::uint32_t row, std::uint32_t group) { TakeExtreme<false>(groups_->greatest[group], row); });
            break;
        case ScanFigureKind::Sum:
            TakeSums();
            break;
        case ScanFigureKind::Spread:
            TakeSpreads();
            break;
        case ScanFigureKind::LeastRanked:
            TakeRanks<true>(figure, groups_->ranks[place]);
            break;
        case ScanFigureKind::GreatestRanked:
            TakeRanks<false>(figure, groups_->ranks[place]);
            break;
        }
    }

    /// Of texts that compare as equal the one whose bytes come first stays.
    template <bool least> void TakeExtreme(std::uint32_t& best, std::uint32_t row) const {
        if (best == kNoRow) {
            best = row;
            return;
        }
        const bool readable = value_.kinds[row] != kUnreadableKind && value_.kinds[best] != kUnreadableKind;
        if (readable) {
            const double a = value_.values[row];
            const double b = value_.values[best];
            if (least ? a < b : a > b) best = row;
            if (a != b || value_.kinds[row] == value_.kinds[best]) {
                const bool other = a == b && value_.kinds[row] == static_cast<std::uint8_t>(ValueKind::OtherForm);
                if (!other) return;
            }
        }
        TakeText<least>(best, row);
    }

    template <bool least> void TakeText(std::uint32_t& best, std::uint32_t row) const {
        std::string roomA;
        std::string roomB;
        const std::string_view a = image_.TextOf(value_, row, roomA);
        const std::string_view b = image_.TextOf(value_, best, roomB);
        const int order = CompareValueText(a, b);
        if (order == 0 ? a < b : (order < 0) == least) best = row;
    }

    void TakeSums() {
        const double* const values = value_.values.data();
        SumState* const sums = groups_->sums.data();
        EachNumber([&](std::uint32_t row, std::uint32_t group) {
            SumState& state = sums[group];
            const double term = values[row];
            const double next = state.sum + term;
            state.lost +=
                std::fabs(state.sum) >= std::fabs(term) ? (state.sum - next) + term : (term - next) + state.sum;
            state.sum = next;
            ++state.count;
        });
    }

    void TakeSpreads() {
        const double* const values = value_.values.data();
        SpreadState* const spreads = groups_->spreads.data();
        EachNumber([&](std::uint32_t row, std::uint32_t group) {
            SpreadState& state = spreads[group];
            const double distance = values[row] - state.mean;
            ++state.count;
            state.mean += distance / static_cast<double>(state.count);
            state.squares += distance * (values[row] - state.mean);
        });
    }

    template <bool least> void TakeRanks(const ScanFigure& figure, std::vector<std::int32_t>& best) {
        const std::int32_t* const ranks = keys_[figure.keys].ranks.data();
        WithCodes(image_.columns()[plan_.keys[figure.keys].column], [&](const auto& codeOf) {
            Each([&](std::uint32_t row, std::uint32_t group) {
                const std::int32_t rank = ranks[codeOf(row)];
                std::int32_t& held = best[group];
                if (rank >= 0 && (held < 0 || (least ? rank < held : rank > held))) held = rank;
            });
        });
    }

    const ColumnImage& image_;
    const ScanPlan& plan_;
    const std::vector<PassingCodes>& keys_;
    const ImageColumn& value_;
    std::vector<NumberList> lists_;
    std::vector<PlaceColumn> columns_;
    std::uint32_t places_ = 0;
    std::shared_ptr<ScanGroups> groups_ = std::make_shared<ScanGroups>();
    Block block_;
};

} // namespace

std::uint32_t ScanGroups::code(std::uint32_t place, std::size_t column) const {
    for (std::size_t later = codes.size() - 1; later > column; --later)
        place /= static_cast<std::uint32_t>(std::max<std::size_t>(codes[later].size(), 1));
    return codes[column][place % codes[column].size()];
}

std::shared_ptr<const ScanGroups> ScanRows(const ColumnImage& image, const ScanPlan& plan,
                                           const std::vector<PassingCodes>& keys) {
    return Scanner(image, plan, keys).Run();
}

} // namespace jet
