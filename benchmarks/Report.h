#pragma once

#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace tessaro::bench {

/// The table of all figures, each beside what it may be.
class Report final {
  public:
    /// Only figures whose name holds `part` are measured; all when it is empty. The database has `times` as many values
    /// as the 5 million that the bounds are made for.
    explicit Report(std::string part, double times = 1) : part_(std::move(part)), times_(times) {}

    [[nodiscard]] bool Wants(const std::string& what) const { return what.find(part_) != std::string::npos; }
    /// A bound for work that goes over all values, or for room that each of them takes.
    [[nodiscard]] double OfAllValues(double allowed) const { return allowed * times_; }
    /// True when the database has more values than the bounds are made for.
    [[nodiscard]] bool isLarge() const { return times_ > 1; }

    /// Times our work and the same work by hand, in turns, until neither gets faster, and takes the best of each. Short
    /// work is repeated within a turn; what takes minutes is done once. `free`: so many milliseconds more than by hand
    /// are no matter.
    void Compare(const std::string& what, const std::function<void()>& ours, const std::function<void()>& byHand,
                 double allowedRatio = 1.2, double free = 0);
    /// The same where the work by hand takes minutes: it is timed once, after ours, of which the best of five counts.
    /// Ours may have a bound in milliseconds besides.
    void CompareOnce(const std::string& what, const std::function<void()>& ours, const std::function<void()>& byHand,
                     double allowedRatio, double allowedMilliseconds = std::numeric_limits<double>::infinity());
    /// Notes a figure that has a bound of its own; it is not measured unless it is wanted.
    void Bound(const std::string& what, const std::function<double()>& figure, double allowed, const std::string& unit);
    void Bound(const std::string& what, double figure, double allowed, const std::string& unit);

    /// True when no bound was missed.
    [[nodiscard]] bool AllKept() const;
    void Print() const;

  private:
    struct Line {
        std::string what, ours, byHand, ratio, allowed;
        bool kept = true;
    };
    struct Allowed {
        double ratio = 1;
        double milliseconds = std::numeric_limits<double>::infinity();
        double free = 0; ///< milliseconds more than by hand
    };
    void Note(const std::string& what, double ours, double byHand, const Allowed& allowed);

    std::string part_;
    double times_ = 1;
    std::vector<Line> lines_;
};

/// Milliseconds that the processor has worked for this process so far: other programs don't count.
[[nodiscard]] double ProcessorMilliseconds();
/// Milliseconds that the work takes, as the mean of `times`.
[[nodiscard]] double Milliseconds(const std::function<void()>& work, int times = 1);

} // namespace tessaro::bench
