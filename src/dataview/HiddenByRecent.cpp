#include "dataview/HiddenByRecent.h"

#include "dataview/GridQuery.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Strings.h"
#include "view/InView.h"

#include <QLocale>

#include <algorithm>
#include <map>
#include <set>
#include <vector>

namespace tessaro {

namespace {

using Pair = std::pair<qint64, qint64>;

enum class SourceState { TakenOut, InView };

std::map<Pair, SourceState> SelectedSources() {
    std::map<Pair, SourceState> sources; // by combination and source
    for (Records rows = Select(QStringLiteral("SELECT IUSNId, SourceNId, Deleted FROM _SelIUSNId")); !rows.atEnd();
         rows.MoveNext())
        sources[{rows.Number(std::size_t{0}), rows.Number(std::size_t{1})}] =
            rows.Flag("Deleted") ? SourceState::TakenOut : SourceState::InView;
    return sources;
}

/// By IUS and area: the sources that have a value in the latest period.
using Latest = std::map<Pair, std::set<qint64>>;

constexpr auto kLatestRows =
    "SELECT DISTINCTROW D.IUSNId, D.AreaNId, D.SourceNId FROM _DataMRD AS M INNER JOIN (TimePeriod AS T INNER JOIN "
    "Data "
    "AS D ON T.TimePeriodNId = D.TimePeriodNId) ON (M.MaxOfTimePeriod = T.TimePeriod) AND (M.IUSNId = D.IUSNId) AND "
    "(M.AreaNId = D.AreaNId)";

/// The pairs of IUS and area whose latest values all come from sources that are not in view. Of most pairs one is, so
/// that little is kept.
Latest WithoutLatestInView(const std::map<Pair, SourceState>& selected) {
    Latest latest;
    std::vector<Pair> inView;
    for (Records rows = Select(QLatin1String(kLatestRows), jet::CursorType::ForwardOnly); !rows.atEnd();
         rows.MoveNext()) {
        const Pair pair(rows.Number(std::size_t{0}), rows.Number(std::size_t{1}));
        const qint64 source = rows.Number(std::size_t{2});
        const auto known = selected.find({pair.first, source});
        if (known != selected.end() && known->second == SourceState::InView)
            inView.push_back(pair);
        else
            latest[pair].insert(source);
    }
    if (latest.empty()) return latest;
    std::ranges::sort(inView);
    std::erase_if(latest, [&](const auto& entry) { return std::ranges::binary_search(inView, entry.first); });
    return latest;
}

/// Drops the pairs that have no value in view at all, since the filter hides nothing of them.
void KeepThoseWithValues(Latest& latest) {
    if (latest.empty()) return;
    std::set<qint64> combinations;
    for (const auto& entry : latest)
        combinations.insert(entry.first.first);
    QStringList list;
    for (const qint64 combination : combinations)
        list << QString::number(combination);
    std::set<Pair> withValues;
    const QString ofThese = QStringLiteral(" AND D.IUSNId in (") + list.join(QLatin1Char(',')) + QLatin1Char(')');
    for (Records rows = Select(RequeryStatement(ofThese, {}), jet::CursorType::ForwardOnly); !rows.atEnd();
         rows.MoveNext())
        withValues.emplace(rows.Number("IUSNId"), rows.Number("AreaNId"));
    std::erase_if(latest, [&](const auto& entry) { return !withValues.contains(entry.first); });
}

QStringList NamesOf(const std::set<qint64>& sources) {
    QStringList numbers;
    for (const qint64 source : sources)
        numbers << QString::number(source);
    QStringList names;
    for (Records rows = Select(QStringLiteral("SELECT [Source] FROM Source WHERE SourceNId in (") +
                               numbers.join(QLatin1Char(',')) + QStringLiteral(") ORDER BY [Source]"));
         !rows.atEnd(); rows.MoveNext())
        names << GetText(rows.Text(std::size_t{0}), true);
    return names;
}

} // namespace

HiddenByRecent FindHiddenByRecent() {
    ErrorTrap trap("FindHiddenByRecent");
    const std::map<Pair, SourceState> selected = SelectedSources();
    Latest latest = WithoutLatestInView(selected);
    KeepThoseWithValues(latest);
    HiddenByRecent hidden;
    hidden.pairs = static_cast<qint64>(latest.size());
    if (latest.empty()) return hidden;
    std::set<qint64> combinations;
    std::set<qint64> sources;
    std::set<Pair> takenOut;
    for (const auto& [pair, withLatest] : latest) {
        combinations.insert(pair.first);
        sources.insert(withLatest.begin(), withLatest.end());
        for (const qint64 source : withLatest)
            if (selected.contains({pair.first, source})) takenOut.emplace(pair.first, source);
    }
    hidden.combinations = static_cast<qint64>(combinations.size());
    hidden.sources = NamesOf(sources);
    for (const auto& [combination, source] : takenOut)
        hidden.takenOutKeys << QStringLiteral("IS_%1_%2").arg(combination).arg(source);
    return hidden;
}

QString TextOf(const HiddenByRecent& hidden) {
    if (hidden.pairs == 0) return {};
    constexpr qsizetype kMostNames = 3;
    QString names = hidden.sources.first(std::min(kMostNames, hidden.sources.size())).join(QStringLiteral(", "));
    if (hidden.sources.size() > kMostNames) names += QStringLiteral(", …");
    return GetText(hidden.combinations == 1 ? QStringLiteral("TS_RecentAreasLost")
                                            : QStringLiteral("TS_RecentPairsLost"))
        .replace(QLatin1String("%1"), QLocale::system().toString(hidden.pairs))
        .replace(QLatin1String("%2"), names);
}

} // namespace tessaro
