#include "jet/DbaseTable.h"

#include "jet/Error.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <memory>
#include <set>
#include <shapefil.h>

namespace jet {
namespace {

constexpr int MostTextBytes = 254;
constexpr std::size_t MostNameCharacters = 10;

struct CloseTable {
    void operator()(DBFInfo* table) const { DBFClose(table); }
};
using Table = std::unique_ptr<DBFInfo, CloseTable>;

struct FieldForm {
    DBFFieldType type;
    int width;
    int decimals;
};

FieldForm FormOf(ColumnType type) {
    switch (type) {
    case ColumnType::Long:
    case ColumnType::Integer:
    case ColumnType::Counter:
        return {FTInteger, 11, 0};
    case ColumnType::Double:
        return {FTDouble, 20, 5};
    case ColumnType::YesNo:
        return {FTLogical, 1, 0};
    default:
        return {FTString, MostTextBytes, 0};
    }
}

/// Upper-case ASCII name of at most 10 characters that no field has yet; a clash ends in a number.
std::string FieldName(const std::string& column, std::set<std::string>& taken) {
    std::string name;
    for (const unsigned char c : column.substr(0, MostNameCharacters))
        name += std::isalnum(c) ? static_cast<char>(std::toupper(c)) : '_';
    if (name.empty()) name = "FIELD";
    std::string candidate = name;
    for (int n = 1; taken.contains(candidate); ++n) {
        const std::string ending = std::to_string(n);
        candidate = name.substr(0, MostNameCharacters - ending.size()) + ending;
    }
    taken.insert(candidate);
    return candidate;
}

/// The text cut to what a field holds, never within a character.
std::string Fitting(std::string text) {
    if (text.size() <= MostTextBytes) return text;
    std::size_t end = MostTextBytes;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    return text.substr(0, end);
}

int WriteField(DBFInfo* table, int row, int field, const Value& value, DBFFieldType type) {
    if (value.isNull()) return DBFWriteNULLAttribute(table, row, field);
    switch (type) {
    case FTInteger:
    case FTDouble:
        return DBFWriteDoubleAttribute(table, row, field, value.toDouble());
    case FTLogical:
        return DBFWriteLogicalAttribute(table, row, field, value.toBoolean() ? 'T' : 'F');
    default:
        return DBFWriteStringAttribute(table, row, field, Fitting(value.toText()).c_str());
    }
}

} // namespace

std::int64_t WriteDbaseTable(const std::string& file, Recordset& rows) {
    if (std::filesystem::exists(file)) throw Error(ErrorNumber::AlreadyExists, "Table '" + file + "' already exists.");
    const Table table(DBFCreateEx(file.c_str(), "UTF-8"));
    if (!table) throw Error(ErrorNumber::EngineError, "The dBase table '" + file + "' can't be made.");
    std::set<std::string> taken;
    std::vector<FieldForm> forms;
    for (std::size_t i = 0; i < rows.FieldCount(); ++i) {
        const FieldForm form = FormOf(rows.Field(i).type);
        if (DBFAddField(table.get(), FieldName(rows.Field(i).name, taken).c_str(), form.type, form.width,
                        form.decimals) < 0)
            throw Error(ErrorNumber::EngineError, "The dBase table '" + file + "' can't hold so many fields.");
        forms.push_back(form);
    }
    int row = 0;
    for (; !rows.atEnd(); rows.MoveNext(), ++row) {
        for (std::size_t i = 0; i < forms.size(); ++i)
            WriteField(table.get(), row, static_cast<int>(i), rows.Get(i), forms[i].type);
    }
    return row;
}

} // namespace jet
