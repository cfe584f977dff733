#pragma once

#include "dataview/GridModel.h"
#include "dataview/PageBuilder.h"
#include "dataview/PageQuery.h"

#include <QString>

#include <functional>
#include <vector>

namespace tessaro {

/// Loads the rows of a query into the grid while the user works: a page of 50 rows at each tick of a timer, from the
/// first row downwards or, after a jump to the end, from the last row upwards. The timer belongs to the caller, who is
/// told when to start and stop it.
class DataPaging final {
  public:
    static constexpr int kPageSize = 50;
    static constexpr int kInterval = 100; ///< milliseconds between two ticks

    /// Fills `grid`, which must outlive it.
    explicit DataPaging(GridModel& grid);
    ~DataPaging();
    DataPaging(const DataPaging&) = delete;
    DataPaging& operator=(const DataPaging&) = delete;

    /// Called with True to start the timer that calls PageTick, with False to stop it.
    std::function<void(bool)> onTimer;
    /// Called with the number of rows counted so far while CountRows runs, which may take seconds. It must not process
    /// events.
    std::function<void(qint64)> onCounting;

    /// Resets the paging state and opens the statement. False when it failed or gives no rows (message "031" then).
    bool StartPaging(const QString& sql);
    /// One tick of the timer: loads the next page (from the top or from the bottom), or ends the load.
    void PageTick();
    /// Stops the timer. With `removeLast` the empty last row of the grid is removed and the load counts as complete.
    void EndPaging(bool removeLast);
    /// Ends the load and closes the query without a change to the grid.
    void Close();

    /// Ctrl+End: counts the rows and loads from the last one upwards. False when that was begun before or the load is
    /// complete; the key then only moves the cursor.
    bool LoadFromEnd();
    /// Ctrl+Home: goes on loading from the top, unless the load is complete.
    void LoadFromStart();
    /// Ends a running load at once: counts the rows and gives the grid all of them; the texts of those that were not
    /// loaded are read when they are shown.
    void FinishAtOnce();
    /// Finishes the load (FinishAtOnce) and appends rows of Data, given by RowNId, to the grid.
    void AppendRows(const std::vector<qint64>& rowNIds);
    /// Number of rows of the query, counted now when it isn't known.
    qint64 CountRows();
    /// The same with progress: `walked` is called with the number of rows so far, may process events, and stops the
    /// count by returning False. False when it was stopped.
    [[nodiscard]] bool CountRowsUnless(const PageQuery::Walked& walked);
    /// Rows of the query (from 0) with their texts, whether or not they stand in the grid; fewer at the end, and when
    /// they can't be read.
    [[nodiscard]] std::vector<GridRow> ReadRows(qint64 first, int count);
    /// The RowNId of a row of the query (from 0) that has been delivered or counted; nothing for a row without a value.
    [[nodiscard]] std::optional<qint64> RowNIdOf(qint64 row) const { return pageQuery_.RowNIdOf(row); }
    /// CellKey of a row of the query that is a cell without a row in Data; nothing for others.
    [[nodiscard]] std::optional<QString> CellWithoutValue(qint64 row) const { return pageQuery_.CellWithoutValue(row); }
    /// The user stops a running load: no further page is loaded by the timer until LoadFromEnd, LoadFromStart or
    /// another query. NextPage still loads single pages.
    void Stop();
    [[nodiscard]] bool isStopped() const { return stopped_; }
    /// One further page of a load that was stopped.
    void NextPage();
    /// Stop the timer for a while (while the user scrolls, or a file is written), and start it again if a load is
    /// running.
    void PauseTimer();
    void ResumeTimer();
    /// For leaving the stage: stops the timer and closes the statement, so that the tables are free. ResumeTimer goes
    /// on with the load.
    void Suspend();

    [[nodiscard]] qint64 RowsLoaded() const { return rowsLoaded_; }
    [[nodiscard]] qint64 NextFromTop() const { return nextFromTop_; }
    [[nodiscard]] qint64 TakenFromBottom() const { return takenFromBottom_; }
    [[nodiscard]] qint64 TotalRows() const { return totalRows_; } ///< only while TotalKnown or PagingComplete
    [[nodiscard]] bool TotalKnown() const { return totalKnown_; }
    [[nodiscard]] bool LoadingFromTop() const { return loadingFromTop_; }
    [[nodiscard]] bool LoadingFromBottom() const { return loadingFromBottom_; }
    [[nodiscard]] bool BottomStarted() const { return bottomStarted_; }
    [[nodiscard]] bool PagingComplete() const { return pagingComplete_; }
    [[nodiscard]] bool isRunning() const { return timerOn_; }
    [[nodiscard]] int lookups() const { return builder_.lookups(); }

  private:
    bool CreateNumberIDRecordset(const QString& sql);
    void TopTick();
    void BottomTick();
    std::vector<GridRow> CreateDataPage(qint64 first, int rowCount);
    void LoadPageIntoGrid(std::vector<GridRow> page);
    [[nodiscard]] int SizeOfNextPage() const;
    void SetTimer(bool on);
    void CountOn();

    GridModel& grid_;
    PageQuery pageQuery_;
    PageBuilder builder_;
    qint64 rowsLoaded_ = 0;
    qint64 nextFromTop_ = 1; ///< counted from 1
    qint64 takenFromBottom_ = 0;
    qint64 totalRows_ = 0;
    bool totalKnown_ = false;
    bool unreadable_ = false; ///< the last page had fewer rows than were counted: they can't be read any more
    bool loadingFromTop_ = false;
    bool loadingFromBottom_ = false;
    bool bottomStarted_ = false;
    bool pagingComplete_ = false;
    bool stopped_ = false;
    bool timerOn_ = false;
};

} // namespace tessaro
