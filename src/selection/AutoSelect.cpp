#include "selection/AutoSelect.h"

#include "session/Session.h"

#include <array>

namespace tessaro::selection {

namespace {

/// Caption keys of the check boxes, by the stage that a box stands for.
constexpr std::array<const char*, 3> kCaptions{"AutoUseSelInd", "AutoUseSelTime", "AutoUseSelAreas"};

/// The two other stages, in the order of the boxes.
constexpr std::array<std::array<Stage, 2>, 3> kOthers{{
    {Stage::Time, Stage::Areas},
    {Stage::Indicators, Stage::Areas},
    {Stage::Indicators, Stage::Time},
}};

bool Narrows(Stage other, bool onlyTables) {
    return other == Stage::Indicators && !onlyTables ? HasIndicatorsOrListsThem() : HasSelection(other);
}

} // namespace

AutoSelectOptions PrepareFor(Stage stage) {
    const auto& others = kOthers[static_cast<std::size_t>(stage)];
    const auto option = [](Stage other) {
        return AutoSelectOption{QString::fromLatin1(kCaptions[static_cast<std::size_t>(other)]), Narrows(other, false)};
    };
    return {option(others[0]), option(others[1])};
}

std::optional<OtherStages> DecideOtherStages(Stage stage, const AutoSelectQuestion& ask, bool onlyTables) {
    const auto& others = kOthers[static_cast<std::size_t>(stage)];
    const OtherStages has{Narrows(others[0], onlyTables), Narrows(others[1], onlyTables)};
    if (has == OtherStages{} || !ShowAutoSelectForm) return has;
    return ask(stage);
}

} // namespace tessaro::selection
