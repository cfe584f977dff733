#pragma once

#include <optional>

/// What is selected in the three stages, and the guard of the data view: all three selection tables must hold rows.
namespace tessaro::selection {

enum class Stage { Indicators = 0, Time = 1, Areas = 2 };

/// True when the stage's table has a row.
[[nodiscard]] bool HasSelection(Stage stage);
/// The same for indicators, and also true when everything is wanted (DataExistsMode 1) and the indicator screen, once
/// visited, lists something: indicators without a source stand in the list but not in the table.
[[nodiscard]] bool HasIndicatorsOrListsThem();

enum class GuardPlace {
    BeforeDataView, ///< on the way into stage 3
    InDataView,     ///< while the data view is open
};

/// The first stage without a selection, after its message was shown; nothing when all have one. Indicators that are
/// only listed (see HasIndicatorsOrListsThem) count. Inside the data view the messages of time and areas are
/// swapped.
[[nodiscard]] std::optional<int> FirstMissingStage(GuardPlace place);

/// The guard of GoToDataView: shows what is missing, goes to that stage unless it is current, and gives False. When
/// nothing is missing, the column image of a large database is begun.
[[nodiscard]] bool MayOpenDataView();
/// The guard while the data view is open (frmData's IsSelectionComplete): the same, always going to the stage.
[[nodiscard]] bool IsSelectionComplete();

} // namespace tessaro::selection
