#pragma once

#include "presentation/PresentationFile.h"
#include "presentation/SortChoice.h"
#include "wizards/HostedWizard.h"

namespace tessaro {

class RowsColumnsPage;

/// What the table and the graph wizard have in common: four steps from the fields over the options and the workbook in
/// the hosted spreadsheet to its place in the gallery.
class PresentationWizard : public HostedWizard {
    Q_OBJECT

  public:
    /// All that the user has chosen so far, as lines of text.
    [[nodiscard]] virtual QString DraftText() const = 0;

  protected:
    enum Steps { FieldStep = 1, OptionStep, PreviewStep, SaveStep };

    PresentationWizard(WizardKind kind, SavePresentation save, QWidget* parent);

    /// The steps' pages with the keys of their names; shows the first arrangement. The last call of a constructor.
    void Form_Load(const QString& fieldsKey, QWidget* options, const QString& optionsKey);
    /// Asks by which column of values the rows are sorted.
    void ChooseSort(const char* procedureName);
    [[nodiscard]] RowsColumnsPage& Fields() const { return *fields_; }

    /// Leaves the page of fields: False, with the reason shown, and the wizard stays.
    [[nodiscard]] virtual bool LeaveFields() = 0;
    /// ShowXLS with what the options page says. May move fields of the arrangement; throws office::Error.
    [[nodiscard]] virtual ShowOutcome BuildWorkbook(RowsColumns& arrangement, const WizardProgress& progress) = 0;
    [[nodiscard]] virtual ColumnSort Sorting() const = 0;
    /// Keeps the chosen column, and shows its head; without one it is the first.
    virtual void SetSorting(const ColumnSort& sort, const QString& head) = 0;

    /// Nothing is asked of a user who has entered nothing.
    [[nodiscard]] QString CancelQuestion() const override;
    [[nodiscard]] bool GoForward(int step) override;
    void GoBack(int left, int entered) override;
    [[nodiscard]] bool MayFinish() const override { return Step() < SaveStep; }
    void EndWizard() override;

  private:
    void KeepSorting(const ColumnSort& sort, const QString& head);
    [[nodiscard]] bool BuildAndShow();
    /// BuildWorkbook with progress shown; the user may give it up.
    [[nodiscard]] ShowOutcome Build(RowsColumns& arrangement);
    [[nodiscard]] bool Save();
    [[nodiscard]] bool SuggestsOptions();

    const WizardKind kind_;
    QString untouched_; ///< the draft as the wizard itself has made it
    RowsColumnsPage* fields_;
    QString sortHead_; ///< of the column that was chosen to sort by; empty for the first one
};

} // namespace tessaro
