#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace tessaro {

/// How values are divided into classes.
enum class BreakMethod { EqualCount, EqualSize, NaturalBreaks, StandardDeviation, Pretty, Geometric };

/// One class: the values from its lower to its upper bound, both included. Classes do not touch: the next one begins
/// one step of the last decimal above this one.
struct ClassBreak {
    double from = 0; ///< the bounds with the wanted decimals, as they are shown and drawn
    double to = 0;
    double lower = 0; ///< the bounds as they were computed, by which values are counted
    double upper = 0;
    int count = 0; ///< values in the class; a class with the same shown bounds as the one before repeats its count

    bool operator==(const ClassBreak&) const = default;
};
using ClassBreaks = std::vector<ClassBreak>;

/// What the classes are to be. `minimum` and `maximum` already have the wanted decimals (RangeWithDecimals).
struct ClassRequest {
    BreakMethod method = BreakMethod::EqualCount;
    int classes = 5;
    int decimals = 0;
    double minimum = 0;
    double maximum = 0;
};

constexpr int kMostClasses = 200;

/// Values in ascending order; what is no finite number is left out.
[[nodiscard]] std::vector<double> SortedValues(std::vector<double> values);
/// The number of ascending values from one bound to another, both included.
[[nodiscard]] int CountBetween(const std::vector<double>& ascending, double lower, double upper);
/// A request's range from typed or measured limits: both rounded to its decimals, a half to the even digit.
void SetRange(ClassRequest& request, double minimum, double maximum);

/// Where the values to be divided come from: a list, or a table. Bounds are included.
class ClassValues {
  public:
    virtual ~ClassValues() = default;
    /// Takes the values from one bound to another, in ascending order, for `At`; gives how many they are.
    virtual int Take(double lower, double upper) = 0;
    /// A value of those that were taken, counted from 0.
    [[nodiscard]] virtual double At(int place) = 0;
    /// The least value above one bound and up to another; nothing when there is none.
    [[nodiscard]] virtual std::optional<double> NextAbove(double lower, double upper) = 0;
    [[nodiscard]] virtual int Count(double lower, double upper) = 0;
};

/// The values of an ascending list, which must outlive this.
class ListedValues final : public ClassValues {
  public:
    explicit ListedValues(const std::vector<double>& ascending) : ascending_(ascending) {}

    int Take(double lower, double upper) override;
    [[nodiscard]] double At(int place) override;
    [[nodiscard]] std::optional<double> NextAbove(double lower, double upper) override;
    [[nodiscard]] int Count(double lower, double upper) override;

  private:
    const std::vector<double>& ascending_;
    std::ptrdiff_t first_ = 0;
};

/// The classes of values. Equal count and equal size always give as many classes as wanted (at least 1, at
/// most MostClasses) and repeat bounds when there are too few values; the other methods then give fewer. Values outside
/// the range are in no class. Nothing when the minimum is above the maximum.
[[nodiscard]] ClassBreaks ComputeClasses(ClassValues& values, const ClassRequest& request);
[[nodiscard]] ClassBreaks ComputeClasses(const std::vector<double>& ascending, const ClassRequest& request);

/// The number of the class (from 0) that a value is drawn in: the first that holds it between its shown bounds; -1 for
/// none.
[[nodiscard]] int ClassOf(const ClassBreaks& classes, double value);
/// The number of ascending values that no class holds: with fewer decimals than the values have, values fall between
/// two classes or beyond a rounded end, and a typed range leaves out what lies beyond it.
[[nodiscard]] int CountOutsideClasses(const std::vector<double>& ascending, const ClassBreaks& classes);

} // namespace tessaro
