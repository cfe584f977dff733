#pragma once

#include <stdexcept>
#include <string>

/// The errors that the engine throws.
namespace jet {

/// The numbers by which callers tell failures apart.
enum class ErrorNumber : unsigned {
    NoSuchTable = 0x80040E37,  ///< a table or link that does not exist (also DROP of a missing one)
    SyntaxError = 0x80040E14,  ///< text that is no statement of the dialect; the message has line and column
    NoSuchColumn = 0x80040E10, ///< a name that no table in the FROM clause has (a missing parameter, in the old engine)
    TypeMismatch = 0x80040E07, ///< CDbl of unreadable text, CStr of Null and their like
    DivisionByZero = 0x80040E57,
    AlreadyExists = 0x80040E3F,  ///< SELECT INTO or CREATE on a name that is taken
    TooManyColumns = 0x80040E21, ///< a crosstab of more than 255 columns
    OutsideGroups = 0x80040E21,  ///< a field of a grouped query that is neither grouped by nor aggregated
    ConstraintFailed = 0x80040E2F,
    WrongPassword = 0x80040E4D,
    NotADatabase = 0x80004005, ///< the file is missing, damaged or of another kind
    ReadOnly = 0x80040E09,
    Busy = 0x80040E23,         ///< another connection holds the file
    TooLarge = 0x8007000E,     ///< a value, a result or a statement that takes more memory than is given to one
    NoRows = 0x80040E01,       ///< a result was asked of a statement that gives none
    ColumnsUnfit = 0x80040E7F, ///< a column image can't serve the statement, which then runs the plain way; no caller
                               ///< sees this number
    Interrupted = 0x80040E4E,  ///< whoever waited for the statement has stopped it
    EngineError = 0x80040E00,  ///< anything else the engine reports
};

/// A failed statement or opening. what() is a full sentence in English.
class Error : public std::runtime_error {
  public:
    Error(ErrorNumber number, const std::string& description) : std::runtime_error(description), number_(number) {}
    [[nodiscard]] ErrorNumber number() const { return number_; }

  private:
    ErrorNumber number_;
};

[[noreturn]] inline void FailTooLong() {
    throw Error(ErrorNumber::TooLarge, "A text or binary value is too long.");
}

[[noreturn]] inline void FailOverflow() {
    throw Error(ErrorNumber::TypeMismatch, "Overflow: the number is out of range.");
}

} // namespace jet
