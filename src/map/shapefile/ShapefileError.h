#pragma once

#include <QString>

#include <stdexcept>

namespace tessaro {

/// What the classes of this folder throw: a number, a text, and the procedure that it comes from.
class ShapefileError final : public std::runtime_error {
  public:
    ShapefileError(unsigned errorNumber, const QString& errorText, const QString& errorSource)
        : std::runtime_error(errorText.toStdString()), number(errorNumber), text(errorText), source(errorSource),
          origin(errorSource) {}

    unsigned number;
    QString text;
    QString source; ///< the outermost procedure that passed the error on
    QString origin; ///< the procedure that raised it
};

namespace ShapefileErrors {
enum Number : unsigned {
    InvalidCall = 5,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    BadFileName = 52,
    FileNotFound = 53,
    DiskFull = 61,
    InputPastEnd = 62,
    PathFileAccess = 75,
    InvalidFileSpec = 0x80040203,
    RecordMismatch = 0x80040205,
    OffsetTooLarge = 0x80040206,
    InvalidFileCode = 0x80040207,
    ShapeTypeMissing = 0x8004020D,
    ShapeTypeMismatch = 0x8004020E,
    WrongObject = 0x8004020F,
};
}

/// Runs a call; an error that leaves it carries this source.
template <class Call> decltype(auto) WithSource(const char* source, Call&& call) {
    try {
        return call();
    } catch (ShapefileError& error) {
        error.source = QLatin1String(source);
        throw;
    }
}

} // namespace tessaro
