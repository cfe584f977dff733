#pragma once

#include "session/SaveKind.h"

#include <QString>

#include <functional>
#include <vector>

class QWidget;

namespace tessaro {

class WorkProgress;

/// Thrown while something is written, when the user would rather not have it: nothing was changed then.
struct SaveCancelled {};

/// A file that is to be saved.
struct SaveTask {
    QString file;
    std::vector<SaveKind> kinds; ///< among which the file's is; it says what is made beside it
    const char* procedure;       ///< for the log
};
/// Writes a file, with progress and a button that stops it, and tells how that ended. `write` gives the number of
/// sheets (1 for what has none), or 0 when the file can't be written. False when there is no new file; the old one
/// stands then.
bool SaveWithProgress(const SaveTask& task, QWidget* owner, const std::function<int(WorkProgress&)>& write);

/// What is told of a saved file, its sheets, and the files beside it.
[[nodiscard]] QString SavedText(const QString& file, const std::vector<SaveKind>& kinds, int sheets = 1);

} // namespace tessaro
