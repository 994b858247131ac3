#include "host/app/orvhost/site.h"

namespace orv::host {
namespace {

HRESULT GiveBool(VARIANT& result, bool value) {
    result.vt = VT_BOOL;
    result.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT GiveNumber(VARIANT& result, LONG value) {
    result.vt = VT_I4;
    result.lVal = value;
    return S_OK;
}

HRESULT GiveText(VARIANT& result, const wchar_t* text) {
    result.vt = VT_BSTR;
    result.bstrVal = SysAllocString(text);
    return result.bstrVal != nullptr ? S_OK : E_OUTOFMEMORY;
}

/// The system's message font in points, as a font object.
HRESULT GiveFont(VARIANT& result, HWND area) {
    LOGFONTW logical{};
    const OwnedFont font = MessageFont(GetDpiForWindow(area));
    GetObjectW(font.Get(), sizeof logical, &logical);
    FONTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.lpstrName = logical.lfFaceName;
    const LONG height = logical.lfHeight < 0 ? -logical.lfHeight : logical.lfHeight;
    description.cySize.int64 = LONGLONG{height} * 72 * 10000 / static_cast<LONGLONG>(GetDpiForWindow(area));
    description.sWeight = static_cast<SHORT>(logical.lfWeight);
    description.sCharset = logical.lfCharSet;
    IFontDisp* object = nullptr;
    const HRESULT made = OleCreateFontIndirect(&description, IID_IFontDisp, reinterpret_cast<void**>(&object));
    if (FAILED(made))
        return made;
    result.vt = VT_DISPATCH;
    result.pdispVal = object;
    return S_OK;
}

constexpr LONG SystemColour(int index) {
    return static_cast<LONG>(0x80000000u | static_cast<unsigned>(index));
}

} // namespace

HRESULT AmbientProperty(DISPID id, HWND area, VARIANT& result) {
    switch (id) {
    case DISPID_AMBIENT_USERMODE:
    case DISPID_AMBIENT_SUPPORTSMNEMONICS:
        return GiveBool(result, true);
    case DISPID_AMBIENT_UIDEAD:
    case DISPID_AMBIENT_SHOWGRABHANDLES:
    case DISPID_AMBIENT_SHOWHATCHING:
    case DISPID_AMBIENT_DISPLAYASDEFAULT:
    case DISPID_AMBIENT_MESSAGEREFLECT:
        return GiveBool(result, false);
    case DISPID_AMBIENT_BACKCOLOR:
        return GiveNumber(result, SystemColour(COLOR_BTNFACE));
    case DISPID_AMBIENT_FORECOLOR:
        return GiveNumber(result, SystemColour(COLOR_BTNTEXT));
    case DISPID_AMBIENT_LOCALEID:
        return GiveNumber(result, static_cast<LONG>(GetUserDefaultLCID()));
    case DISPID_AMBIENT_DISPLAYNAME:
        return GiveText(result, L"AddOn1");
    case DISPID_AMBIENT_SCALEUNITS:
        return GiveText(result, L"Pixel");
    case DISPID_AMBIENT_FONT:
        return GiveFont(result, area);
    default:
        return DISP_E_MEMBERNOTFOUND;
    }
}

} // namespace orv::host
