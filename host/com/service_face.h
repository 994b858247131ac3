#pragma once
// The MIB/SAP service as a COM object.
#include <OrvAddon.h>

#include <memory>

#include "host/com/dual.h"
#include "host/sim/bench_host.h"

namespace orv::host {

class MibSapFace final : public Dual<IOrvMIBSAPMonitor> {
  public:
    explicit MibSapFace(std::shared_ptr<device::MibSapService> service) : service_(std::move(service)) {}
    STDMETHODIMP Connect(LONG deviceAddress, IOrvMIBSAPEvents* events) override;
    STDMETHODIMP Disconnect() override;
    STDMETHODIMP StartSession(BSTR accessLevel, BSTR password) override;
    STDMETHODIMP EndSession(BSTR mode) override;
    STDMETHODIMP GetEntry(BSTR entry) override;
    STDMETHODIMP SetNumericEntry(BSTR entry, BSTR decimal) override;
    STDMETHODIMP SetStringEntry(BSTR entry, BSTR text) override;

  private:
    std::shared_ptr<device::MibSapService> service_;
};

} // namespace orv::host
