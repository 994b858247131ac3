#include "addon/com/site.h"

namespace orv::addon::com {
namespace {

DWORD Modifiers() {
    const auto down = [](int key, DWORD flag) { return GetKeyState(key) < 0 ? flag : 0; };
    return down(VK_SHIFT, 1) | down(VK_CONTROL, 2) | down(VK_MENU, 4);
}

} // namespace

bool Site::Ambient(DISPID property, VARTYPE type, Variant& value) const {
    const auto container = As<IDispatch>();
    if (!container)
        return false;
    DISPPARAMS none{};
    Variant given;
    return SUCCEEDED(container->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                       given.Put(), nullptr, nullptr)) &&
           SUCCEEDED(VariantChangeType(value.Put(), &given.Get(), 0, type));
}

bool Site::UserMode() const {
    Variant mode;
    return !Ambient(DISPID_AMBIENT_USERMODE, VT_BOOL, mode) || mode.Get().boolVal != VARIANT_FALSE;
}

std::wstring Site::DisplayName() const {
    Variant name;
    return Ambient(DISPID_AMBIENT_DISPLAYNAME, VT_BSTR, name) ? FromBstr(name.Get().bstrVal) : std::wstring();
}

bool Site::PutExtender(const wchar_t* property, bool value) const {
    const auto site = As<IOleControlSite>();
    ComPtr<IDispatch> extender;
    if (!site || FAILED(site->GetExtendedControl(extender.Put())) || !extender)
        return false;
    std::wstring name = property;
    LPOLESTR names[] = {name.data()};
    DISPID id = DISPID_UNKNOWN;
    if (FAILED(extender->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id)))
        return false;
    VARIANTARG argument{};
    argument.vt = VT_BOOL;
    argument.boolVal = FromBool(value);
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{&argument, &put, 1, 1};
    return SUCCEEDED(extender->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters, nullptr,
                                      nullptr, nullptr));
}

bool Site::TranslateAccelerator(MSG& message) const {
    const auto site = As<IOleControlSite>();
    return site && site->TranslateAccelerator(&message, Modifiers()) == S_OK;
}

void Site::OnFocus(bool gained) const {
    if (const auto site = As<IOleControlSite>())
        site->OnFocus(gained);
}

} // namespace orv::addon::com
