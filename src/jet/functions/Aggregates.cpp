#include "jet/functions/FunctionSupport.h"

#include <array>
#include <cmath>
#include <new>

namespace jet {

namespace {

// The memory that SQLite keeps for one group. It is filled with zeros, which must be a valid start of `State`.
template <class State> State* StateOf(sqlite3_context* context, bool make) {
    return static_cast<State*>(sqlite3_aggregate_context(context, make ? static_cast<int>(sizeof(State)) : 0));
}

struct SumState {
    std::int64_t count;
    std::int64_t whole; // the sum as long as all terms are whole and it fits
    bool real;
    double sum;
    double lost; // the rounding errors of the sum so far, added at the end (compensated summation after Neumaier)

    void addReal(double term) {
        const double next = sum + term;
        lost += std::fabs(sum) >= std::fabs(term) ? (sum - next) + term : (term - next) + sum;
        sum = next;
    }
    void add(const Call& call) {
        ++count;
        std::int64_t next = 0;
        if (!real && call.isWhole(0) && !__builtin_add_overflow(whole, call.whole(0), &next)) {
            whole = next;
            return;
        }
        if (!real) sum = static_cast<double>(whole);
        real = true;
        addReal(call.number(0));
    }
    [[nodiscard]] double total() const { return real ? sum + lost : static_cast<double>(whole); }
};

struct SpreadState {
    std::int64_t count;
    double mean;
    double squares; // of the distances from the mean (Welford)

    void add(const Call& call) {
        const double number = call.number(0);
        const double distance = number - mean;
        ++count;
        mean += distance / static_cast<double>(count);
        squares += distance * (number - mean);
    }
};

template <class State> void Step(sqlite3_context* context, int count, sqlite3_value** values) {
    Call call(context, count, values);
    if (call.count() == 0 || call.isNull(0)) return;
    State* const state = StateOf<State>(context, true);
    if (state == nullptr) return sqlite3_result_error_nomem(context);
    try {
        state->add(call);
    } catch (const Error& error) {
        GiveError(context, error);
    }
}

template <class State, void (*finish)(Call&, const State&)> void Final(sqlite3_context* context) {
    Call call(context, 0, nullptr);
    const State* const state = StateOf<State>(context, false);
    try {
        if (state != nullptr && state->count > 0) finish(call, *state);
    } catch (const Error& error) {
        GiveError(context, error);
    }
}

void FinishSum(Call& call, const SumState& state) {
    if (state.real) return call.give(state.total());
    call.give(state.whole);
}

void FinishAverage(Call& call, const SumState& state) {
    call.give(state.total() / static_cast<double>(state.count));
}

template <bool root, bool sample> void FinishSpread(Call& call, const SpreadState& state) {
    const std::int64_t freedom = state.count - (sample ? 1 : 0);
    if (freedom < 1) return call.giveNull();
    const double variance = state.squares / static_cast<double>(freedom);
    call.give(root ? std::sqrt(variance) : variance);
}

// First and Last take a row as it is, Null included.
struct RowState {
    bool seen;
    sqlite3_value* held;
};

template <bool last> void StepRow(sqlite3_context* context, int, sqlite3_value** values) {
    auto* const state = StateOf<RowState>(context, true);
    if (state == nullptr || (state->seen && !last)) return;
    sqlite3_value_free(state->held);
    state->held = sqlite3_value_dup(values[0]);
    state->seen = true;
}

void FinalRow(sqlite3_context* context) {
    auto* const state = StateOf<RowState>(context, false);
    if (state == nullptr || state->held == nullptr) return;
    sqlite3_result_value(context, state->held);
    sqlite3_value_free(state->held);
    state->held = nullptr;
}

struct AggregateRegistration {
    const char* name;
    void (*step)(sqlite3_context*, int, sqlite3_value**);
    void (*final)(sqlite3_context*);
};

} // namespace

void RegisterAggregates(sqlite3* database) {
    static constexpr std::array aggregates = {
        AggregateRegistration{"jet_sum", Step<SumState>, Final<SumState, FinishSum>},
        AggregateRegistration{"jet_avg", Step<SumState>, Final<SumState, FinishAverage>},
        AggregateRegistration{"jet_stdev", Step<SpreadState>, Final<SpreadState, FinishSpread<true, true>>},
        AggregateRegistration{"jet_stdevp", Step<SpreadState>, Final<SpreadState, FinishSpread<true, false>>},
        AggregateRegistration{"jet_var", Step<SpreadState>, Final<SpreadState, FinishSpread<false, true>>},
        AggregateRegistration{"jet_varp", Step<SpreadState>, Final<SpreadState, FinishSpread<false, false>>},
        AggregateRegistration{"jet_first", StepRow<false>, FinalRow},
        AggregateRegistration{"jet_last", StepRow<true>, FinalRow},
    };
    for (const AggregateRegistration& each : aggregates)
        sqlite3_create_function_v2(database, each.name, 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY,
                                   nullptr, nullptr, each.step, each.final, nullptr);
}

} // namespace jet
