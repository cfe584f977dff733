#pragma once

#include "office/Error.h"
#include "office/SpreadsheetApplication.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessaro::office {

/// Tests of this room run the real program, one process for all of them.
class OfficeTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        static int argc = 1;
        static char name[] = "test_office";
        static char* argv[] = {name, nullptr};
        if (!QCoreApplication::instance()) new QCoreApplication(argc, argv);
        static const QTemporaryDir profile;
        static const bool set = (SpreadsheetApplication::SetProfileFolder(profile.path()), true);
        static_cast<void>(set);
    }

    /// What still waits for the process is done with before the program's libraries are taken down.
    static void TearDownTestSuite() { SpreadsheetApplication::QuitAll(); }

    [[nodiscard]] QString File(const char* name) const { return folder_.filePath(QLatin1String(name)); }
    static SpreadsheetApplication& Application() { return SpreadsheetApplication::Instance(); }

    /// Why a call fails; nullopt when it doesn't.
    template <class Call> static std::optional<Failure> FailureOf(Call&& call) {
        try {
            call();
        } catch (const Error& error) {
            return error.failure;
        }
        return std::nullopt;
    }

    QTemporaryDir folder_;
};

} // namespace tessaro::office
