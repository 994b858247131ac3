#include "addon/com/object_faces.h"

#include <OrvOutFormat.h>

#include "addon/com/control.h"
#include "text/texts.h"

namespace orv::addon::com {
namespace {

LPOLESTR TaskString(const std::wstring& text) {
    const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
    auto* copy = static_cast<LPOLESTR>(CoTaskMemAlloc(size));
    if (!copy)
        throw std::bad_alloc();
    memcpy(copy, text.c_str(), size);
    return copy;
}

} // namespace

HRESULT ObjectFaces::SetClientSite(IOleClientSite* site) {
    return Run([&] { control_.SetSite(site); });
}

HRESULT ObjectFaces::GetClientSite(IOleClientSite** site) {
    return Answer([&] { *site = ComPtr<IOleClientSite>(control_.TheSite().Client()).Detach(); }, site);
}

HRESULT ObjectFaces::SetHostNames(LPCOLESTR, LPCOLESTR) {
    return S_OK;
}

HRESULT ObjectFaces::Close(DWORD) {
    return Run([&] {
        if (control_.Close())
            SendClose();
    });
}

HRESULT ObjectFaces::SetMoniker(DWORD, IMoniker*) {
    return E_NOTIMPL;
}

HRESULT ObjectFaces::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
    if (moniker)
        *moniker = nullptr;
    return moniker ? E_NOTIMPL : E_POINTER;
}

HRESULT ObjectFaces::InitFromData(IDataObject*, BOOL, DWORD) {
    return E_NOTIMPL;
}

HRESULT ObjectFaces::GetClipboardData(DWORD, IDataObject** data) {
    if (data)
        *data = nullptr;
    return data ? E_NOTIMPL : E_POINTER;
}

HRESULT ObjectFaces::DoVerb(LONG verb, LPMSG, IOleClientSite* site, LONG, HWND, LPCRECT) {
    return Run([&] {
        if (site && !control_.TheSite().Client())
            control_.SetSite(site);
        return control_.DoVerb(verb);
    });
}

HRESULT ObjectFaces::EnumVerbs(IEnumOLEVERB** verbs) {
    if (verbs)
        *verbs = nullptr;
    return verbs ? OLEOBJ_E_NOVERBS : E_POINTER;
}

HRESULT ObjectFaces::GetUserClassID(CLSID* id) {
    return Answer([&] { *id = CLSID_AddOnControl; }, id);
}

HRESULT ObjectFaces::GetUserType(DWORD, LPOLESTR* name) {
    return Answer([&] { *name = TaskString(text::Load(text::Id::AddOnTitle)); }, name);
}

HRESULT ObjectFaces::SetExtent(DWORD aspect, SIZEL* size) {
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    return Answer([&] { control_.SetExtent(*size); }, size);
}

HRESULT ObjectFaces::GetExtent(DWORD aspect, SIZEL* size) {
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    return Answer([&] { *size = control_.Extent(); }, size);
}

IOleAdviseHolder& ObjectFaces::Holder() {
    if (!holder_ && FAILED(CreateOleAdviseHolder(holder_.Put())))
        throw std::bad_alloc();
    return *holder_.Get();
}

HRESULT ObjectFaces::Advise(IAdviseSink* sink, DWORD* connection) {
    return Answer([&] { return Holder().Advise(sink, connection); }, sink, connection);
}

HRESULT ObjectFaces::Unadvise(DWORD connection) {
    return Run([&] { return holder_ ? holder_->Unadvise(connection) : OLE_E_NOCONNECTION; });
}

HRESULT ObjectFaces::EnumAdvise(IEnumSTATDATA** connections) {
    return Answer([&] { return Holder().EnumAdvise(connections); }, connections);
}

void ObjectFaces::SendClose() {
    if (const auto holder = holder_)
        holder->SendOnClose();
}

HRESULT ObjectFaces::GetMiscStatus(DWORD aspect, DWORD* status) {
    return Answer([&] { *status = aspect == DVASPECT_CONTENT ? Control::kMiscStatus : 0; }, status);
}

HRESULT ObjectFaces::GetControlInfo(CONTROLINFO* info) {
    return Answer(
        [&] {
            // Access keys are looked up when they are pressed: there is no table to hand out.
            info->cb = sizeof *info;
            info->hAccel = nullptr;
            info->cAccel = 0;
            info->dwFlags = 0;
        },
        info);
}

HRESULT ObjectFaces::OnMnemonic(MSG* message) {
    return Answer([&] { control_.Pane().TranslateKey(*message); }, message);
}

} // namespace orv::addon::com
