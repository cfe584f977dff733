#pragma once

#include "calculate/CalculationPage.h"

#include <array>
#include <optional>

class QCheckBox;

namespace tessaro {

class SelectionLists;

/// The indicators that take part: a list to choose from and the list of those chosen, with their subgroups where the
/// user wants them. A calculation of one indicator has the last one that was chosen.
class SelectionPage final : public CalculationPage {
    Q_OBJECT

  public:
    /// The numerators (or whatever indicators the calculation works on), or the denominators.
    enum class Role { Items, Denominators };

    SelectionPage(CalcType type, Role role, QWidget* parent = nullptr);

    void ShowDraft(const CalculationDraft& draft) override;
    void TakeInto(CalculationDraft& draft) const override;

  private:
    void SetFormCaptions();
    void ConnectLists();
    void chkShowSubpop_Click();
    void Add(const QStringList& keys);
    void Remove(const QStringList& keys);
    void ShowLists();
    void HighlightRow(int row);
    [[nodiscard]] const std::vector<CalculationItem>& Offered(bool withSubpops) const;

    const CalcType type_;
    const Role role_;
    QCheckBox* chkShowSubpop_;
    SelectionLists* lists_;
    bool showSubpop_ = false;
    std::vector<CalculationItem> chosen_;
    mutable std::array<std::optional<std::vector<CalculationItem>>, 2> offered_; ///< without and with subgroups
};

} // namespace tessaro
