#pragma once

#include "controls/StageScreen.h"

#include <memory>

namespace Ui {
class frmTime;
}

namespace tessaro {

struct KeyedItem;
class KeyedList;

/// Stage 1: the periods of the database and the chosen ones.
class frmTime final : public StageScreen {
    Q_OBJECT

  public:
    explicit frmTime(QWidget* parent = nullptr);
    ~frmTime() override;

    [[nodiscard]] QString FormName() const override { return QStringLiteral("frmTime"); }
    void Enter() override;
    void SelectAll() override;
    void Copy() override;
    void Find() override;
    void Print() override;
    [[nodiscard]] bool CanPrint() const override { return true; }
    void Refresh() override { FillAvailablePeriods(); }
    void SetFormCaptions() override;
    [[nodiscard]] QString SelectionSummary() const override;

    void FillAvailablePeriods();
    /// Adds one period to the list and the table; one that is there already stays as it is.
    void AddThisPeriod(const QString& key, const QString& text);
    void AddSelectedPeriods(bool all);
    void RemoveSelectedPeriods(bool all);
    /// Shows how many data rows the highlighted selected period has.
    void ShowPeriodDetails();
    void cmdAllFilter_Click();

  private:
    void Form_Load();
    void ConnectControls();
    void ShowKept(bool written);
    void AddOnePeriod(const QString& key);
    void ShowAvailablePopup(const QPoint& place);
    void ShowSelectedPopup(const QPoint& place);
    void AddPeriods(const std::vector<KeyedItem>& periods);
    [[nodiscard]] KeyedList& lstAvailable() const;
    [[nodiscard]] KeyedList& lstSelected() const;

    std::unique_ptr<Ui::frmTime> ui_;
};

} // namespace tessaro
