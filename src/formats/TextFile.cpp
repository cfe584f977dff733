#include "formats/TextFile.h"

#include "formats/ReadError.h"

#include <algorithm>
#include <unicode/ucnv.h>

namespace tessaro {

namespace {

constexpr qint64 kPiece = 256 * 1024;

bool IsPlain(const char* bytes, qint64 count) {
    return std::all_of(bytes, bytes + count, [](char c) { return static_cast<signed char>(c) > 0; });
}

UConverter* OpenConverter(const QByteArray& encoding) {
    UErrorCode status = U_ZERO_ERROR;
    UConverter* const converter = ucnv_open(encoding.constData(), &status);
    if (U_FAILURE(status) || encoding.isEmpty())
        throw ReadError(QStringLiteral("TS_ReadNoEncoding"), {QString::fromLatin1(encoding)});
    return converter;
}

/// Appends letters as UTF-8; a byte-order mark at the beginning is none of them.
void AppendUtf8(QStringView letters, bool isBeginning, std::string& piece) {
    if (isBeginning && letters.startsWith(QChar::ByteOrderMark)) letters = letters.mid(1);
    const QByteArray bytes = letters.toUtf8();
    piece.append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

} // namespace

bool TextInMemory::Read(std::string& piece) {
    piece.swap(text_);
    text_.clear();
    return !piece.empty();
}

TextFile::TextFile(const QString& path, const QByteArray& encoding)
    : file_(path), converter_(OpenConverter(encoding), ucnv_close), bytes_(kPiece), letters_(kPiece + 16),
      keepsPlain_(!encoding.startsWith("UTF-16") && !encoding.startsWith("UTF-32")) {
    if (!file_.open(QIODevice::ReadOnly)) throw ReadError(QStringLiteral("TS_ReadNoFile"), {path, file_.errorString()});
}

TextFile::~TextFile() = default;

bool TextFile::Read(std::string& piece) {
    piece.clear();
    while (piece.empty() && !ended_) {
        const qint64 count = file_.read(bytes_.data(), kPiece);
        if (count < 0) throw ReadError(QStringLiteral("TS_ReadNoFile"), {file_.fileName(), file_.errorString()});
        ended_ = count == 0;
        UErrorCode status = U_ZERO_ERROR;
        if (keepsPlain_ && IsPlain(bytes_.data(), count) && ucnv_toUCountPending(converter_.get(), &status) == 0)
            piece.append(bytes_.data(), static_cast<std::size_t>(count));
        else
            Convert(bytes_.data(), count, ended_, piece);
        begun_ = begun_ || count > 0;
    }
    return !piece.empty();
}

void TextFile::Convert(const char* bytes, qint64 count, bool last, std::string& piece) {
    const char* from = bytes;
    UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
    for (bool first = true; status == U_BUFFER_OVERFLOW_ERROR; first = false) {
        status = U_ZERO_ERROR;
        char16_t* to = letters_.data();
        ucnv_toUnicode(converter_.get(), &to, letters_.data() + letters_.size(), &from, bytes + count, nullptr,
                       static_cast<UBool>(last), &status);
        AppendUtf8(QStringView(letters_.data(), to), first && !begun_, piece);
    }
}

int TextFile::Percent() const {
    return file_.size() > 0 ? static_cast<int>(file_.pos() * 100 / file_.size()) : 100;
}

QByteArray BeginningOf(const QString& path, qint64 bytes) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throw ReadError(QStringLiteral("TS_ReadNoFile"), {path, file.errorString()});
    return file.read(bytes);
}

std::string TextOf(const QByteArray& bytes, const QByteArray& encoding) {
    const std::unique_ptr<UConverter, void (*)(UConverter*)> converter(OpenConverter(encoding), ucnv_close);
    std::u16string letters(static_cast<std::size_t>(bytes.size()) + 16, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    const int32_t count = ucnv_toUChars(converter.get(), letters.data(), static_cast<int32_t>(letters.size()),
                                        bytes.constData(), static_cast<int32_t>(bytes.size()), &status);
    std::string text;
    AppendUtf8(QStringView(letters.data(), std::max(count, 0)), true, text);
    return text;
}

} // namespace tessaro
