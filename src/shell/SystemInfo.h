#pragma once

#include <QList>
#include <QString>

#include <utility>

namespace tessaro {

/// What the program runs on, as pairs of name and value: system, processor, memory, libraries, spreadsheet program,
/// folders. Names are in the current language.
[[nodiscard]] QList<std::pair<QString, QString>> SystemInfo();
/// The same as lines of text, for a letter to the help desk.
[[nodiscard]] QString SystemInfoText();

} // namespace tessaro
