#pragma once

#include "map/classes/ClassBreaks.h"

#include <vector>

namespace tessaro {

// Where methods of classification end their classes: the upper bounds of all but the last class, in ascending order. A
// value belongs to the class of the first bound that is not below it. Values are ascending; none give no bounds.

/// The bounds of one of these methods; none for equal count and equal size, which have rules of their own.
[[nodiscard]] std::vector<double> InnerBounds(BreakMethod method, const std::vector<double>& ascending, int classes);

/// The classes with the least sum of squared deviations from their means (W. D. Fisher, "On Grouping for Maximum
/// Homogeneity", 1958; G. F. Jenks, "The Data Model Concept in Statistical Mapping", 1967). Exact. Fewer classes when
/// there are fewer different values. The bounds are values.
[[nodiscard]] std::vector<double> NaturalBreakBounds(const std::vector<double>& ascending, int classes);
/// Whole standard deviations (of a sample) from the mean. An even number of classes has a bound at the mean; for an odd
/// one the middle class reaches one standard deviation to both sides (T. A. Slocum et al., "Thematic Cartography and
/// Geovisualization", 2009). Bounds may lie outside the values.
[[nodiscard]] std::vector<double> StandardDeviationBounds(const std::vector<double>& ascending, int classes);
/// Multiples of 1, 2 or 5 times a power of ten, in about as many classes as wanted (R. A. Becker, J. M. Chambers and
/// A. R. Wilks, "The New S Language", 1988).
[[nodiscard]] std::vector<double> PrettyBounds(const std::vector<double>& ascending, int classes);
/// Bounds that grow by a constant factor (B. D. Dent, "Cartography: Thematic Map Design", 1999). Negative values are
/// mirrored; a range that holds 0 is moved first so that its least value is 1.
[[nodiscard]] std::vector<double> GeometricBounds(const std::vector<double>& ascending, int classes);

} // namespace tessaro
