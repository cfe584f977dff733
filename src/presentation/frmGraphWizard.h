#pragma once

#include "presentation/PresentationWizard.h"
#include "presentation/WizardDraft.h"

namespace tessaro {

class GraphOptionsPage;

/// Turns the selection into a chart: fields on the Y and X axis, options, the workbook in the hosted spreadsheet, and
/// its place in the gallery.
class frmGraphWizard final : public PresentationWizard {
    Q_OBJECT

  public:
    explicit frmGraphWizard(SavePresentation save, QWidget* parent = nullptr);

    /// What its pages have made of the draft so far; shows another one on them.
    [[nodiscard]] GraphDraft Draft() const;
    void SetDraft(const GraphDraft& draft);
    [[nodiscard]] QString DraftText() const override { return tessaro::DraftText(Draft()); }

  protected:
    [[nodiscard]] bool LeaveFields() override;
    [[nodiscard]] ShowOutcome BuildWorkbook(RowsColumns& arrangement, const WizardProgress& progress) override;
    [[nodiscard]] ColumnSort Sorting() const override;
    void SetSorting(const ColumnSort& sort, const QString& head) override;

  private:
    GraphOptionsPage* options_;
};

} // namespace tessaro
