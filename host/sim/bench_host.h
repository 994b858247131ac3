#pragma once
// The host's objects over a device description, without windows. Every call passes a CallGate.
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "device/host.h"
#include "host/sim/call_gate.h"
#include "host/sim/description.h"
#include "host/sim/parameter_store.h"
#include "host/sim/progress_log.h"

namespace orv::sim {

struct HostCore;

/// The application object; what the product tells it is kept here.
class BenchApplication final : public device::HostApplication {
  public:
    explicit BenchApplication(std::shared_ptr<HostCore> core);

    std::wstring caption;
    int closeCount = 0;
    std::function<void()> onClose; ///< called by CloseAddOn
    std::wstring helpName;         ///< empty: the product's default
    std::int32_t helpLanguage = 0x0409;
    std::wstring exportNameFirst;
    std::wstring exportNameSecond;

    void SetCaption(const std::wstring& text) override;
    void CloseAddOn() override;
    void PrepareProgress(std::int32_t argument) override;
    std::wstring HelpName() override;
    std::int32_t HelpLanguage() override;
    std::wstring ExportNameFirst() override;
    std::wstring ExportNameSecond() override;

  private:
    std::shared_ptr<HostCore> core_;
};

/// Everything the host has. Objects that it handed out stay usable after it is gone. User-interface thread only.
class BenchHost final : public device::HostFactory {
  public:
    explicit BenchHost(SystemDescription description);
    ~BenchHost() override;

    /// Handed out behind the gate; null takes it away, then asking the configuration for it raises 91.
    void SetService(std::shared_ptr<device::MibSapService> service);

    CallGate& Gate();
    ProgressLog& Progress();
    WindowServices& Windows();
    std::shared_ptr<BenchApplication> Application();

    /// What the configuration holds of a device; null when there is none. Owned by the host. Passes no gate.
    ParameterStore* Store(std::int16_t cluster, std::int16_t device);
    /// The description with the present values and access level, for saving.
    SystemDescription Contents() const;

    std::int32_t AccessLevel() const;
    void SetAccessLevel(std::int32_t level);
    /// Both switches; the configuration's is off and the tables' is on at first.
    bool ConfigurationInteractive() const;
    void SetConfigurationInteractive(bool on);
    bool TableInteractive() const;
    /// Configurations handed out by any manager and not released.
    int OpenConfigurations() const;

    std::shared_ptr<device::ConfigurationManager> CreateConfigurationManager() override;
    std::shared_ptr<device::SupportObject> CreateSupportObject() override;

  private:
    std::shared_ptr<HostCore> core_;
    std::shared_ptr<BenchApplication> application_;
};

} // namespace orv::sim
