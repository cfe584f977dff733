#pragma once

#include <QString>

namespace tessaro {

/// Where something was exported to last, kept with the user's preferences; empty before.
struct ExportChoice {
    QString folder;
    QString ending; ///< of the file: ".csv"
};
[[nodiscard]] ExportChoice& LastExport();

} // namespace tessaro
