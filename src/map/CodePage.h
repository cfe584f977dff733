#pragma once

#include <QByteArray>
#include <QString>

/// Text files of maps that other programs read are in the 8-bit page of the language.
namespace tessaro {

/// The page that goes with a charset of Windows (FontCharset): "windows-1251" of 204, "windows-1252" for others.
[[nodiscard]] const char* CodePageOf(int charset);
[[nodiscard]] QString DecodedBy(const char* page, const QByteArray& bytes);
/// Characters that the page lacks become "?".
[[nodiscard]] QByteArray EncodedBy(const char* page, const QString& text);

} // namespace tessaro
