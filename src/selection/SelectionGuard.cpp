#include "selection/SelectionGuard.h"

#include "selection/AutoSelect.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Session.h"

#include <QString>

#include <array>

namespace tessaro::selection {

namespace {

struct GuardMessages {
    Stage stage;
    const char* before;
    const char* inside;
};

constexpr std::array<GuardMessages, 3> Guards{{
    {Stage::Indicators, "016", "016"},
    {Stage::Time, "023", "024"},
    {Stage::Areas, "024", "023"},
}};

bool IsFilled(Stage stage) {
    return stage == Stage::Indicators ? HasIndicatorsOrListsThem() : HasSelection(stage);
}

} // namespace

std::optional<int> FirstMissingStage(GuardPlace place) {
    for (const GuardMessages& guard : Guards) {
        if (IsFilled(guard.stage)) continue;
        ShowMessage(QString::fromLatin1(place == GuardPlace::BeforeDataView ? guard.before : guard.inside));
        return static_cast<int>(guard.stage);
    }
    return std::nullopt;
}

bool MayOpenDataView() {
    const std::optional<int> missing = FirstMissingStage(GuardPlace::BeforeDataView);
    if (missing && *missing != CurrentStage) TheFrame().GoToStage(*missing);
    return !missing;
}

bool IsSelectionComplete() {
    const std::optional<int> missing = FirstMissingStage(GuardPlace::InDataView);
    if (missing) TheFrame().GoToStage(*missing);
    return !missing;
}

} // namespace tessaro::selection
