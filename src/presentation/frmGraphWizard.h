#pragma once

#include "controls/WizardFrame.h"
#include "presentation/SavePresentation.h"

namespace tessaro {

class GraphOptionsPage;
class OfficeHost;
class RowsColumnsPage;

/// Turns the selection into a chart: fields on the Y and X axis, options, the workbook in the hosted spreadsheet, and
/// its place in the gallery.
class frmGraphWizard final : public WizardFrame {
    Q_OBJECT

  public:
    explicit frmGraphWizard(SavePresentation save, QWidget* parent = nullptr);

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
    [[nodiscard]] bool LeaveAxes();
    [[nodiscard]] bool ShowPreview();
    [[nodiscard]] bool SaveAs();
    void ChooseSort();

    SavePresentation save_;
    RowsColumnsPage* axes_;
    GraphOptionsPage* options_;
    OfficeHost* fraExcel_;
    QString workbookFile_;
};

} // namespace tessaro
