#pragma once

#include "controls/StageScreen.h"
#include "dataview/ViewExport.h"
#include "dataview/ViewRows.h"

#include <memory>
#include <vector>

namespace Ui {
class frmData;
}

namespace tessaro {

class ActionPanel;
class DataPanel;
class DataTable;
class NoteBar;
class SortPanel;
class StatisticsTable;
class TakeOutPanel;

/// Stage 3: one row per value inside the selection, in a grid that fills page by page while it can be read already, and
/// the options of the strip beside it. The form joins its parts: ViewRows knows which rows there are, GridTable shows
/// them, ViewExport gives them away, and each option has a panel.
class frmData final : public StageScreen {
    Q_OBJECT

  public:
    explicit frmData(QWidget* parent = nullptr);
    ~frmData() override;

    [[nodiscard]] QString FormName() const override { return QStringLiteral("frmData"); }
    /// Rebuilds the query when the selection has changed, which lowers SelectionChanged; otherwise a load that was
    /// interrupted goes on.
    void Enter() override;
    void Leave() override;
    void SelectAll() override;
    void Copy() override;
    void Find() override;
    void Filter() override { cmdFilters_Click(); }
    void Refresh() override;
    /// Ends a running load where it is; scrolling to its end brings single pages, Refresh a new one.
    void Stop() override;
    [[nodiscard]] bool CanStop() const override { return rows_->Paging().isRunning(); }
    void Print() override;
    void SaveAs() override;
    [[nodiscard]] bool CanPrint() const override { return true; }
    [[nodiscard]] bool CanSaveAs() const override { return true; }
    [[nodiscard]] bool MayKeep() override { return MayLeaveOption(); }
    void SetFormCaptions() override;
    /// Filters, order, what was taken out and rows removed stay; the rows are read again when the stage is entered.
    void TextsChanged() override { textsChanged_ = true; }
    [[nodiscard]] QString SelectionSummary() const override;

    /// The full rebuild after a change of selection. False when a stage has nothing selected or no row matches; the
    /// message has been shown then.
    bool MakeQryForTheGrid();
    /// Shows the panel of an option of the strip (0 view … 7 present), unless the one that is shown must not be left.
    void ShowThisDataOption(int option);
    /// Sorts by a column (1 to 8): in the grid when it is complete and short enough, otherwise by a new query.
    void SortByColumn(int column, bool ascending);

    /// Takes other row filters into use; rows taken out one by one come back.
    void SetFilters(const DataFilters& filters);
    [[nodiscard]] const DataFilters& Filters() const { return rows_->Filters(); }
    /// The filters of the view and the cells removed from it, for a favourite.
    [[nodiscard]] RowsInView ShownRows() const { return rows_->Shown(); }
    /// Writes all rows of the view by the kind of the name: .htm, .txt or .xls, with progress and a way to stop it.
    /// False after the message, or when the user stopped it; the old file stands then.
    bool SaveDataView(const QString& file) { return export_.Save(file); }
    /// Asks for the row filters.
    void cmdFilters_Click();

    /// Removes the highlighted rows from the grid; they stay out of the view until RestoreDeletedRows.
    void RemoveRowsFromDataGrid();
    /// Puts the rows removed one by one back, at the grid's end.
    void RestoreDeletedRows();

    [[nodiscard]] const GridModel& grid() const { return rows_->Grid(); }
    [[nodiscard]] const DataPaging& paging() const { return rows_->Paging(); }
    /// What the panels have taken out of the view.
    [[nodiscard]] const DataOptions& options() const { return rows_->TakenOut(); }
    /// What the most recent data hide because its source is not in view.
    [[nodiscard]] const HiddenByRecent& hiddenByRecent() const { return rows_->Hidden(); }

  protected:
    /// Passed on to what the option shows. No focus proxy, for Tab would pass over the strip of options.
    void focusInEvent(QFocusEvent* event) override;

  private:
    void ConnectEvents();
    void ReadTextsAnew();
    void ShowState();
    void ShowRows();
    void ShowCount();
    void ShowInformation(bool ofIndicator);
    void ViewDetails();
    void DataGrid_PopupMenu(const QPoint& place);
    /// What can't do without rows says so.
    bool NeedsRows();
    /// True when what stands in the grid may be saved or printed; an order that waits in its panel is applied before.
    bool MayGiveAway();
    void chkFilters_Click(bool on);
    // The panels of the options (frmDataPanels.cpp)
    void MakePanels();
    void MakeTakeOutPanels();
    void EnterOption(int option);
    [[nodiscard]] DataPanel* PanelShown() const;
    [[nodiscard]] DataTable* TableShown() const;
    bool MayLeaveOption();
    void GenerateDataTable();
    void ShowNote();
    void PutSourcesBack();
    void lstCalculate_DblClick(const QString& key);
    void picPresentationOptions_Click(const QString& key);

    std::unique_ptr<Ui::frmData> ui_;
    ViewRows* rows_;
    ViewExport export_;
    int option_ = 0;
    NoteBar* note_ = nullptr;
    StatisticsTable* DataStats_ = nullptr;
    std::vector<TakeOutPanel*> takeOutPanels_;
    SortPanel* sortPanel_ = nullptr;
    ActionPanel* calculatePanel_ = nullptr;
    ActionPanel* presentPanel_ = nullptr;
    bool textsChanged_ = false; ///< the rows show texts of another language
};

} // namespace tessaro
