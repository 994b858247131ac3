#pragma once
// A model over the in-memory bench host with a generated device, opened.
#include <cstdint>
#include <string>
#include <vector>

#include "bench/host_script.h"
#include "bench/large_device.h"
#include "host/sim/bench_host.h"
#include "host/sim/portable_platform.h"
#include "model/out_format_config.h"

namespace orv::bench {

/// As cheap as a debug output can be, so that the model's own share shows.
class CountingDebug final : public platform::DebugOutput {
  public:
    bool keep = false;
    std::vector<std::wstring> lines; ///< while `keep`
    std::uint64_t characters = 0;

    void Line(std::wstring_view line) override {
        characters += line.size();
        if (keep)
            lines.emplace_back(line);
    }
};

class Rig {
  public:
    explicit Rig(const DeviceSize& size);
    Rig(const Rig&) = delete;
    Rig& operator=(const Rig&) = delete;

    void Load() { root.Reload(); }
    void Save();
    /// The host calls of a load or a save and nothing else.
    void PlayLoad() { Play(loadScript_, Host(), Lines::None); }
    void PlayLoadAndKeep() { Play(loadScript_, Host(), Lines::None, &kept_); }
    void PlaySave(Lines lines) { Play(saveScript_, Host(), lines); }

    /// Empty when script and model make the same calls with the same arguments and write the same lines, else the
    /// first difference.
    std::string CheckScripts();
    /// Parameters that a load reads.
    std::size_t Reads() const;

    DeviceSize size;
    sim::PortablePlatform platform;
    CountingDebug debug;
    platform::Services services{platform.boxes, debug, platform.pump, platform.registry, platform.desktop};
    sim::BenchHost host;
    device::DeviceState state;
    model::OutFormatConfig root;

  private:
    struct Trace {
        std::vector<sim::CallGate::Call> calls;
        std::vector<std::wstring> lines;
    };
    template <typename Action>
    Trace Record(const Action& action);
    HostObjects Host();

    std::vector<HostStep> loadScript_;
    std::vector<HostStep> saveScript_;
    Kept kept_;
};

} // namespace orv::bench
