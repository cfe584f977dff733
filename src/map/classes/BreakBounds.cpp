#include "map/classes/BreakBounds.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace tessaro {

namespace {

using Values = std::vector<double>;

double MeanOf(const Values& values) {
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

/// Different values with how often each occurs, and sums over them from which the cost of any run of them follows.
class DifferentValues final {
  public:
    explicit DifferentValues(const Values& ascending) {
        const double mean = MeanOf(ascending); // taken off, so that the squares stay small
        for (const double value : ascending) {
            if (values_.empty() || value != values_.back()) {
                values_.push_back(value);
                sums_.push_back(sums_.back());
            }
            sums_.back().weight += 1;
            sums_.back().sum += value - mean;
            sums_.back().squares += (value - mean) * (value - mean);
        }
    }
    [[nodiscard]] int Size() const { return static_cast<int>(values_.size()); }
    [[nodiscard]] double operator[](int place) const { return values_[static_cast<std::size_t>(place)]; }
    /// The sum of squared deviations from their mean of the values from `first` to `last`.
    [[nodiscard]] double Cost(int first, int last) const {
        const Sums& before = sums_[static_cast<std::size_t>(first)];
        const Sums& upTo = sums_[static_cast<std::size_t>(last) + 1];
        const double sum = upTo.sum - before.sum;
        return std::max(0.0, upTo.squares - before.squares - sum * sum / (upTo.weight - before.weight));
    }

  private:
    struct Sums {
        double weight = 0;
        double sum = 0;
        double squares = 0;
    };
    Values values_;
    std::vector<Sums> sums_{Sums()};
};

/// The best division into k classes, for k = 1, 2, 3 ..., each computed from the one for k - 1. The best start of the
/// last class never moves down as the last value moves up, so the result for the middle of a stretch bounds the search
/// in both halves: n log n for each k.
class BestDivision final {
  public:
    BestDivision(const DifferentValues& values, int classes) : values_(values), classes_(classes) {
        for (int last = 0; last < values.Size(); ++last)
            costs_.push_back(values.Cost(0, last));
        for (int classNumber = 1; classNumber < classes; ++classNumber) {
            before_ = costs_;
            starts_.emplace_back(costs_.size(), 0);
            Fill(classNumber, values.Size() - 1, classNumber, values.Size() - 1);
        }
    }

    [[nodiscard]] Values Bounds() const {
        Values bounds;
        int last = values_.Size() - 1;
        for (int classNumber = classes_ - 1; classNumber > 0; --classNumber) {
            last = starts_[static_cast<std::size_t>(classNumber) - 1][static_cast<std::size_t>(last)] - 1;
            bounds.push_back(values_[last]);
        }
        std::reverse(bounds.begin(), bounds.end());
        return bounds;
    }

  private:
    /// Costs and starts for the last values from `low` to `high`, whose class starts between `firstStart` and
    /// `lastStart`.
    void Fill(int low, int high, int firstStart, int lastStart) {
        if (low > high) return;
        const int last = low + (high - low) / 2;
        double best = std::numeric_limits<double>::infinity();
        int bestStart = firstStart;
        for (int start = firstStart; start <= std::min(lastStart, last); ++start) {
            const double cost = before_[static_cast<std::size_t>(start) - 1] + values_.Cost(start, last);
            if (cost >= best) continue;
            best = cost;
            bestStart = start;
        }
        costs_[static_cast<std::size_t>(last)] = best;
        starts_.back()[static_cast<std::size_t>(last)] = bestStart;
        Fill(low, last - 1, firstStart, bestStart);
        Fill(last + 1, high, bestStart, lastStart);
    }

    const DifferentValues& values_;
    int classes_;
    Values before_; ///< the least cost of the values up to each place, with one class less
    Values costs_;
    std::vector<std::vector<int>> starts_; ///< of the last class, for each number of classes from 2
};

/// The nearest of 1, 2, 5 and 10 times a power of ten, small steps being preferred a little.
double NiceStep(double size) {
    const double power = std::pow(10, std::floor(std::log10(size)));
    double step = power;
    if (2 * power - size < 1.5 * (size - step)) step = 2 * power;
    if (5 * power - size < 2.75 * (size - step)) step = 5 * power;
    if (10 * power - size < 1.5 * (size - step)) step = 10 * power;
    return step;
}

} // namespace

std::vector<double> NaturalBreakBounds(const std::vector<double>& ascending, int classes) {
    if (ascending.empty()) return {};
    const DifferentValues values(ascending);
    return BestDivision(values, std::min(classes, values.Size())).Bounds();
}

std::vector<double> StandardDeviationBounds(const std::vector<double>& ascending, int classes) {
    if (ascending.size() < 2) return {};
    const double mean = MeanOf(ascending);
    double squares = 0;
    for (const double value : ascending)
        squares += (value - mean) * (value - mean);
    const double deviation = std::sqrt(squares / static_cast<double>(ascending.size() - 1));
    Values bounds;
    for (int i = 1; i < classes; ++i) {
        const int half = classes / 2;
        const int steps = classes % 2 == 0 ? i - half : (i <= half ? i - half - 1 : i - half);
        bounds.push_back(mean + steps * deviation);
    }
    return bounds;
}

std::vector<double> PrettyBounds(const std::vector<double>& ascending, int classes) {
    if (ascending.empty() || ascending.front() == ascending.back()) return {};
    const double step = NiceStep((ascending.back() - ascending.front()) / classes);
    if (!std::isnormal(step)) return {};
    Values bounds;
    const double first = std::floor(ascending.front() / step + 1e-7) + 1;
    for (double i = 0; (first + i) * step < ascending.back() && i < kMostClasses; ++i)
        bounds.push_back((first + i) * step);
    return bounds;
}

std::vector<double> GeometricBounds(const std::vector<double>& ascending, int classes) {
    if (ascending.empty() || ascending.front() == ascending.back()) return {};
    const double least = ascending.front();
    const double greatest = ascending.back();
    const double shift = least > 0 || greatest < 0 ? 0 : 1 - least;
    Values bounds;
    for (int i = 1; i < classes; ++i)
        bounds.push_back(
            (least + shift) * std::pow((greatest + shift) / (least + shift), static_cast<double>(i) / classes) - shift);
    return bounds;
}

std::vector<double> InnerBounds(BreakMethod method, const std::vector<double>& ascending, int classes) {
    switch (method) {
    case BreakMethod::NaturalBreaks:
        return NaturalBreakBounds(ascending, classes);
    case BreakMethod::StandardDeviation:
        return StandardDeviationBounds(ascending, classes);
    case BreakMethod::Pretty:
        return PrettyBounds(ascending, classes);
    case BreakMethod::Geometric:
        return GeometricBounds(ascending, classes);
    case BreakMethod::EqualCount:
    case BreakMethod::EqualSize:
        break;
    }
    return {};
}

} // namespace tessaro
