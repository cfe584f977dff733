#include "map/classes/BreakChoices.h"

namespace tessaro {

const std::vector<BreakChoiceTexts>& BreakChoices() {
    static const std::vector<BreakChoiceTexts> choices{
        {BreakChoice::EqualCount, "Equal Count", "TS_EqualCountHint", ""},
        {BreakChoice::EqualSize, "Equal Size", "TS_EqualSizeHint", ""},
        {BreakChoice::Continuous, "Continuous", "TS_ContinuousHint", ""},
        {BreakChoice::Discontinuous, "Discontinuous", "TS_DiscontinuousHint", ""},
        {BreakChoice::NaturalBreaks, "TS_NaturalBreaks", "TS_NaturalBreaksHint",
         "W. D. Fisher (1958), On Grouping for Maximum Homogeneity; G. F. Jenks (1967), The Data Model Concept in "
         "Statistical Mapping"},
        {BreakChoice::StandardDeviation, "StdDev", "TS_StandardDeviationHint",
         "T. A. Slocum et al. (2009), Thematic Cartography and Geovisualization"},
        {BreakChoice::Pretty, "TS_PrettyBreaks", "TS_PrettyBreaksHint",
         "R. A. Becker, J. M. Chambers, A. R. Wilks (1988), The New S Language"},
        {BreakChoice::Geometric, "TS_GeometricBreaks", "TS_GeometricBreaksHint",
         "B. D. Dent (1999), Cartography: Thematic Map Design"},
    };
    return choices;
}

} // namespace tessaro
