#include "jet/columns/ScanTable.h"

#include "jet/columns/Scan.h"
#include "jet/columns/ScanBlock.h"
#include "jet/columns/ScanFunctions.h"
#include "jet/columns/ScanKeysReader.h"
#include "jet/columns/SideKeys.h"
#include "jet/functions/FunctionSupport.h"
#include "jet/values/Error.h"
#include "jet/values/NumberList.h"

#include <algorithm>
#include <new>
#include <span>
#include <sqlite3.h>
#include <utility>

namespace jet {

namespace {

constexpr int kFirstFigure = static_cast<int>(kMostScanCodes);
constexpr int kFirstField = kFirstFigure + static_cast<int>(kMostScanFigures);
constexpr int kFirstCount = kFirstField + static_cast<int>(kMostScanFields); ///< figures that are counts, once more
constexpr int kPlanColumn = kFirstCount + static_cast<int>(kMostScanFigures);

using Groups = std::shared_ptr<const ScanGroups>;
using Plan = std::shared_ptr<const ScanPlan>;

/// What the last scans of a connection gave: the three levels of the statistics are three queries of one statement over
/// the same groups. It is good as long as plan and keys are the same, since an image never changes.
class LastScans {
  public:
    Groups find(const Plan& plan, const ScanInput& input) const {
        for (const Held& each : held_)
            if (each.plan == plan && each.input == input) return each.groups;
        return nullptr;
    }
    void Keep(Plan plan, ScanInput input, Groups groups) {
        constexpr std::size_t kMostHeld = 2;
        constexpr std::size_t kMostPlaces = 50'000;
        held_.erase(held_.begin(), held_.size() < kMostHeld ? held_.begin() : held_.begin() + 1);
        if (std::max(groups->rows.size(), groups->filled.size()) <= kMostPlaces)
            held_.push_back({std::move(plan), std::move(input), std::move(groups)});
    }

  private:
    struct Held {
        Plan plan;
        ScanInput input;
        Groups groups;
    };
    std::vector<Held> held_;
};

struct Module {
    sqlite3* database = nullptr;
    WorkWatch& watch;
    LastScans last;
};

struct Table : sqlite3_vtab {
    Module* module = nullptr;
};

struct Cursor : sqlite3_vtab_cursor {
    Plan plan;
    std::shared_ptr<const ColumnImage> image;
    ScanInput input;
    Groups groups;
    std::vector<std::uint32_t> order; ///< the places with rows, where another order is asked for than their own
    std::size_t at = 0;               ///< place among those that are filled
    bool checked = false;
};

int Fail(sqlite3_vtab* table, const Error& error) {
    sqlite3_free(table->zErrMsg);
    table->zErrMsg = sqlite3_mprintf("%s", MessageOf(error).c_str());
    return SQLITE_ERROR;
}

// --- The scan ---

/// Only in the beginning: what has been given to the statement stays right, whatever others write meanwhile.
void CheckImage(Cursor& cursor, sqlite3* database) {
    cursor.image = cursor.plan->image.lock();
    if (cursor.image == nullptr) throw Error(ErrorNumber::ColumnsUnfit, "The column image is gone.");
    if (cursor.checked) return;
    const auto mark = FileMark::Of(database, cursor.plan->schemaName);
    if (!mark || *mark != cursor.image->mark() || !cursor.image->isIntact())
        throw Error(ErrorNumber::ColumnsUnfit, std::string(kStaleImage));
    cursor.checked = true;
}

/// A few rows are found sooner through an index.
void RefuseFewRows(const Cursor& cursor) {
    constexpr std::uint64_t kManyTimes = 200;
    const ColumnImage& image = *cursor.image;
    const auto refuse = [&](std::uint64_t rows) {
        if (rows < image.rows() / kManyTimes) throw Error(ErrorNumber::ColumnsUnfit, "Few rows are selected.");
    };
    for (std::size_t i = 0; i < cursor.input.keys.size(); ++i)
        refuse(RowsOf(image.columns()[cursor.plan->keys[i].column], cursor.input.keys[i].passes));
    for (std::size_t i = 0; i < cursor.input.sides.size(); ++i)
        refuse(RowsOf(image, cursor.plan->sides[i], cursor.input.sides[i]));
}

ScanInput ReadInput(const Cursor& cursor, sqlite3* database) {
    ScanInput input;
    for (const ScanKeys& each : cursor.plan->keys)
        input.keys.push_back(ReadKeys(database, cursor.image->columns()[each.column], each));
    for (const ScanSide& each : cursor.plan->sides)
        input.sides.push_back(ReadSide(database, *cursor.image, each, cursor.plan->whole));
    return input;
}

void Scan(Cursor& cursor, Module& module) {
    CheckImage(cursor, module.database);
    cursor.input = ReadInput(cursor, module.database);
    RefuseFewRows(cursor);
    cursor.at = 0;
    cursor.groups = module.last.find(cursor.plan, cursor.input);
    if (cursor.groups != nullptr) return;
    cursor.groups = ScanRows(*cursor.image, *cursor.plan, cursor.input, module.watch);
    module.last.Keep(cursor.plan, cursor.input, cursor.groups);
}

std::int64_t CountOf(const Cursor& cursor, std::size_t figure, std::uint32_t place) {
    const ScanGroups& groups = *cursor.groups;
    const ScanFigureKind kind = cursor.plan->figures[figure].kind;
    if (kind == ScanFigureKind::Rows) return groups.rows[place];
    return kind == ScanFigureKind::Values ? groups.values[place] : groups.ranks[figure][place];
}

/// The first row of a group.
std::uint32_t FirstRowOf(const Cursor& cursor, std::uint32_t place) {
    return cursor.plan->byRow ? place : cursor.groups->first[place];
}

/// Puts the groups into the order that TakeOrder has taken on.
void Sort(Cursor& cursor, int order, WorkWatch& watch) {
    cursor.order.clear();
    if (order == 0) return;
    const auto figure = static_cast<std::size_t>((order - 1) / 2);
    const bool descending = order % 2 == 0;
    cursor.order = cursor.groups->filled;
    std::ranges::sort(cursor.order, [&](std::uint32_t a, std::uint32_t b) {
        watch.Step();
        const std::int64_t ofA = CountOf(cursor, figure, a);
        const std::int64_t ofB = CountOf(cursor, figure, b);
        if (ofA == ofB) return a < b;
        return descending ? ofA > ofB : ofA < ofB;
    });
}

// --- What a group gives ---

void GiveText(sqlite3_context* context, const Cursor& cursor, std::uint32_t row) {
    const ImageColumn& value = cursor.image->columns()[cursor.plan->value];
    if (row == kNoRow || value.kinds[row] == static_cast<std::uint8_t>(ValueKind::Null)) return;
    std::string room;
    const std::string_view text = cursor.image->TextOf(value, row, room);
    sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

/// The text that is no number in place of the state, for the error that it is.
template <class State>
void GiveState(sqlite3_context* context, const Cursor& cursor, std::uint32_t place, const State& state) {
    const std::uint32_t unreadable = cursor.groups->unreadable[place];
    if (unreadable != kNoRow) return GiveText(context, cursor, unreadable);
    if (state.count > 0) sqlite3_result_blob(context, &state, sizeof(state), SQLITE_TRANSIENT);
}

void GiveRanked(sqlite3_context* context, std::int32_t rank, const std::vector<Value>& ranked) {
    if (rank >= 0) Call(context, 0, nullptr).give(ranked[static_cast<std::size_t>(rank)]);
}

/// The number that a row has in a column.
void GiveRowNumber(sqlite3_context* context, const ImageColumn& column, std::uint32_t row) {
    std::uint32_t code = 0;
    switch (column.form) {
    case ColumnForm::Consecutive:
        return sqlite3_result_int64(context, column.first + row);
    case ColumnForm::Plain:
        return sqlite3_result_int64(context, column.plain[row]);
    case ColumnForm::Coded:
        WithCodes(column, [&](const auto& codeOf) { code = codeOf(row); });
        if (code != 0 || !column.hasNull) sqlite3_result_int64(context, column.numbers[code]);
        return;
    case ColumnForm::Values:
        return;
    }
}

void GiveFigure(sqlite3_context* context, const Cursor& cursor, std::size_t figure, std::uint32_t place) {
    const ScanGroups& groups = *cursor.groups;
    const ScanFigure& wanted = cursor.plan->figures[figure];
    switch (wanted.kind) {
    case ScanFigureKind::Rows:
        return sqlite3_result_int64(context, groups.rows[place]);
    case ScanFigureKind::Values:
        return sqlite3_result_int64(context, groups.values[place]);
    case ScanFigureKind::Least:
        return GiveText(context, cursor, groups.least[place]);
    case ScanFigureKind::Greatest:
        return GiveText(context, cursor, groups.greatest[place]);
    case ScanFigureKind::Sum:
        return GiveState(context, cursor, place, groups.sums[place]);
    case ScanFigureKind::Spread:
        return GiveState(context, cursor, place, groups.spreads[place]);
    case ScanFigureKind::LeastRanked:
    case ScanFigureKind::GreatestRanked:
        return GiveRanked(context, groups.ranks[figure][place], cursor.input.keys[wanted.keys].ranked);
    case ScanFigureKind::LeastOf:
    case ScanFigureKind::GreatestOf:
        return GiveRanked(context, groups.ranks[figure][place], cursor.input.sides[wanted.keys].ranked[wanted.field]);
    case ScanFigureKind::CountOf:
        return sqlite3_result_int64(context, groups.ranks[figure][place]);
    case ScanFigureKind::FirstRow:
        return sqlite3_result_int64(context, FirstRowOf(cursor, place));
    case ScanFigureKind::FirstValue:
        return GiveText(context, cursor, FirstRowOf(cursor, place));
    case ScanFigureKind::FirstNumber:
        return GiveRowNumber(context, cursor.image->columns()[wanted.field], FirstRowOf(cursor, place));
    }
}

std::uint32_t ClassOf(const Cursor& cursor, std::uint32_t place, std::size_t side) {
    if (!cursor.plan->byRow) return cursor.groups->classOf(place, side);
    return ClassOfRow(*cursor.image, cursor.plan->sides[side], cursor.input.sides[side], place);
}

void GiveField(sqlite3_context* context, const Cursor& cursor, std::size_t field, std::uint32_t place) {
    for (std::size_t side = 0; side < cursor.input.sides.size(); ++side) {
        const auto& fields = cursor.input.sides[side].fields;
        if (field < fields.size()) return Call(context, 0, nullptr).give(fields[field][ClassOf(cursor, place, side)]);
        field -= fields.size();
    }
}

void GiveNumber(sqlite3_context* context, const Cursor& cursor, std::size_t code, std::uint32_t place) {
    const ImageColumn& column = cursor.image->columns()[cursor.plan->codes[code]];
    const std::uint32_t value = cursor.groups->code(place, code);
    if (column.hasNull && value == 0) return;
    sqlite3_result_int64(context, column.numbers[value]);
}

// --- The table as SQLite calls it ---

int Connect(sqlite3* database, void* module, int, const char* const*, sqlite3_vtab** made, char**) {
    std::string fields;
    for (std::size_t i = 0; i < kMostScanCodes; ++i)
        fields += "g" + std::to_string(i) + ",";
    for (std::size_t i = 0; i < kMostScanFigures; ++i)
        fields += "a" + std::to_string(i) + ",";
    for (std::size_t i = 0; i < kMostScanFields; ++i)
        fields += "x" + std::to_string(i) + ",";
    for (std::size_t i = 0; i < kMostScanFigures; ++i)
        fields += "n" + std::to_string(i) + ",";
    const int code = sqlite3_declare_vtab(database, ("CREATE TABLE x(" + fields + "plan HIDDEN)").c_str());
    if (code != SQLITE_OK) return code;
    sqlite3_vtab_config(database, SQLITE_VTAB_DIRECTONLY);
    auto* const table = new (std::nothrow) Table{};
    if (table == nullptr) return SQLITE_NOMEM;
    table->module = static_cast<Module*>(module);
    *made = table;
    return SQLITE_OK;
}

int Disconnect(sqlite3_vtab* table) {
    delete static_cast<Table*>(table);
    return SQLITE_OK;
}

/// True when the order asked for is that of the groups: g0, g1 … ascending.
bool IsOrderOfGroups(const sqlite3_index_info& info) {
    for (int i = 0; i < info.nOrderBy; ++i)
        if (info.aOrderBy[i].iColumn != i || i >= kFirstFigure || info.aOrderBy[i].desc != 0) return false;
    return true;
}

/// Takes on the order that is asked for: that of the groups (0), or of count n (2n + 1, descending 2n + 2).
void TakeOrder(sqlite3_index_info& info) {
    info.orderByConsumed = IsOrderOfGroups(info) ? 1 : 0;
    if (info.nOrderBy != 1 || info.aOrderBy[0].iColumn < kFirstCount || info.aOrderBy[0].iColumn >= kPlanColumn) return;
    info.idxNum = 2 * (info.aOrderBy[0].iColumn - kFirstCount) + (info.aOrderBy[0].desc != 0 ? 2 : 1);
    info.orderByConsumed = 1;
}

// The costs keep the groups outermost in a join: each further reading would give them all again.
int BestIndex(sqlite3_vtab*, sqlite3_index_info* info) {
    constexpr double kCost = 1e9;
    constexpr sqlite3_int64 kRows = 10'000;
    for (int i = 0; i < info->nConstraint; ++i) {
        const auto& constraint = info->aConstraint[i];
        if (constraint.iColumn != kPlanColumn || constraint.op != SQLITE_INDEX_CONSTRAINT_EQ) continue;
        if (constraint.usable == 0) return SQLITE_CONSTRAINT;
        info->aConstraintUsage[i].argvIndex = 1;
        info->aConstraintUsage[i].omit = 1;
        info->estimatedCost = kCost;
        info->estimatedRows = kRows;
        TakeOrder(*info);
        return SQLITE_OK;
    }
    return SQLITE_CONSTRAINT;
}

int Open(sqlite3_vtab*, sqlite3_vtab_cursor** made) {
    auto* const cursor = new (std::nothrow) Cursor{};
    *made = cursor;
    return cursor == nullptr ? SQLITE_NOMEM : SQLITE_OK;
}

int Close(sqlite3_vtab_cursor* cursor) {
    delete static_cast<Cursor*>(cursor);
    return SQLITE_OK;
}

int Filter(sqlite3_vtab_cursor* base, int order, const char*, int count, sqlite3_value** values) {
    auto& cursor = *static_cast<Cursor*>(base);
    const auto* const plan =
        count < 1 ? nullptr : static_cast<const Plan*>(sqlite3_value_pointer(values[0], kScanPlanType));
    if (plan == nullptr) return SQLITE_ERROR;
    try {
        cursor.plan = *plan;
        Module& module = *static_cast<Table*>(cursor.pVtab)->module;
        Scan(cursor, module);
        Sort(cursor, order, module.watch);
        return SQLITE_OK;
    } catch (const Error& error) {
        return error.number() == ErrorNumber::Interrupted ? SQLITE_INTERRUPT : Fail(cursor.pVtab, error);
    } catch (const std::bad_alloc&) {
        return SQLITE_NOMEM;
    }
}

// What is given is read from the file row by row, perhaps over a long time: it must be as it was.
int Next(sqlite3_vtab_cursor* base) {
    constexpr std::size_t kRowsBetweenLooks = 16;
    auto& cursor = *static_cast<Cursor*>(base);
    ++cursor.at;
    const bool looks = cursor.at % kRowsBetweenLooks == 0 || cursor.at >= cursor.groups->filled.size();
    if (!cursor.image->wasCut() && (!looks || cursor.image->isIntact())) return SQLITE_OK;
    return Fail(cursor.pVtab, Error(ErrorNumber::ColumnsUnfit, "The column image was changed while it was read."));
}

int AtEnd(sqlite3_vtab_cursor* base) {
    const auto& cursor = *static_cast<Cursor*>(base);
    return cursor.at >= cursor.groups->filled.size() ? 1 : 0;
}

int GiveColumn(sqlite3_vtab_cursor* base, sqlite3_context* context, int position) {
    const auto& cursor = *static_cast<Cursor*>(base);
    const std::uint32_t place = (cursor.order.empty() ? cursor.groups->filled : cursor.order)[cursor.at];
    const auto from = [&](int first) { return static_cast<std::size_t>(position - first); };
    if (position == kPlanColumn) return SQLITE_OK;
    if (position >= kFirstCount) {
        sqlite3_result_int64(context, CountOf(cursor, from(kFirstCount), place));
    } else if (position >= kFirstField) {
        GiveField(context, cursor, from(kFirstField), place);
    } else if (position >= kFirstFigure) {
        GiveFigure(context, cursor, from(kFirstFigure), place);
    } else {
        GiveNumber(context, cursor, from(0), place);
    }
    return SQLITE_OK;
}

int GiveRowId(sqlite3_vtab_cursor* base, sqlite3_int64* number) {
    const auto& cursor = *static_cast<Cursor*>(base);
    *number = static_cast<sqlite3_int64>(cursor.at);
    return SQLITE_OK;
}

void FreeModule(void* module) {
    delete static_cast<Module*>(module);
}

sqlite3_module MakeModule() {
    sqlite3_module made{};
    made.xConnect = Connect;
    made.xBestIndex = BestIndex;
    made.xDisconnect = Disconnect;
    made.xOpen = Open;
    made.xClose = Close;
    made.xFilter = Filter;
    made.xNext = Next;
    made.xEof = AtEnd;
    made.xColumn = GiveColumn;
    made.xRowid = GiveRowId;
    return made;
}

} // namespace

void RegisterScans(sqlite3* database, WorkWatch& watch) {
    static const sqlite3_module module = MakeModule();
    sqlite3_create_module_v2(database, "jet_scan", &module, new Module{database, watch, {}}, FreeModule);
    RegisterScanFunctions(database);
}

} // namespace jet
