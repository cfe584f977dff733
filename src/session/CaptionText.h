#pragma once

#include <QString>

namespace tessaro {

/// A caption with its letter of access ("&Open": O) taken apart.
struct CaptionText {
    QString plain;         ///< the caption as it is read: no "&" before the letter, "&&" as "&"
    qsizetype letter = -1; ///< place of the letter of access in `plain`; -1 for none
};
[[nodiscard]] CaptionText ReadCaption(const QString& caption);

/// The caption that shows a name (of a file, of a row) as it stands: an "&" in it marks no letter of access.
[[nodiscard]] QString CaptionOfName(const QString& name);

} // namespace tessaro
