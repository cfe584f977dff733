#include "jet/columns/ScanFilter.h"

#include <algorithm>
#include <utility>

namespace jet {

namespace {

constexpr auto kNullKind = static_cast<std::uint8_t>(ValueKind::Null);
constexpr auto kUnreadableKind = static_cast<std::uint8_t>(ValueKind::Unreadable);

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

} // namespace

ScanFilter::ScanFilter(const ColumnImage& image, const ScanPlan& plan, const ScanInput& input)
    : image_(image), plan_(plan), input_(input), value_(image.columns()[plan.value]) {
    for (std::size_t i = 0; i < input.keys.size(); ++i)
        AddCodeTest(image.columns()[plan.keys[i].column], input.keys[i].passes);
    for (std::size_t side = 0; side < input.sides.size(); ++side)
        AddSideTest(side);
    for (const ScanListTest& test : plan.lists)
        AddListTest(test);
}

void ScanFilter::AddCodeTest(const ImageColumn& column, std::vector<std::uint8_t> passes) {
    if (std::ranges::find(passes, 0) == passes.end()) return;
    AddBlockTest(column, passes);
    codes_.push_back({&column, std::move(passes)});
}

void ScanFilter::AddBlockTest(const ImageColumn& column, const std::vector<std::uint8_t>& passes) {
    BlockTest test{&column, {0}};
    for (const std::uint8_t pass : passes)
        test.before.push_back(test.before.back() + (pass != 0 ? 1 : 0));
    blocks_.push_back(std::move(test));
}

bool ScanFilter::MayPass(std::size_t block) const {
    return std::ranges::all_of(blocks_, [block](const BlockTest& test) {
        const CodeBounds& bounds = test.column->blocks[block];
        return test.before[bounds.greatest + 1] > test.before[bounds.least];
    });
}

void ScanFilter::AddSideTest(std::size_t side) {
    const std::vector<std::int32_t>& classOf = input_.sides[side].classOf;
    const auto passes = [](std::int32_t found) { return found >= 0; };
    if (std::ranges::all_of(classOf, passes)) return;
    const std::vector<std::size_t>& columns = plan_.sides[side].columns;
    if (columns.size() > 1) {
        const auto codes = CodesThatPass(image_, plan_.sides[side], input_.sides[side]);
        for (std::size_t i = 0; i < columns.size(); ++i)
            AddBlockTest(image_.columns()[columns[i]], codes[i]);
        return sides_.push_back(side);
    }
    std::vector<std::uint8_t> codes(classOf.size());
    std::ranges::transform(classOf, codes.begin(), passes);
    AddCodeTest(image_.columns()[columns.front()], std::move(codes));
}

void ScanFilter::AddListTest(const ScanListTest& test) {
    const ImageColumn& column = image_.columns()[test.column];
    if (column.form == ColumnForm::Coded) return AddCodeTest(column, CodesInList(column, test));
    numbers_.push_back({&column, test.negated, NumberList(test.numbers)});
}

void ScanFilter::Apply(ScanBlock& block) const {
    for (const CodeTest& test : codes_)
        WithCodes(*test.column, [&](const auto& codeOf) {
            const std::uint8_t* const passes = test.passes.data();
            block.Keep([&](std::uint32_t row) { return passes[codeOf(row)] != 0; });
        });
    for (const std::size_t side : sides_)
        KeepSide(block, side);
    for (const ScanValueTest& test : plan_.values)
        block.Keep([&](std::uint32_t row) { return ValuePasses(row, test); });
    for (const NumberTest& test : numbers_)
        block.Keep([&](std::uint32_t row) {
            const bool plain = test.column->form == ColumnForm::Plain;
            return test.numbers.contains(plain ? test.column->plain[row] : test.column->first + row) != test.negated;
        });
}

void ScanFilter::KeepSide(ScanBlock& block, std::size_t side) const {
    SideKeys keys;
    FindSideKeys(image_, plan_.sides[side], input_.sides[side], block, keys);
    const std::int32_t* const classOf = input_.sides[side].classOf.data();
    std::size_t kept = 0;
    for (std::size_t i = 0; i < block.count; ++i) {
        block.rows[kept] = block.rows[i];
        kept += classOf[keys[i]] >= 0 ? 1U : 0U;
    }
    block.count = kept;
}

bool ScanFilter::ValuePasses(std::uint32_t row, const ScanValueTest& test) const {
    const std::uint8_t kind = value_.kinds[row];
    if (kind == kNullKind) return false;
    return kind == kUnreadableKind ? TextCompares(test.op) : Compares(value_.values[row], test.op, test.number);
}

} // namespace jet
