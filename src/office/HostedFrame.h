#pragma once

#include "office/SlideShow.h"
#include "office/SpreadsheetApplication.h"
#include "office/Workbook.h"

#include <QPalette>
#include <QSize>

#include <functional>
#include <memory>

namespace tessaro::office {

/// A window of the program inside a native window of ours, with one document in it. Sizes are device pixels. Functions
/// that aren't said to be quiet throw Error.
class HostedFrame final {
  public:
    /// `window`: the native window (X11) that takes it in; `palette`: the colours of the program's own parts there.
    HostedFrame(quintptr window, const QSize& size, const QPalette& palette);
    ~HostedFrame();
    HostedFrame(const HostedFrame&) = delete;
    HostedFrame& operator=(const HostedFrame&) = delete;

    /// Shows a workbook file, with its menus and without bars. Of formulas that the file has without results only those
    /// in sight are calculated, and what they need.
    [[nodiscard]] Workbook ShowWorkbook(const QString& file);
    /// Shows a slide show; an empty name makes a new one.
    [[nodiscard]] SlideShow ShowSlides(const QString& file);
    /// The program's own Save and, with true, Save As, however given, call this instead, on a thread of the bridge.
    void OnSave(std::function<void(bool)> wanted);
    /// The program's own Save again; quiet. To be called before the document is closed.
    void EndOnSave() noexcept;
    /// The standard and the formatting bar on or off; a workbook keeps its menus without them, slides don't.
    void SetToolBars(bool shown);
    /// Pages as they will be printed, or the document again.
    void SetPrintPreview(bool shown);
    [[nodiscard]] bool IsPrintPreview() const;
    /// Enters what is being typed into a cell, as a press of Return does.
    void TakeOverInput();
    /// The same, and what is not calculated yet will be on all processors, column by column.
    void GetReadyToSave();
    /// Cancels the program's own dialogs, which would outlast their document; quiet.
    void EndDialogs() noexcept;
    /// Follows the size of our window; quiet and without waiting.
    void SetSize(const QSize& size);
    /// Takes the window away; quiet.
    void Close() noexcept;

  private:
    void GetReady();

    struct State;
    std::unique_ptr<State> state_;
};

} // namespace tessaro::office
