#pragma once

#include "controls/StageScreen.h"
#include "selection/ClassificationViews.h"
#include "selection/CrossFilters.h"

#include <array>
#include <memory>

namespace Ui {
class frmIndicators;
}

namespace tessaro {

class KeyedList;
class KeyedTree;

/// Stage 0: indicators, or combinations of indicator, unit and subpopulation, through seven classifications.
class frmIndicators final : public StageScreen {
    Q_OBJECT

  public:
    explicit frmIndicators(QWidget* parent = nullptr);
    ~frmIndicators() override;

    [[nodiscard]] QString FormName() const override { return QStringLiteral("frmIndicators"); }
    void Enter() override;
    void SelectAll() override;
    void Copy() override;
    void Find() override;
    void Print() override;
    [[nodiscard]] bool CanPrint() const override { return true; }
    void Refresh() override;
    void SetFormCaptions() override;
    [[nodiscard]] QString SelectionSummary() const override;

    /// Number of items in lstSelected.
    [[nodiscard]] int SelectedCount() const;
    [[nodiscard]] int CurrentView() const { return view_; }

    /// Fills the first level of the trees of all views that are shown.
    void LoadTreeViews();
    void ShowThisIndicatorOption(int view);
    /// A click on a node: loads its children and shows its indicators.
    void FillClassification(int view, const QString& nodeKey);
    void FillAvailableIndicators(const QString& from, const QString& where, bool showNotFound);
    void AddSelectedIndicators(bool all);
    void RemoveSelectedIndicators(bool all);
    void SortSelIndsBySector();
    /// Fills the Available list with the indicators of the view that have the text in their names.
    void SeacrhIndStrings(const QString& text);
    /// Shows how the highlighted selected indicators are classified.
    void DisplayINDDetails();
    void cmdAllFilter_Click();
    void cmdAvlFilter_Click();

  private:
    void Form_Load();
    void MakeTrees();
    void MakeOptions();
    void ConnectControls();
    void SetColumns();
    void ShowKept(bool written);
    void AddOneIndicator(const QString& key);
    /// Runs an automatic selection and shows its result.
    void RunFilter(const selection::IndicatorFilter& filter);
    [[nodiscard]] QStringList PathOf(int view, const QString& nodeKey) const;
    void ShowInformationOf(const KeyedList& list);
    void ShowInformationOfNode();
    [[nodiscard]] QString NodeInformationCode() const;
    void ShowAvailablePopup(const QPoint& place);
    void ShowSelectedPopup(const QPoint& place);
    void ShowTreePopup(const QPoint& place);
    [[nodiscard]] KeyedTree* Tree(int view) const { return trees_[static_cast<std::size_t>(view)]; }
    [[nodiscard]] KeyedList& lstAvailable() const;
    [[nodiscard]] KeyedList& lstSelected() const;

    std::unique_ptr<Ui::frmIndicators> ui_;
    std::array<KeyedTree*, selection::kClassificationCount> trees_{}; ///< null for a view that isn't shown
    std::array<int, selection::kClassificationCount> counters_{};
    int view_ = 0;
};

} // namespace tessaro
