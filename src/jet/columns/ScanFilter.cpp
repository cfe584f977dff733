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
    for (const ScanListTest& test : plan.lists)
        AddListTest(test);
}

void ScanFilter::AddCodeTest(const ImageColumn& column, std::vector<std::uint8_t> passes) {
    if (std::ranges::find(passes, 0) != passes.end()) codes_.push_back({&column, std::move(passes)});
}

// Null is in no list, and outside of none.
void ScanFilter::AddListTest(const ScanListTest& test) {
    const ImageColumn& column = image_.columns()[test.column];
    NumberList list(test.numbers);
    if (column.form != ColumnForm::Coded) return numbers_.push_back({&column, test.negated, std::move(list)});
    std::vector<std::uint8_t> passes(column.numbers.size());
    for (std::size_t code = column.hasNull ? 1 : 0; code < passes.size(); ++code)
        passes[code] = list.contains(column.numbers[code]) != test.negated ? 1 : 0;
    AddCodeTest(column, std::move(passes));
}

void ScanFilter::Apply(ScanBlock& block) const {
    for (const CodeTest& test : codes_)
        WithCodes(*test.column, [&](const auto& codeOf) {
            const std::uint8_t* const passes = test.passes.data();
            block.Keep([&](std::uint32_t row) { return passes[codeOf(row)] != 0; });
        });
    for (std::size_t side = 0; side < input_.sides.size(); ++side)
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
    FindSideKeys(image_, plan_.sides[side], block, keys);
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
