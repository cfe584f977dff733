#pragma once

#include "presentation/RowsColumnsFile.h"

#include <QDialog>
#include <QStringListModel>

#include <memory>

namespace Ui {
class frmLoadRC;
}

namespace tessaro {

/// Picks a layout file by drive, folder and file. It begins in the folder of the wizard's own layouts.
class frmLoadRC final : public QDialog {
    Q_OBJECT

  public:
    explicit frmLoadRC(WizardKind kind, QWidget* parent = nullptr);
    ~frmLoadRC() override;

    /// The chosen file; empty when the dialog was cancelled.
    [[nodiscard]] const QString& ChosenPath() const { return path_; }

  private:
    void FillDrives();
    void ShowFolder(const QString& folder);
    void EnterFolder(const QModelIndex& index);
    void cmdOK_Click();

    std::unique_ptr<Ui::frmLoadRC> ui_;
    WizardKind kind_;
    QString folder_;
    QString path_;
    QStringListModel folders_;
    QStringListModel files_;
};

} // namespace tessaro
