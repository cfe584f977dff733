#pragma once

#include "calculate/CalculationPage.h"

#include <array>

class QCheckBox;
class QLabel;

namespace tessaro {

/// The area levels that sub-totals are wanted of: as many as the areas of the indicator have.
class LevelsPage final : public CalculationPage {
    Q_OBJECT

  public:
    explicit LevelsPage(QWidget* parent = nullptr);

    void ShowDraft(const CalculationDraft& draft) override;
    void TakeInto(CalculationDraft& draft) const override;

  private:
    void ShowLevel(int level, const QString& indicator, int levels);

    struct Row {
        QCheckBox* chkLevel = nullptr;
        QLabel* txtDLevel = nullptr; ///< tells what the level is
    };
    std::array<Row, kAreaLevels> rows_;
};

} // namespace tessaro
