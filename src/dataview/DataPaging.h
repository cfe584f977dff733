#pragma once

#include "dataview/GridModel.h"
#include "dataview/PageBuilder.h"
#include "dataview/PageQuery.h"

#include <QString>

#include <functional>
#include <vector>

namespace tessaro {

/// The pump between the identifier query and the grid: pages of 50 rows, one a tick, from the top of the result or,
/// after a jump to its end, from the bottom upward. Holds no timer; it says when one is wanted.
class DataPaging final {
  public:
    static constexpr int kPageSize = 50;
    static constexpr int kInterval = 100; ///< milliseconds between two ticks

    /// Fills `grid`, which must outlive it.
    explicit DataPaging(GridModel& grid);
    ~DataPaging();
    DataPaging(const DataPaging&) = delete;
    DataPaging& operator=(const DataPaging&) = delete;

    /// Called with True when ticks are wanted from now on, with False when not.
    std::function<void(bool)> onTimer;
    /// Told how many rows have been passed while CountRows counts them, which may take seconds. Must not let events
    /// through.
    std::function<void(qint64)> onCounting;

    /// Resets the paging state and opens the statement. False when it failed or gives no rows (message "031" then).
    bool StartPaging(const QString& sql);
    /// One tick of the timer: the next page of the stream that is served, or the end of the load.
    void PageTick();
    /// Timer off; with `removeLast` the spare last row goes and the load counts as complete.
    void EndPaging(bool removeLast);
    /// Ends the load and closes the query without a change to the grid.
    void Close();

    /// Ctrl+End: counts the rows and starts the bottom stream. False when that stream has begun already, or the load is
    /// complete, so that the key has its ordinary meaning.
    bool LoadFromEnd();
    /// Ctrl+Home: serves the top stream again, unless the load is complete.
    void LoadFromStart();
    /// Ends a running load at once: the rows are counted, and those that weren't delivered yet are made when they are
    /// looked at.
    void FinishAtOnce();
    /// Puts rows of Data behind the last row of the grid, after FinishAtOnce.
    void AppendRows(const std::vector<qint64>& rowNIds);
    /// Number of rows of the query, counted now when it isn't known.
    qint64 CountRows();
    /// The same, with `walked` told how far it is; events may be let through there. False when it has stopped the
    /// count.
    [[nodiscard]] bool CountRowsUnless(const PageQuery::Walked& walked);
    /// Rows of the query (from 0) with their texts, whether or not they stand in the grid; fewer at the end, and when
    /// they can't be read.
    [[nodiscard]] std::vector<GridRow> ReadRows(qint64 first, int count);
    /// The RowNId of a row of the query (from 0) that has been delivered or counted; nothing for a row without a value.
    [[nodiscard]] std::optional<qint64> RowNIdOf(qint64 row) const { return pageQuery_.RowNIdOf(row); }
    /// CellKey of a row of the query that is a cell without a row in Data; nothing for others.
    [[nodiscard]] std::optional<QString> CellWithoutValue(qint64 row) const { return pageQuery_.CellWithoutValue(row); }
    /// Ends a running load where it is, at the user's wish: no page comes of itself until LoadFromEnd, LoadFromStart or
    /// another query. Only NextPage goes on.
    void Stop();
    [[nodiscard]] bool isStopped() const { return stopped_; }
    /// One further page of a load that was stopped.
    void NextPage();
    /// The timer while something else has the hands full (a scroll, another stage), and again after it.
    void PauseTimer();
    void ResumeTimer();
    /// The stage is left: timer off, statement let go of. ResumeTimer takes the load up again.
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
    bool unreadable_ = false; ///< the last page came short of rows that were counted
    bool loadingFromTop_ = false;
    bool loadingFromBottom_ = false;
    bool bottomStarted_ = false;
    bool pagingComplete_ = false;
    bool stopped_ = false;
    bool timerOn_ = false;
};

} // namespace tessaro
