#pragma once

#include "calculate/CalculationPage.h"
#include "calculate/FormulaText.h"

#include <QTimer>

#include <memory>
#include <optional>

namespace Ui {
class FormulaPage;
}

namespace tessaro {

/// The formula: names go in at the caret by double click, Return or while they are typed, operators by buttons. The
/// results of the first areas and the place of a fault are shown while the formula is typed.
class FormulaPage final : public CalculationPage {
    Q_OBJECT

  public:
    explicit FormulaPage(QWidget* parent = nullptr);
    ~FormulaPage() override;

    void ShowDraft(const CalculationDraft& draft) override;
    void TakeInto(CalculationDraft& draft) const override;
    [[nodiscard]] bool IsComplete() const override;

    /// Checks the formula with the values of all areas and shows what each gives; the message "108" or "109" with
    /// `tell`, otherwise only "109". True when the formula is good.
    bool cmdValidate_Click(bool tell);

  private:
    void SetFormCaptions();
    void MakeOperators();
    void ConnectControls();
    void cmdOperators_Click(int index);
    void InsertReferences();
    void FormulaChanged();
    void ShowPreview();
    void ShowFault(const FormulaCheck& check);
    void ShowResults(const QString& captionKey, const std::vector<FormulaArea>& areas);
    [[nodiscard]] QString Formula() const;

    std::unique_ptr<Ui::FormulaPage> ui_;
    FormulaSubject subject_;
    bool isRead_ = false;
    QTimer pause_; ///< in the typing, after which the results are shown
};

} // namespace tessaro
