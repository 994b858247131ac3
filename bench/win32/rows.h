#pragma once
// Rows of the one table that programs with windows measure: two ways to do one thing, side by side in one run.
#include <functional>

namespace orv::bench {

/// What is done, against what, and how many times the opponent's time it may take; 0: no aim.
struct Row {
    const char* name;
    const char* opponent;
    double aim = 0;
};

using Action = std::function<void()>;

/// For each pair untimed work that puts both sides into the state they start from.
struct Sides {
    Action ours;
    Action theirs;
    Action before = [] {};
};

class Rows {
  public:
    /// The first argument: about so many seconds a row.
    Rows(int argc, char** argv);
    /// Pairs in alternating order; writes medians and the middle half of the paired ratios.
    void Measure(const Row& row, const Sides& sides) const;

  private:
    double seconds_;
};

/// Runs `measure` in a COM apartment of its own; says what went wrong and returns 1 when it raises.
int Run(int argc, char** argv, const std::function<void(const Rows&)>& measure);

/// Raises std::runtime_error with `what` unless it holds: two sides that differ are no measurement.
void Require(bool holds, const char* what);

} // namespace orv::bench
