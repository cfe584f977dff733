#pragma once

#include "shell/SummaryReport.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmAbout;
}

namespace tessaro {

/// Name and version of the product, the logs of the open database, the disclaimer and what the system is made of.
class frmAbout final : public QDialog {
    Q_OBJECT

  public:
    explicit frmAbout(QWidget* parent = nullptr);
    ~frmAbout() override;

    /// The log of the open database, or of the template it was made from, as a workbook.
    void ShowLog(LogKind kind);
    void cmdDiscliamer_Click();
    void StartSysInfo();

  private:
    void SetFormCaptions();
    void SetToolTipParam();

    std::unique_ptr<Ui::frmAbout> ui_;
};

} // namespace tessaro
