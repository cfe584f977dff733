#pragma once

#include "controls/StageScreen.h"
#include "dataview/DataOptions.h"
#include "dataview/DataPaging.h"
#include "dataview/GridModel.h"
#include "dataview/HiddenByRecent.h"
#include "dataview/StatisticsModel.h"
#include "view/DataFilters.h"

#include <QButtonGroup>
#include <QTimer>

#include <memory>

namespace Ui {
class frmData;
}

namespace tessaro {

class ActionPanel;
class DataPanel;
class DataTable;
class NoteBar;
class SortPanel;
enum class ExportStopped;
class TakeOutPanel;

/// Stage 3: one row per value inside the selection, in a grid that fills page by page while it can be read already.
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
    [[nodiscard]] bool CanStop() const override { return paging_.isRunning(); }
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
    [[nodiscard]] const DataFilters& Filters() const { return filters_; }
    /// The filters of the view and the cells removed from it, for a favourite.
    [[nodiscard]] RowsInView ShownRows() const;
    /// Writes all rows of the view by the kind of the name: .htm, .txt or .xls, with progress and a way to stop it.
    /// False after the message, or when the user stopped it; the old file stands then.
    bool SaveDataView(const QString& file);
    /// Asks for the row filters.
    void cmdFilters_Click();

    /// Removes the highlighted rows from the grid; they stay out of the view until RestoreDeletedRows.
    void RemoveRowsFromDataGrid();
    /// Puts the rows removed one by one back, at the grid's end.
    void RestoreDeletedRows();

    [[nodiscard]] const GridModel& grid() const { return model_; }
    [[nodiscard]] const DataPaging& paging() const { return paging_; }
    /// What the panels have taken out of the view.
    [[nodiscard]] const DataOptions& options() const { return takenOut_; }
    /// What the most recent data hide because its source is not in view.
    [[nodiscard]] const HiddenByRecent& hiddenByRecent() const { return hidden_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void MakeGrid();
    void FitColumns();
    void MakeOptionStrip();
    void ConnectEvents();
    void InitializeDataViewVariables();
    bool StartPaging(const QString& sql);
    void ResetGrid();
    void tmrDataView_Timer();
    void DataGrid_HeadClick(int column);
    bool DataGrid_KeyDown(const QKeyEvent& event);
    void DataGrid_Scrolled();
    void DataGrid_PopupMenu(const QPoint& place);
    void ShowGridPreferences();
    void ShowRows();
    [[nodiscard]] qint64 RowsInGrid() const;
    [[nodiscard]] QString LoadText() const;
    void ShowOptionCaption();
    // Options (frmDataOptions.cpp)
    void MakePanels();
    /// Writes the file by its ending; the number of sheets (1 for text and page), 0 when it can't be written.
    /// Throws what ends it early.
    int WriteDataView(const QString& file, const char* textKey);
    static void TellStopped(ExportStopped reason);
    bool NeedsRows();
    bool MayLeaveOption();
    /// True when what stands in the grid may be saved or printed; an order that waits in its panel is applied before.
    bool MayGiveAway();
    void DrawStats();
    void FitStatsColumns();
    [[nodiscard]] DataPanel* PanelShown() const;
    void chkFilters_Click();
    void ShowFilterState();
    void ShowNote();
    void PutSourcesBack();
    // What the grid shows (frmDataRows.cpp)
    enum class Removed { ComeBack, StayOut };
    /// Reads the rows again, under the filters and in the order that are set. Rows removed one by one come back, as
    /// with every change of what the view shows, unless told otherwise.
    bool Requery(Removed removed = Removed::ComeBack);
    void ReadTextsAnew();
    void GenerateDataTable();
    bool GenerateMissingData_Change();
    bool GenerateDataValueRange_Change();
    bool GenerateMostRecentData();
    bool StartAnew();
    void ShowSortMark(int column, bool ascending);
    [[nodiscard]] std::vector<int> HighlightedRows() const;
    void RemoveRows(const std::vector<int>& rows);
    void ShowCount();
    /// Rows were removed from the view one by one and can be shown again.
    [[nodiscard]] bool HasHiddenRows() const;
    void ShowInformation(bool ofIndicator);
    void ViewDetails();
    bool DataStats_KeyDown(const QKeyEvent& event);
    void lstCalculate_DblClick(const QString& key);
    void picPresentationOptions_Click(const QString& key);

    std::unique_ptr<Ui::frmData> ui_;
    GridModel model_;
    DataPaging paging_;
    QTimer tmrDataView_;
    QButtonGroup options_;
    int option_ = 0;
    QString dataOrderBy_;
    DataFilters filters_;
    QStringList removedCells_; ///< CellKey of the cells without a value that were removed one by one
    DataOptions takenOut_;
    StatisticsModel statistics_;
    NoteBar* note_ = nullptr;
    HiddenByRecent hidden_;
    UnreadableValues unreadable_;
    DataTable* DataStats_ = nullptr;
    std::vector<TakeOutPanel*> takeOutPanels_;
    SortPanel* sortPanel_ = nullptr;
    ActionPanel* calculatePanel_ = nullptr;
    ActionPanel* presentPanel_ = nullptr;
    int sortedColumn_ = 0; ///< column with the sort mark; 0 for none
    bool sortedAscending_ = false;
    bool textsChanged_ = false; ///< the rows show texts of another language
};

} // namespace tessaro
