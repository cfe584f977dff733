#pragma once

#include "calculate/Calculation.h"

#include <QString>

#include <array>
#include <optional>
#include <vector>

/// What a user chooses in the wizard of a calculation, as plain data.
namespace tessaro {

/// An indicator that takes part, with one of its subgroups or, when that is empty, with all of them.
struct CalculationItem {
    QString indicator;
    QString subpop;

    bool operator==(const CalculationItem&) const = default;
};

/// What a composite index gives an indicator.
struct IndexWeight {
    QString weight; ///< as typed; all add up to 100
    bool highIsGood = true;

    bool operator==(const IndexWeight&) const = default;
};

/// The factor from a unit of the data to the target unit.
struct ConversionFactor {
    QString unit;
    QString factor; ///< as typed

    bool operator==(const ConversionFactor&) const = default;
};

constexpr int kAreaLevels = 10;

/// All that a user chooses in a calculation wizard. The pages edit it; the workbooks are made from it alone. Numbers
/// stand as they were typed, with the user's decimal mark.
struct CalculationDraft {
    CalcType type = CalcType::PerCent;

    bool showSubpop = false;                   ///< items have subgroups
    std::vector<CalculationItem> items;        ///< the numerators, or the indicators chosen
    std::vector<CalculationItem> denominators; ///< Per cent only
    std::vector<IndexWeight> weights;          ///< Composite index only, one for each item
    std::vector<ConversionFactor> factors;     ///< Transform unit only, one for each unit of the data
    QString targetUnit;                        ///< Transform unit only
    std::array<bool, kAreaLevels> levels{};    ///< Sub-total only: level 1 to 10 is wanted
    QString formula;                           ///< User formula only

    // What the result is called and how it is written.
    QString sector;
    QString indicatorClass;
    QString indicator;
    QString unit;
    QString subpop;
    QString decimals = QStringLiteral("0");
    QString scaleMin = QStringLiteral("0");
    QString scaleMax = QStringLiteral("100");
    bool saveWithDataView = false; ///< the new database holds the data in view as well

    bool operator==(const CalculationDraft&) const = default;
};

/// A draft as lines "name=value", one for each element of a list, in plain text whatever the names hold.
[[nodiscard]] QString DraftText(CalculationDraft draft);
/// Reads such lines. What isn't named keeps its first value; names that are unknown are passed over. Nothing when a
/// line has no name or a value can't be read.
[[nodiscard]] std::optional<CalculationDraft> ReadCalculationDraft(const QString& text);

} // namespace tessaro
