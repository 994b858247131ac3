#include "host/app/orvhost/frame_object.h"

namespace orv::host {

void* FrameObject::Find(REFIID iid) {
    const bool known = iid == IID_IOleWindow || iid == IID_IOleInPlaceUIWindow || iid == IID_IOleInPlaceFrame;
    return known ? static_cast<IOleInPlaceFrame*>(this) : nullptr;
}

void FrameObject::Detach() {
    events_ = nullptr;
    active_.Reset();
}

STDMETHODIMP FrameObject::GetWindow(HWND* window) {
    if (window == nullptr)
        return E_POINTER;
    *window = events_ != nullptr ? events_->Frame() : nullptr;
    return *window != nullptr ? S_OK : E_FAIL;
}

STDMETHODIMP FrameObject::GetBorder(LPRECT border) {
    if (border == nullptr)
        return E_POINTER;
    if (events_ == nullptr)
        return E_FAIL;
    GetClientRect(events_->Area(), border);
    MapWindowPoints(events_->Area(), events_->Frame(), reinterpret_cast<POINT*>(border), 2);
    return S_OK;
}

STDMETHODIMP FrameObject::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) {
    active_ = ComPtr<IOleInPlaceActiveObject>(object);
    return S_OK;
}

STDMETHODIMP FrameObject::SetStatusText(LPCOLESTR text) {
    if (events_ != nullptr)
        events_->SetStatusText(text == nullptr ? std::wstring() : std::wstring(text));
    return S_OK;
}

STDMETHODIMP FrameObject::EnableModeless(BOOL enable) {
    if (events_ != nullptr)
        events_->SetModeless(enable != FALSE);
    return S_OK;
}

} // namespace orv::host
