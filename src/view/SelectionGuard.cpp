#include "view/SelectionGuard.h"

#include "session/ColumnCache.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QString>

#include <array>

namespace tessaro::selection {

namespace {

/// By stage: how its table is asked for a row.
constexpr std::array<const char*, 3> kHasRow{"SELECT IUSNId FROM _SelIUSNId",
                                             "SELECT TOP 1 TimePeriodNId FROM _SelTimePeriod",
                                             "SELECT TOP 1 AreaNId FROM _SelArea"};

struct GuardMessages {
    Stage stage;
    const char* before;
    const char* inside;
};

constexpr std::array<GuardMessages, 3> kGuards{{
    {Stage::Indicators, "016", "016"},
    {Stage::Time, "023", "024"},
    {Stage::Areas, "024", "023"},
}};

bool IsFilled(Stage stage) {
    return stage == Stage::Indicators ? HasIndicatorsOrListsThem() : HasSelection(stage);
}

} // namespace

bool HasSelection(Stage stage) {
    return !Select(QLatin1String(kHasRow.at(static_cast<std::size_t>(stage))), jet::CursorType::ForwardOnly).atEnd();
}

bool HasIndicatorsOrListsThem() {
    return HasSelection(Stage::Indicators) || (DataExistsMode == 1 && TheFrame().SelectedIndicatorCount() > 0);
}

std::optional<int> FirstMissingStage(GuardPlace place) {
    for (const GuardMessages& guard : kGuards) {
        if (IsFilled(guard.stage)) continue;
        ShowMessage(QString::fromLatin1(place == GuardPlace::BeforeDataView ? guard.before : guard.inside));
        return static_cast<int>(guard.stage);
    }
    return std::nullopt;
}

bool MayOpenDataView() {
    const std::optional<int> missing = FirstMissingStage(GuardPlace::BeforeDataView);
    if (missing && *missing != CurrentStage) TheFrame().GoToStage(*missing);
    if (!missing) PrepareColumnCache();
    return !missing;
}

bool IsSelectionComplete() {
    const std::optional<int> missing = FirstMissingStage(GuardPlace::InDataView);
    if (missing) TheFrame().GoToStage(*missing);
    return !missing;
}

} // namespace tessaro::selection
