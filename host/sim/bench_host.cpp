#include "host/sim/bench_host.h"

#include <algorithm>

#include "host/sim/bench_core.h"

namespace orv::sim {

ParameterStore* HostCore::Store(std::int16_t cluster, std::int16_t device) const {
    const auto found = std::find_if(stores.begin(), stores.end(), [&](const auto& store) {
        return store->Contents().cluster == cluster && store->Contents().device == device;
    });
    return found == stores.end() ? nullptr : found->get();
}

void HostCore::ProgressChanged() const {
    if (progress.changed)
        progress.changed();
}

std::wstring Arguments(std::initializer_list<std::wstring> parts) {
    std::wstring joined;
    for (const std::wstring* part = parts.begin(); part != parts.end(); ++part)
        joined += (part == parts.begin() ? L"" : L", ") + *part;
    return joined;
}

BenchApplication::BenchApplication(std::shared_ptr<HostCore> core) : core_(std::move(core)) {}

void BenchApplication::SetCaption(const std::wstring& text) {
    core_->gate.Enter("HostApplication.SetCaption", [&] { return text; });
    caption = text;
}

void BenchApplication::CloseAddOn() {
    core_->gate.Enter("HostApplication.CloseAddOn");
    ++closeCount;
    if (onClose)
        onClose();
}

void BenchApplication::PrepareProgress(std::int32_t argument) {
    core_->gate.Enter("HostApplication.PrepareProgress", [&] { return std::to_wstring(argument); });
    ++core_->progress.prepareCount;
    core_->progress.prepareArgument = argument;
    core_->ProgressChanged();
}

std::wstring BenchApplication::HelpName() {
    core_->gate.Enter("HostApplication.HelpName");
    return helpName;
}

std::int32_t BenchApplication::HelpLanguage() {
    core_->gate.Enter("HostApplication.HelpLanguage");
    return helpLanguage;
}

std::wstring BenchApplication::ExportNameFirst() {
    core_->gate.Enter("HostApplication.ExportNameFirst");
    return exportNameFirst;
}

std::wstring BenchApplication::ExportNameSecond() {
    core_->gate.Enter("HostApplication.ExportNameSecond");
    return exportNameSecond;
}

BenchHost::BenchHost(SystemDescription description) : core_(std::make_shared<HostCore>()) {
    core_->accessLevel = description.accessLevel;
    core_->clusters = std::move(description.clusters);
    for (DeviceDescription& device : description.devices)
        core_->stores.push_back(std::make_unique<ParameterStore>(std::move(device)));
    application_ = std::make_shared<BenchApplication>(core_);
}

BenchHost::~BenchHost() = default;

void BenchHost::SetService(std::shared_ptr<device::MibSapService> service) {
    core_->service = service ? MakeGatedService(core_, std::move(service)) : nullptr;
}

CallGate& BenchHost::Gate() {
    return core_->gate;
}
ProgressLog& BenchHost::Progress() {
    return core_->progress;
}
WindowServices& BenchHost::Windows() {
    return core_->windows;
}
std::shared_ptr<BenchApplication> BenchHost::Application() {
    return application_;
}

ParameterStore* BenchHost::Store(std::int16_t cluster, std::int16_t device) {
    return core_->Store(cluster, device);
}

SystemDescription BenchHost::Contents() const {
    SystemDescription contents{core_->accessLevel, core_->clusters, {}};
    for (const auto& store : core_->stores)
        contents.devices.push_back(store->Contents());
    return contents;
}

std::int32_t BenchHost::AccessLevel() const {
    return core_->accessLevel;
}
void BenchHost::SetAccessLevel(std::int32_t level) {
    core_->accessLevel = level;
}
bool BenchHost::ConfigurationInteractive() const {
    return core_->configurationInteractive;
}
void BenchHost::SetConfigurationInteractive(bool on) {
    core_->configurationInteractive = on;
}
bool BenchHost::TableInteractive() const {
    return core_->tableInteractive;
}
int BenchHost::OpenConfigurations() const {
    return core_->openConfigurations;
}

std::shared_ptr<device::ConfigurationManager> BenchHost::CreateConfigurationManager() {
    core_->gate.Enter("HostFactory.CreateConfigurationManager");
    return MakeManager(core_);
}

std::shared_ptr<device::SupportObject> BenchHost::CreateSupportObject() {
    core_->gate.Enter("HostFactory.CreateSupportObject");
    return MakeSupport(core_);
}

} // namespace orv::sim
