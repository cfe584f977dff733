#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace tessaro {

/// What a thematic map shows. An empty subgroup stands for all of them.
struct MapTheme {
    QString indicator;
    QString subpop;
    QString unit;

    [[nodiscard]] bool IsEmpty() const { return indicator.isEmpty() && unit.isEmpty(); }
    bool operator==(const MapTheme&) const = default;
};

/// Indicator and unit of the first row in view, of all its subgroups; an empty theme when nothing is in view.
[[nodiscard]] MapTheme FirstTheme();

/// What Get_Data found.
struct MapDataCounts {
    bool filled = false; ///< False when a statement failed: `_MapData` is as it was
    int areas = 0;       ///< rows of `_MapData`, one for each area
    int unreadable = 0;  ///< areas left out because their value is no number; the map shows them as missing
};

/// Fills `_MapData` with the rows of a theme that are in view, and keeps the most recent row of each area; of several
/// of one period, any one. With `latestPeriod`, later ones count as not in view. Values that were all stored with a
/// decimal comma get a point.
MapDataCounts Get_Data(const MapTheme& theme, const QString& latestPeriod = {});

/// The periods of a theme's values in view, in ascending order.
[[nodiscard]] QStringList PeriodsOf(const MapTheme& theme);

/// The values of `_MapData` in ascending order.
[[nodiscard]] std::vector<double> ValuesOfMapData();
/// The most decimals that a value of `_MapData` has.
[[nodiscard]] int SetDecimal();

/// The least and the greatest value of `_MapData`; both 0 when it is empty.
struct ValueLimits {
    double minimum = 0;
    double maximum = 0;
};
[[nodiscard]] ValueLimits LimitsOfMapData();
/// The same of all values of a theme in view, whatever their period.
[[nodiscard]] ValueLimits LimitsOf(const MapTheme& theme);

} // namespace tessaro
