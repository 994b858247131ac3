#pragma once
// The container's own properties of the control: Name, Visible, Enabled, position, Parent, Object.
#include "host/app/orvhost/container_events.h"
#include "host/app/orvhost/counted.h"

namespace orv::host {

class Extender final : public Counted<IDispatch> {
  public:
    explicit Extender(ContainerEvents& events) : events_(&events) {}
    void Detach() { events_ = nullptr; }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO*,
                        UINT*) override;

  private:
    void* Find(REFIID iid) override { return iid == IID_IDispatch ? static_cast<IDispatch*>(this) : nullptr; }
    HRESULT Get(DISPID id, VARIANT& result);
    HRESULT Put(DISPID id, const VARIANT& value);
    ContainerEvents* events_;
};

} // namespace orv::host
