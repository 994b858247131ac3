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

/// Processor time of this thread: what other processes take does not count.
inline double ThreadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

template <typename Action>
double Timed(Action& action) {
    const double before = ThreadSeconds();
    action();
    return ThreadSeconds() - before;
}

/// Sorts the samples. `part` is 0 to 1.
inline double Quantile(std::vector<double>& samples, double part) {
    std::sort(samples.begin(), samples.end());
    return samples[static_cast<std::size_t>(part * static_cast<double>(samples.size() - 1))];
}

/// One pair an iteration, in alternating order. Reports medians and the middle half of the paired ratios.
template <typename Ours, typename Theirs>
void MeasurePair(benchmark::State& state, const char* opponent, Aim aim, Ours ours, Theirs theirs) {
    ours(); // caches and allocator as they are from then on
    theirs();
    std::vector<double> times, opponents, ratios;
    for ([[maybe_unused]] auto _ : state) {
        const bool first = times.size() % 2 == 0;
        double time = first ? Timed(ours) : 0;
        const double other = Timed(theirs);
        time = first ? time : Timed(ours);
        state.SetIterationTime(time + other);
        times.push_back(time);
        opponents.push_back(other);
        ratios.push_back(aim.ratio == Ratio::SpeedAtLeast ? other / time : time / other);
    }
    state.SetLabel(opponent);
    state.counters["ours"] = Quantile(times, 0.5);
    state.counters["theirs"] = Quantile(opponents, 0.5);
    state.counters["ratio"] = Quantile(ratios, 0.5);
    state.counters["low"] = Quantile(ratios, 0.25);
    state.counters["high"] = Quantile(ratios, 0.75);
    state.counters["aim"] = aim.value;
    state.counters["kind"] = static_cast<double>(aim.ratio);
}

} // namespace orv::bench
