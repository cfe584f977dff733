#pragma once

#include "metadata/Information.h"

#include <QDialog>
#include <QStringListModel>

#include <memory>

namespace Ui {
class frmInformationSheets;
}

namespace tessaro {

/// A browser over the information of all items of a kind: the list on the left, the sheet on the right, all of them on
/// paper.
class frmInformationSheets final : public QDialog {
    Q_OBJECT

  public:
    explicit frmInformationSheets(const QString& code, QWidget* parent = nullptr);
    ~frmInformationSheets() override;

  private:
    void FillList();
    void ShowInfo(int row);
    void cmdPrintAll_Click();

    std::unique_ptr<Ui::frmInformationSheets> ui_;
    QString code_;
    std::vector<metadata::InformationItem> items_;
    QStringListModel names_;
};

} // namespace tessaro
