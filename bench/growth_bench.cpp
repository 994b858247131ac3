// Time an item as the number of items grows: one large device against a small one so many times over.
#include <array>
#include <map>
#include <memory>
#include <streambuf>

#include "bench/pair.h"
#include "bench/rig.h"
#include "model/format_export.h"

namespace orv::bench {
namespace {

constexpr std::int16_t kItems = 60; ///< of each format at 1x; 16 times as many still have 16-bit elements
constexpr Aim kLinear{Ratio::TimeAtMost, 1.25};

/// Hardly anything but items, so that nothing constant hides the growth.
Rig& RigOf(std::int64_t factor) {
    static std::map<std::int64_t, std::unique_ptr<Rig>> rigs;
    auto& rig = rigs[factor];
    if (!rig)
        rig = std::make_unique<Rig>(DeviceSize{1, 1, 32, static_cast<std::int16_t>(kItems * factor)});
    return *rig;
}

void Load(Rig& rig) {
    rig.Load();
}
void Save(Rig& rig) {
    rig.Save();
}
void Export(Rig& rig) {
    benchmark::DoNotOptimize(model::FormatStructure(rig.root, rig.state));
}
void HostLoad(Rig& rig) {
    rig.PlayLoad();
}
void HostSave(Rig& rig) {
    rig.PlaySave(Lines::Built);
}

void Grow(benchmark::State& state, void (*action)(Rig&), Aim aim) {
    const std::int64_t factor = state.range(0);
    Rig& small = RigOf(1);
    Rig& large = RigOf(factor);
    const auto repeated = [&] {
        for (std::int64_t i = 0; i < factor; ++i)
            action(small);
    };
    MeasurePair(
        state, "1x, as many times", aim, [&] { action(large); }, repeated);
}
BENCHMARK_CAPTURE(Grow, load, Load, kLinear)->Name("growth of load")->Arg(4)->Arg(16)->UseManualTime();
BENCHMARK_CAPTURE(Grow, hostLoad, HostLoad, Aim{})
    ->Name("growth of load, host alone")
    ->Arg(4)
    ->Arg(16)
    ->UseManualTime();
BENCHMARK_CAPTURE(Grow, save, Save, kLinear)->Name("growth of save")->Arg(4)->Arg(16)->UseManualTime();
BENCHMARK_CAPTURE(Grow, hostSave, HostSave, Aim{})
    ->Name("growth of save, host alone")
    ->Arg(4)
    ->Arg(16)
    ->UseManualTime();
BENCHMARK_CAPTURE(Grow, export, Export, kLinear)->Name("growth of export")->Arg(4)->Arg(16)->UseManualTime();

} // namespace
} // namespace orv::bench
