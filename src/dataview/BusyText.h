#pragma once

#include "session/Frame.h"
#include "session/Strings.h"

namespace tessaro {

/// The wait pointer and the text of work in hand, for as long as it lives.
class BusyText final {
  public:
    BusyText() { TheFrame().SetStatusText(GetText(QStringLiteral("COMM_PROCESSING"))); }
    ~BusyText() { TheFrame().SetStatusText({}); }
    BusyText(const BusyText&) = delete;
    BusyText& operator=(const BusyText&) = delete;

  private:
    WaitPointer wait_;
};

} // namespace tessaro
