#pragma once

#include <QByteArray>
#include <QString>

namespace tessaro {

/// The cipher of the settings files: 8-byte blocks, each alone (Blowfish, 16 rounds, halves high byte first). The last
/// block is filled with 1 to 8 bytes that hold their own number; a text of whole blocks gains one.
[[nodiscard]] QByteArray Encipher(const QByteArray& plain);
/// The reverse. A filling number outside 1 to 8 counts as 0; bytes behind the last whole block are left out.
[[nodiscard]] QByteArray Decipher(const QByteArray& enciphered);

/// False when the first line, in upper case, is "[DECRYPTED]"; True otherwise, and for an empty text.
[[nodiscard]] bool IsEnciphered(const QByteArray& contents);
/// The same for a file; one that can't be read counts as enciphered.
[[nodiscard]] bool IsFileEnciphered(const QString& path);

enum class CipherMode { Encipher, Decipher };
/// Turns a file into blocks or back, all or nothing: on any failure the old file stands and False is given.
[[nodiscard]] bool CipherFile(const QString& path, CipherMode mode);

} // namespace tessaro
