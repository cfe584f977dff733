#include "dataview/PageQuery.h"

#include "dataview/GridQuery.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "view/DataFilters.h"
#include "view/InView.h"

#include <QStringList>

#include <algorithm>
#include <limits>

namespace tessaro {

namespace {

// Places of the identifiers in the statement.
enum Field : std::size_t { TimePeriodNId, AreaNId, IUSNId, Datavalue, SourceNId, FootnoteNId, RowNId };

constexpr qint64 kWalkReport = 65536;

qint32 Narrow(const jet::Value& value) {
    return static_cast<qint32>(value.toInteger());
}

bool FitsInFour(const jet::Value& rowNId) {
    return !rowNId.isNull() && rowNId.toInteger() >= 0 && rowNId.toInteger() <= std::numeric_limits<qint32>::max();
}

IdentifierRow RowOf(const jet::Recordset& rows) {
    const jet::Value rowNId = rows.Get(RowNId);
    return {Narrow(rows.Get(TimePeriodNId)),
            Narrow(rows.Get(AreaNId)),
            Narrow(rows.Get(IUSNId)),
            Narrow(rows.Get(SourceNId)),
            rows.Get(FootnoteNId).toInteger(),
            rowNId.toInteger(),
            !rowNId.isNull(),
            rows.Get(Datavalue).toText()};
}

} // namespace

bool PageQuery::Open(const QString& sql) {
    Close();
    sql_ = sql;
    return OpenRows() && !finished_;
}

bool PageQuery::OpenRows() {
    Records opened = Select(sql_, jet::CursorType::ForwardOnly);
    open_ = opened.isOpen();
    rows_ = std::move(opened.rows());
    finished_ = !open_ || rows_.atEnd();
    return open_;
}

void PageQuery::Close() {
    rows_.Close();
    open_ = false;
    finished_ = false;
    std::deque<qint32>().swap(passed_);
    std::vector<IdentifierRow>().swap(whole_);
    again_.clear();
    same_ = known_ = 0;
}

void PageQuery::Suspend() {
    if (!open_ || finished_ || !rows_.isOpen()) return;
    rows_.Close();
    again_.clear();
    same_ = 0;
    known_ = passed_.size();
}

bool PageQuery::AtEnd() {
    ErrorTrap trap("AtEnd");
    if (!trap.Try([&] { PassOver(); })) GiveUp();
    return finished_;
}

// Runs a suspended statement again, up to the first row that was not given before.
void PageQuery::PassOver() {
    if (!open_ || finished_) return;
    if (!rows_.isOpen()) {
        OpenRows();
        open_ = true; // rows already given stay readable even when the statement fails now
    }
    while (!finished_ && PassSame()) {
        rows_.MoveNext();
        finished_ = rows_.atEnd();
    }
    if (finished_) rows_.Close();
}

// True when the row was given before. Nearly always the rows come as they came then; only from the first other one on
// each has to be looked up.
bool PageQuery::PassSame() {
    if (same_ == known_ && again_.empty()) return false;
    const qint64 key = KeyOf(RowOf(rows_));
    if (same_ < known_ && key == KeyOfPassed(same_)) {
        ++same_;
        return true;
    }
    for (; same_ < known_; ++same_)
        ++again_[KeyOfPassed(same_)];
    const auto known = again_.find(key);
    if (known == again_.end()) return false;
    if (--known->second == 0) again_.erase(known);
    return true;
}

// Reads up to `count` rows of which only RowNId is wanted; gives how many. It stops early at the end and before a row
// whose RowNId can't be kept in 31 bits, which Step reads, as it does while rows that were given before may be among
// the others.
qint64 PageQuery::Pass(qint64 count) {
    PassOver();
    if (!open_ || finished_ || !again_.empty()) return 0;
    std::vector<std::int32_t> numbers;
    numbers.reserve(static_cast<std::size_t>(std::min(count, kWalkReport)));
    const qint64 passed = rows_.TakeNumbers(RowNId, std::numeric_limits<qint32>::max(), count, numbers);
    passed_.insert(passed_.end(), numbers.begin(), numbers.end());
    finished_ = rows_.atEnd();
    if (finished_) rows_.Close();
    return passed;
}

// Reads one row; `wanted` receives it when the caller needs more than its number.
bool PageQuery::Step(IdentifierRow* wanted) {
    PassOver();
    if (!open_ || finished_) return false;
    if (const jet::Value rowNId = rows_.Get(RowNId); wanted == nullptr && FitsInFour(rowNId)) {
        passed_.push_back(Narrow(rowNId));
    } else {
        IdentifierRow row = RowOf(rows_);
        Keep(row);
        if (wanted != nullptr) *wanted = std::move(row);
    }
    rows_.MoveNext();
    finished_ = rows_.atEnd();
    if (finished_) rows_.Close();
    return true;
}

void PageQuery::Keep(const IdentifierRow& row) {
    if (row.hasRowNId && FitsInFour(jet::Value(static_cast<std::int64_t>(row.rowNId)))) {
        passed_.push_back(static_cast<qint32>(row.rowNId));
        return;
    }
    passed_.push_back(~static_cast<qint32>(whole_.size()));
    whole_.push_back(row);
}

// A number that tells rows apart when the statement is run again: RowNId, or a negative hash of the other identifiers.
qint64 PageQuery::KeyOf(const IdentifierRow& row) {
    if (row.hasRowNId && row.rowNId >= 0) return row.rowNId;
    const std::size_t mixed = qHashMulti(0, row.timePeriodNId, row.areaNId, row.iusNId, row.sourceNId, row.rowNId);
    return std::numeric_limits<qint64>::min() | static_cast<qint64>(mixed);
}

qint64 PageQuery::KeyOfPassed(std::size_t row) const {
    const qint32 number = passed_[row];
    return number >= 0 ? number : KeyOf(whole_[static_cast<std::size_t>(~number)]);
}

std::vector<IdentifierRow> PageQuery::GetRows(qint64 first, int count) {
    std::vector<IdentifierRow> page;
    if (!open_ || first < 0 || count <= 0) return page;
    ErrorTrap trap("GetRows");
    const bool done = trap.Try([&] {
        while (RowsPassed() < first && (Pass(std::min(first - RowsPassed(), kWalkReport)) > 0 || Step(nullptr))) {
        }
        const qint64 known = std::min<qint64>(count, RowsPassed() - first);
        if (known > 0) page = Reread(first, static_cast<int>(known));
        IdentifierRow row;
        while (page.size() < static_cast<std::size_t>(count) && Step(&row))
            page.push_back(std::move(row));
    });
    if (!done) GiveUp();
    return page;
}

// A statement that fails while it is read gives no further rows. Tried again, it would fail at every tick of the timer.
void PageQuery::GiveUp() {
    rows_.Close();
    finished_ = true;
}

std::vector<IdentifierRow> PageQuery::Reread(qint64 first, int count) const {
    QStringList numbers;
    for (qint64 place = first; place < first + count; ++place) {
        const qint32 number = passed_[static_cast<std::size_t>(place)];
        if (number >= 0) numbers << QString::number(number);
    }
    std::unordered_map<qint64, IdentifierRow> read;
    if (!numbers.isEmpty()) {
        Records records = Select(RereadStatement(numbers.join(QLatin1Char(','))));
        for (; !records.atEnd(); records.MoveNext()) {
            IdentifierRow row = RowOf(records.rows());
            read.emplace(row.rowNId, std::move(row));
        }
    }
    std::vector<IdentifierRow> page;
    page.reserve(static_cast<std::size_t>(count));
    for (qint64 place = first; place < first + count; ++place) {
        const qint32 number = passed_[static_cast<std::size_t>(place)];
        page.push_back(number >= 0 ? read[number] : whole_[static_cast<std::size_t>(~number)]);
    }
    return page;
}

const IdentifierRow* PageQuery::WholeRow(qint64 row) const {
    if (row < 0 || row >= RowsPassed()) return nullptr;
    const qint32 number = passed_[static_cast<std::size_t>(row)];
    return number < 0 ? &whole_[static_cast<std::size_t>(~number)] : nullptr;
}

std::optional<qint64> PageQuery::RowNIdOf(qint64 row) const {
    if (row < 0 || row >= RowsPassed()) return std::nullopt;
    if (const IdentifierRow* whole = WholeRow(row))
        return whole->hasRowNId ? std::optional(whole->rowNId) : std::nullopt;
    return passed_[static_cast<std::size_t>(row)];
}

std::optional<QString> PageQuery::CellWithoutValue(qint64 row) const {
    const IdentifierRow* whole = WholeRow(row);
    if (whole == nullptr || whole->hasRowNId) return std::nullopt;
    return CellKey(whole->timePeriodNId, whole->areaNId, whole->iusNId, whole->sourceNId);
}

void PageQuery::Append(const std::vector<qint64>& rowNIds) {
    for (const qint64 rowNId : rowNIds) {
        IdentifierRow row;
        row.rowNId = rowNId;
        row.hasRowNId = true;
        Keep(row);
    }
}

bool PageQuery::WalkOn(qint64 count) {
    ErrorTrap trap("WalkOn");
    const qint64 target = RowsPassed() + count;
    const bool done = trap.Try([&] {
        while (RowsPassed() < target && (Pass(target - RowsPassed()) > 0 || Step(nullptr))) {
        }
    });
    if (!done) GiveUp();
    return finished_;
}

std::optional<qint64> PageQuery::RecordCount(const Walked& walked) {
    ErrorTrap trap("RecordCount");
    bool stopped = false;
    const bool done = trap.Try([&] {
        qint64 report = RowsPassed() + kWalkReport;
        while (!stopped && (Pass(kWalkReport) > 0 || Step(nullptr))) {
            if (!walked || RowsPassed() < report) continue;
            stopped = !walked(RowsPassed());
            report = RowsPassed() + kWalkReport;
        }
    });
    if (!done) GiveUp();
    return stopped ? std::nullopt : std::optional(RowsPassed());
}

} // namespace tessaro
