#pragma once
// Where the host's MIB/SAP service delivers its answers.
#include <atomic>
#include <memory>

#include "platform/win32/system.h"

#include <OrvAddon.h>

#include "device/host.h"

namespace orv::addon::com {

/// An object of its own: a service that keeps it longer than it should talks to nobody.
class EventSink final : public IOrvMIBSAPEvents {
  public:
    explicit EventSink(std::shared_ptr<device::MibSapEvents> events) : events_(std::move(events)) {}
    /// Nothing is forwarded from now on.
    void Silence() { events_.reset(); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* failure, UINT* argument) override;

    HRESULT STDMETHODCALLTYPE Connected() override;
    HRESULT STDMETHODCALLTYPE Error(LONG code) override;
    HRESULT STDMETHODCALLTYPE ResponseReceived(BSTR text) override;

  private:
    ~EventSink() = default;
    std::shared_ptr<device::MibSapEvents> events_;
    std::atomic<ULONG> references_ = 0;
};

} // namespace orv::addon::com
