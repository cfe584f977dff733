#pragma once

#include <QDialog>
#include <QString>

#include <memory>

namespace Ui {
class frmSaveGalleryAdvance;
}

namespace tessaro {

/// The last step of the presentation wizards: copies the finished workbook into the gallery under a name
/// of the user's. The properties are set before it is shown.
class frmSaveGalleryAdvance final : public QDialog {
    Q_OBJECT

  public:
    explicit frmSaveGalleryAdvance(QWidget* parent = nullptr);
    ~frmSaveGalleryAdvance() override;

    void SetPresentationType(QChar type) { type_ = type; }          ///< 'T', 'G' or 'M'
    void SetSourceFile(const QString& path) { sourceFile_ = path; } ///< the finished workbook
    void SetFileTitle(const QString& title) { fileTitle_ = title; }
    void SetFormCaption(const QString& caption) { setWindowTitle(caption); }
    /// 0: back to the preview; 1: saved, or given up: the wizard closes.
    [[nodiscard]] int CloseStatus() const { return closeStatus_; }
    /// The file that was written; empty when none was.
    [[nodiscard]] const QString& SavedFile() const { return savedFile_; }

    /// Fills the fields from the properties and the list from the folder.
    void Initialize();
    void CmdFinish_Click();
    void CmdBack_Click();
    void CmdCancel_Click();
    void cmdBrowse_Click();
    /// Escape and the window's own button are Cancel.
    void reject() override { CmdCancel_Click(); }

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void SetFormCaptions();
    void GetPresentationsFromGallery();
    void RefuseName();
    [[nodiscard]] bool MayReplace(const QString& target);
    void Close(int status);

    std::unique_ptr<Ui::frmSaveGalleryAdvance> ui_;
    QChar type_ = QLatin1Char('T');
    QString sourceFile_;
    QString fileTitle_;
    QString savedFile_;
    int closeStatus_ = 0;
    bool initialized_ = false;
};

} // namespace tessaro
