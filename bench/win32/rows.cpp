#include "bench/win32/rows.h"

#include "platform/win32/system.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <vector>

#include <ole2.h>

namespace orv::bench {
namespace {

constexpr int kWarmUp = 2;
constexpr std::size_t kFewest = 9;
constexpr std::size_t kFewestOfSlow = 5;
constexpr int kPatience = 4; ///< times the seconds of a row
constexpr std::size_t kMost = 2000;

double Now() {
    LARGE_INTEGER count{}, frequency{};
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&count);
    return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// What one side left in the queue is no work of the other's.
void EmptyQueue() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

double Timed(const Action& action) {
    EmptyQueue();
    const double before = Now();
    action();
    EmptyQueue(); // what it put off is its own work
    return Now() - before;
}

double Quantile(std::vector<double> samples, double part) {
    std::sort(samples.begin(), samples.end());
    return samples[static_cast<std::size_t>(part * static_cast<double>(samples.size() - 1))];
}

struct Samples {
    std::vector<double> ours, theirs, ratios;
};

void Pair(const Sides& sides, bool oursFirst, Samples& samples) {
    sides.before();
    double ours = oursFirst ? Timed(sides.ours) : 0;
    const double theirs = Timed(sides.theirs);
    ours = oursFirst ? ours : Timed(sides.ours);
    samples.ours.push_back(ours);
    samples.theirs.push_back(theirs);
    samples.ratios.push_back(ours / theirs);
}

void Write(const Row& row, const Samples& samples) {
    std::printf(
        "{\"name\": \"%s\", \"ours\": %.9g, \"theirs\": %.9g, \"label\": \"%s\", \"ratio\": %.4g, \"low\": %.4g, "
        "\"high\": %.4g, \"kind\": %d, \"aim\": %.4g, \"pairs\": %u, \"where\": \"wine\"}\n",
        row.name, Quantile(samples.ours, 0.5), Quantile(samples.theirs, 0.5), row.opponent,
        Quantile(samples.ratios, 0.5), Quantile(samples.ratios, 0.25), Quantile(samples.ratios, 0.75),
        row.aim > 0 ? 0 : 2, row.aim, static_cast<unsigned>(samples.ratios.size()));
    std::fflush(stdout);
}

} // namespace

Rows::Rows(int argc, char** argv) : seconds_(argc > 1 ? std::atof(argv[1]) : 5) {}

void Rows::Measure(const Row& row, const Sides& sides) const {
    Samples samples;
    for (int i = 0; i < kWarmUp; ++i)
        Pair(sides, i % 2 == 0, samples);
    samples = {};
    const double start = Now();
    const auto wanted = [&] {
        const std::size_t count = samples.ratios.size();
        const double spent = Now() - start;
        return count < kFewestOfSlow || (count < kFewest && spent < kPatience * seconds_) ||
               (count < kMost && spent < seconds_);
    };
    while (wanted())
        Pair(sides, samples.ratios.size() % 2 == 0, samples);
    Write(row, samples);
}

int Run(int argc, char** argv, const std::function<void(const Rows&)>& measure) {
    if (FAILED(OleInitialize(nullptr)))
        return 1;
    int status = 0;
    try {
        measure(Rows(argc, argv));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        status = 1;
    }
    OleUninitialize();
    return status;
}

void Require(bool holds, const char* what) {
    if (!holds)
        throw std::runtime_error(what);
}

} // namespace orv::bench
