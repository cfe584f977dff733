#include "Report.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>

namespace tessaro::bench {

namespace {

constexpr int kFewestTurns = 5;
constexpr int kMostTurns = 40;
constexpr int kCalmTurns = 4;          ///< so many turns without a better time on either side, and the best is found
constexpr double kShortestTurn = 30;   ///< milliseconds below which the clock and its neighbours blur the figure
constexpr double kLongest = 40 * 1000; ///< milliseconds after which only the fewest turns are waited for, or none

std::string Text(double value, const char* format) {
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

std::string Duration(double milliseconds) {
    if (milliseconds >= 1000) return Text(milliseconds / 1000, "%.2f s");
    if (milliseconds >= 1) return Text(milliseconds, "%.1f ms");
    return Text(milliseconds * 1000, "%.1f us");
}

std::string Figure(double value, const std::string& unit) {
    return unit == "ms" ? Duration(value) : Text(value, "%.0f ") + unit;
}

/// So many turns at least, and the most. What takes that long is hardly blurred by what else the machine does.
struct Turns {
    int fewest = kFewestTurns;
    int most = kMostTurns;
};

Turns TurnsOf(double once, double onceByHand) {
    if (once + onceByHand > kLongest) return {0, 0};
    if (once > kLongest / 2) return {1, kMostTurns};
    return {once > kLongest / 10 ? 2 : kFewestTurns, kMostTurns};
}

/// Notes a time that is the best so far; true when it is so by more than a hundredth.
bool Improve(double& best, double time) {
    const bool clearly = time < best * 0.99;
    best = std::min(best, time);
    return clearly;
}

} // namespace

double ProcessorMilliseconds() {
    return static_cast<double>(std::clock()) * 1000 / CLOCKS_PER_SEC;
}

double Milliseconds(const std::function<void()>& work, int times) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    for (int i = 0; i < times; ++i)
        work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count() / times;
}

void Report::Compare(const std::string& what, const std::function<void()>& ours, const std::function<void()>& byHand,
                     double allowedRatio, double free) {
    if (!Wants(what)) return;
    std::fprintf(stderr, "bench: %s\n", what.c_str());
    // The first run of each finds the pages of the files in memory, and counts.
    double bestByHand = Milliseconds(byHand);
    const double once = std::max(Milliseconds(ours), 0.0001);
    double best = once;
    const int times = std::clamp(static_cast<int>(kShortestTurn / once), 1, 20000);
    const Turns turns = TurnsOf(once, bestByHand);
    // Other programs slow both down, never for long: turns go on until neither has become faster for a while.
    int calm = 0;
    double spent = 0;
    for (int turn = 0; turn < turns.most; ++turn) {
        if (turn >= turns.fewest && (calm >= kCalmTurns || spent > kLongest)) break;
        // Who goes first changes, so that neither always finds the processor warm.
        const bool oursFirst = turn % 2 == 0;
        const double first = Milliseconds(oursFirst ? ours : byHand, times);
        const double second = Milliseconds(oursFirst ? byHand : ours, times);
        const bool better = Improve(best, oursFirst ? first : second);
        const bool betterByHand = Improve(bestByHand, oursFirst ? second : first);
        calm = better || betterByHand ? 0 : calm + 1;
        spent += (first + second) * times;
    }
    Note(what, best, bestByHand, {.ratio = allowedRatio, .free = free});
}

void Report::CompareOnce(const std::string& what, const std::function<void()>& ours,
                         const std::function<void()>& byHand, double allowedRatio, double allowedMilliseconds) {
    if (!Wants(what)) return;
    std::fprintf(stderr, "bench: %s\n", what.c_str());
    double best = Milliseconds(ours);
    for (int turn = 1; turn < kFewestTurns; ++turn)
        best = std::min(best, Milliseconds(ours));
    Note(what, best, Milliseconds(byHand), {.ratio = allowedRatio, .milliseconds = allowedMilliseconds});
}

void Report::Note(const std::string& what, double ours, double byHand, const Allowed& allowed) {
    const double ratio = ours / byHand;
    const char* const digits = allowed.ratio < 0.1 ? "%.3f" : "%.2f";
    std::string text = Text(allowed.ratio, digits);
    if (std::isfinite(allowed.milliseconds)) text += ", " + Duration(allowed.milliseconds);
    if (allowed.free > 0) text += " or +" + Duration(allowed.free);
    const bool kept = ratio <= allowed.ratio || ours - byHand <= allowed.free;
    lines_.push_back(
        {what, Duration(ours), Duration(byHand), Text(ratio, digits), text, kept && ours <= allowed.milliseconds});
}

void Report::Bound(const std::string& what, const std::function<double()>& figure, double allowed,
                   const std::string& unit) {
    if (Wants(what)) Bound(what, figure(), allowed, unit);
}

void Report::Bound(const std::string& what, double figure, double allowed, const std::string& unit) {
    if (!Wants(what)) return;
    std::fprintf(stderr, "bench: %s\n", what.c_str());
    lines_.push_back({what, Figure(figure, unit), "", "", Figure(allowed, unit), figure <= allowed});
}

bool Report::AllKept() const {
    return std::ranges::all_of(lines_, [](const Line& line) { return line.kept; });
}

void Report::Print() const {
    const Line head{"what", "ours", "hand-written", "ratio", "allowed", true};
    std::size_t width = head.what.size();
    for (const Line& line : lines_)
        width = std::max(width, line.what.size());
    const auto print = [&](const Line& line) {
        std::printf("%-*s  %10s  %12s  %5s  %16s%s\n", static_cast<int>(width), line.what.c_str(), line.ours.c_str(),
                    line.byHand.c_str(), line.ratio.c_str(), line.allowed.c_str(), line.kept ? "" : "  MISSED");
    };
    print(head);
    for (const Line& line : lines_)
        print(line);
}

} // namespace tessaro::bench
