#pragma once

#include "view/SelectionGuard.h"

#include <QString>

#include <functional>
#include <optional>

/// The question before an automatic selection: which of the other stages have a selection, and which of those shall
/// narrow the result.
namespace tessaro::selection {

/// Which of the two other stages narrow the selection. Indicators: time, areas. Time: indicators, areas. Areas:
/// indicators, time.
struct OtherStages {
    bool first = false;
    bool second = false;
    bool operator==(const OtherStages&) const = default;
};

/// One check box of the question.
struct AutoSelectOption {
    QString captionKey;
    bool available = false; ///< ticked and enabled, or neither
};
struct AutoSelectOptions {
    AutoSelectOption first;
    AutoSelectOption second;
};
/// The two boxes for a stage.
[[nodiscard]] AutoSelectOptions PrepareFor(Stage stage);

/// Asks the user; nothing when cancelled.
using AutoSelectQuestion = std::function<std::optional<OtherStages>(Stage)>;
/// Decides which stages narrow a filter of `stage`; nothing when the user cancelled. Without a selection elsewhere
/// nobody is asked. `onlyTables` leaves out the exception of HasIndicatorsOrListsThem.
[[nodiscard]] std::optional<OtherStages> DecideOtherStages(Stage stage, const AutoSelectQuestion& ask,
                                                           bool onlyTables = false);

} // namespace tessaro::selection
