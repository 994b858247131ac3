// A control that any container can embed, show and destroy, with one window and nothing in it: what the start and the
// size of the component are compared with.
#include "platform/win32/system.h"

#include <atomic>
#include <new>

#include <ocidl.h>
#include <olectl.h>

#include "addon/com/com_ptr.h"
#include "bench/win32/empty_control.h"
#include "platform/win32/module.h"

namespace orv::bench {
namespace {

using addon::com::ComPtr;
using addon::com::Query;

constexpr wchar_t kClass[] = L"EmptyControl";
std::atomic<long> objects = 0;

template <typename Interface>
IUnknown* As(Interface* face) {
    return reinterpret_cast<IUnknown*>(face);
}

class EmptyControl final : public IOleObject,
                           public IOleInPlaceObject,
                           public IOleInPlaceActiveObject,
                           public IViewObject2,
                           public IPersistStreamInit {
  public:
    EmptyControl() { ++objects; }
    EmptyControl(const EmptyControl&) = delete;
    EmptyControl& operator=(const EmptyControl&) = delete;
    ~EmptyControl() {
        Leave();
        UnregisterClassW(kClass, platform::win32::OwnModule());
        --objects;
    }

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        IUnknown* found = Find(id);
        *object = found;
        if (!found)
            return E_NOINTERFACE;
        found->AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

    // IOleObject
    STDMETHODIMP SetClientSite(IOleClientSite* site) override {
        site_ = ComPtr<IOleClientSite>(site);
        return S_OK;
    }
    STDMETHODIMP GetClientSite(IOleClientSite** site) override {
        *site = ComPtr<IOleClientSite>(site_).Detach();
        return S_OK;
    }
    STDMETHODIMP SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
    STDMETHODIMP Close(DWORD) override {
        Leave();
        return S_OK;
    }
    STDMETHODIMP SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    STDMETHODIMP InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
    STDMETHODIMP DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND, LPCRECT) override {
        if (verb == OLEIVERB_HIDE)
            ShowWindow(window_, SW_HIDE);
        else
            Enter();
        return S_OK;
    }
    STDMETHODIMP EnumVerbs(IEnumOLEVERB**) override { return OLEOBJ_E_NOVERBS; }
    STDMETHODIMP Update() override { return S_OK; }
    STDMETHODIMP IsUpToDate() override { return S_OK; }
    STDMETHODIMP GetUserClassID(CLSID* id) override {
        *id = kEmptyControl;
        return S_OK;
    }
    STDMETHODIMP GetUserType(DWORD, LPOLESTR*) override { return E_NOTIMPL; }
    STDMETHODIMP SetExtent(DWORD, SIZEL* size) override {
        extent_ = *size;
        return S_OK;
    }
    STDMETHODIMP GetExtent(DWORD, SIZEL* size) override {
        *size = extent_;
        return S_OK;
    }
    STDMETHODIMP Advise(IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP Unadvise(DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP EnumAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }
    STDMETHODIMP GetMiscStatus(DWORD, DWORD* status) override {
        *status = OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST;
        return S_OK;
    }
    STDMETHODIMP SetColorScheme(LOGPALETTE*) override { return S_OK; }

    // IOleInPlaceObject and IOleInPlaceActiveObject
    STDMETHODIMP GetWindow(HWND* window) override {
        *window = window_;
        return window_ ? S_OK : E_FAIL;
    }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP InPlaceDeactivate() override {
        Leave();
        return S_OK;
    }
    STDMETHODIMP UIDeactivate() override { return S_OK; }
    STDMETHODIMP SetObjectRects(LPCRECT place, LPCRECT) override {
        SetWindowPos(window_, nullptr, place->left, place->top, place->right - place->left, place->bottom - place->top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        return S_OK;
    }
    STDMETHODIMP ReactivateAndUndo() override { return E_NOTIMPL; }
    STDMETHODIMP TranslateAccelerator(LPMSG) override { return S_FALSE; }
    STDMETHODIMP OnFrameWindowActivate(BOOL) override { return S_OK; }
    STDMETHODIMP OnDocWindowActivate(BOOL) override { return S_OK; }
    STDMETHODIMP ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
    STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }

    // IViewObject2
    STDMETHODIMP Draw(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, HDC, LPCRECTL, LPCRECTL,
                      BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) override {
        return S_OK;
    }
    STDMETHODIMP GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE**) override { return S_FALSE; }
    STDMETHODIMP Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP Unfreeze(DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP SetAdvise(DWORD, DWORD, IAdviseSink*) override { return S_OK; }
    STDMETHODIMP GetAdvise(DWORD*, DWORD*, IAdviseSink**) override { return E_NOTIMPL; }
    STDMETHODIMP GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL size) override {
        return GetExtent(aspect, size);
    }

    // IPersistStreamInit
    STDMETHODIMP GetClassID(CLSID* id) override { return GetUserClassID(id); }
    STDMETHODIMP IsDirty() override { return S_FALSE; }
    STDMETHODIMP Load(IStream*) override { return S_OK; }
    STDMETHODIMP Save(IStream*, BOOL) override { return S_OK; }
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override {
        size->QuadPart = 0;
        return S_OK;
    }
    STDMETHODIMP InitNew() override { return S_OK; }

  private:
    IUnknown* Find(REFIID id) {
        if (id == IID_IUnknown || id == IID_IOleObject)
            return As(static_cast<IOleObject*>(this));
        if (id == IID_IOleWindow || id == IID_IOleInPlaceObject)
            return As(static_cast<IOleInPlaceObject*>(this));
        if (id == IID_IOleInPlaceActiveObject)
            return As(static_cast<IOleInPlaceActiveObject*>(this));
        if (id == IID_IViewObject || id == IID_IViewObject2)
            return As(static_cast<IViewObject2*>(this));
        if (id == IID_IPersistStreamInit)
            return As(static_cast<IPersistStreamInit*>(this));
        return nullptr;
    }

    void Enter() {
        const auto site = Query<IOleInPlaceSite>(site_.Get());
        if (window_ || !site || site->CanInPlaceActivate() != S_OK || FAILED(site->OnInPlaceActivate()))
            return;
        HWND parent = nullptr;
        ComPtr<IOleInPlaceFrame> frame;
        ComPtr<IOleInPlaceUIWindow> document;
        RECT place{};
        RECT clip{};
        OLEINPLACEFRAMEINFO info{};
        info.cb = sizeof info;
        site->GetWindow(&parent);
        site->GetWindowContext(frame.Put(), document.Put(), &place, &clip, &info);
        WNDCLASSEXW type{};
        type.cbSize = sizeof type;
        type.lpfnWndProc = &DefWindowProcW;
        type.hInstance = platform::win32::OwnModule();
        type.lpszClassName = kClass;
        type.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        RegisterClassExW(&type);
        window_ =
            CreateWindowExW(0, kClass, L"", WS_CHILD | WS_VISIBLE, place.left, place.top, place.right - place.left,
                            place.bottom - place.top, parent, nullptr, platform::win32::OwnModule(), nullptr);
    }

    void Leave() {
        if (!window_)
            return;
        DestroyWindow(window_);
        window_ = nullptr;
        if (const auto site = Query<IOleInPlaceSite>(site_.Get()))
            site->OnInPlaceDeactivate();
    }

    std::atomic<ULONG> references_ = 0;
    ComPtr<IOleClientSite> site_;
    HWND window_ = nullptr;
    SIZEL extent_{};
};

/// Lives as long as the file; clients count nothing.
class Factory final : public IClassFactory {
  public:
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        *object = id == IID_IUnknown || id == IID_IClassFactory ? this : nullptr;
        return *object ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override {
        if (outer)
            return CLASS_E_NOAGGREGATION;
        const ComPtr<EmptyControl> made(new (std::nothrow) EmptyControl);
        return made ? made->QueryInterface(id, object) : E_OUTOFMEMORY;
    }
    STDMETHODIMP LockServer(BOOL lock) override {
        lock ? ++objects : --objects;
        return S_OK;
    }
};

Factory factory;

} // namespace
} // namespace orv::bench

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, LPVOID* object) {
    *object = nullptr;
    return classId == orv::bench::kEmptyControl ? orv::bench::factory.QueryInterface(id, object)
                                                : CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
    return orv::bench::objects == 0 ? S_OK : S_FALSE;
}
