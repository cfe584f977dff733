#include "map/classes/ClassBreaks.h"

#include "map/classes/BreakBounds.h"
#include "map/classes/Decimals.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessaro {

namespace {

using Values = std::vector<double>;

/// The first and the end of the values from `lower` to `upper`.
std::pair<Values::const_iterator, Values::const_iterator> Within(const Values& ascending, double lower, double upper) {
    const auto first = std::lower_bound(ascending.begin(), ascending.end(), lower);
    return {first, std::max(first, std::upper_bound(first, ascending.end(), upper))};
}

ClassBreak CountedClass(ClassValues& values, double lower, double upper, int decimals) {
    ClassBreak made;
    made.lower = AsWritten(lower);
    made.upper = upper;
    made.from = CutToDecimals(lower, decimals);
    made.to = CutToDecimals(upper, decimals);
    made.count = values.Count(made.lower, upper);
    return made;
}

/// Divides the values in the range into classes of equal count. When they don't divide evenly, the first classes get
/// one more each.
class EqualCounter final {
  public:
    EqualCounter(ClassValues& values, const ClassRequest& request)
        : values_(values), request_(request), step_(StepOfDecimals(request.decimals)) {}

    ClassBreaks Classes() {
        const int values = values_.Take(request_.minimum, request_.maximum);
        ClassBreaks classes;
        for (int i = 0; i < request_.classes; ++i) {
            place_ += values / request_.classes + (i < values % request_.classes ? 1 : 0);
            classes.push_back(Next(i));
            if (i == 0) continue;
            const ClassBreak& before = classes[classes.size() - 2];
            ClassBreak& now = classes.back();
            if (now.from == before.from && now.to == before.to) now.count = before.count;
        }
        return classes;
    }

  private:
    ClassBreak Next(int i) {
        const double value = place_ == 0 ? request_.maximum : values_.At(place_ - 1);
        double lower = request_.minimum;
        if (i == 0)
            upper_ = value;
        else if (value > upper_) {
            lower = upper_ + step_;
            upper_ = i == request_.classes - 1 ? request_.maximum : value;
        } else
            lower = AfterTies(value);
        return CountedClass(values_, lower, upper_, request_.decimals);
    }

    /// The class before already holds this value (ties). Gives the lower bound of the next class, and sets upper_ to
    /// the next greater value.
    double AfterTies(double value) {
        if (upper_ == request_.maximum) return request_.maximum;
        const double lower = AsWritten(value + step_);
        upper_ = values_.NextAbove(lower, request_.maximum).value_or(request_.maximum);
        return lower;
    }

    ClassValues& values_;
    const ClassRequest& request_;
    double step_;
    int place_ = 0;    ///< values in the classes so far
    double upper_ = 0; ///< of the class before
};

double SizeOfClass(const ClassRequest& request) {
    if (request.maximum == request.minimum) return 0;
    const double range = AsWritten(request.maximum - request.minimum);
    const double size = std::isfinite(range) ? range / request.classes
                                             : request.maximum / request.classes - request.minimum / request.classes;
    return CutToDecimals(size < 1 && request.decimals < 1 ? 1 : size, request.decimals);
}

ClassBreaks EqualSizes(ClassValues& values, const ClassRequest& request) {
    const double size = SizeOfClass(request);
    ClassBreaks classes;
    double lower = request.minimum;
    for (int i = 0; i < request.classes; ++i) {
        const bool last = i == request.classes - 1;
        const double end = AsWritten(lower + size);
        const double upper = std::min(end, request.maximum);
        if (lower > request.maximum && (last || end > request.maximum)) lower = request.maximum;
        ClassBreak made;
        made.from = made.lower = lower;
        made.to = last ? request.maximum : upper;
        made.upper = upper;
        made.count = values.Count(lower, upper);
        classes.push_back(made);
        lower = CutToDecimals(AsWritten(upper + StepOfDecimals(request.decimals)), request.decimals);
    }
    return classes;
}

/// Classes that end at the bounds. A bound between two numbers of the wanted decimals ends its class at the lower one,
/// so that values with no more decimals than that fall on the side of the bound where they belong.
ClassBreaks ClassesOfBounds(ClassValues& values, const ClassRequest& request) {
    Values taken(static_cast<std::size_t>(values.Take(request.minimum, request.maximum)));
    for (std::size_t i = 0; i < taken.size(); ++i)
        taken[i] = values.At(static_cast<int>(i));
    ClassBreaks classes;
    double lower = request.minimum;
    for (const double bound : InnerBounds(request.method, taken, request.classes)) {
        const double upper = RoundDown(bound, request.decimals);
        if (!(upper >= lower && upper < request.maximum)) continue; // also for what is no number
        classes.push_back(CountedClass(values, lower, upper, request.decimals));
        lower = AsWritten(upper + StepOfDecimals(request.decimals));
    }
    classes.push_back(CountedClass(values, lower, request.maximum, request.decimals));
    return classes;
}

} // namespace

std::vector<double> SortedValues(std::vector<double> values) {
    std::erase_if(values, [](double value) { return !std::isfinite(value); });
    std::sort(values.begin(), values.end());
    return values;
}

int CountBetween(const std::vector<double>& ascending, double lower, double upper) {
    const auto [first, end] = Within(ascending, lower, upper);
    return static_cast<int>(end - first);
}

void SetRange(ClassRequest& request, double minimum, double maximum) {
    request.minimum = RoundHalfEven(minimum, request.decimals);
    request.maximum = RoundHalfEven(maximum, request.decimals);
}

int ListedValues::Take(double lower, double upper) {
    const auto [first, end] = Within(ascending_, lower, upper);
    first_ = first - ascending_.begin();
    return static_cast<int>(end - first);
}

double ListedValues::At(int place) {
    return ascending_[static_cast<std::size_t>(first_ + place)];
}

std::optional<double> ListedValues::NextAbove(double lower, double upper) {
    const auto next = std::upper_bound(ascending_.begin(), ascending_.end(), lower);
    if (next == ascending_.end() || *next > upper) return std::nullopt;
    return *next;
}

int ListedValues::Count(double lower, double upper) {
    return CountBetween(ascending_, lower, upper);
}

ClassBreaks ComputeClasses(ClassValues& values, const ClassRequest& wanted) {
    ClassRequest request = wanted;
    request.classes = std::clamp(wanted.classes, 1, kMostClasses);
    if (!(request.minimum <= request.maximum)) return {};
    if (request.method == BreakMethod::EqualCount) return EqualCounter(values, request).Classes();
    if (request.method == BreakMethod::EqualSize) return EqualSizes(values, request);
    return ClassesOfBounds(values, request);
}

ClassBreaks ComputeClasses(const std::vector<double>& ascending, const ClassRequest& request) {
    ListedValues values(ascending);
    return ComputeClasses(values, request);
}

int ClassOf(const ClassBreaks& classes, double value) {
    const auto found = std::find_if(classes.begin(), classes.end(),
                                    [&](const ClassBreak& each) { return value >= each.from && value <= each.to; });
    return found == classes.end() ? -1 : static_cast<int>(found - classes.begin());
}

int CountOutsideClasses(const std::vector<double>& ascending, const ClassBreaks& classes) {
    return static_cast<int>(
        std::count_if(ascending.begin(), ascending.end(), [&](double value) { return ClassOf(classes, value) < 0; }));
}

} // namespace tessaro
