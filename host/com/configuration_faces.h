#pragma once
// Configuration manager and configuration as COM objects.
#include <OrvAddon.h>

#include <memory>

#include "host/com/dual.h"
#include "host/sim/bench_host.h"

namespace orv::host {

class ConfigurationFace final : public Dual<IOrvConfiguration> {
  public:
    explicit ConfigurationFace(std::shared_ptr<device::Configuration> configuration);

    /// The configuration behind a face of this program; raises 5 for any other object.
    static std::shared_ptr<device::Configuration> Behind(IOrvConfiguration* face);

    STDMETHODIMP get_AccessLevel(LONG* level) override;
    STDMETHODIMP put_AccessLevel(LONG level) override;
    STDMETHODIMP get_InteractiveMode(VARIANT_BOOL* on) override;
    STDMETHODIMP put_InteractiveMode(VARIANT_BOOL on) override;
    STDMETHODIMP GetMIBSAPMonitor(IOrvMIBSAPMonitor** service) override;
    STDMETHODIMP GetDeviceRecords(IOrvDeviceRecords** records) override;

  private:
    void* Find(REFIID iid) override;
    std::shared_ptr<device::Configuration> configuration_;
};

class ConfigurationManagerFace final : public Dual<IOrvConfigurationManager> {
  public:
    explicit ConfigurationManagerFace(std::shared_ptr<device::ConfigurationManager> manager);

    STDMETHODIMP GetConfiguration(VARIANT selector, VARIANT detail, IOrvConfiguration** configuration) override;
    STDMETHODIMP ReleaseConfiguration(IOrvConfiguration* configuration) override;

  private:
    std::shared_ptr<device::ConfigurationManager> manager_;
};

} // namespace orv::host
