#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

/// The value of a field, and how texts and numbers become each other.
namespace jet {

/// The longest text or binary value in bytes, read or made. Four times what a memo of a genuine Jet file is read to.
constexpr int kLongestValue = 4 * 1024 * 1024;

/// One field of a row: Null, a whole number, a double or UTF-8 text. Yes/No values are the numbers -1 and 0.
class Value {
  public:
    enum class Type { Null, Integer, Double, Text };

    Value() = default;
    Value(int number) : held_(static_cast<std::int64_t>(number)) {}
    Value(std::int64_t number) : held_(number) {}
    Value(double number) : held_(number) {}
    Value(std::string text) : held_(std::move(text)) {}
    Value(std::string_view text) : held_(std::string(text)) {}
    Value(const char* text) : held_(std::string(text)) {}

    [[nodiscard]] Type type() const { return static_cast<Type>(held_.index()); }
    [[nodiscard]] bool isNull() const { return type() == Type::Null; }

    /// The value as a whole number: 0 for Null and for text that holds none; doubles are rounded half to even.
    [[nodiscard]] std::int64_t toInteger() const;
    /// The value as a double: 0 for Null and for text that holds none.
    [[nodiscard]] double toDouble() const;
    /// False for Null, 0 and text that reads as 0 or "False".
    [[nodiscard]] bool toBoolean() const;
    /// The value as text: Null gives the empty text, numbers their shortest form that reads back (64, 0.25, -1).
    [[nodiscard]] std::string toText() const;

    bool operator==(const Value& other) const = default;

  private:
    std::variant<std::monostate, std::int64_t, double, std::string> held_;
};

/// The number that a text holds: blanks around it, a sign, "." as decimal point and an exponent are allowed, whatever
/// the user's locale. Nothing for any other text.
[[nodiscard]] std::optional<double> ReadNumber(std::string_view text);
/// A double as whole number, rounded half to even and kept within the range of 64 bits; 0 for what is no number.
[[nodiscard]] std::int64_t ToWhole(double number);

/// Shortest decimal text that reads back as the same double, without exponent for 1e-15 <= |x| < 1e15.
[[nodiscard]] std::string ShortestText(double number);
/// A double as people read it: 15 digits at most, 1E-05 below 0.0001 and 1E+15 from there on.
[[nodiscard]] std::string DecimalText(double number);

} // namespace jet
