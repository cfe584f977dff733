#pragma once

#include <QByteArray>
#include <QString>

/// Texts of files that are in the code page of a character set (Session's FontCharset).
namespace tessaro {

/// The bytes of a text; one that the code page doesn't have is in UTF-8 with a byte order mark, so that nothing is
/// lost.
[[nodiscard]] QByteArray AnsiBytes(const QString& text, int charset);
/// The bytes of a text in the code page alone: what it doesn't have becomes "?".
[[nodiscard]] QByteArray PlainAnsiBytes(const QString& text, int charset);
/// The text of such bytes, whatever they are.
[[nodiscard]] QString TextOfAnsi(const QByteArray& bytes, int charset);

} // namespace tessaro
