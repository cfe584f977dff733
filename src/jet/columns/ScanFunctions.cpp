#include "jet/columns/ScanFunctions.h"

#include "jet/columns/ScanGroups.h"
#include "jet/functions/FunctionSupport.h"

#include <array>
#include <cmath>
#include <cstring>
#include <sqlite3.h>

namespace jet {

namespace {

/// A figure of a group: Null, its state, or in place of that a text of the group that is no number, which fails as it
/// would where each row is read.
template <class State> void Step(sqlite3_context* context, int count, sqlite3_value** values) {
    const Call call(context, count, values);
    if (call.isNull(0)) return;
    auto* const all = static_cast<State*>(sqlite3_aggregate_context(context, sizeof(State)));
    if (all == nullptr) return sqlite3_result_error_nomem(context);
    try {
        if (call.isText(0)) static_cast<void>(call.number(0));
        State part;
        if (sqlite3_value_bytes(values[0]) != sizeof(part)) return;
        std::memcpy(&part, sqlite3_value_blob(values[0]), sizeof(part));
        all->Join(part);
    } catch (const Error& error) {
        GiveError(context, error);
    }
}

template <class State, void (*finish)(Call&, const State&)> void Final(sqlite3_context* context) {
    Call call(context, 0, nullptr);
    const auto* const state = static_cast<const State*>(sqlite3_aggregate_context(context, 0));
    try {
        if (state != nullptr && state->count > 0) finish(call, *state);
    } catch (const Error& error) {
        GiveError(context, error);
    }
}

void FinishSum(Call& call, const SumState& state) {
    call.give(state.sum + state.lost);
}

void FinishAverage(Call& call, const SumState& state) {
    call.give((state.sum + state.lost) / static_cast<double>(state.count));
}

template <bool root, bool sample> void FinishSpread(Call& call, const SpreadState& state) {
    const std::int64_t freedom = state.count - (sample ? 1 : 0);
    if (freedom < 1) return call.giveNull();
    const double variance = state.squares / static_cast<double>(freedom);
    call.give(root ? std::sqrt(variance) : variance);
}

struct Aggregate {
    const char* name;
    void (*step)(sqlite3_context*, int, sqlite3_value**);
    void (*final)(sqlite3_context*);
};

} // namespace

void RegisterScanFunctions(sqlite3* database) {
    static constexpr std::array aggregates = {
        Aggregate{"jet_scansum", Step<SumState>, Final<SumState, FinishSum>},
        Aggregate{"jet_scanavg", Step<SumState>, Final<SumState, FinishAverage>},
        Aggregate{"jet_scanstdev", Step<SpreadState>, Final<SpreadState, FinishSpread<true, true>>},
        Aggregate{"jet_scanstdevp", Step<SpreadState>, Final<SpreadState, FinishSpread<true, false>>},
        Aggregate{"jet_scanvar", Step<SpreadState>, Final<SpreadState, FinishSpread<false, true>>},
        Aggregate{"jet_scanvarp", Step<SpreadState>, Final<SpreadState, FinishSpread<false, false>>},
    };
    for (const Aggregate& each : aggregates)
        sqlite3_create_function_v2(database, each.name, 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY,
                                   nullptr, nullptr, each.step, each.final, nullptr);
}

} // namespace jet
