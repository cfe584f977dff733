#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmPrint;
}

namespace tessaro {

/// A workbook for reading and printing, in the hosted spreadsheet; modal.
class frmPrint final : public QDialog {
    Q_OBJECT

  public:
    explicit frmPrint(QWidget* parent = nullptr);
    ~frmPrint() override;

    /// The workbook to show; it is opened when the form is.
    void SetFileName(const QString& fileName);
    /// The workbook page by page as it will be printed, or its sheets again.
    void PrintPreview(bool shown);

  protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    /// CloseHostedExcel, whatever way the form is left.
    void done(int result) override;

  private:
    void OpenWorkbook();
    /// What can be done with a workbook on show.
    void Offer(bool open);
    void cmdPdf_Click();

    std::unique_ptr<Ui::frmPrint> ui_;
    QString fileName_;
};

} // namespace tessaro
