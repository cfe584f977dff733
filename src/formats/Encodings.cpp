#include "formats/Encodings.h"

#include <algorithm>
#include <array>
#include <memory>
#include <unicode/ucnv.h>
#include <unicode/ucsdet.h>
#include <utility>

namespace tessaro {

namespace {

/// What a text of another encoding becomes that looks the same to the detector, or is called otherwise by it.
constexpr std::array<std::pair<const char*, const char*>, 9> kPages{{{"ISO-8859-1", "windows-1252"},
                                                                     {"ISO-8859-2", "windows-1250"},
                                                                     {"ISO-8859-5", "ISO-8859-5"},
                                                                     {"ISO-8859-6", "windows-1256"},
                                                                     {"ISO-8859-7", "windows-1253"},
                                                                     {"ISO-8859-9", "windows-1254"},
                                                                     {"windows-1251", "windows-1251"},
                                                                     {"windows-1256", "windows-1256"},
                                                                     {"KOI8-R", "KOI8-R"}}};

bool StartsWith(QByteArrayView text, QByteArrayView mark) {
    return text.size() >= mark.size() && text.first(mark.size()) == mark;
}

/// The bytes of the UTF-8 letter that begins here, as far as the text goes; 0 when none does.
qsizetype LetterLength(QByteArrayView text, qsizetype at) {
    const auto first = static_cast<unsigned char>(text[at]);
    const qsizetype length = first < 0x80        ? 1
                             : first >> 5U == 6  ? 2
                             : first >> 4U == 14 ? 3
                             : first >> 3U == 30 ? 4
                                                 : 0;
    for (qsizetype i = 1; i < length && at + i < text.size(); ++i)
        if ((static_cast<unsigned char>(text[at + i]) & 0xC0U) != 0x80U) return 0;
    return length;
}

/// True when the bytes are UTF-8, apart from a few as files have them that were put together of several.
bool IsUtf8(QByteArrayView text) {
    qsizetype letters = 0;
    qsizetype others = 0;
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype length = LetterLength(text, at);
        letters += length > 1 ? 1 : 0;
        others += length == 0 ? 1 : 0;
        at += std::max<qsizetype>(length, 1);
    }
    return letters >= others;
}

/// UTF-16 without a mark: Latin letters and digits have a zero in every second byte.
QByteArray WideEncoding(QByteArrayView text) {
    qsizetype zeros[2] = {0, 0};
    for (qsizetype at = 0; at < text.size(); ++at)
        zeros[at % 2] += text[at] == '\0' ? 1 : 0;
    const qsizetype many = text.size() / 8;
    if (zeros[1] > many && zeros[0] < zeros[1] / 8) return "UTF-16LE";
    if (zeros[0] > many && zeros[1] < zeros[0] / 8) return "UTF-16BE";
    return {};
}

QByteArray DetectedPage(QByteArrayView text) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UCharsetDetector, decltype(&ucsdet_close)> detector(ucsdet_open(&status), ucsdet_close);
    ucsdet_setText(detector.get(), text.data(), static_cast<int32_t>(text.size()), &status);
    int32_t count = 0;
    const UCharsetMatch** const matches = ucsdet_detectAll(detector.get(), &count, &status);
    for (int32_t i = 0; U_SUCCESS(status) && i < count; ++i) {
        const QByteArray name = ucsdet_getName(matches[i], &status);
        for (const auto& [detected, page] : kPages)
            if (name == detected) return page;
    }
    return "windows-1252";
}

} // namespace

const QList<QByteArray>& OfferedEncodings() {
    static const QList<QByteArray> names = {
        "UTF-8",        "UTF-16LE",     "UTF-16BE", "windows-1252", "windows-1250", "windows-1251", "windows-1253",
        "windows-1254", "windows-1256", "KOI8-R",   "IBM437",       "IBM850",       "IBM866"};
    return names;
}

QByteArray FindEncoding(QByteArrayView beginning) {
    if (StartsWith(beginning, "\xEF\xBB\xBF")) return "UTF-8";
    if (StartsWith(beginning, "\xFF\xFE")) return "UTF-16LE";
    if (StartsWith(beginning, "\xFE\xFF")) return "UTF-16BE";
    if (const QByteArray wide = WideEncoding(beginning); !wide.isEmpty()) return wide;
    return IsUtf8(beginning) ? QByteArray("UTF-8") : DetectedPage(beginning);
}

bool IsEncoding(const QByteArray& name) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(ucnv_open(name.constData(), &status),
                                                                       ucnv_close);
    return !name.isEmpty() && U_SUCCESS(status);
}

} // namespace tessaro
