#pragma once

#include "office/SlideShow.h"
#include "office/Workbook.h"

#include <QString>
#include <QWidget>

#include <memory>

namespace tessaro {

/// A place in a form where a workbook or a slide show is shown and edited by its own program ("fraExcel", "PicExcel",
/// "picXLSContainer", "PicPPT"). The program's window becomes a child of this widget, without its menus and bars, and
/// follows every change of its size. At most one spreadsheet and one slides host are open at a time: opening a second
/// one closes the first. When the process dies the place shows a hint and the form stays usable; the next Show works.
class OfficeHost final : public QWidget {
    Q_OBJECT

  public:
    explicit OfficeHost(QWidget* parent = nullptr);
    /// Closes the host, keeping edits.
    ~OfficeHost() override;

    /// OpenHostedExcel, Workbooks.Open, FitExcelToContainer: shows a workbook file. False when it can't be shown;
    /// ErrorText says why, and it has been reported to the common sink under `OpenHostedExcel`. Nothing is shown then.
    bool ShowWorkbook(const QString& file);
    bool ShowSlides(const office::SlideShow& slides);
    /// FitExcelToContainer; also called by itself on each resize.
    void FitExcelToContainer();
    /// Standard and formatting bars: on while the form is maximised, off otherwise.
    void SetToolBars(bool shown);
    /// CloseHostedExcel: saves what the user changed, closes the document, gives everything back. Never throws. With
    /// `save` false the changes are dropped (the gallery).
    void CloseHostedExcel(bool save = true);

    [[nodiscard]] bool IsOpen() const;
    /// The workbook on show; closed handle when none is.
    [[nodiscard]] office::Workbook xlBook() const;
    [[nodiscard]] office::SlideShow Slides() const;
    [[nodiscard]] QString ErrorText() const;
    /// Saves the shown workbook; false after the report to the common sink.
    bool Save();
    /// What the empty place says.
    void SetHint(const QString& text);

  Q_SIGNALS:
    /// The process died while a document was on show.
    void Lost();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace tessaro
