#pragma once
// What the objects of one bench host share. Inside of the bench host only.
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "device/host.h"
#include "host/sim/call_gate.h"
#include "host/sim/parameter_store.h"
#include "host/sim/progress_log.h"

namespace orv::sim {

struct HostCore {
    std::vector<ClusterDescription> clusters;
    std::vector<std::unique_ptr<ParameterStore>> stores; ///< one a device, in the description's order
    CallGate gate;
    ProgressLog progress;
    WindowServices windows;
    std::shared_ptr<device::MibSapService> service; ///< behind the gate already
    std::int32_t accessLevel = 0;
    bool configurationInteractive = false;
    bool tableInteractive = true;
    int openConfigurations = 0;

    ParameterStore* Store(std::int16_t cluster, std::int16_t device) const;
    void ProgressChanged() const;
};

/// Joins arguments for the call log.
std::wstring Arguments(std::initializer_list<std::wstring> parts);

std::shared_ptr<device::ParameterTable> MakeTable(std::shared_ptr<HostCore> core, ParameterStore& store);
std::shared_ptr<device::ConfigurationManager> MakeManager(std::shared_ptr<HostCore> core);
std::shared_ptr<device::SupportObject> MakeSupport(std::shared_ptr<HostCore> core);
/// `service` with the gate before each of its methods.
std::shared_ptr<device::MibSapService> MakeGatedService(const std::shared_ptr<HostCore>& core,
                                                        std::shared_ptr<device::MibSapService> service);

} // namespace orv::sim
