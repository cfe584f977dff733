#pragma once

#include <QString>

namespace tessaro {

/// Removes what a run that was killed left half-made in the folders of this program: favourites, copies of genuine Jet
/// files, new databases in the data folder, settings files. Only for the one running instance; CacheFolder and the
/// folders in it are known.
void ClearLeftovers();

/// The name under which this process makes a database file before it is put in place: beside it, with the number of the
/// process in it.
[[nodiscard]] QString UnfinishedName(const QString& file);
/// Removes what processes that are gone left of the making of this database file.
void ClearUnfinished(const QString& file);

} // namespace tessaro
