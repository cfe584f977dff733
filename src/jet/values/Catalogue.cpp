#include "jet/values/Catalogue.h"

#include "jet/values/Collation.h"

#include <algorithm>
#include <array>
#include <string>

namespace jet {

namespace {

bool EndsWith(std::string_view name, std::string_view end) {
    return name.size() >= end.size() && SameName(name.substr(name.size() - end.size()), end);
}

std::string Upper(std::string_view text) {
    std::string upper(text);
    for (char& c : upper)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return upper;
}

struct Declaration {
    std::string_view text;
    ColumnType type;
};

// The first row of a type is what our own files say; the others are read from files of other makers. Order matters: a
// declaration is taken by the first word that it begins with.
constexpr std::array kDeclarations = {
    Declaration{"INTEGER PRIMARY KEY AUTOINCREMENT", ColumnType::Counter},
    Declaration{"INTEGER", ColumnType::Long},
    Declaration{"SMALLINT", ColumnType::Integer},
    Declaration{"DOUBLE", ColumnType::Double},
    Declaration{"TEXT", ColumnType::Text},
    Declaration{"LONGTEXT", ColumnType::Memo},
    Declaration{"BOOLEAN", ColumnType::YesNo},
    Declaration{"GUIDTEXT", ColumnType::Guid},
    Declaration{"DATETIME", ColumnType::DateTime},
    Declaration{"BLOB", ColumnType::Binary},
    Declaration{"TINYINT", ColumnType::Integer},
    Declaration{"INT2", ColumnType::Integer},
    Declaration{"BIGINT", ColumnType::Long},
    Declaration{"INT", ColumnType::Long},
    Declaration{"LONG", ColumnType::Long},
    Declaration{"REAL", ColumnType::Double},
    Declaration{"FLOAT", ColumnType::Double},
    Declaration{"NUM", ColumnType::Double},
    Declaration{"DEC", ColumnType::Double},
    Declaration{"VARCHAR", ColumnType::Text},
    Declaration{"NVARCHAR", ColumnType::Text},
    Declaration{"CHAR", ColumnType::Text},
    Declaration{"NCHAR", ColumnType::Text},
    Declaration{"CLOB", ColumnType::Memo},
    Declaration{"MEMO", ColumnType::Memo},
    Declaration{"YESNO", ColumnType::YesNo},
    Declaration{"BIT", ColumnType::YesNo},
    Declaration{"GUID", ColumnType::Guid},
    Declaration{"UUID", ColumnType::Guid},
    Declaration{"DATE", ColumnType::DateTime},
    Declaration{"TIME", ColumnType::DateTime},
};

} // namespace

const ColumnInfo* TableInfo::column(std::string_view columnName) const {
    const auto found =
        std::ranges::find_if(columns, [&](const ColumnInfo& each) { return SameName(each.name, columnName); });
    return found == columns.end() ? nullptr : &*found;
}

CompareKind KindOfColumn(std::string_view name, ColumnType type) {
    switch (type) {
    case ColumnType::Long:
    case ColumnType::Integer:
    case ColumnType::Double:
    case ColumnType::YesNo:
    case ColumnType::Counter:
        return CompareKind::Number;
    case ColumnType::Guid:
    case ColumnType::DateTime:
        return CompareKind::Identifier; // ASCII whatever its maker
    case ColumnType::Text:
    case ColumnType::Memo:
    case ColumnType::Binary:
    case ColumnType::Unknown:
        break;
    }
    if (SameName(name, "Datavalue")) return CompareKind::ValueText;
    if (EndsWith(name, "GId") || SameName(name, "AreaID")) return CompareKind::Identifier;
    return CompareKind::Text;
}

std::string DeclaredType(ColumnType type, int width) {
    const auto found = std::ranges::find(kDeclarations, type, &Declaration::type);
    std::string text(found == kDeclarations.end() ? "TEXT" : found->text);
    if (type == ColumnType::Text && width > 0) text += "(" + std::to_string(width) + ")";
    return text;
}

ColumnType TypeOfDeclaration(std::string_view declaration) {
    const std::string upper = Upper(declaration);
    if (upper.starts_with("INT") && upper.find("AUTOINCREMENT") != std::string::npos) return ColumnType::Counter;
    for (const Declaration& each : kDeclarations)
        if (upper.starts_with(each.text)) return each.type;
    return ColumnType::Unknown;
}

bool IsReservedName(std::string_view name) {
    return SameName(name.substr(0, 4), "MSys") || SameName(name.substr(0, 7), "sqlite_");
}

bool SameName(std::string_view a, std::string_view b) {
    return EqualFolded(a, b);
}

} // namespace jet
