#pragma once

#include <QStringList>

#include <optional>
#include <vector>

namespace tessaro {

/// Where periods stand on a measured axis.
struct PeriodPlaces {
    std::vector<double> places; ///< one for each period: its middle, in years or as a sheet's date
    bool dates = false;         ///< days as sheets count them; else years
};

/// Measures periods: "2000", "2000.10", "2000.10.05", and from one to another of these ("2001-2003"). Years alone are
/// measured in years; where a month or day stands among them all are dates (in years again before 1900, where sheets
/// have no dates). Nothing when one of them reads as no period.
[[nodiscard]] std::optional<PeriodPlaces> MeasurePeriods(const QStringList& periods);

} // namespace tessaro
