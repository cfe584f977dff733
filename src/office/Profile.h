#pragma once

#include <QColor>
#include <QString>

namespace tessaro::office {

/// The program folder of the installed spreadsheet program ("…/libreoffice/program"); empty when it isn't installed.
/// The environment variable TESSARO_OFFICE names another one.
[[nodiscard]] QString ProgramFolder();

/// What a profile tells the process.
struct ProfileSeed {
    QColor bars = {};  ///< menus and bars lie on this colour, with icons that suit it; none when invalid
    QString pipe = {}; ///< the pipe on which it listens; empty for none
};

/// Writes the settings of the user profile in this folder: no first-start talk, no locks, no recovery, no commands that
/// would open or close documents behind our back, and the separators of the user's locale. False when they can't be
/// written.
bool SeedProfile(const QString& profile, const ProfileSeed& seed);

} // namespace tessaro::office
