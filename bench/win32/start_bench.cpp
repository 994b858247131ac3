// The component's file loaded, made, embedded, shown and destroyed in a container against an empty control.
#include "platform/win32/system.h"

#include <cstdio>
#include <memory>
#include <string>

#include "bench/win32/empty_control.h"
#include "bench/win32/rows.h"
#include "host/com/application_face.h"
#include "host/com/class_objects.h"
#include "host/sim/bench_host.h"
#include "platform/win32/owned.h"
#include "tests/com/container.h"

namespace orv::bench {
namespace {

using addon::com::ComPtr;
using addon::com::Query;

/// Beside this program.
std::wstring Beside(const wchar_t* name) {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring own = path;
    return own.substr(0, own.rfind(L'\\') + 1) + name;
}

class Library {
  public:
    explicit Library(const wchar_t* name) : module_(LoadLibraryW(Beside(name).c_str())) {
        Require(static_cast<bool>(module_), "a control does not load");
    }
    ComPtr<IUnknown> Create(REFCLSID classId) const {
        using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
        const auto entry = reinterpret_cast<GetClassObject>(
            reinterpret_cast<void*>(GetProcAddress(module_.Get(), "DllGetClassObject")));
        ComPtr<IClassFactory> factory;
        ComPtr<IUnknown> made;
        Require(entry && SUCCEEDED(entry(classId, IID_IClassFactory, factory.PutVoid())) &&
                    SUCCEEDED(factory->CreateInstance(nullptr, IID_IUnknown, made.PutVoid())),
                "no control is made");
        return made;
    }

  private:
    platform::win32::OwnedModule module_;
};

class Theatre {
  public:
    /// What a host does with the component before it shows it.
    ComPtr<IUnknown> Component() {
        const ComPtr<IUnknown> made = component_.Create(CLSID_AddOnControl);
        const auto addOn = Query<IAddOn>(made.Get());
        const bool ready = SUCCEEDED(addOn->Register(application_.Get())) &&
                           SUCCEEDED(addOn->put_CurrentClusterIndex(bench_->Contents().devices.front().cluster)) &&
                           SUCCEEDED(addOn->put_CurrentDeviceIndex(0)) &&
                           SUCCEEDED(Query<IAddOnGUI>(made.Get())->Enable());
        Require(ready, "the component takes no host");
        return made;
    }
    ComPtr<IUnknown> Empty() { return empty_.Create(kEmptyControl); }

    void Play(const ComPtr<IUnknown>& control, bool activate) {
        container_.journal.clear();
        Require(SUCCEEDED(container_.Embed(control)) && SUCCEEDED(container_.Verb(OLEIVERB_SHOW)),
                "a control is not shown");
        if (activate) {
            SHORT result = 0;
            Require(SUCCEEDED(Query<IAddOnGUI>(control.Get())->Activate()) &&
                        SUCCEEDED(Query<IAddOn>(control.Get())->get_GetResult(&result)) && result == 2,
                    "the component has not loaded");
        }
        RedrawWindow(container_.Window(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        container_.Discard();
    }

  private:
    std::shared_ptr<sim::BenchHost> bench_ =
        std::make_shared<sim::BenchHost>(sim::LoadDescription(ORV_SOURCE_DIR "/samples/tunnel.json"));
    host::ClassObjects classes_{bench_};
    ComPtr<IOrvApplication> application_{host::Make<host::ApplicationFace>(bench_->Application()).Get()};
    Library component_{L"OrvOutFormat.ocx"};
    Library empty_{L"orv_empty_control.dll"};
    tests::Container container_;
};

void Measure(const Rows& rows) {
    rows.Measure(
        {"component's file loaded and let go", "an empty control"},
        {[] { const Library file(L"OrvOutFormat.ocx"); }, [] { const Library file(L"orv_empty_control.dll"); }});
    Theatre theatre;
    const Action empty = [&] { theatre.Play(theatre.Empty(), false); };
    rows.Measure({"component made, shown and destroyed", "an empty control"},
                 {[&] { theatre.Play(theatre.Component(), false); }, empty});
    rows.Measure({"component made, shown, loaded and destroyed", "an empty control"},
                 {[&] { theatre.Play(theatre.Component(), true); }, empty});
}

} // namespace
} // namespace orv::bench

int main(int argc, char** argv) {
    return orv::bench::Run(argc, argv, orv::bench::Measure);
}
