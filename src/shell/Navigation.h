#pragma once

#include <QString>

#include <array>
#include <optional>

/// The way through the four stages: their names and texts, and which of Back and Forward may be used.
namespace tessaro::navigation {

constexpr int kHomePage = -1;
constexpr int kDataStage = 3;
constexpr int kStageCount = 4;

struct StageRow {
    const char* formName;   ///< in VisitedStages
    const char* captionKey; ///< on the banner and on the home page
    const char* toolTipKey;
    const char* picture; ///< file name of its icon
};
extern const std::array<StageRow, kStageCount> Stages;

[[nodiscard]] bool IsStage(int stage);
[[nodiscard]] QString FormNameOf(int stage);

/// New states of the Back and Forward buttons; a button without a value keeps its state.
struct ButtonChange {
    std::optional<bool> back;
    std::optional<bool> forward;
};

/// Adds the form of a stage to VisitedStages unless it is there. From the first stage on both buttons are enabled,
/// Forward only while CurrentStage is less than the number of screens visited.
ButtonChange AddToVisitedStages(const QString& formName);
/// The number of screens visited since the database opened: how far Forward may go.
[[nodiscard]] int UpperBound();
/// The stage that Back and Forward lead to from CurrentStage, if any.
[[nodiscard]] std::optional<int> BackTarget();
[[nodiscard]] std::optional<int> ForwardTarget();
/// The buttons after a step back and after a step forward.
[[nodiscard]] ButtonChange AfterBack();
[[nodiscard]] ButtonChange AfterForward();

} // namespace tessaro::navigation
