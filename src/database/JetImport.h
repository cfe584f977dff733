#pragma once

#include <QString>

#include <functional>

/// Copies genuine Jet files into databases of ours.
namespace tessaro {

enum class JetImport {
    Copied,  ///< the copy is there, made now or before
    Refused, ///< the file can't be read, or is no data database
    Stopped  ///< by the user
};

struct JetImportResult {
    JetImport outcome = JetImport::Refused;
    QString reason; ///< of a refusal, in the user's language
};

/// Is told several times a second how far the copying is, in per cent, beginning with 0; False ends it.
using CopyProgress = std::function<bool(int percent)>;

/// Copies a genuine Jet data database once into DataCacheFolder as a database of ours; every opening of the path uses
/// the copy from then on (FileToOpen). Its texts are as wide as in the file. An up-to-date copy is kept, and then
/// `goOn` is not called; copies of an older state of the file go. When nothing is copied, nothing is left behind.
[[nodiscard]] JetImportResult ImportJetFile(const QString& path, const CopyProgress& goOn = {});

} // namespace tessaro
