#pragma once

#include "map/classes/ClassBreaks.h"

#include <vector>

namespace tessaro {

/// The entries of cboBBreak. Two of them, between the methods, keep the classes and let their bounds be edited.
enum class BreakChoice {
    EqualCount,
    EqualSize,
    Continuous,
    Discontinuous,
    NaturalBreaks,
    StandardDeviation,
    Pretty,
    Geometric
};

/// True when applying the choice computes classes anew.
[[nodiscard]] bool ComputesClasses(BreakChoice choice);
/// The method of a choice that computes; equal count for the others.
[[nodiscard]] BreakMethod MethodOf(BreakChoice choice);

enum class Bound { From, To };

/// A lower bound can be edited with Discontinuous only, an upper one also with Continuous.
[[nodiscard]] bool MayEdit(BreakChoice choice, Bound bound);

/// Sets one shown bound of a class (from 0) to a value that the user gave. With Continuous the next class begins one
/// step above its new upper bound, and both are counted anew; with Discontinuous nothing else changes. Refused (False,
/// the classes as they were) where MayEdit forbids it, for a bound on the wrong side of the class's other one, and for
/// one that isn't inside the neighbouring classes: above the one before, below the one behind. The class that moves
/// along with Continuous keeps its upper bound and may not end before it begins.
[[nodiscard]] bool EditBound(ClassBreaks& classes, int row, Bound bound, double value, BreakChoice choice, int decimals,
                             const std::vector<double>& ascending);

} // namespace tessaro
