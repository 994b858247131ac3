// The least that shows the add-on: a window, a client site, an in-place site. Needs no file of the product.
//   x86_64-w64-mingw32-g++ -municode -static minimal_container.cpp -o minimal_container.exe -lole32 -loleaut32 -luuid
// With the argument --close it ends by itself once the control is active, and tells what it saw.
#include <windows.h>

#include <cstdio>
#include <oleauto.h>
#include <oleidl.h>

RECT PlaceIn(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return client;
}

// Both sites in one object, which lives as long as the program and counts nothing.
class Site final : public IOleClientSite, public IOleInPlaceSite {
  public:
    HWND window = nullptr;
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        *object = nullptr;
        if (id == IID_IUnknown || id == IID_IOleClientSite)
            *object = static_cast<IOleClientSite*>(this);
        if (id == IID_IOleWindow || id == IID_IOleInPlaceSite)
            *object = static_cast<IOleInPlaceSite*>(this);
        return *object ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP SaveObject() override { return E_NOTIMPL; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    STDMETHODIMP GetContainer(IOleContainer**) override { return E_NOINTERFACE; }
    STDMETHODIMP ShowObject() override { return S_OK; }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }
    STDMETHODIMP GetWindow(HWND* given) override { return *given = window, S_OK; }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnUIActivate() override { return S_OK; }
    // No frame: nobody is told when boxes open. A real host gives one.
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, RECT* place, RECT* clip,
                                  OLEINPLACEFRAMEINFO*) override {
        *frame = nullptr, *document = nullptr, *place = *clip = PlaceIn(window);
        return S_OK;
    }
    STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
    STDMETHODIMP OnUIDeactivate(BOOL) override { return S_OK; }
    STDMETHODIMP OnInPlaceDeactivate() override { return S_OK; }
    STDMETHODIMP DiscardUndoState() override { return E_NOTIMPL; }
    STDMETHODIMP DeactivateAndUndo() override { return E_NOTIMPL; }
    STDMETHODIMP OnPosRectChange(LPCRECT) override { return S_OK; }
};

IOleInPlaceObject* placed = nullptr; // for the window procedure

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_SIZE && placed) {
        const RECT place = PlaceIn(window);
        placed->SetObjectRects(&place, &place);
    }
    // The control is closed before its parent goes.
    return message == WM_CLOSE ? (PostQuitMessage(0), 0) : DefWindowProcW(window, message, wparam, lparam);
}

void Check(HRESULT result) {
    if (FAILED(result))
        throw result;
}

template <typename I>
I* As(IUnknown* object) {
    void* found = nullptr;
    Check(object->QueryInterface(__uuidof(I), &found));
    return static_cast<I*>(found);
}

// Late bound, so that no header of the contracts is needed.
void Tell(IUnknown* control, const wchar_t* name) {
    auto* members = As<IDispatch>(control);
    DISPID id = DISPID_UNKNOWN;
    DISPPARAMS none{};
    VARIANT value{};
    Check(members->GetIDsOfNames(IID_NULL, const_cast<LPOLESTR*>(&name), 1, LOCALE_USER_DEFAULT, &id));
    Check(members->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value, nullptr, nullptr));
    Check(VariantChangeType(&value, &value, 0, VT_BSTR));
    std::printf("%ls %ls\n", name, value.bstrVal);
    VariantClear(&value);
    members->Release();
}

void Run(IOleInPlaceActiveObject* active) {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        // The control looks at keys first: Tab, Return and access keys mean something there.
        if (message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST &&
            active->TranslateAccelerator(&message) == S_OK)
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    active->Release();
}

void Show(HWND frame, bool close) {
    static Site site;
    site.window = frame;
    CLSID id{};
    Check(CLSIDFromProgID(L"OrvOutFormat.AddOnControl", &id));
    IOleObject* control = nullptr;
    Check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IOleObject, reinterpret_cast<void**>(&control)));
    const RECT place = PlaceIn(frame);
    Check(control->SetClientSite(&site));
    Check(control->DoVerb(OLEIVERB_UIACTIVATE, nullptr, &site, 0, frame, &place));
    placed = As<IOleInPlaceObject>(control);
    HWND window = nullptr;
    Check(placed->GetWindow(&window));
    std::printf("shown %d, keyboard %d\n", IsWindowVisible(window), IsChild(window, GetFocus()));
    Tell(control, L"ProgID");
    Tell(control, L"Version");
    Tell(control, L"GetResult");
    if (close)
        PostMessageW(frame, WM_CLOSE, 0, 0);
    Run(As<IOleInPlaceActiveObject>(control));
    placed->Release();
    placed = nullptr;
    Check(control->Close(OLECLOSE_NOSAVE));
    Check(control->SetClientSite(nullptr));
    std::printf("references left %lu\n", control->Release());
}

int wmain(int count, wchar_t** arguments) {
    OleInitialize(nullptr);
    WNDCLASSW description{};
    description.lpfnWndProc = &Procedure;
    description.lpszClassName = L"MinimalContainer";
    RegisterClassW(&description);
    constexpr DWORD kStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE;
    const HWND frame = CreateWindowExW(0, description.lpszClassName, L"Minimal container", kStyle, 0, 0, 980, 700,
                                       nullptr, nullptr, nullptr, nullptr);
    try {
        Show(frame, count > 1 && lstrcmpW(arguments[1], L"--close") == 0);
    } catch (HRESULT failure) {
        std::printf("failed with %08lx\n", static_cast<unsigned long>(failure));
        return 1;
    }
    OleUninitialize();
    return 0;
}
