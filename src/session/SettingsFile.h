#pragma once

#include "platform/IniFile.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace tessaro {

/// A settings file as it was read; its plain text is only ever held in memory.
struct SettingsFile {
    IniFile ini;
    bool wasPlain = false; ///< it lay readable on disk
};

/// Reads a settings file, enciphered or plain. Nothing when it can't be read, or when neither its text nor its
/// deciphered text has the section `section`, that is, when it is damaged.
[[nodiscard]] std::optional<SettingsFile> ReadSettingsFile(const QString& path, const QString& section);
/// Writes a settings file enciphered. On a failure the old one stands, the user is told, and False is given.
bool WriteSettingsFile(const QString& path, const QByteArray& plain);

} // namespace tessaro
