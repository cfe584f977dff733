#pragma once

#include <QColor>
#include <QProcess>
#include <QString>

namespace tessaro::office {

/// What one start of the process needs. Profile and pipe get new random names each time: with a name that is known
/// beforehand another user of the machine could take the place where the process is to listen.
struct ProcessStart {
    QString profile; ///< folder of the user profile
    QString pipe;    ///< name of the pipe ("…/pipe", in a folder that only this user may enter); empty for none
};

/// Prepares a start on the profile below `folder`: writes its settings, makes the pipe's folder when the process is to
/// listen, and notes both, so that the next start clears up after a crash. No profile in the answer when something
/// can't be written. With a valid colour menus and bars lie on it.
[[nodiscard]] ProcessStart PrepareStart(const QString& folder, bool listens, const QColor& bars = {});

/// Path of the pipe's socket.
[[nodiscard]] QString PipePath(const QString& pipe);
/// True when the socket is there and this user's.
[[nodiscard]] bool IsOwnPipe(const QString& pipe);

/// Sets a process up for a start: its environment (to which `plugin` names the drawing), no input and output, and that
/// it dies with us, survives a full disk and keeps what it writes from other users. `niceness` as of the system.
void SetUp(QProcess& process, const ProcessStart& start, const QString& plugin, int niceness = 0);

/// Notes the process id that runs on a profile, for EndOrphan.
void RememberProcess(const QString& folder, qint64 processId);
/// Removes the sockets and the temporary files of a process that has ended.
void ForgetProcess(const QString& folder);
/// Ends the process of a crashed run, if it still lives and really runs on this profile, and clears up after it.
void EndOrphan(const QString& folder);

} // namespace tessaro::office
