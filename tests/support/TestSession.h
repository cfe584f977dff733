#pragma once

#include "session/Frame.h"
#include "session/Messages.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessaro::test {

/// A frame without a window that writes down what it was asked for.
class FakeFrame : public Frame {
  public:
    void SetStatusText(const QString& text) override { calls << QStringLiteral("status ") + text; }
    void StartProgress() override { calls << QStringLiteral("progress start"); }
    void SetProgress(int percent) override { progress << percent; }
    void EndProgress() override { calls << QStringLiteral("progress end"); }
    void SetBusy(bool on) override { busy += on ? 1 : -1; }
    void ShowStatusTextFor(const QString& text, int) override { calls << QStringLiteral("status for a while ") + text; }
    void GoToStage(int stage) override { calls << QStringLiteral("stage %1").arg(stage); }
    void GoToDataView() override { calls << QStringLiteral("data view"); }
    void GoToHome() override { calls << QStringLiteral("home"); }
    void UnloadForms() override { calls << QStringLiteral("unload forms"); }
    [[nodiscard]] int SelectedIndicatorCount() const override { return selectedIndicators; }

    QStringList calls;   ///< in order: "home", "stage 2", "status …"
    QList<int> progress; ///< the values the meter was given
    int busy = 0;        ///< depth of the wait cursor; 0 when all calls are paired
    int selectedIndicators = 0;
};

/// Gives each test a session of its own: a fresh TESSARO_HOME, start values, recorded messages and a fake frame.
/// Nothing is started; a test that needs settings, texts or a database asks for them. SilentErrors is True, as in a
/// running program.
class SessionTest : public testing::Test {
  protected:
    SessionTest();
    ~SessionTest() override;

    /// AppPath becomes a small application folder of this test (see SampleApplication.h), and the session is
    /// initialized with it.
    void StartSample();
    /// The same with the application folder that the build made.
    void StartInstallation();
    /// Starts the sample when nothing is started yet and opens its Data/Sample.mdb; False (with a failure
    /// of the test) when it is refused.
    bool OpenSample();
    /// The sample with all texts of the product in place of its own few.
    void OpenSampleWithTexts();
    static void InstallTexts();
    /// The product's texts of a language, by its code.
    static void UseLanguage(const QString& code);

    /// A folder of this test, removed at its end.
    [[nodiscard]] QString Folder() const { return home_.path(); }
    /// Messages shown so far (keys, or texts of literal ones).
    QStringList messages;
    /// Answers given to the next messages, in order; when none is left, what closing the box gives.
    QList<int> answers;
    FakeFrame frame;

  private:
    QTemporaryDir home_;
};

} // namespace tessaro::test
