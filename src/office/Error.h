#pragma once

#include <QString>

#include <stdexcept>

namespace tessaro::office {

/// Why the spreadsheet and slides program did not do what it was asked to.
enum class Failure {
    Missing,  ///< it isn't installed
    Start,    ///< it can't be started
    Lost,     ///< its process died under the call
    TimedOut, ///< it didn't answer in time; its process has been ended
    File,     ///< a file can't be read or written, or isn't what its name says
    Limit,    ///< more rows, columns or characters than the file format holds
    Printer,  ///< there is no such printer
    Formula,  ///< a formula can't be read
    Call      ///< it refused the call
};

/// What every call of this room throws. The next call after any failure finds a living process or starts one.
class Error final : public std::runtime_error {
  public:
    Error(Failure reason, const QString& text) : std::runtime_error(text.toStdString()), failure(reason) {}

    Failure failure;
};

} // namespace tessaro::office
