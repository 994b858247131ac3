// A load and a save of a large device against the same host calls made by a bare loop.
#include <memory>

#include "bench/pair.h"
#include "bench/rig.h"

namespace orv::bench {
namespace {

constexpr Aim kHostBound{Ratio::TimeAtMost, 1.10};

/// Null after it told the report what is wrong.
Rig* CheckedRig(benchmark::State& state) {
    static const auto rig = std::make_unique<Rig>(DeviceSize{});
    static const std::string difference = rig->CheckScripts();
    if (!difference.empty()) {
        state.SkipWithError(difference.c_str());
        return nullptr;
    }
    state.counters["reads"] = static_cast<double>(rig->Reads());
    return rig.get();
}

void LoadAgainst(benchmark::State& state, const char* opponent, void (Rig::*play)()) {
    if (Rig* rig = CheckedRig(state))
        MeasurePair(
            state, opponent, kHostBound, [rig] { rig->Load(); }, [rig, play] { (rig->*play)(); });
}
BENCHMARK_CAPTURE(LoadAgainst, forget, "bare loop, forgets what it reads", &Rig::PlayLoad)
    ->Name("load, large device")
    ->UseManualTime();
BENCHMARK_CAPTURE(LoadAgainst, keep, "bare loop, keeps what it reads", &Rig::PlayLoadAndKeep)
    ->Name("load, large device (values kept)")
    ->UseManualTime();

/// All memory is asked for and given back.
void LoadOfANewModel(benchmark::State& state) {
    if (Rig* rig = CheckedRig(state))
        MeasurePair(
            state, "bare loop, forgets what it reads", Aim{}, [rig] { model::OutFormatConfig(rig->state).Reload(); },
            [rig] { rig->PlayLoad(); });
}
BENCHMARK(LoadOfANewModel)->Name("first load, large device")->UseManualTime();

void SaveAgainst(benchmark::State& state, const char* opponent, Lines lines, Aim aim) {
    if (Rig* rig = CheckedRig(state))
        MeasurePair(
            state, opponent, aim, [rig] { rig->Save(); }, [rig, lines] { rig->PlaySave(lines); });
}
BENCHMARK_CAPTURE(SaveAgainst, built, "bare loop, builds its debug lines", Lines::Built, kHostBound)
    ->Name("save, large device (lines built)")
    ->UseManualTime();
// A save has to build its lines, so this one has no aim: it shows what the lines cost.
BENCHMARK_CAPTURE(SaveAgainst, prepared, "bare loop, debug lines ready-made", Lines::Prepared, Aim{})
    ->Name("save, large device (lines ready)")
    ->UseManualTime();

} // namespace
} // namespace orv::bench
