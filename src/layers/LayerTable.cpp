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

/// The number of the code page that a table's language byte stands for; 0 for none that is known.
int PageOfLanguage(int languageByte) {
    struct Page {
        int languageByte;
        int number;
    };
    constexpr Page kPages[] = {
        {0x01, 437},  {0x02, 850},  {0x03, 1252}, {0x08, 865},  {0x09, 437},  {0x0A, 850},  {0x0B, 437},  {0x0D, 437},
        {0x0E, 850},  {0x0F, 437},  {0x10, 850},  {0x11, 437},  {0x12, 850},  {0x13, 932},  {0x14, 850},  {0x15, 437},
        {0x16, 850},  {0x17, 865},  {0x18, 437},  {0x19, 437},  {0x1A, 850},  {0x1B, 437},  {0x1C, 863},  {0x1D, 850},
        {0x1F, 852},  {0x22, 852},  {0x23, 852},  {0x24, 860},  {0x25, 850},  {0x26, 866},  {0x37, 850},  {0x40, 852},
        {0x4D, 936},  {0x4E, 949},  {0x4F, 950},  {0x50, 874},  {0x57, 1252}, {0x58, 1252}, {0x59, 1252}, {0x64, 852},
        {0x65, 866},  {0x66, 865},  {0x67, 861},  {0x6A, 737},  {0x6B, 857},  {0x6C, 863},  {0x78, 950},  {0x79, 949},
        {0x7A, 936},  {0x7B, 932},  {0x7C, 874},  {0x7D, 1255}, {0x7E, 1256}, {0x86, 737},  {0x87, 852},  {0x88, 857},
        {0xC8, 1250}, {0xC9, 1251}, {0xCA, 1254}, {0xCB, 1253}, {0xCC, 1257}};
    const auto* const found = std::find_if(std::begin(kPages), std::end(kPages),
                                           [&](const Page& each) { return each.languageByte == languageByte; });
    return found == std::end(kPages) ? 0 : found->number;
}

/// The name that converters know a numbered code page by.
QByteArray NameOfPage(int number) {
    constexpr int kOfWindows[] = {874, 932, 949, 950};
    const bool ofWindows = (number >= 1250 && number <= 1258) ||
                           std::find(std::begin(kOfWindows), std::end(kOfWindows), number) != std::end(kOfWindows);
    if (ofWindows) return "windows-" + QByteArray::number(number);
    if (number == 936) return "GBK";
    if (number == 54936) return "GB18030";
    if (number == 65001) return "UTF-8";
    return "IBM" + QByteArray::number(number);
}

/// The name that converters know the page by that a table or the file beside it tells; empty for one that isn't known.
QByteArray CodePageOf(const char* told) {
    QByteArray page = QByteArray(told).trimmed().toUpper();
    if (page.startsWith("LDID/")) {
        const int number = PageOfLanguage(page.mid(5).toInt());
        return number == 0 ? QByteArray() : NameOfPage(number);
    }
    if (page == "UTF8") return "UTF-8";
    if (page.startsWith("8859")) return "ISO-8859-" + page.mid(page.startsWith("8859-") ? 5 : 4);
    for (const char* prefix : {"ANSI ", "OEM ", "CP"})
        if (page.startsWith(prefix)) page = page.mid(static_cast<qsizetype>(qstrlen(prefix)));
    const int number = page.toInt();
    return number > 0 ? NameOfPage(number) : page;
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
