#pragma once

#include "calculate/CalculationDraft.h"

#include <QString>

#include <array>

namespace tessaro {

/// The steps of a calculation wizard by their numbers. Not every calculation shows all of them.
enum CalculationStep { SelectionStep, SecondStep, SaveAsStep, LogStep, DataEntryStep, kCalculationSteps };

/// The page that a step shows.
enum class PageKind {
    None, ///< the calculation passes the step over, forwards and backwards
    Indicators,
    Formula,
    Denominators,
    Weights,
    UnitFactors,
    Levels,
    SaveAs,
    Log,
    DataEntry
};

/// Why a step can't be left: the message, and the control that gets the focus.
struct StepProblem {
    QString key; ///< of the message; empty: there is nothing wrong
    const char* control = nullptr;
    int row = 0; ///< in a grid, from 0
};

/// One step of one calculation.
struct CalculationStepEntry {
    PageKind page = PageKind::None;
    const char* captionKey = nullptr;
    /// What must be so before Next and Finish; none: nothing.
    StepProblem (*check)(const CalculationDraft&) = nullptr;
};
using CalculationStepTable = std::array<CalculationStepEntry, kCalculationSteps>;

/// The steps of a calculation.
[[nodiscard]] const CalculationStepTable& StepsOf(CalcType type);

/// Whether the Save As page asks for the unit and for the subgroup of the result.
[[nodiscard]] bool AsksForUnit(CalcType type);
[[nodiscard]] bool AsksForSubpop(CalcType type);
/// Whether the calculation works on one indicator alone.
[[nodiscard]] bool TakesOneIndicator(CalcType type);
/// Whether the user may choose subgroups of the indicators.
[[nodiscard]] bool OffersSubpops(CalcType type);

/// The numbers of all weights together, as they are typed; those that can't be read count nothing.
[[nodiscard]] double SumOfWeights(const std::vector<IndexWeight>& weights);
/// So many weights that are as alike as can be and add up to exactly 100, with at most two decimals, as the user would
/// type them. No numbers for none.
[[nodiscard]] QStringList EvenWeights(int count);

} // namespace tessaro
