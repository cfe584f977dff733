#pragma once

#include "exchange/DraftGuess.h"
#include "exchange/ImportReport.h"
#include "exchange/ImportWriter.h"
#include "exchange/RowPreview.h"
#include "wizards/WizardFrame.h"

namespace tessaro {

class AreasPage;
class CheckPage;
class MappingPage;
class SourcePage;

/// The wizard that brings the values of a file into a database: the file, what its columns mean, areas that were not
/// found, the check, and at Finish the writing. Cancelled at any step it changes nothing.
class frmImport final : public WizardFrame {
    Q_OBJECT

  public:
    explicit frmImport(QWidget* parent = nullptr);
    ~frmImport() override;

    /// Takes a file as if it had been chosen.
    void TakeFile(const QString& file);
    [[nodiscard]] const ImportDraft& Draft() const { return draft_; }
    /// The database that was made or changed; empty when none was.
    [[nodiscard]] const QString& WrittenFile() const { return written_; }

  protected:
    [[nodiscard]] bool GoForward(int step) override;
    void PageShown(int step) override;
    [[nodiscard]] bool Finish() override;
    [[nodiscard]] bool MayGoForward() const override;
    [[nodiscard]] bool MayFinish() const override;
    [[nodiscard]] QString CancelQuestion() const override;
    void EndWizard() override;

  private:
    enum ImportStep { SourceStep = 1, MappingStep, AreasStep, CheckStep };

    void Form_Load();
    void cmdBrowse_Click();
    void cmdAreaTree_Click();
    void cmdKeepMapping_Click();
    void cmdUseMapping_Click();
    void cmdSaveReport_Click();
    /// Reads the file's beginning anew as the first page says, and guesses its columns.
    void ReadAgain();
    /// Takes other rows for heads.
    void LookAgain();
    void ShowSource();
    void ShowMapping();
    void ShowPreview();
    [[nodiscard]] QStringList SamplesOfColumns() const;
    [[nodiscard]] ImportTable SampleTable() const;
    [[nodiscard]] bool Check();
    [[nodiscard]] bool AskTarget();
    [[nodiscard]] ImportTarget TargetNow() const;
    /// Runs something that reads files; what it throws is told. False then.
    [[nodiscard]] bool Told(const std::function<void()>& work);

    SourcePage* source_ = nullptr;
    MappingPage* mapping_ = nullptr;
    AreasPage* areas_ = nullptr;
    CheckPage* check_ = nullptr;
    QStringList sheets_;
    FileSample sample_;
    ImportDraft draft_;
    std::unique_ptr<RowPreview> preview_; ///< of values that go into previewOf_
    QStringList previewOf_;               ///< the database and the area tree that it was made for
    std::unique_ptr<CheckedImport> checked_;
    QString written_;
};

} // namespace tessaro
