#pragma once
// The portable host with a device behind it, ready for a test.
#include <map>
#include <memory>
#include <string>

#include "addon/process_state.h"
#include "host/sim/bench_host.h"
#include "host/sim/local_service.h"
#include "host/sim/portable_platform.h"
#include "host/sim/sim_device.h"
#include "model/out_format_config.h"

namespace orv::test {

/// Read once a process: checking a file against its schema takes longer than most tests.
inline const sim::SystemDescription& Sample(const std::string& name) {
    static std::map<std::string, sim::SystemDescription> read;
    const auto found = read.find(name);
    if (found != read.end())
        return found->second;
    return read.emplace(name, sim::LoadDescription(std::string(ORV_SOURCE_DIR "/samples/") + name)).first->second;
}

struct Bench {
    explicit Bench(const std::string& sample = "tiny.json", sim::FaultPlan faults = {}, std::int16_t deviceIndex = 0)
        : Bench(Sample(sample), std::move(faults), deviceIndex) {}

    Bench(const sim::SystemDescription& system, sim::FaultPlan faults, std::int16_t deviceIndex)
        : host(system), cluster(system.devices.front().cluster),
          device(std::make_shared<sim::SimDevice>(*system.Find(cluster, deviceIndex), std::move(faults))),
          service(std::make_shared<sim::LocalMibSapService>(std::vector{device}, platform.pump)),
          state(platform.services, host) {
        platform.pump.SetLimit(std::chrono::seconds(20));
        host.SetService(service);
        host.Windows().commitPanel = [](device::WindowHandle) {};
        state.current.cluster = cluster;
        state.current.device = deviceIndex;
    }

    /// What the component's Show does to the state, without a component.
    void Open(std::int32_t accessLevel) {
        state.application = host.Application();
        state.manager = host.CreateConfigurationManager();
        host.SetAccessLevel(accessLevel);
        state.configuration = state.manager->GetConfiguration();
        state.current.accessLevel = accessLevel;
    }

    sim::PortablePlatform platform;
    sim::BenchHost host;
    std::int16_t cluster;
    std::shared_ptr<sim::SimDevice> device;
    std::shared_ptr<device::MibSapService> service;
    addon::ProcessState state;
};

} // namespace orv::test
