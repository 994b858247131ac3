// An interactive save over a loopback socket against a bare loop of the same requests to the same device.
#include <memory>
#include <string>
#include <vector>

#include "bench/device_process.h"
#include "bench/pair.h"
#include "bench/rig.h"
#include "host/sim/line_protocol.h"
#include "host/sim/sim_device.h"
#include "host/sim/tcp_service.h"
#include "host/sim/utf8.h"

namespace orv::bench {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kDelay{10}; ///< as a device takes that writes what it is told
constexpr Aim kWaitBound{Ratio::TimeAtMost, 1.05};
constexpr Aim kIdle{Ratio::TimeAtMost, 0.02};
constexpr DeviceSize kFew{1, 1, 1, 1}; ///< a save of about a second, when each request takes that long
constexpr DeviceSize kMany{8, 8, 4, 16};

/// A model whose interactive saves go to a device in another process.
class Interactive {
  public:
    Interactive(const DeviceProcess& device, const DeviceSize& size) : device_(device), rig_(size) {
        const auto service = std::make_shared<sim::TcpMibSapService>(
            rig_.platform.pump, sim::TcpMibSapService::Endpoint{.port = device_.Port(), .ports = {}});
        service->SetTraffic([this](std::wstring_view line) {
            if (line.starts_with(L"> "))
                requests_.push_back(sim::ToUtf8(line.substr(2)) + "\n");
        });
        rig_.host.SetService(service);
        Save();
        service->SetTraffic({});
        // The traffic hides the password; the device wants it.
        for (std::string& line : requests_)
            if (line.starts_with("SESSION "))
                line = sim::FormatLine("SESSION", {L"3", sim::SessionPassword(3)});
    }

    void Save() {
        if (!rig_.root.Save(true))
            throw std::runtime_error("the save failed");
    }
    void PlaySave() const { device_.Converse(requests_); }
    std::size_t Requests() const { return requests_.size(); }

  private:
    const DeviceProcess& device_;
    Rig rig_;
    std::vector<std::string> requests_;
};

/// All together: the processes branch off before a service has a thread.
struct Links {
    DeviceProcess slowDevice{kFew, kDelay};
    DeviceProcess quickDevice{kMany, milliseconds{0}};
    Interactive slow{slowDevice, kFew};
    Interactive quick{quickDevice, kMany};
};
Links& All() {
    static Links links;
    return links;
}

void SaveAgainstSocket(benchmark::State& state, Interactive Links::*which, Aim aim) {
    Interactive& link = All().*which;
    MeasurePair(
        state, "bare request-answer loop", aim, [&] { link.Save(); }, [&] { link.PlaySave(); }, kWallTime);
    state.counters["requests"] = static_cast<double>(link.Requests());
}
BENCHMARK_CAPTURE(SaveAgainstSocket, slow, &Links::slow, kWaitBound)
    ->Name("interactive save (10 ms a request)")
    ->UseManualTime();
BENCHMARK_CAPTURE(SaveAgainstSocket, quick, &Links::quick, Aim{})
    ->Name("interactive save (device without delay)")
    ->UseManualTime();

void ProcessorTimeOfAWait(benchmark::State& state) {
    Interactive& link = All().slow;
    const auto save = [&link] { link.Save(); };
    Pairs pairs(kIdle);
    for ([[maybe_unused]] auto _ : state) {
        const double before = Seconds(kProcessTime);
        const double wall = Timed(save, kWallTime);
        pairs.Add(Seconds(kProcessTime) - before, wall);
        state.SetIterationTime(wall);
    }
    pairs.Report(state, "wall time of the same save");
}
BENCHMARK(ProcessorTimeOfAWait)->Name("processor time of an interactive save (10 ms a request)")->UseManualTime();

} // namespace
} // namespace orv::bench
