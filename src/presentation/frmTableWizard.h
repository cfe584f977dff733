#pragma once

#include "controls/WizardFrame.h"
#include "presentation/SavePresentation.h"
#include "presentation/TableWorkbook.h"

class QStackedWidget;

namespace tessaro {

class ColorRangesPanel;
class OfficeHost;
class RowsColumnsPage;
class TableOptionsPage;

/// Turns the selection into a formatted table: rows and columns, options, the workbook in the hosted spreadsheet, and
/// its place in the gallery.
class frmTableWizard final : public WizardFrame {
    Q_OBJECT

  public:
    explicit frmTableWizard(SavePresentation save, QWidget* parent = nullptr);

    /// The workbook that was built last; empty before.
    [[nodiscard]] const QString& WorkbookFile() const { return workbookFile_; }

  protected:
    [[nodiscard]] bool GoForward(int step) override;
    void GoBack(int step) override;
    [[nodiscard]] bool MayFinish() const override { return Step() < 4; }
    void EndWizard() override;
    void changeEvent(QEvent* event) override;

  private:
    void Form_Load();
    [[nodiscard]] bool LeaveRowsAndColumns();
    [[nodiscard]] bool ShowPreview();
    [[nodiscard]] bool SaveAs();
    void FillDefaultTitles();
    void ChooseSort();
    void OpenColors();
    void CloseColors();
    /// InitColorRanges at the first use; False when the selection has no values.
    bool NeedRanges();

    SavePresentation save_;
    RowsColumnsPage* rowsColumns_;
    TableOptionsPage* options_;
    ColorRangesPanel* colors_;
    QStackedWidget* optionsStack_;
    OfficeHost* fraExcel_;
    ValueRanges ranges_;
    QString workbookFile_;
};

} // namespace tessaro
