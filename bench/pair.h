#pragma once
// Two ways to do one thing, measured side by side: what disturbs the machine disturbs both.
#include <algorithm>
#include <ctime>
#include <vector>

#include <benchmark/benchmark.h>

namespace orv::bench {

enum class Ratio {
    TimeAtMost,   ///< ours / theirs, to be at most the aim
    SpeedAtLeast, ///< theirs / ours, to be at least the aim
    Reference,    ///< ours / theirs, without an aim
};

struct Aim {
    Ratio ratio = Ratio::Reference;
    double value = 0;
};

inline double Seconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// Processor time of this thread: what other processes take does not count.
constexpr clockid_t kThreadTime = CLOCK_THREAD_CPUTIME_ID;
/// Processor time of all threads.
constexpr clockid_t kProcessTime = CLOCK_PROCESS_CPUTIME_ID;
/// For what waits.
constexpr clockid_t kWallTime = CLOCK_MONOTONIC;

template <typename Action>
double Timed(Action& action, clockid_t clock) {
    const double before = Seconds(clock);
    action();
    return Seconds(clock) - before;
}

/// Sorts the samples. `part` is 0 to 1.
inline double Quantile(std::vector<double>& samples, double part) {
    std::sort(samples.begin(), samples.end());
    return samples[static_cast<std::size_t>(part * static_cast<double>(samples.size() - 1))];
}

/// The samples of one row: medians and the middle half of the paired ratios.
class Pairs {
  public:
    explicit Pairs(Aim aim) : aim_(aim) {}

    void Add(double ours, double theirs) {
        ours_.push_back(ours);
        theirs_.push_back(theirs);
        ratios_.push_back(aim_.ratio == Ratio::SpeedAtLeast ? theirs / ours : ours / theirs);
    }
    std::size_t Count() const { return ratios_.size(); }

    void Report(benchmark::State& state, const char* opponent) {
        state.SetLabel(opponent);
        state.counters["ours"] = Quantile(ours_, 0.5);
        state.counters["theirs"] = Quantile(theirs_, 0.5);
        state.counters["ratio"] = Quantile(ratios_, 0.5);
        state.counters["low"] = Quantile(ratios_, 0.25);
        state.counters["high"] = Quantile(ratios_, 0.75);
        state.counters["aim"] = aim_.value;
        state.counters["kind"] = static_cast<double>(aim_.ratio);
    }

  private:
    Aim aim_;
    std::vector<double> ours_, theirs_, ratios_;
};

/// One pair an iteration, in alternating order.
template <typename Ours, typename Theirs>
void MeasurePair(benchmark::State& state, const char* opponent, Aim aim, Ours ours, Theirs theirs,
                 clockid_t clock = kThreadTime) {
    ours(); // caches and allocator as they are from then on
    theirs();
    Pairs pairs(aim);
    for ([[maybe_unused]] auto _ : state) {
        const bool first = pairs.Count() % 2 == 0;
        double time = first ? Timed(ours, clock) : 0;
        const double other = Timed(theirs, clock);
        time = first ? time : Timed(ours, clock);
        state.SetIterationTime(time + other);
        pairs.Add(time, other);
    }
    pairs.Report(state, opponent);
}

} // namespace orv::bench
