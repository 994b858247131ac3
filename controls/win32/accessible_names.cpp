#include "controls/win32/accessible_names.h"

#include <objbase.h>

#include <oleacc.h>

namespace orv::controls::win32 {
namespace {

// Spelled out: the import libraries of the compiler do not carry them.
constexpr CLSID kServices = {0xb5f8350b, 0x0548, 0x48b1, {0xa6, 0xee, 0x88, 0xbd, 0x00, 0xb4, 0xa5, 0xe7}};
constexpr IID kServicesInterface = {0x6e26e776, 0x04f0, 0x495d, {0x80, 0xe4, 0x33, 0x30, 0x35, 0x2e, 0x31, 0x69}};
constexpr GUID kName = {0x608d3df8, 0x8128, 0x4aa7, {0xa4, 0x28, 0xf5, 0x5e, 0x49, 0x26, 0x72, 0x91}};

constexpr DWORD kClient = static_cast<DWORD>(OBJID_CLIENT);

} // namespace

AccessibleNames::AccessibleNames() {
    void* made = nullptr;
    if (SUCCEEDED(CoCreateInstance(kServices, nullptr, CLSCTX_INPROC_SERVER, kServicesInterface, &made)))
        services_ = static_cast<IAccPropServices*>(made);
}

AccessibleNames::~AccessibleNames() {
    if (services_ != nullptr)
        services_->Release();
}

void AccessibleNames::Set(HWND window, const std::wstring& name) {
    if (services_ == nullptr)
        return;
    if (name.empty())
        Clear(window);
    else
        services_->SetHwndPropStr(window, kClient, CHILDID_SELF, kName, name.c_str());
}

void AccessibleNames::Clear(HWND window) {
    GUID name = kName;
    if (services_ != nullptr)
        services_->ClearHwndProps(window, kClient, CHILDID_SELF, &name, 1);
}

} // namespace orv::controls::win32
