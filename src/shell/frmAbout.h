#pragma once

#include "shell/SummaryReport.h"

#include <QDialog>

namespace tessaro {

/// The product's name, version and disclaimer; the two logs of the open database; what the system is.
class frmAbout final : public QDialog {
    Q_OBJECT

  public:
    explicit frmAbout(QWidget* parent = nullptr);

  private:
    void cmdDiscliamer_Click();
    void ShowLog(LogKind kind);
    void StartSysInfo();
};

} // namespace tessaro
