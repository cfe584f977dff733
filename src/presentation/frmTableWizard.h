#pragma once

#include "presentation/PresentationWizard.h"
#include "presentation/WizardDraft.h"

class QPushButton;
class QStackedWidget;

namespace tessaro {

class ColorRangesPanel;
class TableOptionsPage;

/// Turns the selection into a formatted table: rows and columns, options, the workbook in the hosted spreadsheet, and
/// its place in the gallery.
class frmTableWizard final : public PresentationWizard {
    Q_OBJECT

  public:
    explicit frmTableWizard(SavePresentation save, QWidget* parent = nullptr);

    /// What its pages have made of the draft so far; shows another one on them.
    [[nodiscard]] TableDraft Draft() const;
    void SetDraft(const TableDraft& draft);
    [[nodiscard]] QString DraftText() const override { return tessaro::DraftText(Draft()); }

  protected:
    [[nodiscard]] bool LeaveFields() override;
    [[nodiscard]] ShowOutcome BuildWorkbook(RowsColumns& arrangement, const WizardProgress& progress) override;
    [[nodiscard]] ColumnSort Sorting() const override;
    void SetSorting(const ColumnSort& sort, const QString& head) override;
    void PageShown(int step) override;

  private:
    void AddExportButton();
    void cmdExport_Click();
    void SaveTable(const QString& file);
    [[nodiscard]] bool CopyWorkbook(const QString& file);
    void FillDefaultTitles();
    void OpenColors();
    void CloseColors();
    /// InitColorRanges at the first use; False when the selection has no values.
    bool NeedRanges();

    TableOptionsPage* options_;
    ColorRangesPanel* colors_;
    QStackedWidget* optionsStack_;
    QPushButton* cmdExport_;
    ValueRanges ranges_;
};

} // namespace tessaro
