#pragma once

#include <string_view>

struct sqlite3;

/// The table of the dialect's functions.
namespace jet {

/// What a function of the dialect gives, for the resolver. ArgumentKind: the kind of the first argument (Min, First,
/// IIf …).
enum class FunctionResult { Number, Text, YesNo, ArgumentKind };

struct FunctionInfo {
    std::string_view name; ///< in lower case
    int leastArguments = 0;
    int mostArguments = 0;
    FunctionResult result = FunctionResult::Text;
    bool aggregate = false;
};

/// The dialect's function of this name, ignoring case; nullptr when there is none. One table serves the parser (which
/// names exist, with how many arguments), the emitter (jet_<name>) and the registration.
[[nodiscard]] const FunctionInfo* FindFunction(std::string_view name);

/// Registers on an SQLite connection: the collations JETTEXT and JETVALUE, every jet_<name> of the table above, and
/// what the emitter's operators need: jet_concat(a,b) for &, jet_add(a,b) for + that may be text, jet_divide(a,b),
/// jet_intdiv(a,b), jet_mod(a,b), jet_power(a,b), jet_like(text,pattern), jet_bool(x) (any non-zero -> -1, Null -> 0),
/// jet_number(text) (text of a ValueText column or a text operand as number, error TypeMismatch when unreadable),
/// jet_newguid() ({…}, 38 characters). A failing function fails the statement with "JET:<number>:<text>".
void RegisterFunctions(sqlite3* database);

} // namespace jet
