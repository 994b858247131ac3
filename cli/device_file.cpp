#include "cli/device_file.h"

#include "cli/failure.h"

namespace orv::cli {
namespace {

std::string DeviceList(const sim::SystemDescription& system) {
    std::string list;
    for (const sim::DeviceDescription& device : system.devices)
        list += (list.empty() ? "" : ", ") + std::string("cluster ") + std::to_string(device.cluster) + " device " +
                std::to_string(device.device);
    return list.empty() ? "none" : list;
}

device::Target ChooseTarget(const DeviceChoice& choice, const sim::SystemDescription& system) {
    const std::int16_t first = system.devices.empty() ? std::int16_t{0} : system.devices.front().cluster;
    const device::Target target{choice.cluster.value_or(first), choice.device,
                                choice.level.value_or(system.accessLevel)};
    if (system.Find(target.cluster, target.device) == nullptr)
        throw Failure(status::kUsage, choice.file + ": there is no device " + std::to_string(target.device) +
                                          " in cluster " + std::to_string(target.cluster) +
                                          "; the file has: " + DeviceList(system));
    return target;
}

} // namespace

DeviceFile::DeviceFile(const DeviceChoice& choice)
    : DeviceFile(choice, sim::LoadDescription(std::filesystem::u8path(choice.file))) {}

DeviceFile::DeviceFile(const DeviceChoice& choice, const sim::SystemDescription& system)
    : name_(choice.file), fileLevel_(system.accessLevel), host_(system), state_(platform_.services, host_),
      model_(state_) {
    state_.current = ChooseTarget(choice, system);
    host_.SetAccessLevel(state_.current.accessLevel);
    state_.application = host_.Application();
    state_.manager = host_.CreateConfigurationManager();
    state_.configuration = state_.manager->GetConfiguration();
    model_.Reload();
}

sim::SystemDescription DeviceFile::Contents() const {
    sim::SystemDescription contents = host_.Contents();
    contents.accessLevel = fileLevel_;
    return contents;
}

} // namespace orv::cli
