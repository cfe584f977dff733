#pragma once

#include <QString>

#include <vector>

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
/// Its lines, each unit behind its indicator and each subpopulation behind its unit.
[[nodiscard]] std::vector<StatsLine> ReadStatistics(const QString& rowFilter);

} // namespace tessaro
