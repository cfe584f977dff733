#pragma once

#include "office/SlideShow.h"
#include "office/Workbook.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <memory>

namespace tessaro::office {

class ProcessLink;

/// The spreadsheet and slides program in a process and a profile of our own. It is started by the first call that needs
/// it, found alive or started anew by every later one, and gone when this program is gone, however that ends. Windows
/// and processes that the user has open are never touched. All calls block, but let the window paint; each has a time
/// limit. Everything here is for the thread of the user interface.
///
/// There are two: one that never shows a window, which writes the files, and one whose documents are shown inside our
/// windows. A file is finished by the first before the second opens it.
class SpreadsheetApplication final : public QObject {
    Q_OBJECT

  public:
    /// The one that writes files.
    static SpreadsheetApplication& Instance();
    /// The one that is shown in a host.
    static SpreadsheetApplication& Hosted();
    ~SpreadsheetApplication() override;

    /// Where the two profiles lie (below CacheFolder); set once at the start. Ends what a crashed run has left there.
    static void SetProfileFolder(const QString& folder);
    [[nodiscard]] static bool IsInstalled();
    /// Name and version of the installed program ("LibreOffice 7.4"); empty when it doesn't tell.
    [[nodiscard]] static QString Version();
    [[nodiscard]] bool IsRunning() const;
    /// Process id of the running program; 0 when none runs.
    [[nodiscard]] qint64 ProcessId() const;
    /// Starts the process when it doesn't run. Throws Error.
    void Start();
    /// Starts the process without waiting for it; no error is told. For a wizard that opens.
    void StartInAdvance();
    /// Ends the process, at once if it doesn't end by itself.
    void Quit();
    /// Ends both.
    static void QuitAll();

    /// A new workbook with this many empty sheets, never shown. Throws Error.
    [[nodiscard]] Workbook NewWorkbook(int sheets = 1);
    /// Opens a file of the ".xls" kind, never shown: Failure::File when it can't be read or is no workbook.
    [[nodiscard]] Workbook OpenWorkbook(const QString& file);
    /// Copies a template over `file` and opens the copy.
    [[nodiscard]] Workbook OpenCopy(const QString& templateFile, const QString& file);
    /// The same for slide shows. They are never shown, until a host shows them.
    [[nodiscard]] SlideShow NewSlideShow();
    [[nodiscard]] SlideShow OpenSlideShow(const QString& file);

    /// Time that a call may take before the process counts as hung: 30 s unless set. Long jobs take longer limits.
    void SetTimeLimit(std::chrono::milliseconds limit);
    /// Asks for a sign of life, without waiting; one that does nothing and gives none for some seconds is ended, which
    /// Lost tells. To be called every few seconds while something is shown.
    void Probe();
    /// How long the process may do nothing before it counts as hung, 6 s unless set.
    void SetPatience(std::chrono::milliseconds patience);

    /// For the classes of this room.
    [[nodiscard]] const std::shared_ptr<ProcessLink>& connection() const { return connection_; }

  Q_SIGNALS:
    /// The process died, or was ended because it `hung`; all workbooks of before are dead.
    void Lost(bool hung);

  private:
    explicit SpreadsheetApplication(bool shown);

    std::shared_ptr<ProcessLink> connection_;
};

} // namespace tessaro::office
