#include "map/AnsiText.h"

#include <QStringConverter>

#include <algorithm>

namespace tessaro {

namespace {

const char* const kByteOrderMark = "\xEF\xBB\xBF";

const char* CodePageOf(int charset) {
    struct CodePage {
        int charset;
        const char* name;
    };
    constexpr CodePage kPages[] = {{161, "windows-1253"}, {162, "windows-1254"}, {163, "windows-1258"},
                                   {177, "windows-1255"}, {178, "windows-1256"}, {186, "windows-1257"},
                                   {204, "windows-1251"}, {222, "windows-874"},  {238, "windows-1250"}};
    const auto page = std::find_if(std::begin(kPages), std::end(kPages),
                                   [&](const CodePage& each) { return each.charset == charset; });
    return page == std::end(kPages) ? "windows-1252" : page->name;
}

QString DecodedBy(const char* page, const QByteArray& bytes) {
    QStringDecoder decoder(page);
    if (!decoder.isValid()) return QString::fromLatin1(bytes);
    return decoder.decode(bytes);
}

QByteArray EncodedBy(const char* page, const QString& text) {
    QStringEncoder encoder(page);
    if (!encoder.isValid()) return text.toLatin1();
    return encoder.encode(text);
}

} // namespace

QByteArray PlainAnsiBytes(const QString& text, int charset) {
    return EncodedBy(CodePageOf(charset), text);
}

QByteArray AnsiBytes(const QString& text, int charset) {
    const QByteArray bytes = PlainAnsiBytes(text, charset);
    return DecodedBy(CodePageOf(charset), bytes) == text ? bytes : kByteOrderMark + text.toUtf8();
}

QString TextOfAnsi(const QByteArray& bytes, int charset) {
    if (bytes.startsWith(kByteOrderMark)) return QString::fromUtf8(bytes.mid(3));
    return DecodedBy(CodePageOf(charset), bytes);
}

} // namespace tessaro
