#pragma once

#include <QString>

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

/// Copies a genuine Jet data database once into DataCacheFolder as a database of ours; every opening of the path uses
/// the copy from then on (FileToOpen). Its texts are as wide as in the file. An up-to-date copy is kept; copies of an
/// older state of the file go. Progress goes to the frame's meter, and the user may stop it. When nothing is copied,
/// nothing is left behind.
[[nodiscard]] JetImportResult ImportJetFile(const QString& path);

} // namespace tessaro
