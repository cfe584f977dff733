#pragma once

#include <QColor>
#include <QString>

namespace tessaro::office {

/// The program folder of the installed spreadsheet program ("…/libreoffice/program"); empty when it isn't installed.
/// The environment variable TESSARO_OFFICE names another one.
[[nodiscard]] QString ProgramFolder();

/// Makes the user profile in `folder` when it isn't there: no first-start talk, no locks, no recovery, no commands that
/// would open or close documents behind our back. False when it can't be written.
/// With a valid colour, menus and bars lie on it, with icons that suit it.
bool SeedProfile(const QString& folder, const QColor& bars = {});

/// An empty folder for what the process keeps while it runs, instead of the system's; gives its path.
QString MakeTemporaryFolder(const QString& folder);

/// Keeps the process id that runs on a profile and the sockets on which it listens, so that the next start of ours
/// finds what a crash has left. False while it doesn't listen on any.
bool RememberProcess(const QString& folder, qint64 processId);
/// Removes the sockets and the temporary files of a process that has ended.
void ForgetProcess(const QString& folder);
/// Ends the process of a crashed run, if it still lives and really runs on this profile, and clears up after it.
void EndOrphan(const QString& folder);

} // namespace tessaro::office
