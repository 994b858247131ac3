#include "host/app/orvhost/component_file.h"

#include <OrvOutFormat.h>

#include "host/com/failure.h"
#include "host/sim/bench_host.h"
#include "text/excerpt.h"

namespace orv::host {
namespace {

constexpr wchar_t kProgId[] = L"OrvOutFormat.AddOnControl";

using GetClass = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
using CanUnload = HRESULT(STDAPICALLTYPE*)();

template <typename Function>
Function Export(HMODULE module, const char* name) {
    // Through a pointer of no type: the system declares every export as one and the same.
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

ComPtr<IAddOn> CreateRegistered() {
    CLSID id{};
    const HRESULT known = CLSIDFromProgID(kProgId, &id);
    if (FAILED(known))
        throw Error(known, std::wstring(L"The component ") + kProgId +
                               L" is not registered. Register it with regsvr32, or name its file with --component");
    ComPtr<IAddOn> addOn;
    const HRESULT made = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IAddOn, addOn.ReceiveVoid());
    if (FAILED(made))
        throw Error(made, std::wstring(L"The component ") + kProgId + L" cannot be created");
    return addOn;
}

} // namespace

ComponentFile::~ComponentFile() {
    // A component that still has objects keeps its code: unmapping it under them would crash.
    module_.Forget();
}

ComPtr<IAddOn> ComponentFile::Create() {
    return file_.empty() ? CreateRegistered() : CreateFromFile();
}

ComPtr<IAddOn> ComponentFile::CreateFromFile() {
    if (!module_)
        module_ = OwnedModule(
            LoadLibraryExW(std::filesystem::absolute(file_).c_str(), nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32));
    const auto getClass = module_ ? Export<GetClass>(module_.Get(), "DllGetClassObject") : nullptr;
    if (getClass == nullptr)
        throw Error(HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND), text::Excerpt(file_.wstring()) + L" is not a component");
    ComPtr<IClassFactory> factory;
    Check(getClass(CLSID_AddOnControl, IID_IClassFactory, factory.ReceiveVoid()));
    ComPtr<IAddOn> addOn;
    Check(factory->CreateInstance(nullptr, IID_IAddOn, addOn.ReceiveVoid()));
    return addOn;
}

void ComponentFile::Unload() {
    if (!module_) {
        CoFreeUnusedLibrariesEx(0, 0);
        return;
    }
    const auto canUnload = Export<CanUnload>(module_.Get(), "DllCanUnloadNow");
    if (canUnload != nullptr && canUnload() == S_OK)
        module_.Reset();
}

} // namespace orv::host
