#pragma once

#include "controls/KeyedItem.h"

#include <QDialog>

#include <memory>
#include <vector>

namespace Ui {
class frmMAPAdvLbl;
}

namespace tessaro {

/// Composes a combined label: fields are added to the list at the right in the order in which the label shows them.
class frmMAPAdvLbl final : public QDialog {
    Q_OBJECT

  public:
    /// Starts with the fields of a formula (see LabelFields.h).
    explicit frmMAPAdvLbl(const QString& formula, QWidget* parent = nullptr);
    ~frmMAPAdvLbl() override;

    /// The formula of the chosen fields; empty without any.
    [[nodiscard]] QString Formula() const;

  private:
    void FillLists(const QString& formula);
    void ConnectLists();
    void Choose(std::vector<KeyedItem> fields);
    void TakeOut(const std::vector<KeyedItem>& fields);
    void ShowAvailablePopup(const QPoint& place);
    void ShowSelectedPopup(const QPoint& place);
    void ShowSample();
    void cmdOK_Click();

    std::unique_ptr<Ui::frmMAPAdvLbl> ui_;
};

} // namespace tessaro
