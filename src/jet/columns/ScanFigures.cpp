#include "jet/columns/ScanFigures.h"

#include "jet/values/Collation.h"

#include <algorithm>

namespace jet {

namespace {

constexpr auto kNullKind = static_cast<std::uint8_t>(ValueKind::Null);
constexpr auto kUnreadableKind = static_cast<std::uint8_t>(ValueKind::Unreadable);

/// The better of two ranks, of which one may be none (-1).
template <bool least> void TakeRank(std::int32_t& held, std::int32_t rank) {
    if (rank >= 0 && (held < 0 || (least ? rank < held : rank > held))) held = rank;
}

template <class Number> void AddAll(std::vector<Number>& sums, const std::vector<Number>& terms) {
    for (std::size_t i = 0; i < sums.size(); ++i)
        sums[i] += terms[i];
}

void KeepSmaller(std::vector<std::uint32_t>& rows, const std::vector<std::uint32_t>& others) {
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i] = std::min(rows[i], others[i]);
}

} // namespace

ScanFigures::ScanFigures(const ColumnImage& image, const ScanPlan& plan, const ScanInput& input, ScanGroups& groups)
    : image_(image), plan_(plan), input_(input), value_(image.columns()[plan.value]), groups_(groups) {
    groups_.ranks.resize(plan.figures.size());
}

void ScanFigures::Grow(std::size_t places) {
    groups_.rows.resize(places);
    for (std::size_t i = 0; i < plan_.figures.size(); ++i)
        Grow(plan_.figures[i], i, places);
}

void ScanFigures::Grow(const ScanFigure& figure, std::size_t position, std::size_t places) {
    switch (figure.kind) {
    case ScanFigureKind::Rows:
        return;
    case ScanFigureKind::Values:
        return groups_.values.resize(places);
    case ScanFigureKind::Least:
        return groups_.least.resize(places, kNoRow);
    case ScanFigureKind::Greatest:
        return groups_.greatest.resize(places, kNoRow);
    case ScanFigureKind::Sum:
        groups_.sums.resize(places);
        return groups_.unreadable.resize(places, kNoRow);
    case ScanFigureKind::Spread:
        groups_.spreads.resize(places);
        return groups_.unreadable.resize(places, kNoRow);
    case ScanFigureKind::LeastRanked:
    case ScanFigureKind::GreatestRanked:
    case ScanFigureKind::LeastOf:
    case ScanFigureKind::GreatestOf:
        return groups_.ranks[position].resize(places, -1);
    case ScanFigureKind::CountOf:
        return groups_.ranks[position].resize(places);
    case ScanFigureKind::FirstRow:
    case ScanFigureKind::FirstValue:
    case ScanFigureKind::FirstNumber:
        return groups_.first.resize(places, kNoRow);
    }
}

// --- From the rows of a block ---

template <class Use> void ScanFigures::Each(const Use& use) const {
    for (std::size_t i = 0; i < block_->count; ++i)
        use(block_->rows[i], block_->places[i]);
}

/// The rows that have a value.
template <class Use> void ScanFigures::EachValue(const Use& use) const {
    const std::uint8_t* const kinds = value_.kinds.data();
    Each([&](std::uint32_t row, std::uint32_t place) {
        if (kinds[row] != kNullKind) use(row, place);
    });
}

/// The rows that hold a number; of the others the first of its group is noted.
template <class Use> void ScanFigures::EachNumber(const Use& use) {
    const std::uint8_t* const kinds = value_.kinds.data();
    EachValue([&](std::uint32_t row, std::uint32_t place) {
        if (kinds[row] != kUnreadableKind) return use(row, place);
        std::uint32_t& first = groups_.unreadable[place];
        first = std::min(first, row);
    });
}

void ScanFigures::Take(const ScanBlock& block, const std::vector<SideKeys>& sides) {
    block_ = &block;
    sides_ = &sides;
    std::uint32_t* const rows = groups_.rows.data();
    Each([&](std::uint32_t, std::uint32_t place) { ++rows[place]; });
    for (std::size_t i = 0; i < plan_.figures.size(); ++i)
        Take(plan_.figures[i], i);
}

void ScanFigures::Take(const ScanFigure& figure, std::size_t position) {
    switch (figure.kind) {
    case ScanFigureKind::Rows:
        return; // counted already
    case ScanFigureKind::Values:
        return EachValue([&](std::uint32_t, std::uint32_t group) { ++groups_.values[group]; });
    case ScanFigureKind::Least:
        return EachValue([&](std::uint32_t row, std::uint32_t group) { TakeExtreme<true>(groups_.least[group], row); });
    case ScanFigureKind::Greatest:
        return EachValue(
            [&](std::uint32_t row, std::uint32_t group) { TakeExtreme<false>(groups_.greatest[group], row); });
    case ScanFigureKind::Sum:
        return TakeSums();
    case ScanFigureKind::Spread:
        return TakeSpreads();
    case ScanFigureKind::LeastRanked:
        return TakeRanks<true>(figure, groups_.ranks[position]);
    case ScanFigureKind::GreatestRanked:
        return TakeRanks<false>(figure, groups_.ranks[position]);
    case ScanFigureKind::LeastOf:
    case ScanFigureKind::GreatestOf:
    case ScanFigureKind::CountOf:
        return TakeSide(figure, groups_.ranks[position]);
    case ScanFigureKind::FirstRow:
    case ScanFigureKind::FirstValue:
    case ScanFigureKind::FirstNumber: // rows come in ascending order
        return Each([&](std::uint32_t row, std::uint32_t group) {
            groups_.first[group] = std::min(groups_.first[group], row);
        });
    }
}

/// Of texts that compare as equal the one whose bytes come first stays.
template <bool least> void ScanFigures::TakeExtreme(std::uint32_t& best, std::uint32_t row) const {
    if (row == kNoRow) return;
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

template <bool least> void ScanFigures::TakeText(std::uint32_t& best, std::uint32_t row) const {
    std::string roomA;
    std::string roomB;
    const std::string_view a = image_.TextOf(value_, row, roomA);
    const std::string_view b = image_.TextOf(value_, best, roomB);
    const int order = CompareValueText(a, b);
    if (order == 0 ? a < b : (order < 0) == least) best = row;
}

void ScanFigures::TakeSums() {
    const double* const values = value_.values.data();
    SumState* const sums = groups_.sums.data();
    EachNumber([&](std::uint32_t row, std::uint32_t group) { sums[group].Add(values[row]); });
}

void ScanFigures::TakeSpreads() {
    const double* const values = value_.values.data();
    SpreadState* const spreads = groups_.spreads.data();
    EachNumber([&](std::uint32_t row, std::uint32_t group) { spreads[group].Add(values[row]); });
}

template <bool least> void ScanFigures::TakeRanks(const ScanFigure& figure, std::vector<std::int32_t>& held) {
    const std::int32_t* const ranks = input_.keys[figure.keys].ranks.data();
    WithCodes(image_.columns()[plan_.keys[figure.keys].column], [&](const auto& codeOf) {
        Each([&](std::uint32_t row, std::uint32_t group) { TakeRank<least>(held[group], ranks[codeOf(row)]); });
    });
}

void ScanFigures::TakeSide(const ScanFigure& figure, std::vector<std::int32_t>& held) {
    const std::int32_t* const ranks = input_.sides[figure.keys].ranks[figure.field].data();
    const std::uint32_t* const keys = (*sides_)[figure.keys].data();
    const auto each = [&](const auto& use) {
        for (std::size_t i = 0; i < block_->count; ++i)
            use(held[block_->places[i]], ranks[keys[i]]);
    };
    if (figure.kind == ScanFigureKind::LeastOf) return each(TakeRank<true>);
    if (figure.kind == ScanFigureKind::GreatestOf) return each(TakeRank<false>);
    each([](std::int32_t& count, std::int32_t rank) { count += rank >= 0 ? 1 : 0; });
}

// --- Of parts that were read apart ---

void ScanFigures::Join(const ScanGroups& later) {
    AddAll(groups_.rows, later.rows);
    for (std::size_t i = 0; i < plan_.figures.size(); ++i)
        JoinFigure(plan_.figures[i], i, later);
}

void ScanFigures::JoinFigure(const ScanFigure& figure, std::size_t position, const ScanGroups& later) {
    const auto all = [](auto& ours, const auto& theirs, const auto& join) {
        for (std::size_t i = 0; i < ours.size(); ++i)
            join(ours[i], theirs[i]);
    };
    const auto joinStates = [](auto& state, const auto& part) { state.Join(part); };
    switch (figure.kind) {
    case ScanFigureKind::Rows:
        return;
    case ScanFigureKind::Values:
        return AddAll(groups_.values, later.values);
    case ScanFigureKind::Least:
        return all(groups_.least, later.least, [&](auto& best, auto row) { TakeExtreme<true>(best, row); });
    case ScanFigureKind::Greatest:
        return all(groups_.greatest, later.greatest, [&](auto& best, auto row) { TakeExtreme<false>(best, row); });
    case ScanFigureKind::Sum:
        all(groups_.sums, later.sums, joinStates);
        return KeepSmaller(groups_.unreadable, later.unreadable);
    case ScanFigureKind::Spread:
        all(groups_.spreads, later.spreads, joinStates);
        return KeepSmaller(groups_.unreadable, later.unreadable);
    case ScanFigureKind::LeastRanked:
    case ScanFigureKind::LeastOf:
        return all(groups_.ranks[position], later.ranks[position], TakeRank<true>);
    case ScanFigureKind::GreatestRanked:
    case ScanFigureKind::GreatestOf:
        return all(groups_.ranks[position], later.ranks[position], TakeRank<false>);
    case ScanFigureKind::CountOf:
        return AddAll(groups_.ranks[position], later.ranks[position]);
    case ScanFigureKind::FirstRow:
    case ScanFigureKind::FirstValue:
    case ScanFigureKind::FirstNumber:
        return KeepSmaller(groups_.first, later.first);
    }
}

} // namespace jet
