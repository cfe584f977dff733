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

  protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    /// CloseHostedExcel, whatever way the form is left.
    void done(int result) override;

  private:
    void OpenWorkbook();
    void cmdPrint_Click();
    void cmdPdf_Click();

    std::unique_ptr<Ui::frmPrint> ui_;
    QString fileName_;
};

} // namespace tessaro
