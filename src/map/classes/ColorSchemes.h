#pragma once

#include <QColor>

#include <vector>

namespace tessaro {

/// Colours for classes that people with deficient colour vision can tell apart. Sequential schemes go from light for
/// low values to dark for high ones; diverging ones have a light middle and two hues.
struct ColorScheme {
    const char* caption; ///< key of the string table
    bool diverging;
    std::vector<QColor> anchors; ///< in equal distances, at least two
};

/// All schemes, the sequential ones first. From ColorBrewer 2.0 (C. A. Brewer, Pennsylvania State University) those
/// that it marks as colorblind safe; Viridis by S. van der Walt and N. Smith, Cividis by J. Nuñez, C. Anderton and R.
/// Renslow (2018).
[[nodiscard]] const std::vector<ColorScheme>& ColorSchemes();
/// So many colours of a scheme, between its anchors where there are more; nothing for a count below 1.
[[nodiscard]] std::vector<QColor> SchemeColors(const ColorScheme& scheme, int count);

} // namespace tessaro
