#include "tests/com/container.h"

#include <cwchar>

#include "text/restoring.h"

namespace orv::tests {
namespace {

constexpr DISPID kVisible = 1;
constexpr DISPID kEnabled = 2;

HRESULT Give(IUnknown* found, void** object) {
    *object = found;
    if (!found)
        return E_NOINTERFACE;
    found->AddRef();
    return S_OK;
}

/// The pointer is handed on as the interface it is, whatever its first base.
template <typename I>
IUnknown* As(I* face) {
    return reinterpret_cast<IUnknown*>(face);
}

} // namespace

HRESULT Frame::QueryInterface(REFIID id, void** object) {
    const bool known =
        id == IID_IUnknown || id == IID_IOleWindow || id == IID_IOleInPlaceUIWindow || id == IID_IOleInPlaceFrame;
    return Give(known ? this : nullptr, object);
}

HRESULT Frame::GetWindow(HWND* window) {
    *window = container_.Window();
    return S_OK;
}

HRESULT Frame::SetBorderSpace(LPCBORDERWIDTHS widths) {
    return container_.Write(name_ + (widths ? "SetBorderSpace" : "SetBorderSpace none"));
}

HRESULT Frame::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) {
    container_.Write(name_ + (object ? "SetActiveObject" : "SetActiveObject none"));
    active = ComPtr<IOleInPlaceActiveObject>(object);
    return S_OK;
}

HRESULT Frame::EnableModeless(BOOL enable) {
    return container_.Write(name_ + (enable ? "EnableModeless on" : "EnableModeless off"));
}

HRESULT Extender::QueryInterface(REFIID id, void** object) {
    return Give(id == IID_IUnknown || id == IID_IDispatch ? this : nullptr, object);
}

HRESULT Extender::GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) {
    if (_wcsicmp(names[0], L"Visible") == 0)
        *ids = kVisible;
    else if (_wcsicmp(names[0], L"Enabled") == 0)
        *ids = kEnabled;
    else
        return DISP_E_UNKNOWNNAME;
    return S_OK;
}

HRESULT Extender::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*, UINT*) {
    if (container_.manners.extender == ExtenderKind::Refuses)
        return DISP_E_EXCEPTION;
    if (!(flags & DISPATCH_PROPERTYPUT) || arguments->cArgs != 1 || arguments->rgvarg[0].vt != VT_BOOL)
        return DISP_E_TYPEMISMATCH;
    const bool on = arguments->rgvarg[0].boolVal != VARIANT_FALSE;
    container_.journal.push_back(std::string(id == kVisible ? "Visible " : "Enabled ") + (on ? "on" : "off"));
    if (container_.manners.extender == ExtenderKind::Applies && id == kVisible)
        container_.Verb(on ? OLEIVERB_SHOW : OLEIVERB_HIDE);
    return S_OK;
}

Container::Container(Manners given)
    : manners(given), window_(CreateWindowExW(0, L"STATIC", L"Container", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 900,
                                              700, nullptr, nullptr, nullptr, nullptr)) {}

Container::~Container() {
    Discard();
}

HRESULT Container::Write(const std::string& line) {
    journal.push_back(line);
    if (within && !inside_) {
        const Restoring done([this] { inside_ = false; });
        inside_ = true;
        within(line);
    }
    return S_OK;
}

HRESULT Container::Embed(const ComPtr<IUnknown>& made) {
    control = made;
    const auto object = Query<IOleObject>(made.Get());
    SIZEL extent{20000, 15000};
    HRESULT result = object->SetClientSite(this);
    if (SUCCEEDED(result))
        result = object->SetExtent(DVASPECT_CONTENT, &extent);
    if (SUCCEEDED(result))
        result = Query<IPersistStreamInit>(made.Get())->InitNew();
    if (SUCCEEDED(result))
        result = Verb(OLEIVERB_INPLACEACTIVATE);
    if (SUCCEEDED(result))
        result = Query<IOleInPlaceObject>(made.Get())->SetObjectRects(&place, &place);
    return result;
}

HRESULT Container::Verb(LONG verb) {
    return Query<IOleObject>(control.Get())->DoVerb(verb, nullptr, this, 0, Window(), &place);
}

HWND Container::ControlWindow() const {
    HWND window = nullptr;
    if (const auto object = Query<IOleInPlaceObject>(control.Get()))
        object->GetWindow(&window);
    return window;
}

HWND Container::Find(const wchar_t* name) const {
    const ATOM atom = GlobalAddAtomW(name);
    const LRESULT found =
        SendMessageW(ControlWindow(), RegisterWindowMessageW(L"OrvFindControl"), atom, static_cast<LPARAM>(-1));
    GlobalDeleteAtom(atom);
    return reinterpret_cast<HWND>(found);
}

void Container::Discard() {
    if (const auto object = Query<IOleObject>(control.Get())) {
        object->Close(OLECLOSE_NOSAVE);
        object->SetClientSite(nullptr);
    }
    control = nullptr;
}

HRESULT Container::QueryInterface(REFIID id, void** object) {
    if (id == IID_IUnknown || id == IID_IOleClientSite)
        return Give(As<IOleClientSite>(this), object);
    if (id == IID_IOleWindow || id == IID_IOleInPlaceSite)
        return Give(As<IOleInPlaceSite>(this), object);
    if (id == IID_IOleControlSite && manners.controlSite)
        return Give(As<IOleControlSite>(this), object);
    if (id == IID_IDispatch)
        return Give(As<IDispatch>(this), object);
    return Give(nullptr, object);
}

HRESULT Container::GetWindow(HWND* window) {
    *window = Window();
    return Write("GetWindow");
}

HRESULT Container::GetWindowContext(IOleInPlaceFrame** given, IOleInPlaceUIWindow** givenDocument, LPRECT position,
                                    LPRECT clip, LPOLEINPLACEFRAMEINFO info) {
    *given = nullptr;
    *givenDocument = nullptr;
    Write("GetWindowContext");
    if (!manners.windowContext)
        return E_FAIL;
    if (manners.frame) {
        frame.AddRef();
        *given = &frame;
    }
    if (manners.document) {
        document.AddRef();
        *givenDocument = &document;
    }
    *position = *clip = place;
    info->hwndFrame = Window();
    return S_OK;
}

HRESULT Container::GetExtendedControl(IDispatch** object) {
    if (manners.extender == ExtenderKind::None) {
        *object = nullptr;
        return E_NOTIMPL;
    }
    extender.AddRef();
    *object = &extender;
    return S_OK;
}

HRESULT Container::TranslateAccelerator(MSG* message, DWORD) {
    journal.push_back("TranslateAccelerator " + std::to_string(message->wParam));
    return message->wParam == VK_TAB ? S_OK : S_FALSE;
}

HRESULT Container::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) {
    if (id == DISPID_AMBIENT_DISPLAYNAME)
        Write("DisplayName");
    if (id != DISPID_AMBIENT_USERMODE || !manners.userMode)
        return DISP_E_MEMBERNOTFOUND;
    result->vt = VT_BOOL;
    result->boolVal = addon::com::FromBool(*manners.userMode);
    return S_OK;
}

} // namespace orv::tests
