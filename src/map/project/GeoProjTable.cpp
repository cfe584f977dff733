#include "map/project/GeoProjTable.h"

#include "platform/Paths.h"
#include "session/DisplayValue.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QFile>

#include <algorithm>

namespace tessaro {

namespace {

constexpr qsizetype kSlot = 32; ///< bytes of the file's head, and of each field's description
constexpr qsizetype kNameBytes = 11;
constexpr qsizetype kTypeAt = 11;
constexpr qsizetype kWidthAt = 16;
constexpr qsizetype kDecimalsAt = 17;
constexpr qsizetype kRowsAt = 4;
constexpr qsizetype kHeadBytesAt = 8;
constexpr qsizetype kRowBytesAt = 10;
constexpr char kEndOfHead = 0x0D;
constexpr char kEndOfFile = 0x1A;
constexpr int kWidestNumber = 20; ///< that dBase knows
constexpr int kMostDecimals = 15;
constexpr int kSureDigits = 13; ///< of a double that, with an exponent, fit the widest field

int Byte(const QByteArray& bytes, qsizetype at) {
    return static_cast<unsigned char>(bytes.at(at));
}

int Word(const QByteArray& bytes, qsizetype at) {
    return Byte(bytes, at) + Byte(bytes, at + 1) * 256;
}

void SetWord(QByteArray& bytes, qsizetype at, qsizetype value) {
    bytes[at] = static_cast<char>(value % 256);
    bytes[at + 1] = static_cast<char>(value / 256);
}

/// A value as dBase has numbers; with an exponent where it needs more than 20 characters. Blank when it is no number.
QByteArray NumberField(const QByteArray& text) {
    const auto number = NumberOf(QString::fromUtf8(text));
    if (!number) return {};
    const QByteArray plain = text.trimmed();
    const bool hasExponent = plain.contains('e') || plain.contains('E');
    if (!hasExponent && plain.size() <= kWidestNumber) return plain;
    const QByteArray shortest = QByteArray::number(*number, 'f', QLocale::FloatingPointShortest);
    return shortest.size() <= kWidestNumber ? shortest : QByteArray::number(*number, 'g', kSureDigits);
}

int DecimalsOf(const QByteArray& number) {
    const qsizetype point = number.indexOf('.');
    return point < 0 ? 0 : static_cast<int>(std::min<qsizetype>(number.size() - point - 1, kMostDecimals));
}

/// One column of a table that is rewritten.
struct Column {
    QByteArray slot;               ///< its description
    std::vector<QByteArray> cells; ///< of the width that the description tells
};

void BecomeNumbers(Column& column) {
    qsizetype width = 1;
    int decimals = 0;
    for (QByteArray& cell : column.cells) {
        cell = NumberField(cell);
        width = std::max(width, cell.size());
        decimals = std::max(decimals, DecimalsOf(cell));
    }
    for (QByteArray& cell : column.cells)
        cell = cell.rightJustified(width, ' ');
    column.slot[kTypeAt] = 'N';
    column.slot[kWidthAt] = static_cast<char>(width);
    column.slot[kDecimalsAt] = static_cast<char>(std::min<qsizetype>(decimals, std::max<qsizetype>(width - 2, 0)));
}

/// Takes away the blanks that no cell needs: they are most of the file.
void Narrow(Column& column) {
    qsizetype width = 1;
    for (QByteArray& cell : column.cells) {
        while (cell.endsWith(' '))
            cell.chop(1);
        width = std::max(width, cell.size());
    }
    for (QByteArray& cell : column.cells)
        cell = cell.leftJustified(width, ' ');
    column.slot[kWidthAt] = static_cast<char>(width);
}

void SetName(Column& column, const char* name) {
    column.slot.replace(0, kNameBytes, QByteArray(name).leftJustified(kNameBytes, '\0', true));
}

qsizetype RowsOf(const QByteArray& table) {
    return Word(table, kRowsAt) + qsizetype{Word(table, kRowsAt + 2)} * 65536;
}

bool IsTable(const QByteArray& table) {
    constexpr auto kFields = static_cast<qsizetype>(kProjectFields.size());
    constexpr qsizetype kHead = kSlot * (kFields + 1);
    if (table.size() <= kHead || table.at(kHead) != kEndOfHead) return false;
    qsizetype rowBytes = 1;
    for (qsizetype field = 1; field <= kFields; ++field)
        rowBytes += Byte(table, field * kSlot + kWidthAt);
    return Word(table, kRowBytesAt) == rowBytes && table.size() >= Word(table, kHeadBytesAt) + RowsOf(table) * rowBytes;
}

std::vector<Column> ColumnsOf(const QByteArray& table) {
    std::vector<Column> columns;
    qsizetype at = Word(table, kHeadBytesAt) + 1; // behind the mark of deletion
    for (std::size_t i = 0; i < kProjectFields.size(); ++i) {
        Column column{table.mid(kSlot * (static_cast<qsizetype>(i) + 1), kSlot), {}};
        const int width = Byte(column.slot, kWidthAt);
        for (qsizetype row = 0; row < RowsOf(table); ++row)
            column.cells.push_back(table.mid(at + row * Word(table, kRowBytesAt), width));
        at += width;
        columns.push_back(std::move(column));
    }
    return columns;
}

QByteArray TableOf(QByteArray head, const std::vector<Column>& columns) {
    qsizetype rowBytes = 1;
    for (const Column& column : columns) {
        head += column.slot;
        rowBytes += Byte(column.slot, kWidthAt);
    }
    head += kEndOfHead;
    SetWord(head, kHeadBytesAt, head.size());
    SetWord(head, kRowBytesAt, rowBytes);
    QByteArray& table = head;
    for (std::size_t row = 0; row < columns.front().cells.size(); ++row) {
        table += ' ';
        for (const Column& column : columns)
            table += column.cells[row];
    }
    return table + kEndOfFile;
}

void RemovePassing(const QString& table) {
    QFile::remove(table);
    QFile::remove(BesideProject(table, ".cpg"));
}

} // namespace

QString BesideProject(const QString& aprPath, const char* ending) {
    const QString name = FileNameOf(aprPath);
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return JoinPath({FolderOf(aprPath), name.left(dot) + QLatin1String(ending)});
}

std::optional<QByteArray> WithProjectFields(const QByteArray& table) {
    if (!IsTable(table)) return std::nullopt;
    std::vector<Column> columns = ColumnsOf(table);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        SetName(columns[i], kProjectFields[i].name);
        if (columns[i].slot.at(kTypeAt) != 'C') continue;
        if (kProjectFields[i].isNumber)
            BecomeNumbers(columns[i]);
        else
            Narrow(columns[i]);
    }
    return TableOf(table.left(kSlot), columns);
}

std::optional<int> ExportGeoProjTable(const QString& aprPath, std::vector<NewFile>& files) {
    const QString passing = JoinPath({TempFolder, QStringLiteral("GeoProj.dbf")});
    RemovePassing(passing);
    const bool made = Execute(QStringLiteral("Select TimePeriod, AreaId, AreaName, [Indicator], Subpop, Datavalue, "
                                             "Unit, Source, Breakvalue, Label, Color INTO [dBase IV;database=") +
                              TempFolder + QStringLiteral("].GeoProj.dbf FROM [_MapData]"));
    const auto plain = made ? ReadWholeFile(passing, Q_INT64_C(1) << 30) : std::nullopt;
    const auto page = made ? ReadWholeFile(BesideProject(passing, ".cpg")) : std::nullopt;
    RemovePassing(passing);
    const auto table = plain && page ? WithProjectFields(*plain) : std::nullopt;
    if (!table) {
        if (made)
            ReportError(FileError::NotFound, QStringLiteral("File not found: ") + passing,
                        ErrorTrap::CurrentProcedure());
        return std::nullopt;
    }
    files.push_back({BesideProject(aprPath, ".dbf"), *table});
    files.push_back({BesideProject(aprPath, ".cpg"), *page});
    return static_cast<int>(RowsOf(*table));
}

} // namespace tessaro
