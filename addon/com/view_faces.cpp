#include "addon/com/view_faces.h"

#include <OrvOutFormat.h>

#include "addon/com/control.h"
#include "platform/win32/owned.h"
#include "text/texts.h"

namespace orv::addon::com {
namespace {

// There is one picture, and it is whole.
constexpr LONG kWhole = -1;

HRESULT Known(DWORD aspect, LONG index) {
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    return index == kWhole ? S_OK : DV_E_LINDEX;
}

} // namespace

HRESULT ViewFaces::Draw(DWORD aspect, LONG index, void*, DVTARGETDEVICE*, HDC, HDC target, LPCRECTL bounds, LPCRECTL,
                        BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) {
    if (const HRESULT known = Known(aspect, index); FAILED(known))
        return known;
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

HRESULT ViewFaces::GetColorSet(DWORD aspect, LONG index, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** palette) {
    return Answer(
        [&] {
            *palette = nullptr;
            const HRESULT known = Known(aspect, index);
            return FAILED(known) ? known : S_FALSE;
        },
        palette);
}

HRESULT ViewFaces::Freeze(DWORD aspect, LONG index, void*, DWORD*) {
    const HRESULT known = Known(aspect, index);
    return FAILED(known) ? known : E_NOTIMPL;
}

HRESULT ViewFaces::Unfreeze(DWORD) {
    return E_NOTIMPL;
}

HRESULT ViewFaces::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    return Run([&] {
        const ComPtr<IAdviseSink> told(sink);
        const bool atOnce = sink && (flags & ADVF_PRIMEFIRST);
        // The picture never changes: that first word is the only one there is, and once is over with it.
        const bool keep = sink && !(atOnce && (flags & ADVF_ONLYONCE));
        sink_ = keep ? told : nullptr;
        aspects_ = keep ? aspects : 0;
        flags_ = keep ? flags : 0;
        if (atOnce)
            told->OnViewChange(aspects, kWhole);
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

HRESULT ViewFaces::GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE*, LPSIZEL size) {
    if (const HRESULT known = Known(aspect, index); FAILED(known))
        return known;
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
