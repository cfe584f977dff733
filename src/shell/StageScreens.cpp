#include "shell/StageScreens.h"

#include "dataview/frmData.h"
#include "selection/frmAreas.h"
#include "selection/frmIndicators.h"
#include "selection/frmTime.h"
#include "shell/Navigation.h"

#include <QStackedWidget>

#include <utility>

namespace tessaro {

namespace {

using Factory = StageScreen* (*)(QWidget*);

template <class Screen> StageScreen* New(QWidget* parent) {
    return new Screen(parent);
}

constexpr std::array<Factory, 4> kFactories{{New<frmIndicators>, New<frmTime>, New<frmAreas>, New<frmData>}};

} // namespace

StageScreens::StageScreens(QStackedWidget& place, std::function<void(int)> changed)
    : place_(place), changed_(std::move(changed)) {}

StageScreen& StageScreens::Make(int stage) {
    StageScreen*& screen = screens_.at(static_cast<std::size_t>(stage));
    if (!screen) {
        screen = kFactories.at(static_cast<std::size_t>(stage))(&place_);
        screen->setObjectName(navigation::FormNameOf(stage));
        place_.addWidget(screen);
        QObject::connect(screen, &StageScreen::SelectionSummaryChanged, &place_, [this, stage] { changed_(stage); });
    }
    return *screen;
}

StageScreen* StageScreens::Loaded(int stage) const {
    return navigation::IsStage(stage) ? screens_.at(static_cast<std::size_t>(stage)) : nullptr;
}

void StageScreens::ShowStage(int stage) {
    StageScreen& screen = Make(stage);
    place_.setCurrentWidget(&screen);
    screen.Enter();
    changed_(stage);
}

void StageScreens::HideStage(int stage) {
    if (StageScreen* screen = Loaded(stage)) screen->Leave();
}

void StageScreens::Unload(StageScreen*& screen) {
    StageScreen* gone = std::exchange(screen, nullptr);
    if (!gone) return;
    gone->Leave();
    place_.removeWidget(gone);
    gone->hide();
    gone->disconnect(&place_);
    // An event of the screen itself may have led here, so it is deleted later; its statements were closed by Leave().
    gone->setObjectName(QString());
    gone->deleteLater();
}

void StageScreens::UnloadAll() {
    for (StageScreen*& screen : screens_)
        Unload(screen);
}

void StageScreens::Reload(const QList<int>& stages) {
    for (const int stage : stages) {
        StageScreen*& screen = screens_.at(static_cast<std::size_t>(stage));
        if (!screen) continue;
        const bool shown = place_.currentWidget() == screen;
        Unload(screen);
        StageScreen& made = Make(stage);
        if (shown) place_.setCurrentWidget(&made);
        changed_(stage);
    }
}

void StageScreens::SetFormCaptions() {
    for (StageScreen* screen : screens_)
        if (screen) screen->SetFormCaptions();
}

} // namespace tessaro
