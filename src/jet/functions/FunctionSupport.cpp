#include "jet/functions/FunctionSupport.h"

#include <algorithm>
#include <cmath>

namespace jet {

bool Call::anyNull() const {
    return std::ranges::any_of(values_, [](sqlite3_value* each) { return sqlite3_value_type(each) == SQLITE_NULL; });
}

std::string_view Call::text(std::size_t i, std::string& room) const {
    sqlite3_value* const value = values_[i];
    if (sqlite3_value_type(value) == SQLITE_FLOAT) return room = ShortestText(sqlite3_value_double(value));
    const auto* const start = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return start == nullptr ? std::string_view()
                            : std::string_view(start, static_cast<std::size_t>(sqlite3_value_bytes(value)));
}

std::string_view Call::decimalText(std::size_t i, std::string& room) const {
    if (sqlite3_value_type(values_[i]) != SQLITE_FLOAT) return text(i, room);
    return room = DecimalText(sqlite3_value_double(values_[i]));
}

double Call::number(std::size_t i) const {
    sqlite3_value* const value = values_[i];
    const int type = sqlite3_value_type(value);
    if (type == SQLITE_INTEGER || type == SQLITE_FLOAT) return sqlite3_value_double(value);
    if (type == SQLITE_NULL) throw Error(ErrorNumber::TypeMismatch, "Invalid use of Null.");
    std::string room;
    const std::string_view held = text(i, room);
    if (const auto number = ReadNumber(held)) return *number;
    throw Error(ErrorNumber::TypeMismatch, "Type mismatch: '" + std::string(held.substr(0, 100)) + "' is no number.");
}

std::int64_t Call::whole(std::size_t i) const {
    return isWhole(i) ? sqlite3_value_int64(values_[i]) : ToWhole(number(i));
}

Value Call::value(std::size_t i) const {
    return ToValue(values_[i]);
}

void Call::give(double number) {
    if (!std::isfinite(number)) FailOverflow();
    sqlite3_result_double(context_, number);
}

void Call::give(std::string_view text) {
    if (text.size() > kLongestValue) FailTooLong();
    sqlite3_result_text64(context_, text.data() == nullptr ? "" : text.data(), text.size(), SQLITE_TRANSIENT,
                          SQLITE_UTF8);
}

void Call::give(const Value& value) {
    switch (value.type()) {
    case Value::Type::Null:
        giveNull();
        break;
    case Value::Type::Integer:
        give(value.toInteger());
        break;
    case Value::Type::Double:
        give(value.toDouble());
        break;
    case Value::Type::Text:
        give(std::string_view(value.toText()));
        break;
    }
}

Value ToValue(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return static_cast<std::int64_t>(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
        return sqlite3_value_double(value);
    default:
        break;
    }
    const void* const bytes = sqlite3_value_blob(value);
    return bytes == nullptr
               ? std::string()
               : std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(sqlite3_value_bytes(value)));
}

std::string MessageOf(const Error& error) {
    return "JET:" + std::to_string(static_cast<unsigned>(error.number())) + ":" + error.what();
}

void GiveError(sqlite3_context* context, const Error& error) {
    const std::string text = MessageOf(error);
    sqlite3_result_error(context, text.c_str(), static_cast<int>(text.size()));
}

void Register(sqlite3* database, std::span<const Registration> functions) {
    for (const Registration& each : functions)
        sqlite3_create_function_v2(database, each.name, -1,
                                   SQLITE_UTF8 | SQLITE_DIRECTONLY | (each.pure ? SQLITE_DETERMINISTIC : 0), nullptr,
                                   each.entry, nullptr, nullptr, nullptr);
}

} // namespace jet
