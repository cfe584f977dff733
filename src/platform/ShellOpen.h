#pragma once

#include <QString>
#include <QUrl>

#include <functional>

namespace tessaro {

/// Opens a file, folder or address in the program that the desktop has for it (the shell verb "open"). False when the
/// file does not exist or nothing opened it.
bool ShellOpen(const QString& target);
/// Installs who opens instead (tests write down); an empty one brings the desktop back.
void SetShellOpener(std::function<bool(const QUrl&)> opener);

} // namespace tessaro
