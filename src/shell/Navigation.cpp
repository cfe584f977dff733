#include "shell/Navigation.h"

#include "session/Session.h"

namespace tessaro::navigation {

const std::array<StageRow, kStageCount> Stages{{
    {"frmIndicators", "TS_Indicators", "Comm_Indicator", "indicator.png"},
    {"frmTime", "TS_TimePeriods", "Comm_Time", "time.png"},
    {"frmAreas", "TS_Areas", "AREA", "area.png"},
    {"frmData", "TS_Data", "DATA OPTION", "table.png"},
}};

bool IsStage(int stage) {
    return stage >= 0 && stage < kStageCount;
}

QString FormNameOf(int stage) {
    return IsStage(stage) ? QString::fromLatin1(Stages.at(static_cast<std::size_t>(stage)).formName) : QString();
}

int UpperBound() {
    return static_cast<int>(VisitedStages.size()) - 1;
}

ButtonChange AddToVisitedStages(const QString& formName) {
    if (!VisitedStages.contains(formName, Qt::CaseInsensitive)) VisitedStages << formName;
    if (UpperBound() < 1) return {};
    return {true, CurrentStage < UpperBound()};
}

std::optional<int> BackTarget() {
    if (CurrentStage <= 0) return std::nullopt;
    return CurrentStage - 1;
}

std::optional<int> ForwardTarget() {
    if (CurrentStage >= UpperBound() || !IsStage(CurrentStage + 1)) return std::nullopt;
    return CurrentStage + 1;
}

ButtonChange AfterBack() {
    ButtonChange change;
    if (CurrentStage == 0) change.back = false;
    if (CurrentStage < UpperBound()) change.forward = true;
    return change;
}

ButtonChange AfterForward() {
    ButtonChange change;
    if (CurrentStage != 0) change.back = true;
    if (CurrentStage == UpperBound()) change.forward = false;
    return change;
}

} // namespace tessaro::navigation
