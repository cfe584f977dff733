#pragma once

#include "calculate/CalculationPage.h"
#include "calculate/Choices.h"

#include <memory>

class QComboBox;

namespace Ui {
class SaveAsPage;
}

namespace tessaro {

/// What the result is called, with how many decimals it is kept, and whether the new database has the data in view.
class SaveAsPage final : public CalculationPage {
    Q_OBJECT

  public:
    explicit SaveAsPage(CalcType type, QWidget* parent = nullptr);
    ~SaveAsPage() override;

    /// What the fields offer; the indicators that take part are among the names of the result.
    void SetChoices(const NameChoices& choices, const std::vector<CalculationItem>& items);

    void ShowDraft(const CalculationDraft& draft) override;
    void TakeInto(CalculationDraft& draft) const override;

  private:
    void SetFormCaptions();
    void ShowFields(CalcType type);

    std::unique_ptr<Ui::SaveAsPage> ui_;
};

} // namespace tessaro
