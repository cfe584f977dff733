#include "jet/columns/ScanPlaces.h"

#include "jet/values/Error.h"
#include "jet/values/NumberList.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <limits>

namespace jet {

namespace {

constexpr std::uint64_t kMostAtOnce = 4U << 20U;
constexpr std::uint64_t kAlways = 1000;
/// The bits of a NaN, which no value is: the key of Null, and behind it those of texts that are no numbers.
constexpr std::uint64_t kNoNumber = 0x7FF8'0000'0000'0000U;

void KeepCommon(std::vector<std::uint8_t>& passes, const std::vector<std::uint8_t>& others) {
    std::ranges::transform(passes, others, passes.begin(), std::bit_and<>());
}

} // namespace

std::vector<std::uint8_t> CodesInList(const ImageColumn& column, const ScanListTest& test) {
    const NumberList list(test.numbers);
    std::vector<std::uint8_t> passes(column.numbers.size());
    for (std::size_t code = column.hasNull ? 1 : 0; code < passes.size(); ++code)
        passes[code] = list.contains(column.numbers[code]) != test.negated ? 1 : 0;
    return passes;
}

ScanPlaces::ScanPlaces(const ColumnImage& image, const ScanPlan& plan, const ScanInput& input, WorkWatch* watch)
    : image_(image), plan_(plan), input_(input), watch_(watch) {
    if (plan.byRow) return;
    for (const std::size_t position : plan.codes) {
        columns_.push_back(ColumnFor(position));
        AddSize(columns_.back().standing.size());
    }
    for (const SideClasses& side : input.sides)
        AddSize(side.classes);
    growing_ = plan.byValue || combinations_ > std::min<std::uint64_t>(kMostAtOnce, kAlways + 2 * image.rows());
}

ScanPlaces::Column ScanPlaces::ColumnFor(std::size_t position) const {
    Column made{&image_.columns()[position], {}, {}};
    const std::size_t codes = made.column->numbers.size();
    made.shareOf.resize(codes);
    const std::vector<std::uint8_t> passes = PassingCodesOf(position);
    for (std::uint32_t code = 0; code < codes; ++code) {
        if (passes[code] == 0) continue;
        made.shareOf[code] = static_cast<std::uint32_t>(made.standing.size());
        made.standing.push_back(code);
    }
    return made;
}

std::vector<std::uint8_t> ScanPlaces::PassingCodesOf(std::size_t position) const {
    const ImageColumn& column = image_.columns()[position];
    std::vector<std::uint8_t> passes(column.numbers.size(), 1);
    for (std::size_t i = 0; i < input_.keys.size(); ++i)
        if (plan_.keys[i].column == position) KeepCommon(passes, input_.keys[i].passes);
    for (const ScanListTest& test : plan_.lists)
        if (test.column == position) KeepCommon(passes, CodesInList(column, test));
    return passes;
}

void ScanPlaces::AddSize(std::size_t size) {
    sizes_.push_back(static_cast<std::uint32_t>(std::max<std::size_t>(size, 1)));
    if (combinations_ > std::numeric_limits<std::uint64_t>::max() / sizes_.back())
        throw Error(ErrorNumber::ColumnsUnfit, "There are too many groups.");
    combinations_ *= sizes_.back();
}

std::uint32_t ScanPlaces::count() const {
    return static_cast<std::uint32_t>(growing_ ? met_.keys().size() : combinations_);
}

void ScanPlaces::FindKeys(const ScanBlock& block, const std::vector<SideKeys>& sides) {
    if (plan_.byValue) return FindValueKeys(block);
    auto& keys = found_;
    std::fill_n(keys.begin(), block.count, 0U);
    for (std::size_t c = 0; c < columns_.size(); ++c) {
        const std::uint32_t* const shareOf = columns_[c].shareOf.data();
        const std::uint64_t size = sizes_[c];
        WithCodes(*columns_[c].column, [&](const auto& codeOf) {
            for (std::size_t i = 0; i < block.count; ++i)
                keys[i] = keys[i] * size + shareOf[codeOf(block.rows[i])];
        });
    }
    for (std::size_t s = 0; s < sides.size(); ++s) {
        const std::int32_t* const classOf = input_.sides[s].classOf.data();
        const std::uint64_t size = sizes_[columns_.size() + s];
        if (size == 1) continue;
        for (std::size_t i = 0; i < block.count; ++i)
            keys[i] = keys[i] * size + static_cast<std::uint32_t>(std::max(classOf[sides[s][i]], 0)); // in a cut file
    }
}

/// Numbers that are equal have one key, however they are written.
void ScanPlaces::FindValueKeys(const ScanBlock& block) {
    const ImageColumn& value = image_.columns()[plan_.value];
    for (std::size_t i = 0; i < block.count; ++i) {
        const std::uint32_t row = block.rows[i];
        const auto kind = static_cast<ValueKind>(value.kinds[row]);
        if (kind == ValueKind::Null)
            found_[i] = kNoNumber;
        else if (kind == ValueKind::Unreadable)
            found_[i] = KeyOfText(row);
        else
            found_[i] = value.values[row] == 0 ? 0 : std::bit_cast<std::uint64_t>(value.values[row]);
    }
}

std::uint64_t ScanPlaces::KeyOfText(std::uint32_t row) {
    std::string room;
    const std::string text(image_.TextOf(image_.columns()[plan_.value], row, room));
    return texts_.try_emplace(text, kNoNumber + 1 + texts_.size()).first->second;
}

void ScanPlaces::Find(ScanBlock& block, const std::vector<SideKeys>& sides) {
    FindKeys(block, sides);
    if (!growing_) {
        for (std::size_t i = 0; i < block.count; ++i)
            block.places[i] = static_cast<std::uint32_t>(found_[i]);
        return;
    }
    for (std::size_t i = 0; i < block.count; ++i)
        block.places[i] = IsAlone(found_[i]) ? kNoPlace : met_.PlaceOf(found_[i], watch_);
    if (plan_.byValue) CheckSpellings(block);
}

/// Which of several spellings stands for equal values hangs on the order in which SQLite would join the rows.
void ScanPlaces::CheckSpellings(const ScanBlock& block) {
    for (std::size_t i = 0; i < block.count; ++i) {
        if (block.places[i] == firsts_.size())
            firsts_.push_back(block.rows[i]);
        else if (!AreSpelledAlike(block.rows[i], firsts_[block.places[i]]))
            throw Error(ErrorNumber::ColumnsUnfit, "Equal values are written in several ways.");
    }
}

bool ScanPlaces::AreSpelledAlike(std::uint32_t row, std::uint32_t other) const {
    const ImageColumn& value = image_.columns()[plan_.value];
    if (value.kinds[row] != value.kinds[other]) return false;
    const auto kind = static_cast<ValueKind>(value.kinds[row]);
    if (kind == ValueKind::Null) return true;
    if (kind >= ValueKind::FixedPoint) // -0 is equal to 0
        return std::bit_cast<std::uint64_t>(value.values[row]) == std::bit_cast<std::uint64_t>(value.values[other]);
    std::string room;
    std::string roomOfOther;
    return image_.TextOf(value, row, room) == image_.TextOf(value, other, roomOfOther);
}

bool ScanPlaces::wantsMarks() const {
    constexpr std::uint64_t kFewMarks = 1U << 28U; // two lists of 32 MB
    constexpr std::uint64_t kMarksARow = 24;       // takes less memory than the groups would
    const std::uint64_t most = std::max<std::uint64_t>(kFewMarks, kMarksARow * image_.rows());
    return growing_ && combinations_ <= most && plan_.whole && (plan_.moreThan > 0 || plan_.differing);
}

void ScanPlaces::Mark(const ScanBlock& block, const std::vector<SideKeys>& sides) {
    if (seen_.empty()) {
        seen_.resize(combinations_ / 64 + 1);
        shared_.resize(combinations_ / 64 + 1);
    }
    FindKeys(block, sides);
    for (std::size_t i = 0; i < block.count; ++i) {
        const std::uint64_t bit = std::uint64_t{1} << (found_[i] % 64);
        std::uint64_t& seen = seen_[found_[i] / 64];
        if ((seen & bit) != 0) {
            shared_[found_[i] / 64] |= bit;
            anyShared_ = true;
        }
        seen |= bit;
    }
}

bool ScanPlaces::IsAlone(std::uint64_t key) const {
    return !seen_.empty() && (shared_[key / 64] >> (key % 64) & 1U) == 0;
}

void ScanPlaces::Describe(ScanGroups& groups) {
    for (Column& column : columns_)
        groups.codes.push_back(std::move(column.standing));
    groups.sizes = sizes_;
    groups.keys = met_.TakeKeys();
}

} // namespace jet
