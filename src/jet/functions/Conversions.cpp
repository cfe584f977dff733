#include "jet/functions/FunctionSupport.h"
#include "jet/values/Catalogue.h"
#include "jet/values/Dates.h"
#include "jet/values/Format.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace jet {

namespace {

void CDbl(Call& call) {
    call.give(call.number(0));
}

// The nearest single-precision number, by its shortest decimal text, so that CSng(0.1) gives 0.1
void CSng(Call& call) {
    const auto single = static_cast<float>(call.number(0));
    std::array<char, 64> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), single);
    call.give(ReadNumber({text.data(), written.ptr}).value_or(std::numeric_limits<double>::infinity()));
}

template <std::int64_t least, std::int64_t most> void CWhole(Call& call) {
    const std::int64_t number = call.whole(0);
    if (number < least || number > most) FailOverflow();
    call.give(number);
}

void CCur(Call& call) {
    call.give(std::nearbyint(call.number(0) * 10000) / 10000);
}

void CBool(Call& call) {
    std::string room;
    if (call.isText(0) && SameName(call.text(0, room), "True")) return call.giveYesNo(true);
    if (call.isText(0) && SameName(call.text(0, room), "False")) return call.giveYesNo(false);
    call.giveYesNo(call.number(0) != 0);
}

void CStr(Call& call) {
    if (call.isNull(0)) throw Error(ErrorNumber::TypeMismatch, "Invalid use of Null.");
    std::string room;
    call.give(call.decimalText(0, room));
}

void Str(Call& call) {
    const double number = call.number(0);
    call.give(std::string_view((number < 0 ? "" : " ") + ShortestText(number)));
}

// The number that a text begins with; blanks count for nothing.
void Val(Call& call) {
    std::string room;
    std::string text;
    for (const char c : call.text(0, room))
        if (c != ' ' && c != '\t' && c != '\n' && c != '\r') text += c;
    std::string_view digits = text;
    if (digits.size() > 2 && digits[0] == '&' && std::string_view("HhOo").find(digits[1]) != std::string_view::npos) {
        std::int64_t whole = 0;
        const bool hexadecimal = digits[1] == 'H' || digits[1] == 'h';
        std::from_chars(digits.data() + 2, digits.data() + digits.size(), whole, hexadecimal ? 16 : 8);
        return call.give(static_cast<double>(whole));
    }
    if (digits.starts_with('+')) digits.remove_prefix(1);
    const std::size_t end = digits.find_first_not_of("0123456789.eE+-");
    double number = 0;
    std::from_chars(digits.data(), digits.data() + std::min(end, digits.size()), number);
    call.give(number);
}

void IsNumeric(Call& call) {
    std::string room;
    call.giveYesNo(!call.isNull(0) && (!call.isText(0) || ReadNumber(call.text(0, room)).has_value()));
}

void FormatCall(Call& call) {
    std::string room;
    call.give(std::string_view(Format(call.value(0), call.count() > 1 ? call.text(1, room) : std::string_view())));
}

// CDbl(Format(value, mask)) in one call
void FormatNumberCall(Call& call) {
    if (call.anyNull()) throw Error(ErrorNumber::TypeMismatch, "Invalid use of Null.");
    std::string room;
    const Value value = call.value(0);
    const std::string_view mask = call.text(1, room);
    if (const auto number = FormattedNumber(value, mask)) return call.give(*number);
    throw Error(ErrorNumber::TypeMismatch, "Type mismatch: '" + Format(value, mask).substr(0, 100) + "' is no number.");
}

} // namespace

void RegisterConversions(sqlite3* database) {
    static constexpr std::array functions = {
        Registration{"jet_cdbl", Entry<CDbl, Nulls::Pass>},
        Registration{"jet_csng", Entry<CSng, Nulls::Pass>},
        Registration{"jet_clng", Entry<CWhole<INT32_MIN, INT32_MAX>, Nulls::Pass>},
        Registration{"jet_cint", Entry<CWhole<INT16_MIN, INT16_MAX>, Nulls::Pass>},
        Registration{"jet_cbyte", Entry<CWhole<0, UINT8_MAX>, Nulls::Pass>},
        Registration{"jet_long", Entry<CWhole<INT32_MIN, INT32_MAX>, Nulls::Spread>},
        Registration{"jet_short", Entry<CWhole<INT16_MIN, INT16_MAX>, Nulls::Spread>},
        Registration{"jet_ccur", Entry<CCur, Nulls::Pass>},
        Registration{"jet_cbool", Entry<CBool, Nulls::Pass>},
        Registration{"jet_cstr", Entry<CStr, Nulls::Pass>},
        Registration{"jet_str", Entry<Str, Nulls::Spread>},
        Registration{"jet_val", Entry<Val, Nulls::Spread>},
        Registration{"jet_isnumeric", Entry<IsNumeric, Nulls::Pass>},
        Registration{"jet_formatnumber", Entry<FormatNumberCall, Nulls::Pass>},
        Registration{"jet_format", Entry<FormatCall, Nulls::Spread>},
    };
    Register(database, functions);
}

} // namespace jet
