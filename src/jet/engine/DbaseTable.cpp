#include "jet/engine/DbaseTable.h"

#include "jet/values/Error.h"
#include "jet/values/Value.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <set>
#include <shapefil.h>

namespace jet {
namespace {

constexpr int kMostTextBytes = 254;
constexpr std::size_t kMostNameCharacters = 10;
constexpr int kWidestNumber = 20; ///< that dBase knows
constexpr int kMostDecimals = 15;

/// The library tells of no failure when it closes a table, so each writing is watched. One table at a time.
thread_local bool writingFailed = false;
thread_local SAHooks plainFiles;

SAOffset Write(void* bytes, SAOffset size, SAOffset count, SAFile file) {
    const SAOffset written = plainFiles.FWrite(bytes, size, count, file);
    writingFailed = writingFailed || written != count;
    return written;
}

int Flush(SAFile file) {
    const int code = plainFiles.FFlush(file);
    writingFailed = writingFailed || code != 0;
    return code;
}

int Close(SAFile file) {
    const int code = plainFiles.FClose(file);
    writingFailed = writingFailed || code != 0;
    return code;
}

struct CloseTable {
    void operator()(DBFInfo* table) const { DBFClose(table); }
};
using Table = std::unique_ptr<DBFInfo, CloseTable>;

Table Create(const std::string& file) {
    writingFailed = false;
    SASetupDefaultHooks(&plainFiles);
    SAHooks watched = plainFiles;
    watched.FWrite = Write;
    watched.FFlush = Flush;
    watched.FClose = Close;
    return Table(DBFCreateLL(file.c_str(), "UTF-8", &watched));
}

struct FieldForm {
    std::string column; ///< as the query names it, for messages
    DBFFieldType type = FTString;
    int width = kMostTextBytes;
    int decimals = 0;
};

FieldForm FormOf(const OutputColumn& column) {
    switch (column.type) {
    case ColumnType::Long:
    case ColumnType::Integer:
    case ColumnType::Counter:
        return {column.name, FTInteger, 11, 0};
    case ColumnType::Double:
        return {column.name, FTDouble, kWidestNumber, 5};
    case ColumnType::YesNo:
        return {column.name, FTLogical, 1, 0};
    default:
        return {column.name};
    }
}

/// Decimals that the number needs to come back as it is, as far as people read it.
int DecimalsOf(double number) {
    const std::string text = ShortestText(number);
    const std::size_t point = text.find('.');
    return point == std::string::npos ? 0
                                      : static_cast<int>(std::min<std::size_t>(text.size() - point - 1, kMostDecimals));
}

std::string Fixed(double number, int decimals) {
    std::array<char, 400> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed, decimals).ptr;
    return {text.data(), end};
}

/// The number in at most 20 characters, with `decimals` or as many more or less as it needs and has room for; empty
/// when it would be another number. The point stands in the text, so readers take it whatever the field announces.
std::string Fitting(double number, int decimals) {
    constexpr double kTolerance = 1e-12;
    std::string text = Fixed(number, std::max(decimals, DecimalsOf(number)));
    const std::size_t point = text.find('.');
    if (text.size() > kWidestNumber && point < kWidestNumber)
        text = Fixed(number, std::max(kWidestNumber - static_cast<int>(point) - 1, 0));
    const double read = ReadNumber(text).value_or(HUGE_VAL);
    const bool same = std::fabs(read - number) <= kTolerance * std::fabs(number);
    return same && text.size() <= kWidestNumber ? text : std::string();
}

std::string NumberText(const Value& value, const FieldForm& form) {
    const bool whole = value.type() == Value::Type::Integer;
    std::string text = whole && form.type == FTInteger ? value.toText() : Fitting(value.toDouble(), form.decimals);
    if (text.empty() || text.size() > kWidestNumber)
        throw Error(ErrorNumber::TypeMismatch, "The value " + value.toText() + " of the field '" + form.column +
                                                   "' does not fit a number of a dBase table.");
    return text;
}

bool IsNumber(const FieldForm& form) {
    return form.type == FTInteger || form.type == FTDouble;
}

/// The form of each field, wide enough for all its numbers. Leaves the rows at the first again.
std::vector<FieldForm> FormsOf(Recordset& rows) {
    std::vector<FieldForm> forms;
    for (std::size_t i = 0; i < rows.FieldCount(); ++i)
        forms.push_back(FormOf(rows.Field(i)));
    if (rows.atEnd()) return forms;
    for (; !rows.atEnd(); rows.MoveNext())
        for (std::size_t i = 0; i < forms.size(); ++i)
            if (IsNumber(forms[i]) && !rows.Get(i).isNull())
                forms[i].width = std::max(forms[i].width, static_cast<int>(NumberText(rows.Get(i), forms[i]).size()));
    rows.MoveFirst();
    return forms;
}

char UpperOrLine(char c) {
    if (c >= 'a' && c <= 'z') return static_cast<char>(c - 'a' + 'A');
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') ? c : '_';
}

/// Upper-case ASCII name of at most 10 characters that no field has yet; a clash ends in a number.
std::string FieldName(const std::string& column, std::set<std::string>& taken) {
    std::string name = column.substr(0, kMostNameCharacters);
    std::ranges::transform(name, name.begin(), UpperOrLine);
    if (name.empty()) name = "FIELD";
    std::string candidate = name;
    for (int n = 1; taken.contains(candidate); ++n) {
        const std::string ending = std::to_string(n);
        candidate = name.substr(0, kMostNameCharacters - ending.size()) + ending;
    }
    taken.insert(candidate);
    return candidate;
}

/// The text cut to what a field holds, never within a character.
std::string FittingText(std::string text) {
    if (text.size() <= kMostTextBytes) return text;
    std::size_t end = kMostTextBytes;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    return text.substr(0, end);
}

/// Numbers go out as text of ours: the library writes them with the decimal mark of the user's locale.
bool WriteField(DBFInfo* table, int row, int field, const Value& value, const FieldForm& form) {
    if (value.isNull()) return DBFWriteNULLAttribute(table, row, field) != 0;
    if (form.type == FTLogical) return DBFWriteLogicalAttribute(table, row, field, value.toBoolean() ? 'T' : 'F') != 0;
    if (!IsNumber(form)) return DBFWriteStringAttribute(table, row, field, FittingText(value.toText()).c_str()) != 0;
    std::string text = NumberText(value, form);
    text.insert(0, static_cast<std::size_t>(form.width) - text.size(), ' ');
    return DBFWriteAttributeDirectly(table, row, field, text.data()) != 0;
}

[[noreturn]] void FailWriting(const std::string& file) {
    throw Error(ErrorNumber::EngineError, "The dBase table '" + file + "' can't be written.");
}

std::int64_t WriteRows(const std::string& file, Recordset& rows) {
    const std::vector<FieldForm> forms = FormsOf(rows);
    Table table = Create(file);
    if (!table) FailWriting(file);
    std::set<std::string> taken;
    for (const FieldForm& form : forms)
        if (DBFAddField(table.get(), FieldName(form.column, taken).c_str(), form.type, form.width, form.decimals) < 0)
            throw Error(ErrorNumber::EngineError, "The dBase table '" + file + "' can't hold so many fields.");
    int row = 0;
    for (; !rows.atEnd(); rows.MoveNext(), ++row)
        for (std::size_t i = 0; i < forms.size(); ++i)
            if (!WriteField(table.get(), row, static_cast<int>(i), rows.Get(i), forms[i]) || writingFailed)
                FailWriting(file);
    table.reset();
    if (writingFailed) FailWriting(file);
    return row;
}

} // namespace

std::int64_t WriteDbaseTable(const std::string& file, Recordset& rows) {
    namespace fs = std::filesystem;
    if (fs::exists(file)) throw Error(ErrorNumber::AlreadyExists, "Table '" + file + "' already exists.");
    try {
        return WriteRows(file, rows);
    } catch (const Error&) {
        std::error_code ignored;
        fs::remove(file, ignored);
        fs::remove(fs::path(file).replace_extension(".cpg"), ignored); // which tells the encoding
        throw;
    }
}

} // namespace jet
