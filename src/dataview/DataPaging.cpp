#include "dataview/DataPaging.h"

#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"

#include <algorithm>

namespace tessaro {

DataPaging::DataPaging(GridModel& grid) : grid_(grid) {
    grid_.SetFetch([this](qint64 first, int count) { return ReadRows(first, count); });
}

DataPaging::~DataPaging() {
    grid_.SetFetch({});
}

bool DataPaging::StartPaging(const QString& sql) {
    ErrorTrap trap("StartPaging");
    Close();
    rowsLoaded_ = 0;
    nextFromTop_ = 1;
    takenFromBottom_ = 0;
    totalRows_ = 0;
    totalKnown_ = bottomStarted_ = pagingComplete_ = stopped_ = false;
    loadingFromTop_ = true;
    loadingFromBottom_ = false;
    builder_.Reset();
    if (!CreateNumberIDRecordset(sql)) {
        loadingFromTop_ = false;
        return false;
    }
    SetTimer(true);
    return true;
}

bool DataPaging::CreateNumberIDRecordset(const QString& sql) {
    ErrorTrap trap("CreateNumberIDRecordset");
    if (pageQuery_.Open(sql)) return true;
    if (pageQuery_.isOpen()) {
        TheFrame().EndProgress();
        ShowMessage(QStringLiteral("031"));
    }
    pageQuery_.Close();
    return false;
}

void DataPaging::PageTick() {
    if (loadingFromTop_) {
        TopTick();
    } else if (loadingFromBottom_) {
        BottomTick();
    }
    if (!pagingComplete_ && !totalKnown_) CountOn();
}

// Beside the load the rows are counted, some thousands a tick, so that the screen can tell how many there will be. The
// first page is shown before the counting begins.
void DataPaging::CountOn() {
    constexpr qint64 kSlice = 8192;
    if (rowsLoaded_ <= kPageSize || !pageQuery_.isOpen() || !pageQuery_.WalkOn(kSlice)) return;
    totalRows_ = pageQuery_.RowsPassed();
    totalKnown_ = true;
}

void DataPaging::Stop() {
    if (pagingComplete_ || (!loadingFromTop_ && !loadingFromBottom_)) return;
    stopped_ = true;
    SetTimer(false);
}

void DataPaging::NextPage() {
    if (stopped_ && !pagingComplete_) PageTick();
}

int DataPaging::SizeOfNextPage() const {
    return totalKnown_ ? static_cast<int>(std::min<qint64>(kPageSize, totalRows_ - rowsLoaded_)) : kPageSize;
}

void DataPaging::TopTick() {
    const int pageSize = SizeOfNextPage();
    if (totalKnown_ ? rowsLoaded_ >= totalRows_ : pageQuery_.AtEnd()) {
        EndPaging(true);
        return;
    }
    LoadPageIntoGrid(CreateDataPage(nextFromTop_ - 1, pageSize));
    nextFromTop_ += pageSize;
    if (unreadable_) FinishAtOnce();
}

void DataPaging::BottomTick() {
    const int pageSize = SizeOfNextPage();
    if (pageSize <= 0) {
        EndPaging(true);
        return;
    }
    LoadPageIntoGrid(CreateDataPage(totalRows_ - takenFromBottom_ - pageSize, pageSize));
    takenFromBottom_ += pageSize;
    bottomStarted_ = true;
    if (unreadable_) FinishAtOnce();
}

std::vector<GridRow> DataPaging::CreateDataPage(qint64 first, int rowCount) {
    ErrorTrap trap("CreateDataPage");
    std::vector<GridRow> page;
    trap.Try([&] { page = builder_.CreateDataPage(pageQuery_.GetRows(first, rowCount)); });
    // Once the number of rows is known, a page with fewer rows (they can't be read any more) still counts as a full
    // one: its rows stay blank, and the load ends.
    unreadable_ = totalKnown_ && page.size() < static_cast<std::size_t>(rowCount);
    if (totalKnown_) page.resize(static_cast<std::size_t>(rowCount));
    rowsLoaded_ += static_cast<qint64>(page.size());
    return page;
}

// Rows are placed by their number in the query, which doesn't change when rows are removed from the grid meanwhile.
void DataPaging::LoadPageIntoGrid(std::vector<GridRow> page) {
    ErrorTrap trap("LoadPageIntoGrid");
    const int length = static_cast<int>(page.size());
    if (length == 0) return;
    const bool gridHasAllRows = totalKnown_ && bottomStarted_;
    qint64 target = 0;
    if (loadingFromTop_) {
        target = nextFromTop_ - 1;
        if (!gridHasAllRows) grid_.InsertRows(length);
    } else {
        target = totalRows_ - takenFromBottom_ - length;
        if (!bottomStarted_) grid_.InsertRows(static_cast<int>(totalRows_) - grid_.QueryRows());
    }
    grid_.PutBlock(target, std::move(page));
}

void DataPaging::EndPaging(bool removeLast) {
    SetTimer(false);
    if (!removeLast) return;
    grid_.DeleteSpareRow();
    if (!pageQuery_.isOpen()) return;
    if (!totalKnown_) totalRows_ = rowsLoaded_;
    pagingComplete_ = true;
    loadingFromTop_ = loadingFromBottom_ = false;
}

void DataPaging::Close() {
    SetTimer(false);
    loadingFromTop_ = loadingFromBottom_ = false;
    pageQuery_.Close();
}

bool DataPaging::LoadFromEnd() {
    if (pagingComplete_ || !pageQuery_.isOpen()) return false;
    stopped_ = false;
    SetTimer(false);
    if (bottomStarted_) {
        SetTimer(true);
        return false;
    }
    CountRows();
    loadingFromTop_ = false;
    loadingFromBottom_ = true;
    SetTimer(true);
    return true;
}

qint64 DataPaging::CountRows() {
    static_cast<void>(CountRowsUnless([this](qint64 rows) {
        if (onCounting) onCounting(rows);
        return true;
    }));
    return totalRows_;
}

bool DataPaging::CountRowsUnless(const PageQuery::Walked& walked) {
    if (pagingComplete_ || totalKnown_ || !pageQuery_.isOpen()) return true;
    const std::optional<qint64> rows = pageQuery_.RecordCount(walked);
    if (!rows) return false;
    totalRows_ = *rows;
    totalKnown_ = true; // from now on the number of rows ends the load, since the query stands at its end
    return true;
}

std::vector<GridRow> DataPaging::ReadRows(qint64 first, int count) {
    return builder_.CreateDataPage(pageQuery_.GetRows(first, count));
}

void DataPaging::FinishAtOnce() {
    if (pagingComplete_ || !pageQuery_.isOpen()) return;
    SetTimer(false);
    CountRows();
    grid_.InsertRows(static_cast<int>(totalRows_) - grid_.QueryRows());
    rowsLoaded_ = totalRows_;
    EndPaging(true);
}

void DataPaging::AppendRows(const std::vector<qint64>& rowNIds) {
    FinishAtOnce();
    if (!pageQuery_.isOpen()) return;
    pageQuery_.Append(rowNIds);
    const auto count = static_cast<qint64>(rowNIds.size());
    totalRows_ += count;
    rowsLoaded_ += count;
    grid_.AppendRows(static_cast<int>(count));
}

void DataPaging::LoadFromStart() {
    if (pagingComplete_ || !pageQuery_.isOpen()) return;
    stopped_ = false;
    SetTimer(false);
    loadingFromTop_ = true;
    loadingFromBottom_ = false;
    SetTimer(true);
}

void DataPaging::PauseTimer() {
    SetTimer(false);
}

void DataPaging::ResumeTimer() {
    if (!stopped_ && !pagingComplete_ && (loadingFromTop_ || loadingFromBottom_)) SetTimer(true);
}

void DataPaging::Suspend() {
    SetTimer(false);
    pageQuery_.Suspend();
}

void DataPaging::SetTimer(bool on) {
    if (timerOn_ == on) return;
    timerOn_ = on;
    if (onTimer) onTimer(on);
}

} // namespace tessaro
