#include "jet/functions/FunctionSupport.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace jet {

namespace {

double RoundHalfToEven(double number, std::int64_t digits) {
    if (digits > 15) return number;
    const double scale = std::pow(10.0, static_cast<double>(digits));
    const double scaled = number * scale;
    if (!std::isfinite(scaled)) return number;
    const double below = std::floor(scaled);
    // 2.675 * 100 is a little less than 267.5, and still half way as people see it
    const bool halfWay = std::fabs(scaled - below - 0.5) <= 1e-12 * std::fmax(1.0, std::fabs(scaled));
    if (!halfWay) return std::nearbyint(scaled) / scale;
    return (std::fmod(below, 2.0) == 0 ? below : below + 1) / scale;
}

template <double (*change)(double)> void Whole(Call& call) {
    if (call.isWhole(0)) return call.giveArgument(0);
    const double whole = change(call.number(0));
    if (std::fabs(whole) < 9e15) return call.give(static_cast<std::int64_t>(whole));
    call.give(whole);
}

double Floor(double x) {
    return std::floor(x);
}
double Truncate(double x) {
    return std::trunc(x);
}
double Sine(double x) {
    return std::sin(x);
}
double Cosine(double x) {
    return std::cos(x);
}
double Tangent(double x) {
    return std::tan(x);
}
double ArcTangent(double x) {
    return std::atan(x);
}
double Exponential(double x) {
    return std::exp(x);
}

double SquareRoot(double x) {
    if (x < 0) throw Error(ErrorNumber::TypeMismatch, "A negative number has no square root.");
    return std::sqrt(x);
}

double Logarithm(double x) {
    if (x <= 0) throw Error(ErrorNumber::TypeMismatch, "Only a number above zero has a logarithm.");
    return std::log(x);
}

template <double (*function)(double)> void Real(Call& call) {
    call.give(function(call.number(0)));
}

void Round(Call& call) {
    const std::int64_t digits = call.count() > 1 ? call.whole(1) : 0;
    if (digits < 0) throw Error(ErrorNumber::TypeMismatch, "The number of decimals can't be negative.");
    if (call.isWhole(0)) return call.giveArgument(0);
    call.give(RoundHalfToEven(call.number(0), digits));
}

void Abs(Call& call) {
    if (!call.isWhole(0)) return call.give(std::fabs(call.number(0)));
    const std::int64_t number = call.whole(0);
    if (number == INT64_MIN) return call.give(std::fabs(static_cast<double>(number)));
    call.give(number < 0 ? -number : number);
}

void Sgn(Call& call) {
    const double number = call.number(0);
    call.give(static_cast<int>(number > 0) - static_cast<int>(number < 0));
}

template <const char* mask> void InBase(Call& call) {
    std::array<char, 32> text{};
    const int length = std::snprintf(text.data(), text.size(), mask, static_cast<unsigned long long>(call.whole(0)));
    call.give(std::string_view(text.data(), static_cast<std::size_t>(length)));
}

constexpr char kHexadecimal[] = "%llX";
constexpr char kOctal[] = "%llo";

} // namespace

void RegisterNumberFunctions(sqlite3* database) {
    static constexpr std::array functions = {
        Registration{"jet_int", Entry<Whole<Floor>, Nulls::Spread>},
        Registration{"jet_fix", Entry<Whole<Truncate>, Nulls::Spread>},
        Registration{"jet_round", Entry<Round, Nulls::Spread>},
        Registration{"jet_abs", Entry<Abs, Nulls::Spread>},
        Registration{"jet_sgn", Entry<Sgn, Nulls::Spread>},
        Registration{"jet_sqr", Entry<Real<SquareRoot>, Nulls::Spread>},
        Registration{"jet_exp", Entry<Real<Exponential>, Nulls::Spread>},
        Registration{"jet_log", Entry<Real<Logarithm>, Nulls::Spread>},
        Registration{"jet_sin", Entry<Real<Sine>, Nulls::Spread>},
        Registration{"jet_cos", Entry<Real<Cosine>, Nulls::Spread>},
        Registration{"jet_tan", Entry<Real<Tangent>, Nulls::Spread>},
        Registration{"jet_atn", Entry<Real<ArcTangent>, Nulls::Spread>},
        Registration{"jet_hex", Entry<InBase<kHexadecimal>, Nulls::Spread>},
        Registration{"jet_oct", Entry<InBase<kOctal>, Nulls::Spread>},
    };
    Register(database, functions);
}

} // namespace jet
