#include "jet/functions/FunctionSupport.h"
#include "jet/values/Collation.h"

#include <array>
#include <cmath>
#include <new>
#include <optional>

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

/// Gives what a state of the kind holds, and frees it.
void GiveHeld(sqlite3_context* context, sqlite3_value*& held) {
    if (held == nullptr) return;
    sqlite3_result_value(context, held);
    sqlite3_value_free(held);
    held = nullptr;
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

template <class State> void FinalHeld(sqlite3_context* context) {
    auto* const state = StateOf<State>(context, false);
    if (state != nullptr) GiveHeld(context, state->held);
}

/// The value of the row with the least number: jet_firstof(value, row).
struct FirstState {
    sqlite3_value* held;
    std::int64_t row;
};

void StepFirst(sqlite3_context* context, int, sqlite3_value** values) {
    auto* const state = StateOf<FirstState>(context, true);
    if (state == nullptr) return sqlite3_result_error_nomem(context);
    const std::int64_t row = sqlite3_value_int64(values[1]);
    if (state->held != nullptr && row >= state->row) return;
    sqlite3_value_free(state->held);
    state->held = sqlite3_value_dup(values[0]);
    state->row = row;
}

/// The least or greatest of texts that are compared as values. Of those that compare as equal the one whose bytes come
/// first is taken, so that the result doesn't hang on the order of the rows.
struct ExtremeState {
    sqlite3_value* best;
    bool isNumber;
    double number;

    [[nodiscard]] int compare(std::string_view text, const std::optional<double>& read) const {
        if (read && isNumber) return static_cast<int>(*read > number) - static_cast<int>(*read < number);
        if (read || isNumber) return read ? -1 : 1;
        return CompareText(text, held());
    }
    [[nodiscard]] std::string_view held() const {
        return {reinterpret_cast<const char*>(sqlite3_value_text(best)),
                static_cast<std::size_t>(sqlite3_value_bytes(best))};
    }
};

template <bool least> void StepExtreme(sqlite3_context* context, int count, sqlite3_value** values) {
    const Call call(context, count, values);
    if (call.isNull(0)) return;
    auto* const state = StateOf<ExtremeState>(context, true);
    if (state == nullptr) return sqlite3_result_error_nomem(context);
    std::string room;
    const std::string_view text = call.text(0, room);
    const std::optional<double> read = ReadNumber(text);
    if (state->best != nullptr) {
        const int order = state->compare(text, read);
        const bool better = order == 0 ? text < state->held() : (order < 0) == least;
        if (!better) return;
    }
    sqlite3_value_free(state->best);
    state->best = sqlite3_value_dup(values[0]);
    state->isNumber = read.has_value();
    state->number = read.value_or(0);
}

void FinalExtreme(sqlite3_context* context) {
    auto* const state = StateOf<ExtremeState>(context, false);
    if (state != nullptr) GiveHeld(context, state->best);
}

struct AggregateRegistration {
    const char* name;
    int arguments;
    void (*step)(sqlite3_context*, int, sqlite3_value**);
    void (*final)(sqlite3_context*);
};

} // namespace

void RegisterAggregates(sqlite3* database) {
    static constexpr std::array aggregates = {
        AggregateRegistration{"jet_sum", 1, Step<SumState>, Final<SumState, FinishSum>},
        AggregateRegistration{"jet_avg", 1, Step<SumState>, Final<SumState, FinishAverage>},
        AggregateRegistration{"jet_stdev", 1, Step<SpreadState>, Final<SpreadState, FinishSpread<true, true>>},
        AggregateRegistration{"jet_stdevp", 1, Step<SpreadState>, Final<SpreadState, FinishSpread<true, false>>},
        AggregateRegistration{"jet_var", 1, Step<SpreadState>, Final<SpreadState, FinishSpread<false, true>>},
        AggregateRegistration{"jet_varp", 1, Step<SpreadState>, Final<SpreadState, FinishSpread<false, false>>},
        AggregateRegistration{"jet_min", 1, StepExtreme<true>, FinalExtreme},
        AggregateRegistration{"jet_max", 1, StepExtreme<false>, FinalExtreme},
        AggregateRegistration{"jet_first", 1, StepRow<false>, FinalHeld<RowState>},
        AggregateRegistration{"jet_firstof", 2, StepFirst, FinalHeld<FirstState>},
        AggregateRegistration{"jet_last", 1, StepRow<true>, FinalHeld<RowState>},
    };
    for (const AggregateRegistration& each : aggregates)
        sqlite3_create_function_v2(database, each.name, each.arguments,
                                   SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY, nullptr, nullptr, each.step,
                                   each.final, nullptr);
}

} // namespace jet
