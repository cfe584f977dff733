#include "controls/OfficeErrors.h"

#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Strings.h"
#include "session/TempFiles.h"

#include <optional>

namespace tessaro {

namespace {

/// The file or formula that a failure names, isolated so that it stays in one piece in a right-to-left text. The
/// failure's own words go to the log.
QString QuotedIn(const office::Error& error) {
    const QString words = QString::fromUtf8(error.what());
    const QString quoted = words.section(QLatin1Char('"'), 1, -2);
    return quoted.isEmpty() ? words : QChar(0x2066) + quoted + QChar(0x2069);
}

} // namespace

QString OfficeText(const office::Error& error) {
    switch (error.failure) {
    case office::Failure::Missing:
    case office::Failure::Start:
        return GetText(QStringLiteral("TS_OfficeMissing"));
    case office::Failure::Lost:
        return GetText(QStringLiteral("TS_OfficeLost"));
    case office::Failure::TimedOut:
        return GetText(QStringLiteral("TS_OfficeTimedOut"));
    case office::Failure::Limit:
        return GetText(QStringLiteral("TS_OfficeLimit"));
    case office::Failure::Printer:
        return GetText(QStringLiteral("TS_OfficePrinter"));
    case office::Failure::Formula:
        return GetText(QStringLiteral("TS_OfficeFormula")).replace(QStringLiteral("%1"), QuotedIn(error));
    case office::Failure::Call:
        return GetText(QStringLiteral("TS_OfficeCall"));
    case office::Failure::File:
        break;
    }
    return GetText(QStringLiteral("TS_OfficeFile")).replace(QStringLiteral("%1"), QuotedIn(error));
}

void ShowOfficeError(const office::Error& error, const char* procedureName) {
    LogNote(QStringLiteral("%1: %2").arg(QLatin1String(procedureName), QString::fromUtf8(error.what())));
    ShowMessage(OfficeText(error), MessageType::Ok, MessageIcon::Note, {}, false);
}

namespace {

/// Runs `make`, which makes a file and gives its path; empty after a failure, which has been shown.
QString MadeFile(const char* procedureName, const std::function<QString()>& make) {
    std::optional<office::Error> failure;
    {
        const WaitPointer wait;
        try {
            return make();
        } catch (const office::Error& error) {
            failure = error;
        }
    }
    ShowOfficeError(*failure, procedureName);
    return {};
}

} // namespace

void ShowMadeWorkbook(const char* procedureName, const std::function<QString()>& make) {
    const QString file = MadeFile(procedureName, make);
    if (!file.isEmpty()) TheFrame().ShowWorkbook(file);
    ClearTempFolder();
}

} // namespace tessaro
