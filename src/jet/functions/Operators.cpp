#include "jet/functions/FunctionSupport.h"
#include "jet/values/Catalogue.h"
#include "jet/values/Collation.h"
#include "jet/values/Like.h"
#include "jet/values/NumberList.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <compare>
#include <optional>

namespace jet {

namespace {

[[noreturn]] void FailDivision() {
    throw Error(ErrorNumber::DivisionByZero, "Division by zero.");
}

// & reads Null as empty text; only Nulls alone stay Null.
void Concat(Call& call) {
    std::string result;
    bool any = false;
    for (std::size_t i = 0; i < call.count(); ++i) {
        if (call.isNull(i)) continue;
        std::string room;
        result += call.decimalText(i, room);
        any = true;
    }
    if (any) call.give(std::string_view(result));
}

void Text(Call& call) {
    std::string room;
    call.give(call.text(0, room));
}

void Add(Call& call) {
    if (call.isText(0) && call.isText(1)) {
        std::string roomA;
        std::string roomB;
        return call.give(std::string_view(std::string(call.text(0, roomA)).append(call.text(1, roomB))));
    }
    std::int64_t sum = 0;
    if (call.isWhole(0) && call.isWhole(1) && !__builtin_add_overflow(call.whole(0), call.whole(1), &sum))
        return call.give(sum);
    call.give(call.number(0) + call.number(1));
}

void Divide(Call& call) {
    const double divisor = call.number(1);
    if (divisor == 0) FailDivision();
    call.give(call.number(0) / divisor);
}

void IntegerDivide(Call& call) {
    const std::int64_t divisor = call.whole(1);
    if (divisor == 0) FailDivision();
    const std::int64_t dividend = call.whole(0);
    if (divisor == -1) return call.give(-static_cast<double>(dividend)); // the smallest integer has no negative
    call.give(dividend / divisor);
}

void Modulo(Call& call) {
    const std::int64_t divisor = call.whole(1);
    if (divisor == 0) FailDivision();
    call.give(divisor == -1 ? std::int64_t{0} : call.whole(0) % divisor);
}

void Power(Call& call) {
    const double base = call.number(0);
    const double exponent = call.number(1);
    if (base == 0 && exponent < 0) FailDivision();
    const double result = std::pow(base, exponent);
    if (std::isnan(result)) throw Error(ErrorNumber::TypeMismatch, "A negative number has no such power.");
    call.give(result);
}

void Xor(Call& call) {
    std::int64_t bits = 0;
    for (std::size_t i = 0; i < call.count(); ++i)
        bits ^= call.whole(i);
    call.give(bits);
}

void Eqv(Call& call) {
    std::int64_t bits = -1;
    for (std::size_t i = 0; i < call.count(); ++i)
        bits = ~(bits ^ call.whole(i));
    call.give(bits);
}

// From left to right. False implies anything and anything implies True, also what is unknown.
void Imp(Call& call) {
    const auto operand = [&](std::size_t i) { return call.isNull(i) ? std::nullopt : std::optional(call.whole(i)); };
    std::optional<std::int64_t> bits = operand(0);
    for (std::size_t i = 1; i < call.count(); ++i) {
        const std::optional<std::int64_t> next = operand(i);
        if (bits == 0 || next == -1)
            bits = -1;
        else
            bits = bits && next ? std::optional(~*bits | *next) : std::nullopt;
    }
    if (bits) call.give(*bits);
}

int OrderOfValues(const Call& call, std::size_t a, std::size_t b, std::string_view collation) {
    if (!call.isText(a) || !call.isText(b)) {
        if (call.isText(a) != call.isText(b)) return call.isText(a) ? 1 : -1;
        const double left = call.number(a);
        const double right = call.number(b);
        return static_cast<int>(left > right) - static_cast<int>(left < right);
    }
    std::string roomA;
    std::string roomB;
    const std::string_view left = call.text(a, roomA);
    const std::string_view right = call.text(b, roomB);
    if (collation.ends_with("JETVALUE")) return CompareValueText(left, right);
    if (collation.ends_with("JETTEXT")) return CompareText(left, right);
    const auto order = std::lexicographical_compare_three_way(
        left.begin(), left.end(), right.begin(), right.end(), [](char x, char y) {
            return static_cast<unsigned char>(LowerAscii(x)) <=> static_cast<unsigned char>(LowerAscii(y));
        });
    return static_cast<int>(order > 0) - static_cast<int>(order < 0);
}

// Between(the collation as it stands in a statement, value, bound, bound): either bound may be the lower one.
void Between(Call& call) {
    std::string room;
    const std::string_view collation = call.text(0, room);
    const int first = OrderOfValues(call, 1, 2, collation);
    const int second = OrderOfValues(call, 1, 3, collation);
    call.give((first >= 0 && second <= 0) || (first <= 0 && second >= 0) ? 1 : 0);
}

void Like(Call& call) {
    std::string textRoom;
    std::string patternRoom;
    call.giveYesNo(IsLike(call.text(0, textRoom), call.text(1, patternRoom)));
}

void Bool(Call& call) {
    if (call.isNull(0)) return call.giveYesNo(false);
    if (!call.isText(0)) return call.giveYesNo(call.number(0) != 0);
    std::string room;
    const std::string_view text = call.text(0, room);
    if (SameName(text, "True") || SameName(text, "Yes") || SameName(text, "On")) return call.giveYesNo(true);
    if (SameName(text, "False") || SameName(text, "No") || SameName(text, "Off")) return call.giveYesNo(false);
    call.giveYesNo(call.number(0) != 0);
}

void Number(Call& call) {
    if (call.isText(0)) return call.give(call.number(0));
    call.giveArgument(0);
}

// A text that sorts under JETTEXT as the value sorts under JETVALUE: the number is read once a row, not in every
// comparison.
void SortKey(Call& call) {
    std::string room;
    const auto number = call.isText(0) ? ReadNumber(call.text(0, room)) : std::nullopt;
    if (number) return call.give(*number);
    call.giveArgument(0);
}

void NewGuid(Call& call) {
    std::array<unsigned char, 16> bytes{};
    sqlite3_randomness(static_cast<int>(bytes.size()), bytes.data());
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0FU) | 0x40U);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3FU) | 0x80U);
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::array<char, 38> text{};
    std::size_t at = 0;
    text[at++] = '{';
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) text[at++] = '-';
        text[at++] = kDigits[bytes[i] >> 4U];
        text[at++] = kDigits[bytes[i] & 0x0FU];
    }
    text[at] = '}';
    call.give(std::string_view(text.data(), text.size()));
}

void IsNull(Call& call) {
    call.giveYesNo(call.isNull(0));
}

void IIf(Call& call) {
    const bool yes = !call.isNull(0) && call.value(0).toBoolean();
    call.giveArgument(yes ? 1 : 2);
}

void Nz(Call& call) {
    if (!call.isNull(0)) return call.giveArgument(0);
    if (call.count() > 1) return call.giveArgument(1);
    call.give(std::string_view(""));
}

void Choose(Call& call) {
    if (call.isNull(0)) return;
    const std::int64_t choice = static_cast<std::int64_t>(std::floor(call.number(0)));
    if (choice >= 1 && static_cast<std::size_t>(choice) < call.count())
        call.giveArgument(static_cast<std::size_t>(choice));
}

void Switch(Call& call) {
    for (std::size_t i = 0; i + 1 < call.count(); i += 2)
        if (!call.isNull(i) && call.value(i).toBoolean()) return call.giveArgument(i + 1);
}

void Listed(Call& call) {
    const auto* const list =
        static_cast<const std::shared_ptr<const NumberList>*>(sqlite3_value_pointer(call.raw(1), kNumberListType));
    if (list == nullptr || call.isNull(0)) return;
    const double number = call.isWhole(0) ? 0 : sqlite3_value_double(call.raw(0));
    // A number that isn't whole, and one too large to be told from its neighbours, is none of the list.
    if (!call.isWhole(0) && (call.isText(0) || std::floor(number) != number || std::fabs(number) > 1e15))
        return call.give(0);
    const std::int64_t whole = call.isWhole(0) ? sqlite3_value_int64(call.raw(0)) : static_cast<std::int64_t>(number);
    call.give((*list)->contains(whole) ? 1 : 0);
}

} // namespace

void RegisterOperators(sqlite3* database) {
    static constexpr std::array functions = {
        Registration{"jet_concat", Entry<Concat, Nulls::Pass>},
        Registration{"jet_text", Entry<Text, Nulls::Spread>},
        Registration{"jet_add", Entry<Add, Nulls::Spread>},
        Registration{"jet_divide", Entry<Divide, Nulls::Spread>},
        Registration{"jet_intdiv", Entry<IntegerDivide, Nulls::Spread>},
        Registration{"jet_mod", Entry<Modulo, Nulls::Spread>},
        Registration{"jet_power", Entry<Power, Nulls::Spread>},
        Registration{"jet_xor", Entry<Xor, Nulls::Spread>},
        Registration{"jet_eqv", Entry<Eqv, Nulls::Spread>},
        Registration{"jet_imp", Entry<Imp, Nulls::Pass>},
        Registration{"jet_between", Entry<Between, Nulls::Spread>},
        Registration{"jet_like", Entry<Like, Nulls::Spread>},
        Registration{"jet_bool", Entry<Bool, Nulls::Pass>},
        Registration{"jet_listed", Entry<Listed, Nulls::Pass>},
        Registration{"jet_number", Entry<Number, Nulls::Spread>},
        Registration{"jet_sortkey", Entry<SortKey, Nulls::Spread>},
        Registration{"jet_newguid", Entry<NewGuid, Nulls::Pass>, false},
        Registration{"jet_isnull", Entry<IsNull, Nulls::Pass>},
        Registration{"jet_iif", Entry<IIf, Nulls::Pass>},
        Registration{"jet_nz", Entry<Nz, Nulls::Pass>},
        Registration{"jet_choose", Entry<Choose, Nulls::Pass>},
        Registration{"jet_switch", Entry<Switch, Nulls::Pass>},
    };
    Register(database, functions);
}

} // namespace jet
