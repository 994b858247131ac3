#include "tests/orvhost/test_add_on.h"

namespace orv::host {
namespace {

class TestAddOn final : public Dual<IAddOn>,
                        public IAddOnGUI,
                        public IOleObject,
                        public IOleInPlaceObject,
                        public IOleInPlaceActiveObject {
  public:
    explicit TestAddOn(AddOnDiary& diary) : diary_(diary) { ++diary_.alive; }
    ~TestAddOn() override {
        DestroyWindow(window_);
        --diary_.alive;
    }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override { return Dual::QueryInterface(iid, object); }
    STDMETHODIMP_(ULONG) AddRef() override { return Dual::AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return Dual::Release(); }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return Dual::GetTypeInfoCount(count); }
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
        return Dual::GetTypeInfo(index, locale, info);
    }
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
        return Dual::GetIDsOfNames(iid, names, count, locale, ids);
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }

    // IAddOn
    STDMETHODIMP get_Argument(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP put_Argument(BSTR) override { return S_OK; }
    STDMETHODIMP get_CurrentClusterIndex(SHORT*) override { return E_NOTIMPL; }
    STDMETHODIMP put_CurrentClusterIndex(SHORT index) override { return diary_.cluster = index, S_OK; }
    STDMETHODIMP get_CurrentDeviceIndex(SHORT*) override { return E_NOTIMPL; }
    STDMETHODIMP put_CurrentDeviceIndex(SHORT index) override { return diary_.device = index, S_OK; }
    STDMETHODIMP get_OrvProtocol(IDispatch**) override { return E_NOTIMPL; }
    STDMETHODIMP put_OrvProtocol(IDispatch*) override { return S_OK; }
    STDMETHODIMP putref_OrvProtocol(IDispatch*) override { return S_OK; }
    STDMETHODIMP get_MultipleInstances(VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP get_ProgID(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP get_GetResult(SHORT* result) override { return *result = 7, S_OK; }
    STDMETHODIMP Register(IOrvApplication* application) override {
        if (FAILED(diary_.registered))
            return diary_.registered;
        application_ = ComPtr<IOrvApplication>(application);
        return Note("register");
    }
    STDMETHODIMP Unregister() override {
        application_.Reset();
        return Note("unregister");
    }
    STDMETHODIMP get_SelectedDevicesIndexes(VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP put_SelectedDevicesIndexes(VARIANT) override { return S_OK; }

    // IAddOnGUI
    STDMETHODIMP Activate() override {
        Note("activate");
        if (diary_.whenActivated)
            diary_.whenActivated();
        return S_OK;
    }
    STDMETHODIMP get_CloseOnActiveDeviceChange(VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP Enable() override { return Note("enable"); }
    STDMETHODIMP GetMenuEntry(SHORT, BSTR, BSTR, VARIANT, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP GetMinSize(FLOAT*, FLOAT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetToolbarButton(SHORT, BSTR, BSTR, BSTR, SHORT, VARIANT, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP GetToolbarPicture(SHORT, BSTR, VARIANT, VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP MenuClicked(SHORT) override { return S_OK; }
    STDMETHODIMP get_Modal(VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP put_Modal(VARIANT_BOOL) override { return S_OK; }
    STDMETHODIMP get_Picture(IDispatch**) override { return E_NOTIMPL; }
    STDMETHODIMP ToolbarButtonClicked(SHORT, BSTR) override { return S_OK; }
    STDMETHODIMP RequestUnload(VARIANT_BOOL* agreed) override { return *agreed = VARIANT_FALSE, S_OK; }

    // IOleObject
    STDMETHODIMP SetClientSite(IOleClientSite* site) override {
        site_ = ComPtr<IOleClientSite>(site);
        return Note(site != nullptr ? "site" : "no site");
    }
    STDMETHODIMP GetClientSite(IOleClientSite**) override { return E_NOTIMPL; }
    STDMETHODIMP SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
    STDMETHODIMP Close(DWORD) override { return Note("close"); }
    STDMETHODIMP SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    STDMETHODIMP InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
    STDMETHODIMP DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND parent, LPCRECT) override {
        Note("verb " + std::to_string(verb));
        if (window_ == nullptr)
            window_ = CreateWindowExW(0, WC_STATICW, L"", WS_CHILD, 0, 0, 10, 10, parent, nullptr, Program(), nullptr);
        if (verb == OLEIVERB_UIACTIVATE)
            GoUiActive();
        if (diary_.whenVerb)
            diary_.whenVerb(verb);
        return S_OK;
    }
    STDMETHODIMP EnumVerbs(IEnumOLEVERB**) override { return E_NOTIMPL; }
    STDMETHODIMP Update() override { return S_OK; }
    STDMETHODIMP IsUpToDate() override { return S_OK; }
    STDMETHODIMP GetUserClassID(CLSID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetUserType(DWORD, LPOLESTR*) override { return E_NOTIMPL; }
    STDMETHODIMP SetExtent(DWORD, SIZEL* extent) override { return diary_.extentWidth = extent->cx, S_OK; }
    STDMETHODIMP GetExtent(DWORD, SIZEL*) override { return E_NOTIMPL; }
    STDMETHODIMP Advise(IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP Unadvise(DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP EnumAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }
    STDMETHODIMP GetMiscStatus(DWORD, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

    // IOleInPlaceObject, IOleInPlaceActiveObject
    STDMETHODIMP GetWindow(HWND* window) override { return *window = window_, S_OK; }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP InPlaceDeactivate() override { return Note("in-place deactivate"); }
    STDMETHODIMP UIDeactivate() override {
        if (frame_)
            frame_->SetActiveObject(nullptr, nullptr);
        if (const auto site = site_.As<IOleInPlaceSite>())
            site->OnUIDeactivate(FALSE);
        return Note("ui deactivate");
    }
    STDMETHODIMP SetObjectRects(LPCRECT position, LPCRECT) override { return diary_.rects = *position, Note("rects"); }
    STDMETHODIMP ReactivateAndUndo() override { return E_NOTIMPL; }
    STDMETHODIMP TranslateAccelerator(LPMSG message) override {
        return message->wParam == diary_.eats ? S_OK : S_FALSE;
    }
    STDMETHODIMP OnFrameWindowActivate(BOOL active) override { return Note(active ? "frame up" : "frame down"); }
    STDMETHODIMP OnDocWindowActivate(BOOL) override { return S_OK; }
    STDMETHODIMP ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
    STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }

  private:
    HRESULT Note(std::string call) {
        diary_.calls.push_back(std::move(call));
        diary_.siteHeld = static_cast<bool>(site_);
        diary_.applicationHeld = static_cast<bool>(application_);
        return S_OK;
    }
    void GoUiActive() {
        const auto site = site_.As<IOleInPlaceSite>();
        site->OnUIActivate();
        ComPtr<IOleInPlaceUIWindow> document;
        RECT position{};
        RECT clip{};
        OLEINPLACEFRAMEINFO info{};
        info.cb = sizeof info;
        if (SUCCEEDED(site->GetWindowContext(frame_.Receive(), document.Receive(), &position, &clip, &info)))
            frame_->SetActiveObject(this, L"Test");
    }
    void* Find(REFIID iid) override {
        if (iid == IID_IAddOnGUI)
            return static_cast<IAddOnGUI*>(this);
        if (iid == IID_IOleObject)
            return static_cast<IOleObject*>(this);
        if (iid == IID_IOleInPlaceObject)
            return static_cast<IOleInPlaceObject*>(this);
        if (iid == IID_IOleInPlaceActiveObject)
            return static_cast<IOleInPlaceActiveObject*>(this);
        return Dual::Find(iid);
    }

    AddOnDiary& diary_;
    ComPtr<IOrvApplication> application_;
    ComPtr<IOleClientSite> site_;
    ComPtr<IOleInPlaceFrame> frame_;
    HWND window_ = nullptr;
};

} // namespace

ComPtr<IAddOn> MakeTestAddOn(AddOnDiary& diary) {
    const auto addOn = Make<TestAddOn>(diary);
    return ComPtr<IAddOn>(static_cast<IAddOn*>(addOn.Get()));
}

} // namespace orv::host
