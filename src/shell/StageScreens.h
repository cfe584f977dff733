#pragma once

#include "controls/StageScreen.h"

#include <QList>

#include <array>
#include <functional>

class QStackedWidget;

namespace tessaro {

/// The four stage screens: each is made when it is first shown and kept until another database is opened.
class StageScreens final {
  public:
    /// `place` becomes the parent of the screens. `changed` is called when the selection of a stage has changed.
    StageScreens(QStackedWidget& place, std::function<void(int stage)> changed);

    /// The screen of a stage, made now when there is none yet.
    StageScreen& Make(int stage);
    /// The same, but null when it isn't loaded.
    [[nodiscard]] StageScreen* Loaded(int stage) const;
    /// Shows a stage's screen and enters it.
    void ShowStage(int stage);
    /// Leaves a stage; its screen stays loaded.
    void HideStage(int stage);
    /// Leaves and deletes all screens.
    void UnloadAll();
    /// Makes those of the screens that are loaded anew, from the selection tables.
    void Reload(const QList<int>& stages);
    void SetFormCaptions();

  private:
    void Unload(StageScreen*& screen);

    QStackedWidget& place_;
    std::function<void(int)> changed_;
    std::array<StageScreen*, 4> screens_{};
};

} // namespace tessaro
