#pragma once

#include <optional>

/// The guard of the data view: all three selection tables must hold rows.
namespace tessaro::selection {

enum class GuardPlace {
    BeforeDataView, ///< on the way into stage 3
    InDataView,     ///< while the data view is open
};

/// The first stage without a selection, after its message was shown; nothing when all have one. Indicators that are
/// only listed (see HasIndicatorsOrListsThem) count. The data view itself has the messages of time and areas changed
/// over.
[[nodiscard]] std::optional<int> FirstMissingStage(GuardPlace place);

/// The guard of GoToDataView: shows what is missing, goes to that stage unless it is current, and gives False.
[[nodiscard]] bool MayOpenDataView();
/// The guard while the data view is open (frmData's IsSelectionComplete): the same, always going to the stage.
[[nodiscard]] bool IsSelectionComplete();

} // namespace tessaro::selection
