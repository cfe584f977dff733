#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

namespace tessaro {

/// The encodings of texts that files are offered to be read in, by their usual names: "UTF-8", "windows-1252" …
[[nodiscard]] const QList<QByteArray>& OfferedEncodings();
/// The encoding of a text by its first bytes: its mark, or else what its bytes look like. UTF-8 when they are plain
/// letters; windows-1252 when nothing tells.
[[nodiscard]] QByteArray FindEncoding(QByteArrayView beginning);
/// Whether the name is one of an encoding that can be read.
[[nodiscard]] bool IsEncoding(const QByteArray& name);

} // namespace tessaro
