#include "addon/com/view_faces.h"

#include <OrvOutFormat.h>

#include "addon/com/control.h"
#include "platform/win32/owned.h"
#include "text/texts.h"

namespace orv::addon::com {

HRESULT ViewFaces::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC target, LPCRECTL bounds, LPCRECTL,
                        BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) {
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    if (!target || !bounds)
        return E_INVALIDARG;
    return Run([&] {
        RECT area{bounds->left, bounds->top, bounds->right, bounds->bottom};
        const std::wstring name = text::Load(text::Id::AddOnTitle);
        const platform::win32::Selected font(target, GetStockObject(DEFAULT_GUI_FONT));
        FillRect(target, &area, GetSysColorBrush(COLOR_BTNFACE));
        const int mode = SetBkMode(target, TRANSPARENT);
        const COLORREF color = SetTextColor(target, GetSysColor(COLOR_BTNTEXT));
        DrawTextW(target, name.c_str(), static_cast<int>(name.size()), &area,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
        SetTextColor(target, color);
        SetBkMode(target, mode);
    });
}

HRESULT ViewFaces::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** palette) {
    return Answer(
        [&] {
            *palette = nullptr;
            return S_FALSE;
        },
        palette);
}

HRESULT ViewFaces::Freeze(DWORD, LONG, void*, DWORD*) {
    return E_NOTIMPL;
}

HRESULT ViewFaces::Unfreeze(DWORD) {
    return E_NOTIMPL;
}

HRESULT ViewFaces::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    return Run([&] {
        sink_ = ComPtr<IAdviseSink>(sink);
        aspects_ = aspects;
        flags_ = flags;
    });
}

HRESULT ViewFaces::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
    // Each of the three may be left out.
    return Run([&] {
        if (aspects)
            *aspects = aspects_;
        if (flags)
            *flags = flags_;
        if (sink)
            *sink = ComPtr<IAdviseSink>(sink_).Detach();
    });
}

HRESULT ViewFaces::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL size) {
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    return Answer([&] { *size = control_.Extent(); }, size);
}

HRESULT PersistFaces::GetClassID(CLSID* id) {
    return Answer([&] { *id = CLSID_AddOnControl; }, id);
}

HRESULT PersistFaces::GetSizeMax(ULARGE_INTEGER* size) {
    return Answer([&] { size->QuadPart = 0; }, size);
}

HRESULT IdentityFaces::GetClassInfo(ITypeInfo** info) {
    if (info)
        *info = nullptr;
    return Answer([&] { *info = ComponentTypeInfo(CLSID_AddOnControl).Detach(); }, info);
}

HRESULT IdentityFaces::InterfaceSupportsErrorInfo(REFIID id) {
    const bool ours = id == IID_IAddOn || id == IID_IAddOnGUI || id == IID_IAddOnCompatibility ||
                      id == IID_IAddOnControl || id == IID_IDispatch;
    return ours ? S_OK : S_FALSE;
}

} // namespace orv::addon::com
