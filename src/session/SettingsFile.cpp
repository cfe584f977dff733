#include "session/SettingsFile.h"

#include "platform/Cipher.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/Log.h"
#include "session/Messages.h"

namespace tessaro {

std::optional<SettingsFile> ReadSettingsFile(const QString& path, const QString& section) {
    const auto contents = ReadWholeFile(FindPath(path));
    if (!contents) return std::nullopt;
    if (IsEnciphered(*contents)) {
        IniFile deciphered = IniFile::Parse(Decipher(*contents));
        if (deciphered.HasSection(section)) return SettingsFile{std::move(deciphered), false};
    }
    // Somebody may have edited the file and left out its first line; deciphering would only destroy it.
    IniFile plain = IniFile::Parse(*contents);
    if (!plain.HasSection(section)) return std::nullopt;
    return SettingsFile{std::move(plain), true};
}

bool WriteSettingsFile(const QString& path, const QByteArray& plain) {
    if (ReplaceFile(FindPath(path), Encipher(plain))) return true;
    LogNote(QLatin1String("a settings file can't be written: ") + path);
    ShowFilledMessage(QStringLiteral("TS_FolderNotWritable"), {FolderOf(path)}, MessageIcon::Note);
    return false;
}

} // namespace tessaro
