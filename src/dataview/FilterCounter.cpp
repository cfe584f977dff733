#include "dataview/FilterCounter.h"

#include "dataview/GridQuery.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/StatementWatch.h"
#include "view/InView.h"

#include <algorithm>

namespace tessaro {

namespace {

// Places of the identifiers in the grid's statements.
enum Field : std::size_t { TimePeriodNId, AreaNId, IUSNId, Datavalue, SourceNId };

qint32 Number(const jet::Recordset& row, std::size_t field) {
    return static_cast<qint32>(row.Get(field).toInteger());
}

} // namespace

void FilterCounter::Start() {
    ErrorTrap trap("FilterCounter");
    *this = FilterCounter();
    if (AskScans()) return;
    rows_ = std::move(Select(RequeryStatement({}, {}), jet::CursorType::ForwardOnly).rows());
    if (!rows_.isOpen() || rows_.atEnd()) Finish();
}

bool FilterCounter::AskScans() {
    scans_ = ScanCounts::Begin();
    if (!scans_) return false;
    rows_.Close();
    all_ = {scans_->Rows(), scans_->Blank(), {}};
    decltype(cells_)().swap(cells_);
    complete_ = true;
    return true;
}

bool FilterCounter::ReadSome(int rows) {
    if (complete_) return false;
    ErrorTrap trap("FilterCounter");
    if (all_.rows >= nextAsking_) {
        nextAsking_ *= 2;
        if (AskScans()) return false;
    }
    const bool read = trap.Try([&] {
        for (int n = 0; n < rows && !rows_.atEnd(); ++n, rows_.MoveNext()) {
            Take(all_, rows_);
            cells_.push_back({Number(rows_, IUSNId), Number(rows_, SourceNId), Number(rows_, AreaNId),
                              Number(rows_, TimePeriodNId)});
        }
    });
    if (!read || rows_.atEnd()) Finish();
    return !complete_;
}

void FilterCounter::Take(Values& values, const jet::Recordset& row) const {
    ++values.rows;
    const std::string text = row.Get(Datavalue).toText();
    if (text.empty()) ++values.blank;
    if (const auto number = jet::ReadNumber(text)) values.numbers.push_back(*number);
}

void FilterCounter::Finish() {
    rows_.Close();
    std::ranges::sort(all_.numbers);
    std::ranges::sort(cells_);
    const auto doubles = std::ranges::unique(cells_);
    const auto withValue = static_cast<qint64>(cells_.size() - doubles.size());
    missingCells_ = std::max<qint64>(SelectedCells() - withValue, 0);
    decltype(cells_)().swap(cells_);
    complete_ = true;
}

bool FilterCounter::ReadMostRecent() {
    if (mostRecent_) return true;
    ErrorTrap trap("GenerateMostRecentData");
    const StatementWatch watch;
    if (!MakeMostRecentTables()) return false;
    Records found = Select(MostRecentStatement(), jet::CursorType::ForwardOnly);
    if (!found.isOpen()) return false;
    Values values;
    const bool read = trap.Try([&] {
        for (; !found.atEnd(); found.MoveNext())
            Take(values, found.rows());
    });
    std::ranges::sort(values.numbers);
    if (read) mostRecent_ = std::move(values);
    return read;
}

std::optional<std::pair<double, double>> FilterCounter::Extent() const {
    if (scans_) return scans_->Extent();
    if (!complete_ || all_.numbers.empty()) return std::nullopt;
    return std::pair(all_.numbers.front(), all_.numbers.back());
}

qint64 FilterCounter::Values::Within(const DataFilters& filters) const {
    if (!filters.ValueRangeOn) return rows;
    const auto first = std::ranges::lower_bound(numbers, filters.DataValueFrom);
    const auto behind = std::ranges::upper_bound(numbers, filters.DataValueTo);
    return std::max<qint64>(behind - first, 0);
}

// How many rows of Data without a value a filter hides and the missing-data filter shows again as empty cells: with a
// value range all of them; with most recent data, those that aren't the most recent.
qint64 FilterCounter::RowsWithoutValueLeft(const DataFilters& filters) const {
    if (filters.ValueRangeOn) return all_.blank;
    return filters.MostRecentOn ? all_.blank - mostRecent_->blank : 0;
}

qint64 FilterCounter::MissingCells() const {
    return scans_ ? std::max<qint64>(SelectedCells() - scans_->Cells(), 0) : missingCells_;
}

qint64 FilterCounter::ValuesWithin(const DataFilters& filters) const {
    if (filters.MostRecentOn) return mostRecent_->Within(filters);
    return scans_ ? scans_->Within(filters) : all_.Within(filters);
}

std::optional<qint64> FilterCounter::RowsLeft(const DataFilters& filters) const {
    if (!complete_ || (filters.MostRecentOn && !mostRecent_)) return std::nullopt;
    return ValuesWithin(filters) + (filters.MissingDataOn ? MissingCells() + RowsWithoutValueLeft(filters) : 0);
}

} // namespace tessaro
