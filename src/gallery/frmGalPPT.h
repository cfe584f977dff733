#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmGalPPT;
}

namespace tessaro {

/// Asks which slides a presentation is copied to: new ones, or a file's.
class frmGalPPT final : public QDialog {
    Q_OBJECT

  public:
    explicit frmGalPPT(QWidget* parent = nullptr);
    ~frmGalPPT() override;

    /// The answer after OK.
    [[nodiscard]] bool NewPPT() const;
    /// Path of the file; empty for new slides, and after Cancel.
    [[nodiscard]] const QString& GetPPTFileName() const { return fileName_; }

    void cmdBrowse_Click();

  protected:
    void done(int result) override;

  private:
    void OfferControls();

    std::unique_ptr<Ui::frmGalPPT> ui_;
    QString fileName_;
};

} // namespace tessaro
