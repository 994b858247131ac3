#include "host/com/class_objects.h"

#include <OrvAddon.h>

#include <functional>

#include "host/com/application_face.h"
#include "host/com/configuration_faces.h"

namespace orv::host {
namespace {

class Factory final : public IClassFactory {
  public:
    using Maker = std::function<ComPtr<IUnknown>()>;
    explicit Factory(Maker maker) : maker_(std::move(maker)) {}
    virtual ~Factory() = default;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr)
            return E_POINTER;
        *object = iid == IID_IUnknown || iid == IID_IClassFactory ? static_cast<IClassFactory*>(this) : nullptr;
        if (*object == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references_); }
    STDMETHODIMP_(ULONG) Release() override {
        const long left = --references_;
        if (left == 0)
            delete this;
        return static_cast<ULONG>(left);
    }
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        if (object == nullptr)
            return E_POINTER;
        *object = nullptr;
        if (outer != nullptr)
            return CLASS_E_NOAGGREGATION;
        HRESULT found = E_FAIL;
        const HRESULT made = Answer(iid, [&] { found = maker_()->QueryInterface(iid, object); });
        return FAILED(made) ? made : found;
    }
    // The program decides itself when it ends.
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }

  private:
    Maker maker_;
    std::atomic<long> references_ = 1;
};

DWORD Offer(REFCLSID id, Factory::Maker maker) {
    const auto factory = Make<Factory>(std::move(maker));
    DWORD cookie = 0;
    Check(CoRegisterClassObject(id, factory.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie));
    return cookie;
}

template <typename Interface>
ComPtr<IUnknown> AsUnknown(const ComPtr<Interface>& object) {
    return ComPtr<IUnknown>(static_cast<IDispatch*>(object.Get()));
}

} // namespace

ClassObjects::ClassObjects(std::shared_ptr<sim::BenchHost> bench) {
    cookies_[0] = Offer(CLSID_ConfigurationManager, [bench] {
        return AsUnknown(Make<ConfigurationManagerFace>(bench->CreateConfigurationManager()));
    });
    try {
        cookies_[1] =
            Offer(CLSID_Support, [bench] { return AsUnknown(Make<SupportFace>(bench->CreateSupportObject())); });
    } catch (...) {
        CoRevokeClassObject(cookies_[0]);
        throw;
    }
}

ClassObjects::~ClassObjects() {
    for (const DWORD cookie : cookies_)
        CoRevokeClassObject(cookie);
}

} // namespace orv::host
