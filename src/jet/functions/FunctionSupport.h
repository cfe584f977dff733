#pragma once

#include "jet/values/Error.h"
#include "jet/values/Value.h"

#include <cstdint>
#include <span>
#include <sqlite3.h>
#include <string>
#include <string_view>

/// What the functions of the dialect share: their arguments, results and registration.
namespace jet {

/// The arguments of one call of a function of the dialect, and the place for its result.
class Call {
  public:
    Call(sqlite3_context* context, int count, sqlite3_value** values)
        : context_(context), values_(values, static_cast<std::size_t>(count)) {}

    [[nodiscard]] std::size_t count() const { return values_.size(); }
    [[nodiscard]] bool isNull(std::size_t i) const { return sqlite3_value_type(values_[i]) == SQLITE_NULL; }
    [[nodiscard]] bool isText(std::size_t i) const { return sqlite3_value_type(values_[i]) == SQLITE_TEXT; }
    [[nodiscard]] bool isWhole(std::size_t i) const { return sqlite3_value_type(values_[i]) == SQLITE_INTEGER; }
    [[nodiscard]] bool anyNull() const;

    /// The argument as text; a number in its shortest form, held in `room`. The view is good until the call ends.
    [[nodiscard]] std::string_view text(std::size_t i, std::string& room) const;
    /// The same with a number as people read it, in 15 digits at most: what & and CStr make of it.
    [[nodiscard]] std::string_view decimalText(std::size_t i, std::string& room) const;
    /// The argument as number. Throws TypeMismatch for Null and for text that holds none.
    [[nodiscard]] double number(std::size_t i) const;
    /// The same, rounded to a whole number half to even.
    [[nodiscard]] std::int64_t whole(std::size_t i) const;
    [[nodiscard]] Value value(std::size_t i) const;
    [[nodiscard]] sqlite3_value* raw(std::size_t i) const { return values_[i]; }

    void giveNull() { sqlite3_result_null(context_); }
    void give(std::int64_t number) { sqlite3_result_int64(context_, number); }
    void give(int number) { sqlite3_result_int(context_, number); }
    void give(double number);
    void give(std::string_view text);
    /// Yes/No: -1 or 0.
    void giveYesNo(bool yes) { sqlite3_result_int(context_, yes ? -1 : 0); }
    void giveArgument(std::size_t i) { sqlite3_result_value(context_, values_[i]); }
    void give(const Value& value);
    [[nodiscard]] sqlite3_context* context() const { return context_; }

  private:
    sqlite3_context* context_;
    std::span<sqlite3_value*> values_;
};

/// A value of SQLite as one of ours.
[[nodiscard]] Value ToValue(sqlite3_value* value);

/// A failure as a text that ErrorOf turns into the same error again, when SQLite reports it.
[[nodiscard]] std::string MessageOf(const Error& error);
/// Hands a failure to SQLite as such a text.
void GiveError(sqlite3_context* context, const Error& error);

/// The second form gives Null for a call with a Null among its arguments, as most functions do.
enum class Nulls { Pass, Spread };

/// A function of the dialect as SQLite calls it. No exception leaves it.
template <void (*F)(Call&), Nulls nulls> void Entry(sqlite3_context* context, int count, sqlite3_value** values) {
    Call call(context, count, values);
    try {
        if (nulls == Nulls::Spread && call.anyNull()) return;
        F(call);
    } catch (const Error& error) {
        GiveError(context, error);
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    } catch (const std::exception& error) {
        sqlite3_result_error(context, error.what(), -1);
    }
}

struct Registration {
    const char* name;
    void (*entry)(sqlite3_context*, int, sqlite3_value**);
    bool pure = true; ///< gives the same for the same arguments
};

/// Registers scalar functions that may be used in statements only, not in the schema of a file. They take any number of
/// arguments, since the parser has checked the number already.
void Register(sqlite3* database, std::span<const Registration> functions);

void RegisterTextFunctions(sqlite3* database);
void RegisterNumberFunctions(sqlite3* database);
void RegisterConversions(sqlite3* database);
void RegisterDateFunctions(sqlite3* database);
void RegisterOperators(sqlite3* database);
void RegisterAggregates(sqlite3* database);

} // namespace jet
