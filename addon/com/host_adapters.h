#pragma once
// The host's COM objects, as device/host.h wants them. Nothing else knows the host's interfaces.
#include <memory>

#include "platform/win32/system.h"

#include <OrvAddon.h>

#include "addon/com/com_ptr.h"
#include "device/host.h"

namespace orv::addon::com {

/// Makes the host's classes in process.
class ComHostFactory final : public device::HostFactory {
  public:
    std::shared_ptr<device::ConfigurationManager> CreateConfigurationManager() override;
    std::shared_ptr<device::SupportObject> CreateSupportObject() override;
};

std::shared_ptr<device::HostApplication> AdaptApplication(ComPtr<IOrvApplication> application);
std::shared_ptr<device::ConfigurationManager> AdaptManager(ComPtr<IOrvConfigurationManager> manager);
std::shared_ptr<device::SupportObject> AdaptSupport(ComPtr<IOrvSupport> support);
std::shared_ptr<device::MibSapService> AdaptMibSap(ComPtr<IOrvMIBSAPMonitor> service);

} // namespace orv::addon::com
