#pragma once
// The frame as the control sees it.
#include "host/app/orvhost/container_events.h"
#include "host/app/orvhost/counted.h"

namespace orv::host {

class FrameObject final : public Counted<IOleInPlaceFrame> {
  public:
    explicit FrameObject(ContainerEvents& events) : events_(&events) {}
    /// The host's window is going; a control that keeps the frame longer talks to nobody.
    void Detach();
    /// The object that gets the keys first; empty when none is UI-active.
    const ComPtr<IOleInPlaceActiveObject>& Active() const { return active_; }

    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP GetBorder(LPRECT border) override;
    STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR name) override;
    STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
    STDMETHODIMP RemoveMenus(HMENU) override { return S_OK; }
    STDMETHODIMP SetStatusText(LPCOLESTR text) override;
    STDMETHODIMP EnableModeless(BOOL enable) override;
    STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

  private:
    void* Find(REFIID iid) override;
    ContainerEvents* events_;
    ComPtr<IOleInPlaceActiveObject> active_;
};

} // namespace orv::host
