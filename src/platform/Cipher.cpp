#include "platform/Cipher.h"

#include "platform/Files.h"

#include <array>
#include <cryptopp/blowfish.h>

namespace tessaro {

namespace {

constexpr qsizetype kBlockSize = 8;

// Keeps the curious from editing, no more: the key is in the program, as the reader of the files is.
constexpr std::array<CryptoPP::byte, 16> kKey = {0x54, 0x8b, 0x1e, 0xc3, 0x72, 0x0d, 0xa9, 0x36,
                                                 0xe4, 0x5f, 0x90, 0x2b, 0xd7, 0x68, 0x11, 0xfc};

template <class Direction> QByteArray InBlocks(QByteArray bytes) {
    Direction cipher(kKey.data(), kKey.size());
    auto* data = reinterpret_cast<CryptoPP::byte*>(bytes.data());
    for (qsizetype at = 0; at + kBlockSize <= bytes.size(); at += kBlockSize)
        cipher.ProcessBlock(data + at);
    return bytes;
}

} // namespace

QByteArray Encipher(const QByteArray& plain) {
    const qsizetype pad = (plain.size() / kBlockSize + 1) * kBlockSize - plain.size();
    return InBlocks<CryptoPP::Blowfish::Encryption>(plain + QByteArray(pad, static_cast<char>(pad)));
}

QByteArray Decipher(const QByteArray& enciphered) {
    QByteArray plain = enciphered.left(enciphered.size() / kBlockSize * kBlockSize);
    if (plain.isEmpty()) return plain;
    plain = InBlocks<CryptoPP::Blowfish::Decryption>(plain);
    const auto pad = static_cast<unsigned char>(plain.back());
    if (pad >= 1 && pad <= kBlockSize) plain.chop(pad);
    return plain;
}

bool IsEnciphered(const QByteArray& contents) {
    QByteArray text = contents.left(64);
    if (text.startsWith("\xEF\xBB\xBF")) text.remove(0, 3);
    const qsizetype end = text.indexOf('\n');
    return text.left(end < 0 ? text.size() : end).trimmed().toUpper() != "[DECRYPTED]";
}

bool IsFileEnciphered(const QString& path) {
    return IsEnciphered(ReadWholeFile(path).value_or(QByteArray()));
}

bool CipherFile(const QString& path, CipherMode mode) {
    const auto contents = ReadWholeFile(path);
    if (!contents) return false;
    return ReplaceFile(path, mode == CipherMode::Encipher ? Encipher(*contents) : Decipher(*contents));
}

} // namespace tessaro
