#include "jet/engine/Recordset.h"

#include "jet/engine/Criterion.h"
#include "jet/engine/ResultRows.h"

#include <algorithm>
#include <limits>

namespace jet {

Recordset::Recordset() = default;
Recordset::~Recordset() = default;
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::Recordset(std::unique_ptr<ResultRows> rows) : rows_(std::move(rows)) {}

bool Recordset::isOpen() const {
    return rows_ != nullptr;
}
void Recordset::Close() {
    rows_.reset();
}

bool Recordset::atEnd() const {
    return rows_ == nullptr || rows_->atEnd();
}

bool Recordset::atStart() const {
    return rows_ == nullptr || rows_->empty() || rows_->position < 0;
}

namespace {

void RefuseForwardOnly(CursorType cursor) {
    if (cursor == CursorType::ForwardOnly)
        throw Error(ErrorNumber::EngineError, "A forward-only result moves to the next row only.");
}

} // namespace

void Recordset::MoveFirst() {
    if (rows_ == nullptr) return;
    if (rows_->cursor != CursorType::ForwardOnly) return rows_->MoveTo(0);
    const std::shared_ptr<Engine> engine = rows_->origin.lock();
    if (engine == nullptr) throw Error(ErrorNumber::EngineError, "The connection is closed.");
    rows_ = std::make_unique<ResultRows>(engine, std::string(rows_->sql), CursorType::ForwardOnly);
}

void Recordset::MoveNext() {
    if (rows_ == nullptr || rows_->atEnd()) return;
    if (rows_->direct) return rows_->Fetch();
    rows_->MoveTo(rows_->position + 1);
}

void Recordset::MovePrevious() {
    if (rows_ == nullptr) return;
    RefuseForwardOnly(rows_->cursor);
    rows_->MoveTo(rows_->position - 1);
}

void Recordset::MoveLast() {
    if (rows_ == nullptr) return;
    RefuseForwardOnly(rows_->cursor);
    rows_->TakeAll();
    rows_->MoveTo(static_cast<std::int64_t>(rows_->store.rows()) - 1);
    if (rows_->empty()) rows_->MoveTo(0);
}

void Recordset::Move(std::int64_t count, int start) {
    if (rows_ == nullptr) return;
    if (rows_->cursor == CursorType::ForwardOnly) {
        if (start == 1) MoveFirst();
        if (count < 0) RefuseForwardOnly(rows_->cursor);
        for (; count > 0 && !rows_->atEnd(); --count)
            MoveNext();
        return;
    }
    std::int64_t row = 0;
    if (__builtin_add_overflow(start == 1 ? 0 : rows_->position, count, &row))
        row = count < 0 ? -1 : std::numeric_limits<std::int64_t>::max();
    rows_->MoveTo(row);
}

std::int64_t Recordset::RecordCount() const {
    if (rows_ == nullptr || rows_->cursor == CursorType::ForwardOnly) return -1;
    rows_->TakeAll();
    return static_cast<std::int64_t>(rows_->store.rows());
}

std::size_t Recordset::FieldCount() const {
    return rows_ == nullptr ? 0 : rows_->query.columns.size();
}

const OutputColumn& Recordset::Field(std::size_t position) const {
    if (position >= FieldCount())
        throw Error(ErrorNumber::NoSuchColumn, "There is no field " + std::to_string(position) + " in the result.");
    return rows_->query.columns[position];
}

int Recordset::FieldIndex(std::string_view name) const {
    for (std::size_t i = 0; i < FieldCount(); ++i)
        if (SameName(rows_->query.columns[i].name, name)) return static_cast<int>(i);
    return -1;
}

Value Recordset::Get(std::size_t position) const {
    if (rows_ == nullptr) throw Error(ErrorNumber::NoSuchColumn, "The result is closed.");
    return rows_->Get(position);
}

Value Recordset::Get(std::string_view name) const {
    const int position = FieldIndex(name);
    if (position < 0)
        throw Error(ErrorNumber::NoSuchColumn, "There is no field '" + std::string(name) + "' in the result.");
    return Get(static_cast<std::size_t>(position));
}

std::optional<std::string_view> Recordset::TextView(std::size_t position) const {
    if (rows_ == nullptr || !rows_->direct || !rows_->fetching() || position >= FieldCount()) return std::nullopt;
    sqlite3_stmt* const row = rows_->query.prepared.statement.get();
    const int column = static_cast<int>(position);
    if (sqlite3_column_type(row, column) != SQLITE_TEXT) return std::nullopt;
    const auto* const start = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
    return std::string_view(start, static_cast<std::size_t>(sqlite3_column_bytes(row, column)));
}

void Recordset::Find(std::string_view text) {
    const Criterion criterion = ParseCriterion(text);
    const int field = FieldIndex(criterion.column);
    if (field < 0)
        throw Error(ErrorNumber::NoSuchColumn, "There is no field '" + criterion.column + "' in the result.");
    const auto position = static_cast<std::size_t>(field);
    if (!rows_->direct && rows_->position < 0) rows_->MoveTo(0);
    while (!atEnd() && !Meets(Get(position), Field(position).kind, criterion))
        MoveNext();
}

std::int64_t Recordset::TakeNumbers(std::size_t position, std::int64_t most, std::int64_t count,
                                    std::vector<std::int32_t>& into) {
    most = std::min<std::int64_t>(most, std::numeric_limits<std::int32_t>::max());
    const int column = static_cast<int>(position);
    std::int64_t taken = 0;
    for (; taken < count && !atEnd(); ++taken) {
        std::int64_t number = -1;
        if (rows_->direct) {
            // Read directly: to make a Value would cost as much as to read the row.
            sqlite3_stmt* const row = rows_->query.prepared.statement.get();
            if (sqlite3_column_type(row, column) == SQLITE_INTEGER) number = sqlite3_column_int64(row, column);
        } else if (const Value value = Get(position); value.type() == Value::Type::Integer) {
            number = value.toInteger();
        }
        if (number < 0 || number > most) break;
        into.push_back(static_cast<std::int32_t>(number));
        MoveNext();
    }
    return taken;
}

std::vector<std::vector<Value>> Recordset::GetRows(std::int64_t count) {
    std::vector<std::vector<Value>> rows;
    if (rows_ != nullptr && !rows_->direct && rows_->position < 0) rows_->MoveTo(0);
    for (; count != 0 && !atEnd(); --count) {
        std::vector<Value>& row = rows.emplace_back();
        row.reserve(FieldCount());
        for (std::size_t i = 0; i < FieldCount(); ++i)
            row.push_back(Get(i));
        MoveNext();
    }
    return rows;
}

std::string Recordset::GetString(std::int64_t count, std::string_view columnDelimiter, std::string_view rowDelimiter,
                                 std::string_view nullText) {
    std::string text;
    if (rows_ != nullptr && !rows_->direct && rows_->position < 0) rows_->MoveTo(0);
    for (; count != 0 && !atEnd(); --count) {
        for (std::size_t i = 0; i < FieldCount(); ++i) {
            if (i > 0) text += columnDelimiter;
            const Value value = Get(i);
            text += value.isNull() ? std::string(nullText) : value.toText();
        }
        text += rowDelimiter;
        MoveNext();
    }
    return text;
}

} // namespace jet
