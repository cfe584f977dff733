#pragma once

#include "calculate/CalculationPage.h"

class QCheckBox;
class QLabel;
class QPushButton;

namespace tessaro {

class FillGrid;

/// The weights of a composite index, and of each indicator whether a high value is good. The sum of the weights is
/// shown while they are typed.
class WeightsPage final : public CalculationPage {
    Q_OBJECT

  public:
    explicit WeightsPage(QWidget* parent = nullptr);

    void ShowDraft(const CalculationDraft& draft) override;
    void TakeInto(CalculationDraft& draft) const override;
    void FocusOn(const char* control, int row) override;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void SetFormCaptions();
    void ShowSum();
    void cmdShare_Click();
    void chkHighAll_Click();
    /// The box in the head is ticked when all rows are.
    void ShowHighAll();
    void PlaceHighAll();
    [[nodiscard]] std::vector<IndexWeight> Weights() const;

    FillGrid* grdW_;
    QCheckBox* chkHighAll_; ///< lies in the head of its column
    QLabel* lblSum_;
    QPushButton* cmdShare_;
};

} // namespace tessaro
