#pragma once

#include "shell/DatabaseOpener.h"
#include "shell/SettingsChange.h"
#include "shell/StageNavigator.h"
#include "shell/frmMain.h"
#include "support/TestSession.h"

#include <memory>

class QAction;

namespace tessaro::test {

/// A running frame over the small application of the tests. Messages are answered by the fixture, not by windows.
class FrameTest : public SessionTest {
  protected:
    FrameTest();
    ~FrameTest() override;

    /// Starts the program; False when it ends itself.
    bool Start();
    /// The same with a line of Pref.ini or TS.ini replaced before (the template's line begins with `key` + "=").
    void SetPreference(const QString& key, const QString& value);
    void SetProductSetting(const QString& key, const QString& value);
    /// Starts with the sample database remembered and the home page skipped: the indicators are on the screen.
    bool StartInStages();
    /// Starts over the application folder that the build made, with its sample database and all its languages.
    bool StartInstalled();

    [[nodiscard]] QString Application() const;
    [[nodiscard]] QString SampleDatabase() const;
    /// The writable folder's settings file as it lies on disk.
    [[nodiscard]] QByteArray PreferencesOnDisk() const;

    template <class Widget = QWidget> [[nodiscard]] Widget* Find(const QString& name) const {
        return window->findChild<Widget*>(name);
    }
    [[nodiscard]] QString Address() const;
    void Type(const QString& address);
    [[nodiscard]] bool IsEnabled(const QString& name) const;
    [[nodiscard]] QString Screen() const; ///< object name of the page that is shown
    void Click(const QString& name);

    std::unique_ptr<frmMain> window;

  private:
    bool StartIn(QString application);
};

} // namespace tessaro::test
