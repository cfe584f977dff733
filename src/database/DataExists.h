#pragma once

#include "jet/engine/Connection.h"

#include <QString>

#include <functional>

namespace tessaro {

/// Recomputes the DataExists flags of one database file from its Data table; `progress` is told after each step how far
/// it is, in per cent. False when a step failed (it is reported, and the others have run).
bool MarkDataExists(const QString& path, const std::function<void(int)>& progress = {});
/// The clearing step of MarkDataExists: sets DataExists to False in the six tables whose marks are made anew.
void UpdateDataExistsTables(jet::Connection& connection);

} // namespace tessaro
