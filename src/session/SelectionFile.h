#pragma once

namespace tessaro {

/// Looks after UserSelections.mdb in CacheFolder, which is never replaced in a run: a damaged one (a crash of the
/// machine), which would take the stages away for good, is put aside; one of an earlier version, whose fields may be
/// narrower, is made anew from the template with its rows kept. To be called while no connection is open to it.
void SettleSelectionFile();

} // namespace tessaro
