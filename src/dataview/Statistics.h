#pragma once

#include <QString>

#include <vector>

/// The statistics of the values in view.
namespace tessaro {

enum class StatsLevel { Indicator, Unit, Subpop };

/// A line of the statistics: an indicator, a unit below it or a subpopulation below that.
struct StatsLine {
    StatsLevel level = StatsLevel::Indicator;
    QString name;
    QString count, minimum, maximum, average, deviation; ///< as the statement gives them
    bool isGlobal = false;
};

/// The union of the three levels over the values in view, under a row filter.
[[nodiscard]] QString StatisticsStatement(const QString& rowFilter);
/// Values in view that are no numbers. The statistics don't count them.
struct UnreadableValues {
    struct Value {
        QString indicator, area, timePeriod, text;
    };
    qint64 count = 0;
    std::vector<Value> first; ///< some of them
};
[[nodiscard]] UnreadableValues FindUnreadableValues(const QString& rowFilter);
/// What the statistics say about them; empty when there are none.
[[nodiscard]] QString TextOf(const UnreadableValues& values);

/// The lines of the statement, each unit behind its indicator and each subpopulation behind its unit. Where values that
/// are no numbers make it fail, the lines are those of the other values, and `unreadable` is told of them. None when
/// the user has stopped it, which a StatementWatch around the call tells.
[[nodiscard]] std::vector<StatsLine> ReadStatistics(const QString& rowFilter, UnreadableValues* unreadable = nullptr);

} // namespace tessaro
