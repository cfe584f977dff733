#include "shell/CopyingShown.h"

#include "session/Strings.h"

namespace tessaro {

CopyingShown::~CopyingShown() {
    if (waiting_) TheFrame().SetStatusText({});
}

bool CopyingShown::operator()(int percent) {
    if (!waiting_) {
        waiting_.emplace();
        TheFrame().SetStatusText(GetText(QStringLiteral("TS_CopyingJetFile")));
    }
    TheFrame().SetProgress(percent);
    return !TheFrame().IsStopAsked();
}

} // namespace tessaro
