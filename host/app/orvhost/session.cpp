#include "host/app/orvhost/session.h"

#include "host/com/failure.h"
#include "host/sim/bench_host.h"

namespace orv::host {
namespace {

constexpr int kHimetricPerInch = 2540;

SIZEL Himetric(const RECT& area, UINT dpi) {
    return {MulDiv(area.right - area.left, kHimetricPerInch, static_cast<int>(dpi)),
            MulDiv(area.bottom - area.top, kHimetricPerInch, static_cast<int>(dpi))};
}

template <typename Interface, typename From>
ComPtr<Interface> Needed(const ComPtr<From>& object, const wchar_t* name) {
    auto found = object.template As<Interface>();
    if (!found)
        throw Error(E_NOINTERFACE, std::wstring(L"The component does not offer ") + name);
    return found;
}

} // namespace

Session::Session(ComPtr<IAddOn> addOn, ContainerEvents& events, const ComPtr<IOrvApplication>& application,
                 Target target, bool withExtender)
    : events_(events), site_(Make<Site>(events, withExtender)), addOn_(std::move(addOn)) {
    gui_ = Needed<IAddOnGUI>(addOn_, L"IAddOnGUI");
    object_ = Needed<IOleObject>(addOn_, L"IOleObject");
    dispatch_ = addOn_.As<IDispatch>();
    Check(addOn_->Register(application.Get()));
    SetTarget(target);
    Check(gui_->Enable());
}

Session::~Session() {
    if (addOn_)
        Close();
}

void Session::SetTarget(Target target) {
    Check(addOn_->put_CurrentClusterIndex(target.cluster));
    Check(addOn_->put_CurrentDeviceIndex(target.device));
}

RECT Session::AreaRect() const {
    RECT area{};
    GetClientRect(events_.Area(), &area);
    return area;
}

void Session::Verb(LONG verb, MSG* message) {
    const RECT area = AreaRect();
    // The call may close the session; the object must outlive it.
    const ComPtr<IOleObject> object = object_;
    const ComPtr<Site> site = site_;
    if (!object)
        return;
    Check(object->DoVerb(verb, message, site.Get(), 0, events_.Area(), &area));
}

void Session::Show() {
    if (shown_) {
        SetVisible(true);
        return;
    }
    if (!object_)
        return; // closed meanwhile
    const RECT area = AreaRect();
    Check(object_->SetClientSite(site_.Get()));
    if (const auto stream = object_.As<IPersistStreamInit>())
        stream->InitNew();
    object_->SetHostNames(L"Bench host", nullptr);
    SIZEL extent = Himetric(area, GetDpiForWindow(events_.Area()));
    Check(object_->SetExtent(DVASPECT_CONTENT, &extent));
    shown_ = true;
    Verb(OLEIVERB_INPLACEACTIVATE);
    Resize();
    Verb(OLEIVERB_SHOW);
    Verb(OLEIVERB_UIACTIVATE);
}

void Session::Activate() {
    const ComPtr<IAddOnGUI> gui = gui_; // the slave question may end in closing
    if (gui)
        Check(gui->Activate());
}

void Session::Resize() {
    if (const auto inPlace = object_.As<IOleInPlaceObject>(); inPlace && shown_) {
        const RECT area = AreaRect();
        inPlace->SetObjectRects(&area, &area);
    }
}

std::int16_t Session::Result() {
    SHORT result = 0;
    Check(addOn_->get_GetResult(&result));
    return result;
}

bool Session::MayUnload() {
    VARIANT_BOOL agreed = VARIANT_TRUE;
    return !gui_ || FAILED(gui_->RequestUnload(&agreed)) || agreed != VARIANT_FALSE;
}

HWND Session::Window() const {
    HWND window = nullptr;
    if (const auto inPlace = object_.As<IOleInPlaceObject>(); inPlace && shown_)
        inPlace->GetWindow(&window);
    return window;
}

void Session::SetVisible(bool visible) {
    visible_ = visible;
    if (shown_)
        Verb(visible ? OLEIVERB_SHOW : OLEIVERB_HIDE);
}

bool Session::Enabled() const {
    const HWND window = Window();
    return window != nullptr && IsWindowEnabled(window);
}

void Session::SetEnabled(bool enabled) {
    if (const HWND window = Window())
        EnableWindow(window, enabled);
}

bool Session::Translate(MSG& message) {
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST)
        return false;
    const ComPtr<IOleInPlaceActiveObject> active = site_->Frame().Active();
    return active && active->TranslateAccelerator(&message) == S_OK;
}

void Session::Enter(MSG* message) {
    if (shown_ && visible_)
        Verb(OLEIVERB_UIACTIVATE, message);
}

void Session::Leave() {
    if (!site_->UiActive())
        return;
    if (const auto inPlace = object_.As<IOleInPlaceObject>())
        inPlace->UIDeactivate();
}

void Session::FrameActivated(bool active) {
    if (const ComPtr<IOleInPlaceActiveObject> object = site_->Frame().Active())
        object->OnFrameWindowActivate(active);
}

std::int16_t Session::Close() {
    SHORT result = -1;
    addOn_->get_GetResult(&result); // one that cannot tell is closed all the same
    // Emptied first: closing runs the component's code, which may come back here.
    const ComPtr<IOleObject> object = std::move(object_);
    const ComPtr<IAddOn> addOn = std::move(addOn_);
    gui_.Reset();
    dispatch_.Reset();
    if (const auto inPlace = object.As<IOleInPlaceObject>(); inPlace && shown_) {
        inPlace->UIDeactivate();
        inPlace->InPlaceDeactivate();
    }
    object->Close(OLECLOSE_NOSAVE);
    object->SetClientSite(nullptr);
    addOn->Unregister();
    site_->Detach();
    shown_ = false;
    return result;
}

} // namespace orv::host
