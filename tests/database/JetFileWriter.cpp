#include "JetFileWriter.h"

#include "jet/engine/Connection.h"
#include "platform/Files.h"

#include <QList>

#include <array>
#include <bit>
#include <gtest/gtest.h>
#include <numeric>

namespace tessaro::test {

namespace {

constexpr qsizetype kPageSize = 4096;
constexpr int kFirstTablePage = 2; // the catalogue; each table takes a page of definition and a page of rows
constexpr int kMapPage = 1;

enum JetType : int {
    Boolean = 1,
    Int = 3,
    Long = 4,
    Double = 7,
    DateTime = 8,
    Text = 10,
    Ole = 11,
    Memo = 12,
    Guid = 15
};

struct Column {
    std::string name;
    JetType type = Text;
    [[nodiscard]] bool isFixed() const { return type != Text && type != Memo && type != Ole; }
    [[nodiscard]] int fixedSize() const {
        switch (type) {
        case Int:
            return 2;
        case Long:
            return 4;
        case Double:
        case DateTime:
            return 8;
        case Guid:
            return 16;
        default:
            return 0;
        }
    }
};

struct Table {
    std::string name;
    std::vector<Column> columns;
    std::vector<std::vector<jet::Value>> rows;
};

QByteArray Number(quint64 value, int bytes) {
    QByteArray little;
    for (int i = 0; i < bytes; ++i)
        little.append(static_cast<char>(value >> (8 * i)));
    return little;
}

void Put(QByteArray& page, qsizetype at, const QByteArray& bytes) {
    page.replace(at, bytes.size(), bytes);
}

QByteArray Utf16(const std::string& text) {
    const QString wide = QString::fromStdString(text);
    return QByteArray(reinterpret_cast<const char*>(wide.utf16()), wide.size() * 2);
}

/// The key stream that lies over the header: what lies under it here is all zero, so no page is enciphered.
QByteArray HeaderMask(qsizetype length) {
    const std::array<unsigned char, 4> key = {0xC7, 0xDA, 0x39, 0x6B};
    std::array<unsigned char, 256> state{};
    std::iota(state.begin(), state.end(), static_cast<unsigned char>(0));
    unsigned j = 0;
    for (unsigned i = 0; i < 256; ++i) {
        j = (j + state[i] + key[i % 4]) % 256;
        std::swap(state[i], state[j]);
    }
    QByteArray mask;
    unsigned a = 0;
    unsigned b = 0;
    while (mask.size() < length) {
        a = (a + 1) % 256;
        b = (b + state[a]) % 256;
        std::swap(state[a], state[b]);
        mask.append(static_cast<char>(state[(state[a] + state[b]) % 256U]));
    }
    return mask;
}

QByteArray HeaderPage() {
    QByteArray page(kPageSize, '\0');
    Put(page, 0, QByteArray("\0\1\0\0Standard Jet DB\0\1\0\0\0", 24));
    Put(page, 0x18, HeaderMask(128));
    return page;
}

/// A page of rows, the first of them at its end.
QByteArray RowPage(quint64 owner, const QList<QByteArray>& rows) {
    QByteArray page(kPageSize, '\0');
    Put(page, 0,
        Number(0x0101, 2) + Number(0, 2) + Number(owner, 4) + Number(0, 4) +
            Number(static_cast<quint64>(rows.size()), 2));
    qsizetype end = kPageSize;
    qsizetype slot = 14;
    for (const QByteArray& row : rows) {
        end -= row.size();
        EXPECT_GT(end, 14 + 2 * rows.size()) << "the table needs more than one page";
        Put(page, end, row);
        Put(page, slot, Number(static_cast<quint64>(end), 2));
        slot += 2;
    }
    return page;
}

QByteArray DefinitionPage(const Table& table, int mapRow) {
    QByteArray page(kPageSize, '\0');
    Put(page, 0, Number(0x0102, 2));
    const auto columns = static_cast<quint64>(table.columns.size());
    const auto variable =
        std::count_if(table.columns.begin(), table.columns.end(), [](const Column& c) { return !c.isFixed(); });
    Put(page, 16, Number(table.rows.size(), 4));
    page[40] = 0x4e; // a user's table
    Put(page, 41, Number(columns, 2) + Number(static_cast<quint64>(variable), 2) + Number(columns, 2));
    for (const qsizetype map : {55, 59})
        Put(page, map, Number(static_cast<quint64>(mapRow), 1) + Number(kMapPage, 3));
    qsizetype at = 63;
    quint64 position = 0;
    quint64 fixedOffset = 0;
    quint64 variablePosition = 0;
    for (const Column& column : table.columns) {
        Put(page, at, Number(column.type, 1));
        Put(page, at + 5,
            Number(position, 2) + Number(column.isFixed() ? 0 : variablePosition++, 2) + Number(position, 2));
        page[at + 15] = column.isFixed() ? 3 : 2;
        Put(page, at + 21, Number(column.isFixed() ? fixedOffset : 0, 2));
        Put(page, at + 23, Number(static_cast<quint64>(column.isFixed() ? column.fixedSize() : 510), 2));
        fixedOffset += static_cast<quint64>(column.fixedSize());
        ++position;
        at += 25;
    }
    for (const Column& column : table.columns) {
        const QByteArray name = Utf16(column.name);
        Put(page, at, Number(static_cast<quint64>(name.size()), 2) + name);
        at += 2 + name.size();
    }
    Put(page, 8, Number(static_cast<quint64>(at), 4));
    return page;
}

QByteArray FixedBytes(const Column& column, const jet::Value& value) {
    if (column.type == Double) return Number(std::bit_cast<quint64>(value.toDouble()), 8);
    if (column.type == Guid || column.type == DateTime) return QByteArray(column.fixedSize(), '\x11');
    return Number(static_cast<quint64>(value.toInteger()), column.fixedSize());
}

QByteArray VariableBytes(const Column& column, const jet::Value& value) {
    const QByteArray text = Utf16(value.toText());
    if (column.type == Text) return text;
    return Number(0x80000000U | static_cast<quint64>(text.size()), 4) + QByteArray(8, '\0') +
           text; // held in the row itself
}

QByteArray RowBytes(const Table& table, const std::vector<jet::Value>& values) {
    QByteArray row = Number(table.columns.size(), 2);
    QByteArray nulls(static_cast<qsizetype>((table.columns.size() + 7) / 8), '\0');
    QList<qsizetype> offsets;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Column& column = table.columns[i];
        const bool bit = column.type == Boolean ? values[i].toBoolean() : !values[i].isNull();
        if (bit)
            nulls[static_cast<qsizetype>(i / 8)] =
                static_cast<char>(nulls[static_cast<qsizetype>(i / 8)] | (1 << (i % 8)));
        if (column.isFixed()) row += FixedBytes(column, values[i]);
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (table.columns[i].isFixed()) continue;
        offsets.prepend(row.size());
        if (!values[i].isNull()) row += VariableBytes(table.columns[i], values[i]);
    }
    if (offsets.isEmpty()) return row + nulls;
    offsets.prepend(row.size());
    for (const qsizetype offset : offsets)
        row += Number(static_cast<quint64>(offset), 2);
    return row + Number(static_cast<quint64>(offsets.size() - 1), 2) + nulls;
}

JetType TypeOf(jet::ColumnType type) {
    switch (type) {
    case jet::ColumnType::Long:
    case jet::ColumnType::Counter:
        return Long;
    case jet::ColumnType::Integer:
        return Int;
    case jet::ColumnType::Double:
        return Double;
    case jet::ColumnType::YesNo:
        return Boolean;
    case jet::ColumnType::Guid:
        return Guid;
    case jet::ColumnType::DateTime:
        return DateTime;
    case jet::ColumnType::Memo:
        return Memo;
    default:
        return Text;
    }
}

std::vector<Table> TablesOf(jet::Connection& source) {
    std::vector<Table> tables;
    for (const jet::TableInfo& info : source.Tables()) {
        if (info.type != jet::TableType::Table) continue;
        Table& table = tables.emplace_back();
        table.name = info.name;
        for (const jet::ColumnInfo& column : source.catalogue().find(info.name)->columns)
            table.columns.push_back({column.name, TypeOf(column.type)});
        table.rows = source.OpenRecordset("SELECT * FROM [" + info.name + "]").GetRows();
    }
    return tables;
}

Table CatalogueOf(const std::vector<Table>& tables) {
    Table catalogue{"MSysObjects", {{"Id", Long}, {"Name", Text}, {"Type", Int}, {"Flags", Long}, {"LvProp", Ole}}, {}};
    int page = kFirstTablePage + 2;
    for (const Table& table : tables) {
        catalogue.rows.push_back(
            {jet::Value(page), jet::Value(table.name), jet::Value(1), jet::Value(0), jet::Value()});
        page += 2;
    }
    return catalogue;
}

/// The map of one table: its only page of rows.
QByteArray MapRow(int rowPage) {
    QByteArray map = QByteArray(5, '\0') + QByteArray(32, '\0');
    map[5 + rowPage / 8] = static_cast<char>(1 << (rowPage % 8));
    return map;
}

} // namespace

void WriteJetFile(const QString& path, jet::Connection& source) {
    std::vector<Table> tables = TablesOf(source);
    tables.insert(tables.begin(), CatalogueOf(tables));
    QList<QByteArray> maps;
    QByteArray pages;
    int page = kFirstTablePage;
    for (const Table& table : tables) {
        QList<QByteArray> rows;
        for (const auto& row : table.rows)
            rows << RowBytes(table, row);
        pages += DefinitionPage(table, static_cast<int>(maps.size()));
        pages += RowPage(static_cast<quint64>(page), rows);
        maps << MapRow(page + 1);
        page += 2;
    }
    ASSERT_TRUE(ReplaceFile(path, HeaderPage() + RowPage(0, maps) + pages));
}

} // namespace tessaro::test
