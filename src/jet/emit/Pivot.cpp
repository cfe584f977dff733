#include "jet/emit/Pivot.h"

#include "jet/values/Error.h"
#include "jet/values/Quoting.h"

namespace jet {

namespace {

constexpr std::size_t kMostColumns = 255;

std::string Literal(const Value& value) {
    switch (value.type()) {
    case Value::Type::Null:
        return "NULL";
    case Value::Type::Integer:
        return value.toText();
    case Value::Type::Double:
        return value.toText();
    case Value::Type::Text:
        break;
    }
    return QuotedText(value.toText());
}

// In one pass, so that a value that reads "%NAME%" stays what it is.
void AppendColumn(std::string& text, std::string_view form, const std::string& literal, const std::string& name) {
    while (!form.empty()) {
        const std::size_t mark = form.find('%');
        text += form.substr(0, mark);
        if (mark == std::string_view::npos) return;
        form.remove_prefix(mark);
        if (form.starts_with("%VALUE%")) {
            text += literal;
            form.remove_prefix(7);
        } else if (form.starts_with("%NAME%")) {
            text += name;
            form.remove_prefix(6);
        } else {
            text += '%';
            form.remove_prefix(1);
        }
    }
}

} // namespace

void CheckPivotWidth(std::size_t columns) {
    if (columns <= kMostColumns) return;
    throw Error(ErrorNumber::TooManyColumns, "Too many crosstab column headers: there would be " +
                                                 std::to_string(columns) + " columns, and " +
                                                 std::to_string(kMostColumns) + " are the most.");
}

std::string PivotName(const Value& value) {
    return value.isNull() ? "<>" : value.toText();
}

std::string PivotText(const PivotPlan& plan, const std::vector<Value>& values) {
    std::string text = plan.head;
    const std::size_t start = plan.column.find_first_not_of(" \t\r\n");
    const bool parted = start != std::string::npos && plan.column[start] == ',';
    for (const Value& value : values) {
        if (!parted) text += ", ";
        AppendColumn(text, plan.column, Literal(value), QuotedName(PivotName(value)));
    }
    return text += plan.tail;
}

} // namespace jet
