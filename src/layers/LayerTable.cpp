#include "layers/LayerTable.h"

#include "layers/MemoryFiles.h"

#include <QStringConverter>
#include <QtEndian>

#include <algorithm>
#include <memory>

namespace tessaro {

namespace {

constexpr qsizetype kHeadSize = 32; ///< of the table, and of each field
constexpr qint64 kMostCells = 20'000'000;

using Table = std::unique_ptr<std::remove_pointer_t<DBFHandle>, decltype(&DBFClose)>;

/// The width of all fields that a table's head describes.
qsizetype WidthOfFields(const QByteArray& table, qsizetype headSize) {
    qsizetype width = 0;
    for (qsizetype field = kHeadSize; field + kHeadSize <= headSize && table[field] != '\r'; field += kHeadSize) {
        const auto length = static_cast<unsigned char>(table[field + 16]);
        const bool number = table[field + 11] == 'N' || table[field + 11] == 'F';
        width += number ? length : length + 256 * static_cast<unsigned char>(table[field + 17]);
    }
    return width;
}

/// The name that converters know a code page by; empty for one that isn't told.
QByteArray CodePageOf(const char* told) {
    const QByteArray page = QByteArray(told).trimmed().toUpper();
    struct Page {
        int languageByte;
        const char* name;
    };
    constexpr Page kPages[] = {{0x01, "IBM437"},       {0x02, "IBM850"},       {0x03, "windows-1252"},
                               {0x57, "windows-1252"}, {0x58, "windows-1252"}, {0x64, "IBM852"},
                               {0x65, "IBM866"},       {0x7D, "windows-1255"}, {0x7E, "windows-1256"},
                               {0xC8, "windows-1250"}, {0xC9, "windows-1251"}, {0xCA, "windows-1254"},
                               {0xCB, "windows-1253"}, {0xCC, "windows-1257"}};
    if (page.startsWith("LDID/")) {
        const int byte = page.mid(5).toInt();
        const auto* const found = std::find_if(std::begin(kPages), std::end(kPages),
                                               [&](const Page& each) { return each.languageByte == byte; });
        return found == std::end(kPages) ? QByteArray() : QByteArray(found->name);
    }
    if (page == "65001" || page == "UTF8") return "UTF-8";
    if (page.startsWith("8859")) return "ISO-8859-" + page.mid(page.startsWith("8859-") ? 5 : 4);
    const QByteArray number = page.startsWith("ANSI ") ? page.mid(5) : page.startsWith("CP") ? page.mid(2) : page;
    if (number.size() == 4 && number.startsWith("125")) return "windows-" + number;
    return number.size() == 3 && number.toInt() > 0 ? "IBM" + number : page;
}

QString Decoded(const QByteArray& bytes, const QByteArray& page) {
    if (!page.isEmpty()) {
        QStringDecoder decoder(page.constData());
        if (decoder.isValid()) return decoder.decode(bytes);
    }
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(bytes);
    if (!utf8.hasError()) return text;
    QStringDecoder western("windows-1252");
    return western.isValid() ? QString(western.decode(bytes)) : QString::fromLatin1(bytes);
}

QStringList ColumnOf(DBFHandle table, int field, int records, int rows, const QByteArray& page) {
    QStringList texts;
    texts.reserve(rows);
    for (int row = 0; row < rows; ++row) {
        const char* const text = row < records ? DBFReadStringAttribute(table, row, field) : nullptr;
        texts << (text == nullptr ? QString() : Decoded(QByteArray(text), page).trimmed());
    }
    return texts;
}

} // namespace

bool FitTable(QByteArray& table) {
    if (table.size() <= kHeadSize) return false;
    const auto headSize = qFromLittleEndian<quint16>(table.constData() + 8);
    const auto recordSize = qFromLittleEndian<quint16>(table.constData() + 10);
    if (headSize <= kHeadSize || headSize > table.size() || recordSize < 1) return false;
    if (WidthOfFields(table, headSize) + 1 > recordSize) return false;
    const auto held = static_cast<quint32>((table.size() - headSize) / recordSize);
    const auto told = qFromLittleEndian<quint32>(table.constData() + 4);
    qToLittleEndian(std::min(told, held), table.data() + 4);
    return true;
}

bool ReadLayerTable(MapLayer& layer, MemoryFiles& files) {
    const Table table(DBFOpenLL("layer.dbf", "rb", files.Hooks()), &DBFClose);
    if (!table) return false;
    const char* const told = DBFGetCodePage(table.get());
    const QByteArray page = told == nullptr ? QByteArray() : CodePageOf(told);
    const int rows = static_cast<int>(layer.features.size());
    const qint64 most = kMostCells / std::max(rows, 1);
    const int fields = static_cast<int>(std::min<qint64>(DBFGetFieldCount(table.get()), most));
    for (int field = 0; field < fields; ++field) {
        char name[XBASE_FLDNAME_LEN_READ + 1] = {};
        DBFGetFieldInfo(table.get(), field, name, nullptr, nullptr);
        layer.fields << Decoded(QByteArray(name), page).trimmed();
        layer.columns.push_back(ColumnOf(table.get(), field, DBFGetRecordCount(table.get()), rows, page));
    }
    return true;
}

} // namespace tessaro
