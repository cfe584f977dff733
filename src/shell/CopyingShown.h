#pragma once

#include "session/Frame.h"

#include <optional>

namespace tessaro {

/// Shows in the frame how far the copying of a genuine Jet file is, from the first report on until this goes, and lets
/// the user stop it. To be handed to OpenDatabaseFile by std::ref.
class CopyingShown final {
  public:
    CopyingShown() = default;
    ~CopyingShown();
    CopyingShown(const CopyingShown&) = delete;
    CopyingShown& operator=(const CopyingShown&) = delete;

    /// False when the user has asked to stop.
    bool operator()(int percent);

  private:
    std::optional<WaitState> waiting_;
};

} // namespace tessaro
