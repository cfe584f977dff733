#include "jet/functions/Functions.h"

#include "jet/functions/FunctionSupport.h"
#include "jet/values/Collation.h"

#include <algorithm>
#include <array>

namespace jet {

namespace {

constexpr int kMany = 100; // SQLite calls a function with 127 arguments at most

constexpr FunctionInfo Number(std::string_view name, int least, int most) {
    return {name, least, most, FunctionResult::Number, false};
}
constexpr FunctionInfo Text(std::string_view name, int least, int most) {
    return {name, least, most, FunctionResult::Text, false};
}
constexpr FunctionInfo YesNo(std::string_view name, int least, int most) {
    return {name, least, most, FunctionResult::YesNo, false};
}
constexpr FunctionInfo AsArgument(std::string_view name, int least, int most) {
    return {name, least, most, FunctionResult::ArgumentKind, false};
}
constexpr FunctionInfo Aggregate(std::string_view name, FunctionResult result) {
    return {name, 1, 1, result, true};
}

// In the order of the alphabet, for the search below.
constexpr std::array kTable = {
    Number("abs", 1, 1),
    Number("asc", 1, 1),
    Number("ascw", 1, 1),
    Number("atn", 1, 1),
    Aggregate("avg", FunctionResult::Number),
    YesNo("cbool", 1, 1),
    Number("cbyte", 1, 1),
    Number("ccur", 1, 1),
    Text("cdate", 1, 1),
    Number("cdbl", 1, 1),
    AsArgument("choose", 2, kMany),
    Text("chr", 1, 1),
    Text("chrw", 1, 1),
    Number("cint", 1, 1),
    Number("clng", 1, 1),
    Number("cos", 1, 1),
    Aggregate("count", FunctionResult::Number),
    Number("csng", 1, 1),
    Text("cstr", 1, 1),
    Text("cvdate", 1, 1),
    Text("date", 0, 0),
    Text("dateadd", 3, 3),
    Number("datediff", 3, 5),
    Number("datepart", 2, 4),
    Text("dateserial", 3, 3),
    Text("datevalue", 1, 1),
    Number("day", 1, 1),
    Number("exp", 1, 1),
    Aggregate("first", FunctionResult::ArgumentKind),
    Number("fix", 1, 1),
    Text("format", 1, 4),
    Text("hex", 1, 1),
    Number("hour", 1, 1),
    AsArgument("iif", 3, 3),
    Number("instr", 2, 4),
    Number("instrrev", 2, 4),
    Number("int", 1, 1),
    YesNo("isdate", 1, 1),
    YesNo("isnull", 1, 1),
    YesNo("isnumeric", 1, 1),
    Aggregate("last", FunctionResult::ArgumentKind),
    Text("lcase", 1, 1),
    Text("left", 2, 2),
    Number("len", 1, 1),
    Number("log", 1, 1),
    Text("ltrim", 1, 1),
    Aggregate("max", FunctionResult::ArgumentKind),
    Text("mid", 2, 3),
    Aggregate("min", FunctionResult::ArgumentKind),
    Number("minute", 1, 1),
    Number("month", 1, 1),
    Text("now", 0, 0),
    AsArgument("nz", 1, 2),
    Text("oct", 1, 1),
    Text("replace", 3, 6),
    Text("right", 2, 2),
    Number("round", 1, 2),
    Text("rtrim", 1, 1),
    Number("second", 1, 1),
    Number("sgn", 1, 1),
    Number("sin", 1, 1),
    Text("space", 1, 1),
    Number("sqr", 1, 1),
    Aggregate("stdev", FunctionResult::Number),
    Aggregate("stdevp", FunctionResult::Number),
    Text("str", 1, 1),
    Number("strcomp", 2, 3),
    Text("string", 2, 2),
    Text("strreverse", 1, 1),
    Aggregate("sum", FunctionResult::Number),
    AsArgument("switch", 2, kMany),
    Number("tan", 1, 1),
    Text("time", 0, 0),
    Text("timeserial", 3, 3),
    Text("timevalue", 1, 1),
    Text("trim", 1, 1),
    Text("ucase", 1, 1),
    Number("val", 1, 1),
    Aggregate("var", FunctionResult::Number),
    Aggregate("varp", FunctionResult::Number),
    Number("weekday", 1, 2),
    Number("year", 1, 1),
};
static_assert(std::ranges::is_sorted(kTable, {}, &FunctionInfo::name));

} // namespace

const FunctionInfo* FindFunction(std::string_view name) {
    if (name.size() > 1 && name.back() == '$') name.remove_suffix(1); // Mid$ is Mid
    std::array<char, 16> lower{};
    if (name.size() > lower.size()) return nullptr;
    std::ranges::transform(name, lower.begin(), LowerAscii);
    const std::string_view wanted(lower.data(), name.size());
    const auto* const found = std::ranges::lower_bound(kTable, wanted, {}, &FunctionInfo::name);
    return found != kTable.end() && found->name == wanted ? found : nullptr;
}

void RegisterFunctions(sqlite3* database) {
    RegisterCollations(database);
    RegisterTextFunctions(database);
    RegisterNumberFunctions(database);
    RegisterConversions(database);
    RegisterDateFunctions(database);
    RegisterOperators(database);
    RegisterAggregates(database);
}

} // namespace jet
