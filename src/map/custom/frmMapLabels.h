#pragma once

#include "layers/LayerStack.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmMapLabels;
}

namespace tessaro {

/// Sets the labels of one layer: whether they are shown, their field, colour and letters. OK applies them to the map
/// and its texts; the caller draws it anew.
class frmMapLabels final : public QDialog {
    Q_OBJECT

  public:
    /// `map` and the formula of combined labels outlive the window.
    frmMapLabels(LayerStack& map, int layer, QString& labelFormula, QWidget* parent = nullptr);
    ~frmMapLabels() override;

  private:
    void SetFormCaptions();
    void FillFields();
    void ShowLooks();
    [[nodiscard]] QString Field() const;
    [[nodiscard]] bool Compose();
    void cmdAdvField_Click();
    void cmdLabelFont_Click();
    void cmdLabelColor_Click();
    void cmdOKLabel_Click();

    std::unique_ptr<Ui::frmMapLabels> ui_;
    LayerStack& map_;
    int layer_;
    QString& labelFormula_;
    LayerLabels draft_;
    bool composed_ = false; ///< a combined label was composed in this window
};

} // namespace tessaro
