#include "jet/engine/ResultRows.h"

#include <algorithm>
#include <limits>

namespace jet {

ResultRows::ResultRows(const std::shared_ptr<Engine>& from, std::string_view text, CursorType type)
    : sql(text), cursor(type), origin(from) {
    const Engine::ReadScope oneLock(*from, sql);
    try {
        Begin();
    } catch (const Error& error) {
        if (error.number() != ErrorNumber::ColumnsUnfit) throw;
        from->NoteUnfit(error);
        way = Way::Plain;
        Begin();
    }
}

void ResultRows::Begin() {
    engine = origin.lock();
    query = engine->Open(sql, way);
    Start();
}

ResultRows::~ResultRows() {
    Stop();
}

void ResultRows::Start() {
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
        begun = true;
    } catch (const Error&) {
        Stop();
        throw;
    }
}

void ResultRows::Fetch() {
    engine->RefuseWithinAnother();
    try {
        if (!Step(engine->database(), query.prepared.statement.get())) Stop();
    } catch (const Error& error) {
        Stop();
        // rows were given, so that it is too late for the plain way
        if (begun && error.number() == ErrorNumber::ColumnsUnfit) throw Error(ErrorNumber::EngineError, error.what());
        throw;
    }
}

void ResultRows::Stop() {
    if (!fetching()) return;
    engine->Unregister(this);
    engine->statements().GiveBack(sql, way, std::move(query.prepared));
    query.prepared = {};
    engine.reset();
    store.Finish();
}

// An error in a row of this result must not fail the other statement, for whose sake the rows are read now.
void ResultRows::TakeIn() {
    try {
        TakeAll();
    } catch (const Error& error) {
        failure = error;
    }
}

void ResultRows::TakeAll() {
    direct = false;
    TakeUpTo(std::numeric_limits<std::int64_t>::max());
}

void ResultRows::TakeUpTo(std::int64_t row) {
    while (fetching() && static_cast<std::int64_t>(store.rows()) <= row) {
        store.AppendRow(query.prepared.statement.get());
        Fetch();
    }
}

bool ResultRows::atEnd() {
    if (direct) return !fetching();
    TakeUpTo(position);
    if (position < static_cast<std::int64_t>(store.rows())) return false;
    if (failure) throw Error(*failure);
    return true;
}

bool ResultRows::empty() {
    return !anyRow;
}

Value ResultRows::Get(std::size_t column) {
    if (column >= query.columns.size())
        throw Error(ErrorNumber::NoSuchColumn, "There is no field " + std::to_string(column) + " in the result.");
    if (position < 0 || atEnd()) throw Error(ErrorNumber::NoSuchColumn, "There is no current row.");
    if (direct) return ValueAt(query.prepared.statement.get(), static_cast<int>(column), query.columns[column].type);
    return store.Get(static_cast<std::size_t>(position), column);
}

void ResultRows::MoveTo(std::int64_t row) {
    TakeUpTo(row);
    position = std::clamp<std::int64_t>(row, -1, static_cast<std::int64_t>(store.rows()));
}

} // namespace jet
