// The table of ratios is made from this program's report.
#include <benchmark/benchmark.h>

BENCHMARK_MAIN();
