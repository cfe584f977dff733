#pragma once

#include "calculate/CalculationPage.h"

class QLabel;
class QLineEdit;

namespace tessaro {

class FillGrid;

/// The target unit, and the factor to it from each unit of the data.
class UnitFactorsPage final : public CalculationPage {
    Q_OBJECT

  public:
    explicit UnitFactorsPage(QWidget* parent = nullptr);

    void ShowDraft(const CalculationDraft& draft) override;
    void TakeInto(CalculationDraft& draft) const override;
    void FocusOn(const char* control, int row) override;

  private:
    QLabel* lblTUnit_;
    QLineEdit* rtbTUnit_;
    FillGrid* grdUnit_;
};

} // namespace tessaro
