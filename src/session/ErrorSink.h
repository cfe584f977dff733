#pragma once

#include "session/Log.h"

#include <QString>

#include <exception>
#include <utility>

/// How failures are reported: traps around procedures, and the common error sink.
namespace tessaro {

/// Opens a scope in which failures are reported under a procedure's name and the code goes on:
///     ErrorTrap trap("cmdAllFilter_Click");
///     Execute("DROP Table [_DataArea]");      // failure: reported, next statement runs
///     trap.Try([&] { risky(); });             // the same for any call that throws
/// Traps nest; the innermost one names the procedure.
class ErrorTrap final {
  public:
    explicit ErrorTrap(const char* procedureName);
    ~ErrorTrap();
    ErrorTrap(const ErrorTrap&) = delete;
    ErrorTrap& operator=(const ErrorTrap&) = delete;

    /// Runs the call; a thrown error goes to ReportError. True when it went through.
    template <class Call> bool Try(Call&& call) {
        try {
            std::forward<Call>(call)();
            return true;
        } catch (const std::exception& error) {
            Report(error);
            return false;
        }
    }

    /// Name of the innermost trap's procedure; empty outside any.
    [[nodiscard]] static QString CurrentProcedure();
    /// Hands an error to ReportError under the innermost procedure's name.
    static void Report(const std::exception& error);

  private:
    const char* outer_;
};

/// Numbers of failures with files, as the error sink reports them.
enum class FileError : unsigned { NotFound = 53, PermissionDenied = 70, NoAccess = 75, PathNotFound = 76 };

/// The common error sink: always one line in the log file (time, procedure, number, description; passwords removed);
/// also a plain box when `alwaysShow` or when SilentErrors is False. The errors 35602 (key not unique) and 0x80040E37
/// (no such table) pass without a line.
void ReportError(const std::exception& error, const QString& procedureName, bool alwaysShow = false);
void ReportError(FileError number, const QString& description, const QString& procedureName, bool alwaysShow = false);
/// The same with a number of the system that stands for no file's failure.
void ReportError(unsigned number, const QString& description, const QString& procedureName, bool alwaysShow = false);

} // namespace tessaro
