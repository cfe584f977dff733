#pragma once

#include "selection/AutoSelect.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmAutoSelect;
}

namespace tessaro {

/// The question before an automatic selection: which of the other stages shall narrow it.
class frmAutoSelect final : public QDialog {
    Q_OBJECT

  public:
    explicit frmAutoSelect(QWidget* parent = nullptr);
    ~frmAutoSelect() override;

    /// Captions and boxes for a stage; a box whose stage has no selection is unticked and disabled.
    void PrepareFor(selection::Stage stage);
    [[nodiscard]] bool Cancelled() const { return cancelled_; }
    [[nodiscard]] bool UseFirst() const;
    [[nodiscard]] bool UseSecond() const;

  protected:
    void reject() override; ///< Escape and the close button cancel too

  private:
    void cmdOK_Click();

    std::unique_ptr<Ui::frmAutoSelect> ui_;
    bool cancelled_ = true;
};

/// A question for DecideOtherStages that shows this dialog above `parent`.
[[nodiscard]] selection::AutoSelectQuestion AskAutoSelect(QWidget* parent);

} // namespace tessaro
