#include "cli/device_file.h"

#include <algorithm>

#include "cli/element_counts.h"
#include "cli/failure.h"
#include "host/sim/utf8.h"

namespace orv::cli {
namespace {

/// Position in the file.
std::size_t PlaceOf(const device::Target& target, const sim::SystemDescription& system) {
    return static_cast<std::size_t>(system.Find(target.cluster, target.device) - system.devices.data());
}

/// The first few: a file may have thousands.
std::string DeviceList(const sim::SystemDescription& system) {
    constexpr std::size_t kMost = 20;
    std::string list;
    for (std::size_t i = 0; i < std::min(system.devices.size(), kMost); ++i)
        list += (list.empty() ? "" : ", ") + std::string("cluster ") + std::to_string(system.devices[i].cluster) +
                " device " + std::to_string(system.devices[i].device);
    return system.devices.size() > kMost ? list + ", ..." : list;
}

device::Target ChooseTarget(const DeviceChoice& choice, const sim::SystemDescription& system) {
    const std::int16_t first = system.devices.empty() ? std::int16_t{0} : system.devices.front().cluster;
    const device::Target target{choice.cluster.value_or(first), choice.device,
                                choice.level.value_or(system.accessLevel)};
    if (system.Find(target.cluster, target.device) == nullptr)
        throw Failure(status::kUsage, sim::Excerpt(choice.file) + ": there is no device " +
                                          std::to_string(target.device) + " in cluster " +
                                          std::to_string(target.cluster) + "; the file has: " + DeviceList(system));
    return target;
}

} // namespace

DeviceFile::DeviceFile(const DeviceChoice& choice)
    : DeviceFile(choice, sim::LoadDescription(std::filesystem::u8path(choice.file))) {}

DeviceFile::DeviceFile(const DeviceChoice& choice, sim::SystemDescription&& system)
    : name_(sim::Excerpt(choice.file)), fileLevel_(system.accessLevel), target_(ChooseTarget(choice, system)),
      place_(PlaceOf(target_, system)), host_(std::move(system)), state_(platform_.services, host_), model_(state_) {
    state_.current = target_;
    host_.SetAccessLevel(state_.current.accessLevel);
    state_.application = host_.Application();
    state_.manager = host_.CreateConfigurationManager();
    state_.configuration = state_.manager->GetConfiguration();
    RequireElements();
    model_.Reload();
}

/// A device may contradict itself, and the editor copes. A file that does is a mistake in the file.
void DeviceFile::RequireElements() {
    device::ParameterAccess access(state_);
    if (const auto found = FindShort(access, Store().Contents()))
        throw sim::FileError(name_,
                             "/devices/" + std::to_string(place_) + "/parameters/" + std::to_string(found->position) +
                                 "/elementCount",
                             found->reason);
}

sim::SystemDescription DeviceFile::Contents() const {
    sim::SystemDescription contents = host_.Contents();
    contents.accessLevel = fileLevel_;
    return contents;
}

} // namespace orv::cli
