#include "selection/AutoSelect.h"

#include "session/Frame.h"
#include "session/Query.h"
#include "session/Session.h"

#include <array>

namespace tessaro::selection {

namespace {

struct StageTexts {
    const char* hasRow;
    const char* captionKey;
};

/// By stage: how its table is asked for a row, and the caption of the box that means it.
constexpr std::array<StageTexts, 3> Stages{{
    {"SELECT IUSNId FROM _SelIUSNId", "AutoUseSelInd"},
    {"SELECT TOP 1 TimePeriodNId FROM _SelTimePeriod", "AutoUseSelTime"},
    {"SELECT TOP 1 AreaNId FROM _SelArea", "AutoUseSelAreas"},
}};

/// The two other stages, in the order of the boxes.
constexpr std::array<std::array<Stage, 2>, 3> Others{{
    {Stage::Time, Stage::Areas},
    {Stage::Indicators, Stage::Areas},
    {Stage::Indicators, Stage::Time},
}};

const StageTexts& TextsOf(Stage stage) {
    return Stages[static_cast<std::size_t>(stage)];
}

bool Narrows(Stage other, bool onlyTables) {
    return other == Stage::Indicators && !onlyTables ? HasIndicatorsOrListsThem() : HasSelection(other);
}

} // namespace

bool HasSelection(Stage stage) {
    return !Select(QString::fromLatin1(TextsOf(stage).hasRow), jet::CursorType::ForwardOnly).atEnd();
}

bool HasIndicatorsOrListsThem() {
    return HasSelection(Stage::Indicators) || (DataExistsMode == 1 && TheFrame().SelectedIndicatorCount() > 0);
}

AutoSelectOptions PrepareFor(Stage stage) {
    const auto& others = Others[static_cast<std::size_t>(stage)];
    const auto option = [](Stage other) {
        return AutoSelectOption{QString::fromLatin1(TextsOf(other).captionKey), Narrows(other, false)};
    };
    return {option(others[0]), option(others[1])};
}

std::optional<OtherStages> DecideOtherStages(Stage stage, const AutoSelectQuestion& ask, bool onlyTables) {
    const auto& others = Others[static_cast<std::size_t>(stage)];
    const OtherStages has{Narrows(others[0], onlyTables), Narrows(others[1], onlyTables)};
    if (has == OtherStages{} || !ShowAutoSelectForm) return has;
    return ask(stage);
}

} // namespace tessaro::selection
