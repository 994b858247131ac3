#include "host/app/orvhost/site.h"

namespace orv::host {

Site::Site(ContainerEvents& events, bool withExtender) : events_(&events), frame_(Make<FrameObject>(events)) {
    if (withExtender)
        extender_ = Make<Extender>(events);
}

void Site::Detach() {
    events_ = nullptr;
    frame_->Detach();
    if (extender_)
        extender_->Detach();
}

void* Site::Find(REFIID iid) {
    if (iid == IID_IOleClientSite)
        return static_cast<IOleClientSite*>(this);
    if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite)
        return static_cast<IOleInPlaceSite*>(this);
    if (iid == IID_IOleControlSite)
        return static_cast<IOleControlSite*>(this);
    if (iid == IID_IDispatch)
        return static_cast<IDispatch*>(this);
    return nullptr;
}

STDMETHODIMP Site::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
    if (moniker != nullptr)
        *moniker = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP Site::GetContainer(IOleContainer** container) {
    if (container != nullptr)
        *container = nullptr;
    return E_NOINTERFACE; // the control has no neighbours to enumerate
}

STDMETHODIMP Site::GetWindow(HWND* window) {
    if (window == nullptr)
        return E_POINTER;
    *window = events_ != nullptr ? events_->Area() : nullptr;
    return *window != nullptr ? S_OK : E_FAIL;
}

STDMETHODIMP Site::OnInPlaceActivate() {
    inPlaceActive_ = true;
    return S_OK;
}

STDMETHODIMP Site::OnUIActivate() {
    uiActive_ = true;
    return S_OK;
}

STDMETHODIMP Site::OnUIDeactivate(BOOL) {
    uiActive_ = false;
    return S_OK;
}

STDMETHODIMP Site::OnInPlaceDeactivate() {
    inPlaceActive_ = false;
    return S_OK;
}

STDMETHODIMP Site::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT position,
                                    LPRECT clip, LPOLEINPLACEFRAMEINFO info) {
    if (frame == nullptr || document == nullptr || position == nullptr || clip == nullptr || info == nullptr)
        return E_POINTER;
    *frame = nullptr;
    *document = nullptr; // one window for both
    if (events_ == nullptr)
        return E_FAIL;
    *frame = ComPtr<IOleInPlaceFrame>(frame_.Get()).Detach();
    GetClientRect(events_->Area(), position);
    *clip = *position;
    info->fMDIApp = FALSE;
    info->hwndFrame = events_->Frame();
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return S_OK;
}

STDMETHODIMP Site::GetExtendedControl(IDispatch** extender) {
    if (extender == nullptr)
        return E_POINTER;
    *extender = ComPtr<IDispatch>(extender_.Get()).Detach();
    return *extender != nullptr ? S_OK : E_NOTIMPL;
}

STDMETHODIMP Site::TranslateAccelerator(MSG* message, DWORD) {
    if (message == nullptr || events_ == nullptr || message->message != WM_KEYDOWN || message->wParam != VK_TAB)
        return S_FALSE;
    events_->LeaveControl(GetKeyState(VK_SHIFT) < 0);
    return S_OK;
}

STDMETHODIMP Site::GetTypeInfoCount(UINT* count) {
    if (count == nullptr)
        return E_POINTER;
    *count = 0;
    return S_OK;
}

STDMETHODIMP Site::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info != nullptr)
        *info = nullptr;
    return DISP_E_BADINDEX;
}

STDMETHODIMP Site::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) {
    if ((flags & DISPATCH_PROPERTYGET) == 0 || result == nullptr || events_ == nullptr)
        return DISP_E_MEMBERNOTFOUND;
    VariantInit(result);
    return AmbientProperty(id, events_->Area(), *result);
}

} // namespace orv::host
