#include "selection/TimeSelection.h"

#include "selection/SelectionTexts.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Session.h"

namespace tessaro::selection {

namespace {

std::vector<KeyedItem> PeriodsOf(const QString& sql) {
    std::vector<KeyedItem> items;
    for (Records rows = Select(sql); !rows.atEnd(); rows.MoveNext())
        items.push_back({KeyOf('T', rows.Text(std::size_t{0})), {NameOf(rows.Text(std::size_t{1}))}, 0});
    return items;
}

/// Runs a call; a failure goes to the common sink. True when it went through.
template <class Call> bool Reported(Call&& call) {
    try {
        call();
        return true;
    } catch (const std::exception& error) {
        ErrorTrap::Report(error);
        return false;
    }
}

} // namespace

QString AvailablePeriodsSql() {
    return QStringLiteral("SELECT TimePeriodNId,TimePeriod FROM TimePeriod As T ") +
           Criterion(QStringLiteral(" WHERE T."));
}

std::vector<KeyedItem> AvailablePeriods() {
    return PeriodsOf(AvailablePeriodsSql());
}

std::vector<KeyedItem> SelectedPeriods() {
    return PeriodsOf(QStringLiteral("SELECT TimePeriodNId, TimePeriod FROM _SelTimePeriod"));
}

bool AddPeriod(const KeyedItem& period) {
    constexpr qsizetype kWidth = 60; // of the column; texts of a foreign file may be longer
    SelectionChanged = true;
    return Execute(QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) Values (") +
                   IdOfKey(period.key) + QLatin1Char(',') + Quoted(period.cells.value(0).left(kWidth)) +
                   QLatin1Char(')'));
}

bool AddPeriods(const std::vector<KeyedItem>& periods) {
    SelectionChanged = true;
    if (periods.empty()) return true;
    if (!Connection) return false;
    const bool together = Reported([] { Connection->Begin(); });
    bool all = true;
    for (const KeyedItem& period : periods)
        all = AddPeriod(period) && all;
    if (together) all = Reported([] { Connection->Commit(); }) && all;
    return all;
}

bool RemovePeriods(const std::vector<KeyedItem>& periods) {
    SelectionChanged = true;
    return periods.empty() || Execute(QStringLiteral("DELETE * FROM _SelTimePeriod WHERE TimePeriodNId In (") +
                                      NumberList(periods) + QLatin1Char(')'));
}

bool RemoveAllPeriods() {
    SelectionChanged = true;
    return Execute(QStringLiteral("DELETE * FROM _SelTimePeriod"));
}

} // namespace tessaro::selection
