#include "jet/engine/Recordset.h"

#include "jet/engine/Criterion.h"
#include "jet/engine/RecordsetImpl.h"

#include <algorithm>
#include <limits>

namespace jet {

Recordset::Impl::Impl(const std::shared_ptr<Engine>& from, std::string_view text, CursorType type)
    : sql(text), cursor(type), origin(from) {
    const Engine::ReadScope oneLock(*from, sql);
    engine = from;
    query = engine->Open(sql);
    Start();
}

Recordset::Impl::~Impl() {
    Stop();
}

void Recordset::Impl::Start() {
    std::vector<ColumnType> types;
    for (const OutputColumn& each : query.columns)
        types.push_back(each.type);
    store = ColumnStore(types);
    direct = cursor == CursorType::ForwardOnly;
    position = 0;
    engine->Register(this);
    try {
        Fetch();
        anyRow = fetching();
        if (cursor == CursorType::Static) TakeAll();
    } catch (const Error&) {
        Stop();
        throw;
    }
}

void Recordset::Impl::Fetch() {
    try {
        if (!Step(engine->database(), query.prepared.statement.get())) Stop();
    } catch (const Error&) {
        Stop();
        throw;
    }
}

void Recordset::Impl::Stop() {
    if (!fetching()) return;
    engine->Unregister(this);
    engine->statements().GiveBack(sql, std::move(query.prepared));
    query.prepared = {};
    engine.reset();
    store.Finish();
}

// A failing row of this result must not fail the statement for which the engine makes room.
void Recordset::Impl::TakeIn() {
    try {
        TakeAll();
    } catch (const Error& error) {
        failure = error;
    }
}

void Recordset::Impl::TakeAll() {
    direct = false;
    TakeUpTo(std::numeric_limits<std::int64_t>::max());
}

void Recordset::Impl::TakeUpTo(std::int64_t row) {
    while (fetching() && static_cast<std::int64_t>(store.rows()) <= row) {
        store.AppendRow(query.prepared.statement.get());
        Fetch();
    }
}

bool Recordset::Impl::atEnd() {
    if (direct) return !fetching();
    TakeUpTo(position);
    if (position < static_cast<std::int64_t>(store.rows())) return false;
    if (failure) throw Error(*failure);
    return true;
}

bool Recordset::Impl::empty() {
    return !anyRow;
}

Value Recordset::Impl::Get(std::size_t column) {
    if (column >= query.columns.size())
        throw Error(ErrorNumber::NoSuchColumn, "There is no field " + std::to_string(column) + " in the result.");
    if (position < 0 || atEnd()) throw Error(ErrorNumber::NoSuchColumn, "There is no current row.");
    if (direct) return ValueAt(query.prepared.statement.get(), static_cast<int>(column), query.columns[column].type);
    return store.Get(static_cast<std::size_t>(position), column);
}

void Recordset::Impl::MoveTo(std::int64_t row) {
    TakeUpTo(row);
    position = std::clamp<std::int64_t>(row, -1, static_cast<std::int64_t>(store.rows()));
}

Recordset::Recordset() = default;
Recordset::~Recordset() = default;
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::Recordset(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}

bool Recordset::isOpen() const {
    return impl_ != nullptr;
}
void Recordset::Close() {
    impl_.reset();
}

bool Recordset::atEnd() const {
    return impl_ == nullptr || impl_->atEnd();
}

bool Recordset::atStart() const {
    return impl_ == nullptr || impl_->empty() || impl_->position < 0;
}

namespace {

void RefuseForwardOnly(CursorType cursor) {
    if (cursor == CursorType::ForwardOnly)
        throw Error(ErrorNumber::EngineError, "A forward-only result moves to the next row only.");
}

} // namespace

void Recordset::MoveFirst() {
    if (impl_ == nullptr) return;
    if (impl_->cursor != CursorType::ForwardOnly) return impl_->MoveTo(0);
    const std::shared_ptr<Engine> engine = impl_->origin.lock();
    if (engine == nullptr) throw Error(ErrorNumber::EngineError, "The connection is closed.");
    impl_ = std::make_unique<Impl>(engine, std::string(impl_->sql), CursorType::ForwardOnly);
}

void Recordset::MoveNext() {
    if (impl_ == nullptr || impl_->atEnd()) return;
    if (impl_->direct) return impl_->Fetch();
    impl_->MoveTo(impl_->position + 1);
}

void Recordset::MovePrevious() {
    if (impl_ == nullptr) return;
    RefuseForwardOnly(impl_->cursor);
    impl_->MoveTo(impl_->position - 1);
}

void Recordset::MoveLast() {
    if (impl_ == nullptr) return;
    RefuseForwardOnly(impl_->cursor);
    impl_->TakeAll();
    impl_->MoveTo(static_cast<std::int64_t>(impl_->store.rows()) - 1);
    if (impl_->empty()) impl_->MoveTo(0);
}

void Recordset::Move(std::int64_t count, int start) {
    if (impl_ == nullptr) return;
    if (impl_->cursor == CursorType::ForwardOnly) {
        if (start == 1) MoveFirst();
        if (count < 0) RefuseForwardOnly(impl_->cursor);
        for (; count > 0 && !impl_->atEnd(); --count)
            MoveNext();
        return;
    }
    std::int64_t row = 0;
    if (__builtin_add_overflow(start == 1 ? 0 : impl_->position, count, &row))
        row = count < 0 ? -1 : std::numeric_limits<std::int64_t>::max();
    impl_->MoveTo(row);
}

std::int64_t Recordset::RecordCount() const {
    if (impl_ == nullptr || impl_->cursor == CursorType::ForwardOnly) return -1;
    impl_->TakeAll();
    return static_cast<std::int64_t>(impl_->store.rows());
}

std::size_t Recordset::FieldCount() const {
    return impl_ == nullptr ? 0 : impl_->query.columns.size();
}

const OutputColumn& Recordset::Field(std::size_t position) const {
    if (position >= FieldCount())
        throw Error(ErrorNumber::NoSuchColumn, "There is no field " + std::to_string(position) + " in the result.");
    return impl_->query.columns[position];
}

int Recordset::FieldIndex(std::string_view name) const {
    for (std::size_t i = 0; i < FieldCount(); ++i)
        if (SameName(impl_->query.columns[i].name, name)) return static_cast<int>(i);
    return -1;
}

Value Recordset::Get(std::size_t position) const {
    if (impl_ == nullptr) throw Error(ErrorNumber::NoSuchColumn, "The result is closed.");
    return impl_->Get(position);
}

Value Recordset::Get(std::string_view name) const {
    const int position = FieldIndex(name);
    if (position < 0)
        throw Error(ErrorNumber::NoSuchColumn, "There is no field '" + std::string(name) + "' in the result.");
    return Get(static_cast<std::size_t>(position));
}

std::optional<std::string_view> Recordset::TextView(std::size_t position) const {
    if (impl_ == nullptr || !impl_->direct || !impl_->fetching() || position >= FieldCount()) return std::nullopt;
    sqlite3_stmt* const row = impl_->query.prepared.statement.get();
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
    if (!impl_->direct && impl_->position < 0) impl_->MoveTo(0);
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
        if (impl_->direct) {
            // Read past Value, which costs as much as the row itself.
            sqlite3_stmt* const row = impl_->query.prepared.statement.get();
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
    if (impl_ != nullptr && !impl_->direct && impl_->position < 0) impl_->MoveTo(0);
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
    if (impl_ != nullptr && !impl_->direct && impl_->position < 0) impl_->MoveTo(0);
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
