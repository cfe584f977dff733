#pragma once

#include "wizards/SaveStep.h"
#include "wizards/WizardFrame.h"

namespace tessaro {

class OfficeHost;

/// A wizard with a workbook in the hosted spreadsheet: it shows the file on a page, keeps it while the wizard goes on,
/// and hands it to the save step.
class HostedWizard : public WizardFrame {
    Q_OBJECT

  public:
    /// The workbook that was built last; empty before.
    [[nodiscard]] const QString& WorkbookFile() const { return workbookFile_; }

  protected:
    /// `save` does the last step.
    HostedWizard(SavePresentation save, QWidget* parent);

    /// The place of the workbook, to be added as a step, or put onto the page of one.
    [[nodiscard]] OfficeHost& fraExcel() const { return *fraExcel_; }
    /// Starts the spreadsheet program, both the one that writes and the one that shows, without waiting for it.
    static void StartSpreadsheet();
    /// Removes the workbook that was built before: it must not take the name of the next.
    void ForgetWorkbook();
    /// Takes a finished workbook and shows it in its place; where it can't be shown the place says why. `suggestedName`
    /// is for the save step; empty for the file's own.
    void ShowPreview(const QString& file, const QString& suggestedName = {});
    /// What the user has changed is saved, or with `save` false dropped.
    void ClosePreview(bool save = true);
    /// Saves what the user has changed in the preview and hands the file to the save step. True when the wizard is
    /// over.
    [[nodiscard]] bool SaveAs(QChar presentationType, int step);

    void EndWizard() override;
    /// The spreadsheet's bars come with a maximised form.
    void changeEvent(QEvent* event) override;

  private:
    SavePresentation save_;
    OfficeHost* fraExcel_;
    QString workbookFile_;
    QString suggestedName_;
};

} // namespace tessaro
