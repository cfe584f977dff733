#pragma once

#include <QString>

namespace tessaro {

/// Copies a genuine Jet data database once into DataCacheFolder as a database of ours; every opening of the path uses
/// the copy from then on (FileToOpen). An up-to-date copy is kept; copies of an older state of the file go. False when
/// the file can't be read or is no data database; then nothing is left behind.
[[nodiscard]] bool ImportJetFile(const QString& path);

} // namespace tessaro
