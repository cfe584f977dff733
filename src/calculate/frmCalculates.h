#pragma once

#include "calculate/CalculationLog.h"
#include "calculate/CalculationSteps.h"
#include "calculate/Choices.h"
#include "wizards/HostedWizard.h"

#include <vector>

namespace tessaro {

class CalculationPage;
class FormulaPage;
class SaveAsPage;
namespace office {
class Workbook;
}

/// The wizard of the six calculations: it derives an indicator from the data in view, shows the working and the result
/// as workbooks, and saves the result as a database. Cancelled at any step it leaves nothing behind.
class frmCalculates final : public HostedWizard {
    Q_OBJECT

  public:
    explicit frmCalculates(CalcType type, QWidget* parent = nullptr);
    ~frmCalculates() override;

    /// What the user has chosen so far; shows another choice on the page in front.
    [[nodiscard]] CalculationDraft Draft() const;
    void SetDraft(const CalculationDraft& draft);
    /// The step that is shown, by its number.
    [[nodiscard]] CalculationStep CurrentStep() const;
    /// The workbooks made so far; empty before.
    [[nodiscard]] const QString& LogFile() const { return logFile_; }
    [[nodiscard]] const QString& DataEntryFile() const { return dataEntryFile_; }
    /// The database that was made; empty when none was.
    [[nodiscard]] const QString& BuiltFile() const { return builtFile_; }
    /// The user wants to have it opened.
    [[nodiscard]] bool OpensResult() const { return opensResult_; }

  protected:
    /// Fills `_Data`, and the first page.
    void Start() override;
    [[nodiscard]] bool GoForward(int step) override;
    void GoBack(int left, int entered) override;
    void PageShown(int step) override;
    [[nodiscard]] bool Finish() override;
    [[nodiscard]] bool MayFinish() const override { return CurrentStep() == DataEntryStep; }
    [[nodiscard]] bool MayGoForward() const override;
    /// A result that is shown and not saved is asked for in other words.
    [[nodiscard]] QString CancelQuestion() const override;
    void EndWizard() override;

  private:
    void Form_Load();
    void NameButtons();
    [[nodiscard]] QWidget* MakePage(PageKind kind);
    /// The page of a step as the user's entries have it; none for those that show a workbook.
    [[nodiscard]] CalculationPage* PageAt(CalculationStep step) const;
    [[nodiscard]] const CalculationStepEntry& EntryAt(CalculationStep step) const;
    [[nodiscard]] CalculationStep StepNumber(int wizardStep) const;

    [[nodiscard]] bool ValidateCurrentStep();
    /// What a page needs of the data before it is shown, such as names for the result.
    void PreparePage(CalculationStep step);
    void FillNames();
    [[nodiscard]] bool ShowLog();
    [[nodiscard]] bool ShowDataEntry();
    void ShowIn(CalculationStep step, const QString& file);
    /// The workbook on show, or from its file when none can be shown here.
    [[nodiscard]] office::Workbook OpenBook(const QString& file);
    [[nodiscard]] bool SaveShown();
    [[nodiscard]] bool SaveToDatabase();
    [[nodiscard]] QString WhatWasCalculated() const;
    void AskToOpen();
    void RemoveFiles();

    CalculationDraft draft_;
    std::vector<CalculationStep> shown_; ///< the steps of this calculation in their order
    std::array<QWidget*, kCalculationSteps> pages_{};
    FormulaPage* formula_ = nullptr;
    SaveAsPage* saveAs_ = nullptr;
    ResultNames suggested_;
    CalculationLog log_;
    QString logFile_;
    QString dataEntryFile_;
    QString builtFile_;
    bool isFilled_ = false; ///< `_Data` has the data in view, and the pages may read it
    bool isFirstLog_ = true;
    bool opensResult_ = false;
};

} // namespace tessaro
