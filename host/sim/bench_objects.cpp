#include <algorithm>

#include "host/sim/bench_core.h"
#include "text/error.h"

namespace orv::sim {
namespace {

class BenchRecord final : public device::DeviceRecord {
  public:
    BenchRecord(std::shared_ptr<HostCore> core, ParameterStore& store) : core_(std::move(core)), store_(store) {}

    std::shared_ptr<device::ParameterTable> GetParameterTable(std::int32_t argument) override {
        core_->gate.Enter("DeviceRecord.GetParameterTable", [&] { return std::to_wstring(argument); });
        return MakeTable(core_, store_);
    }

  private:
    std::shared_ptr<HostCore> core_;
    ParameterStore& store_;
};

class BenchRecords final : public device::DeviceRecords {
  public:
    explicit BenchRecords(std::shared_ptr<HostCore> core) : core_(std::move(core)) {}

    std::shared_ptr<device::DeviceRecord> Record(std::int16_t cluster, std::int16_t device) override {
        core_->gate.Enter("DeviceRecords.Record", [&] {
            return Arguments({std::to_wstring(cluster), std::to_wstring(device)});
        });
        ParameterStore* store = core_->Store(cluster, device);
        if (!store)
            throw Error(error_number::kSubscript);
        return std::make_shared<BenchRecord>(core_, *store);
    }

  private:
    std::shared_ptr<HostCore> core_;
};

class BenchConfiguration final : public device::Configuration {
  public:
    explicit BenchConfiguration(std::shared_ptr<HostCore> core) : core_(std::move(core)) {}

    std::int32_t AccessLevel() override {
        core_->gate.Enter("Configuration.AccessLevel");
        return core_->accessLevel;
    }
    void SetAccessLevel(std::int32_t level) override {
        core_->gate.Enter("Configuration.SetAccessLevel", [&] { return std::to_wstring(level); });
        core_->accessLevel = level;
    }
    bool InteractiveMode() override {
        core_->gate.Enter("Configuration.InteractiveMode");
        return core_->configurationInteractive;
    }
    void SetInteractiveMode(bool on) override {
        core_->gate.Enter("Configuration.SetInteractiveMode", [&] { return std::to_wstring(on ? 1 : 0); });
        core_->configurationInteractive = on;
    }
    std::shared_ptr<device::MibSapService> GetMibSapService() override {
        core_->gate.Enter("Configuration.GetMibSapService");
        if (!core_->service)
            throw Error(error_number::kObjectNotSet);
        return core_->service;
    }
    std::shared_ptr<device::DeviceRecords> GetDeviceRecords() override {
        core_->gate.Enter("Configuration.GetDeviceRecords");
        return std::make_shared<BenchRecords>(core_);
    }

  private:
    std::shared_ptr<HostCore> core_;
};

class BenchManager final : public device::ConfigurationManager {
  public:
    explicit BenchManager(std::shared_ptr<HostCore> core) : core_(std::move(core)) {}

    std::shared_ptr<device::Configuration> GetConfiguration() override {
        core_->gate.Enter("ConfigurationManager.GetConfiguration");
        auto configuration = std::make_shared<BenchConfiguration>(core_);
        handedOut_.push_back(configuration.get());
        ++core_->openConfigurations;
        return configuration;
    }
    void ReleaseConfiguration(const std::shared_ptr<device::Configuration>& configuration) override {
        core_->gate.Enter("ConfigurationManager.ReleaseConfiguration");
        const auto found = std::find(handedOut_.begin(), handedOut_.end(), configuration.get());
        if (found == handedOut_.end())
            throw Error(error_number::kInvalidArgument);
        handedOut_.erase(found);
        --core_->openConfigurations;
    }

  private:
    std::shared_ptr<HostCore> core_;
    std::vector<const device::Configuration*> handedOut_; ///< and not released
};

class GatedService final : public device::MibSapService {
  public:
    GatedService(const std::shared_ptr<HostCore>& core, std::shared_ptr<device::MibSapService> service)
        : core_(core), service_(std::move(service)) {}

    void Connect(std::int32_t deviceAddress, std::shared_ptr<device::MibSapEvents> events) override {
        Enter("MibSapService.Connect", {std::to_wstring(deviceAddress)});
        service_->Connect(deviceAddress, std::move(events));
    }
    void Disconnect() override {
        Enter("MibSapService.Disconnect", {});
        service_->Disconnect();
    }
    void StartSession(const std::wstring& accessLevel, const std::wstring& password) override {
        // A password is never written anywhere.
        Enter("MibSapService.StartSession", {accessLevel, password.empty() ? L"" : L"***"});
        service_->StartSession(accessLevel, password);
    }
    void EndSession(const std::wstring& mode) override {
        Enter("MibSapService.EndSession", {mode});
        service_->EndSession(mode);
    }
    void GetEntry(const std::wstring& entry) override {
        Enter("MibSapService.GetEntry", {entry});
        service_->GetEntry(entry);
    }
    void SetNumericEntry(const std::wstring& entry, const std::wstring& decimal) override {
        Enter("MibSapService.SetNumericEntry", {entry, decimal});
        service_->SetNumericEntry(entry, decimal);
    }
    void SetStringEntry(const std::wstring& entry, const std::wstring& text) override {
        Enter("MibSapService.SetStringEntry", {entry, text});
        service_->SetStringEntry(entry, text);
    }

  private:
    void Enter(std::string_view name, std::initializer_list<std::wstring> arguments) {
        if (const auto core = core_.lock())
            core->gate.Enter(name, [&] { return Arguments(arguments); });
    }

    std::weak_ptr<HostCore> core_; ///< the core owns this object
    std::shared_ptr<device::MibSapService> service_;
};

} // namespace

std::shared_ptr<device::ConfigurationManager> MakeManager(std::shared_ptr<HostCore> core) {
    return std::make_shared<BenchManager>(std::move(core));
}

std::shared_ptr<device::MibSapService> MakeGatedService(const std::shared_ptr<HostCore>& core,
                                                        std::shared_ptr<device::MibSapService> service) {
    return std::make_shared<GatedService>(core, std::move(service));
}

} // namespace orv::sim
