#pragma once

#include "controls/StageScreen.h"

#include <QList>

#include <array>
#include <functional>

class QStackedWidget;

namespace tessaro {

/// The four stage screens of the frame: made when they are first shown, kept, and all taken down when the database
/// changes.
class StageScreens final {
  public:
    /// `place` holds the screens. `changed` is called when what is chosen in a stage has changed.
    StageScreens(QStackedWidget& place, std::function<void(int stage)> changed);

    /// The screen of a stage, made now when there is none yet.
    StageScreen& Make(int stage);
    /// The same, but null when it isn't loaded.
    [[nodiscard]] StageScreen* Loaded(int stage) const;
    /// Shows a stage's screen and enters it.
    void ShowStage(int stage);
    /// Leaves a stage; its screen stays loaded.
    void HideStage(int stage);
    /// Takes all screens down.
    void UnloadAll();
    /// Makes those of the stages that are loaded anew, from what is chosen.
    void Reload(const QList<int>& stages);
    void SetFormCaptions();

  private:
    void Unload(StageScreen*& screen);

    QStackedWidget& place_;
    std::function<void(int)> changed_;
    std::array<StageScreen*, 4> screens_{};
};

} // namespace tessaro
