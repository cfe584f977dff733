#include "map/classes/ClassEditing.h"

#include "map/classes/Decimals.h"

#include <array>
#include <cmath>

namespace tessaro {

namespace {

struct ChoiceRules {
    bool computes;
    BreakMethod method;
    bool editsFrom;
    bool editsTo;
};

constexpr std::array<ChoiceRules, 8> kRules{{
    {true, BreakMethod::EqualCount, false, false},
    {true, BreakMethod::EqualSize, false, false},
    {false, BreakMethod::EqualCount, false, true},
    {false, BreakMethod::EqualCount, true, true},
    {true, BreakMethod::NaturalBreaks, false, false},
    {true, BreakMethod::StandardDeviation, false, false},
    {true, BreakMethod::Pretty, false, false},
    {true, BreakMethod::Geometric, false, false},
}};

const ChoiceRules& RulesOf(BreakChoice choice) {
    return kRules[static_cast<std::size_t>(choice)];
}

void Count(ClassBreak& each, const std::vector<double>& ascending) {
    each.lower = each.from;
    each.upper = each.to;
    each.count = CountBetween(ascending, each.from, each.to);
}

bool FitsFrom(const ClassBreaks& classes, std::size_t row, double value) {
    return value <= classes[row].to && (row == 0 || value > classes[row - 1].to);
}

bool FitsTo(const ClassBreaks& classes, std::size_t row, double value, double nextFrom) {
    if (value < classes[row].from) return false;
    if (row + 1 == classes.size()) return true;
    return value < nextFrom && nextFrom <= classes[row + 1].to;
}

} // namespace

bool ComputesClasses(BreakChoice choice) {
    return RulesOf(choice).computes;
}

BreakMethod MethodOf(BreakChoice choice) {
    return RulesOf(choice).method;
}

bool MayEdit(BreakChoice choice, Bound bound) {
    return bound == Bound::From ? RulesOf(choice).editsFrom : RulesOf(choice).editsTo;
}

bool EditBound(ClassBreaks& classes, int row, Bound bound, double value, BreakChoice choice, int decimals,
               const std::vector<double>& ascending) {
    const auto place = static_cast<std::size_t>(row);
    if (row < 0 || place >= classes.size() || !MayEdit(choice, bound) || !std::isfinite(value)) return false;
    if (bound == Bound::From) {
        if (!FitsFrom(classes, place, value)) return false;
        classes[place].from = value;
    } else {
        const bool hasNext = place + 1 < classes.size();
        const bool moves = hasNext && choice == BreakChoice::Continuous;
        const double nextFrom = moves     ? AsWritten(value + StepOfDecimals(decimals))
                                : hasNext ? classes[place + 1].from
                                          : value;
        if (!FitsTo(classes, place, value, nextFrom)) return false;
        classes[place].to = value;
        if (moves) {
            classes[place + 1].from = nextFrom;
            Count(classes[place + 1], ascending);
        }
    }
    Count(classes[place], ascending);
    return true;
}

} // namespace tessaro
