#pragma once

#include <QString>

#include <array>
#include <optional>

/// The way through the four stages: their names and texts, and which of Back and Forward may be used.
namespace tessaro::navigation {

constexpr int HomePage = -1;
constexpr int DataStage = 3;
constexpr int StageCount = 4;

struct Stage {
    const char* formName;   ///< in VisitedStages
    const char* captionKey; ///< on the banner and on the home page
    const char* toolTipKey;
    const char* picture; ///< of the icon family
};
extern const std::array<Stage, StageCount> Stages;

[[nodiscard]] bool IsStage(int stage);
[[nodiscard]] QString FormNameOf(int stage);

/// What changes on the Back and Forward buttons; a value that is missing leaves the button as it is.
struct ButtonChange {
    std::optional<bool> back;
    std::optional<bool> forward;
};

/// Adds the form of a stage that was opened to VisitedStages, once. The two buttons become usable with the first one;
/// Forward only when CurrentStage lies below the number of screens visited.
ButtonChange AddToVisitedStages(const QString& formName);
/// The number of screens visited since the database opened: how far Forward may go.
[[nodiscard]] int UpperBound();
/// Where Back and Forward go from CurrentStage; nothing when they go nowhere.
[[nodiscard]] std::optional<int> BackTarget();
[[nodiscard]] std::optional<int> ForwardTarget();
/// The buttons after a step back and after a step forward.
[[nodiscard]] ButtonChange AfterBack();
[[nodiscard]] ButtonChange AfterForward();

} // namespace tessaro::navigation
