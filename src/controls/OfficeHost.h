#pragma once

#include "office/Error.h"
#include "office/SlideShow.h"
#include "office/Workbook.h"

#include <QString>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

namespace tessaro {

class HostKeyboard;
namespace office {
class HostedFrame;
}

/// A widget that shows a workbook or a slide show in a form, to be edited by its own program ("fraExcel", "PicExcel",
/// "picXLSContainer", "PicPPT"). The program's window becomes a child of this widget, without its menus and bars, and
/// follows every change of its size. At most one workbook and one slide show are hosted at a time: opening a second one
/// closes the first. When the process dies the place says so and the form stays usable; the next opening works.
///
/// A click or Tab gives the hosted window the keyboard; a click elsewhere, or F6 and Shift+F6, take it back.
class OfficeHost final : public QWidget {
    Q_OBJECT

  public:
    explicit OfficeHost(QWidget* parent = nullptr);
    /// Closes the host, keeping edits.
    ~OfficeHost() override;

    /// False where no program's window can be taken in: a display other than X11.
    [[nodiscard]] static bool CanHost();
    /// OpenHostedExcel, Workbooks.Open, FitExcelToContainer: shows a workbook file. False when it can't be shown;
    /// ErrorText says why, and so do the place and the log.
    bool ShowWorkbook(const QString& file);
    /// The same for slides; an empty name makes a new slide show.
    bool ShowSlides(const QString& file);
    /// FitExcelToContainer; also called by itself on each resize.
    void FitExcelToContainer();
    /// The shown workbook as it will be printed, page by page, or its sheets again. False after ErrorText and the log
    /// have the reason.
    bool SetPrintPreview(bool shown);
    [[nodiscard]] bool IsPrintPreview();
    /// Standard and formatting bars: on while the form is maximised, off otherwise. A workbook has its menus always.
    void SetToolBars(bool shown);
    /// CloseHostedExcel: saves what the user changed (under another name where that fails), closes the document, gives
    /// everything back. Never throws. With `save` false the changes are dropped (the gallery).
    void CloseHostedExcel(bool save = true);

    [[nodiscard]] bool IsOpen() const;
    /// True when the user has changed the shown workbook since it was opened or saved, also in a cell that is still
    /// being typed into.
    [[nodiscard]] bool HasEdits();
    /// What is on show; a closed handle when nothing is.
    [[nodiscard]] office::Workbook& xlBook() { return shown_.book; }
    [[nodiscard]] office::SlideShow& Slides() { return shown_.slides; }
    /// Why the last opening or saving failed, in the language of now; empty when it didn't.
    [[nodiscard]] QString ErrorText() const;
    /// After a change of language: a reason that the empty place shows is shown in the new one.
    void SetFormCaptions();
    /// Saves the shown workbook; false after ErrorText and the log have the reason.
    bool Save();
    /// Prints the shown workbook where the user wants it, on paper or into a PDF file. Failures are shown.
    void Print();
    /// Gives the keyboard to the form; what opens or changes a document from outside may have taken it.
    void TakeKeyboard();
    /// What the empty place says.
    void SetHint(const QString& text);

  Q_SIGNALS:
    /// The process died while something was on show.
    void Lost();
    /// The user has given the slides program's own command Save or, `asNew`, Save As.
    void SaveWanted(bool asNew);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    /// A press anywhere else in the window takes the keyboard back from the hosted one.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    template <class Opening> bool Show(Opening&& opening);
    void OfficeLost(bool hung);
    void KeepEdits();
    void Leave(bool forwards);
    [[nodiscard]] QSize PlaceSize() const;
    void ShowReason();
    bool Fail(const office::Error& error);
    bool FailWithoutDisplay(const QString& file);
    void MakePlace();

    /// What belongs to one opening.
    struct Shown {
        office::Workbook book;
        office::SlideShow slides;
        std::unique_ptr<office::HostedFrame> frame; ///< goes last: it would ask about changes of an open document
    };
    Shown shown_;
    Shown dead_;               ///< the last one that lost its process: a call into it may still be on its way back
    QWidget* place_ = nullptr; ///< the native window that the program's window lies in
    std::unique_ptr<HostKeyboard> keyboard_;
    bool toolBars_ = false;
    QTimer probe_;      ///< while something is shown: whether the program still answers
    bool busy_ = false; ///< opening or closing, where a lost process comes as an error
    QString hint_;
    bool showsReason_ = false;
    std::function<QString()> reason_; ///< of the last failure, as the language has it
};

} // namespace tessaro
