#pragma once

#include <QString>

namespace tessaro {

/// What the ground floors and the screens may ask of the main frame. The frame installs itself; tests install their
/// own; without one every call does nothing.
class Frame {
  public:
    virtual ~Frame() = default;

    virtual void SetStatusText(const QString& /*text*/) {}
    /// Progress meter in the status bar: start, a value from 0 to 100, end.
    virtual void StartProgress() {}
    virtual void SetProgress(int /*percent*/) {}
    virtual void EndProgress() {}
    /// During long work, a few times a second: lets the windows paint and drops the input made meanwhile. True when the
    /// user has asked since StartProgress for the work to stop (Escape, or the stop button).
    [[nodiscard]] virtual bool IsStopAsked() { return false; }
    /// Wait cursor on and off; calls nest.
    virtual void SetBusy(bool /*busy*/) {}
    /// Shows a text in the status bar for a while; comes back at once ("nothing found", "saved").
    virtual void ShowStatusTextFor(const QString& /*text*/, int /*milliseconds*/) {}

    /// The way between the stages. Stage 3 goes through the guard of GoToDataView.
    virtual void GoToStage(int /*stage*/) {}
    virtual void GoToDataView() {}
    virtual void GoToHome() {}
    /// Unloads every screen and dialog other than the frame, the home page and the properties.
    virtual void UnloadForms() {}

    /// Shows a workbook for reading and printing in frmPrint, modally.
    virtual void ShowWorkbook(const QString& /*file*/) {}
    /// The calculation wizard for CalcType 0 to 5, and whether it exists.
    virtual void StartCalculation(int /*calcType*/) {}
    [[nodiscard]] virtual bool OffersCalculation(int /*calcType*/) const { return false; }
    /// The table, graph or map wizard ('T', 'G', 'M'), and whether it exists.
    virtual void StartPresentation(QChar /*type*/) {}
    [[nodiscard]] virtual bool OffersPresentation(QChar /*type*/) const { return false; }

    /// Number of items in frmIndicators' lstSelected when that screen was visited in this session, else 0.
    [[nodiscard]] virtual int SelectedIndicatorCount() const { return 0; }

    /// While a statement is at work: the screens behind don't paint and timers wait, since both may read rows.
    virtual void HoldScreens(bool /*hold*/) {}
};

[[nodiscard]] Frame& TheFrame();

/// The wait pointer for as long as it lives.
class WaitPointer final {
  public:
    WaitPointer() { TheFrame().SetBusy(true); }
    ~WaitPointer() { TheFrame().SetBusy(false); }
    WaitPointer(const WaitPointer&) = delete;
    WaitPointer& operator=(const WaitPointer&) = delete;
};

/// The wait pointer and the progress meter.
class WaitState final {
  public:
    WaitState() { TheFrame().StartProgress(); }
    ~WaitState() { TheFrame().EndProgress(); }
    WaitState(const WaitState&) = delete;
    WaitState& operator=(const WaitState&) = delete;

  private:
    WaitPointer pointer_;
};

/// Installs a frame (not owned); nullptr takes it away.
void SetFrame(Frame* frame);

} // namespace tessaro
