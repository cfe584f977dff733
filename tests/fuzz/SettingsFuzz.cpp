// Any bytes as a settings file: enciphered, plain or damaged, it is taken apart without harm, and what is written is
// read back.

#include "platform/Cipher.h"
#include "platform/IniFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace tessaro;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (Decipher(Encipher(bytes)) != bytes) std::abort();
    const QByteArray plain = IsEnciphered(bytes) ? Decipher(bytes) : bytes;
    if (plain.size() > bytes.size()) std::abort();
    for (const QByteArray& text : {bytes, plain}) {
        IniFile file = IniFile::Parse(text);
        const QString value = QString::fromUtf8(text.left(300)).trimmed();
        file.Write(QStringLiteral("USER PREFERENCES"), QStringLiteral("LANGUAGE"), value);
        if (file.Read(QStringLiteral("user preferences"), QStringLiteral("Language")).size() > IniFile::kLongestValue)
            std::abort();
        const IniFile again = IniFile::Parse(file.Contents());
        if (!again.HasSection(QStringLiteral("USER PREFERENCES"))) std::abort();
    }
    return 0;
}
