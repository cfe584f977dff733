#pragma once

namespace tessaro {

/// Removes what a run that was killed left half-made in the folders of this program: favourites, copies of genuine Jet
/// files, settings files. Only for the one running instance; CacheFolder and the folders in it are known.
void ClearLeftovers();

} // namespace tessaro
