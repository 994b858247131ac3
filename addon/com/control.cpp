#include "addon/com/control.h"

#include <utility>

#include "addon/com/failure.h"
#include "platform/guarded.h"
#include "platform/win32/procedure_scope.h"

namespace orv::addon::com {
namespace {

constexpr int kHimetricPerInch = 2540;
constexpr int kDefaultWidth = 640;
constexpr int kDefaultHeight = 440;

SIZEL DefaultExtent() {
    return {kDefaultWidth * kHimetricPerInch / USER_DEFAULT_SCREEN_DPI,
            kDefaultHeight * kHimetricPerInch / USER_DEFAULT_SCREEN_DPI};
}

} // namespace

CallScope::CallScope(Control& control) : control_(control) {
    control_.EnterCall();
}

CallScope::~CallScope() {
    control_.LeaveCall();
}

IUnknown& OuterOf(Control& control) {
    return control.Outer();
}

HRESULT Control::Create(IUnknown* outer, REFIID id, void** object) {
    auto* control = new Control(outer);
    // The reference keeps the object for the query, and destroys it when the query fails.
    const ComPtr<IUnknown> inner(&control->inner_);
    return inner->QueryInterface(id, object);
}

Control::Control(IUnknown* outer)
    : inner_(*this), outer_(outer ? outer : &inner_),
      surroundings_(std::make_unique<Surroundings>(static_cast<ModalParty&>(*this))), hostFaces_(*this),
      objectFaces_(*this), inPlaceFaces_(*this), viewFaces_(*this), persistFaces_(*this), identityFaces_(*this),
      product_(new addon::AddOn(surroundings_->State(), *this)),
      window_(std::make_unique<ControlWindow>(
          product_->Editor(), surroundings_->Services(),
          ControlWindow::Hooks{[this] { FocusArrived(); }, [this](MSG& message) { return PassOn(message); },
                               [this] {
                                   platform::ReportCurrentException(surroundings_->Services().Boxes(),
                                                                    L"AddOnControl.Window");
                               }})),
      preTranslation_(surroundings_->Services().Pump().AddPreTranslate(
          [this](MSG& message) { return window_->TranslateKey(message); })),
      inPlace_(site_, *window_, inPlaceFaces_), extent_(DefaultExtent()) {}

Control::~Control() = default;

HRESULT Control::Inner::QueryInterface(REFIID id, void** object) {
    if (!object)
        return E_POINTER;
    *object = id == IID_IUnknown ? this : control_.Find(id);
    if (!*object)
        return E_NOINTERFACE;
    static_cast<IUnknown*>(*object)->AddRef();
    return S_OK;
}

ULONG Control::Inner::Release() {
    const ULONG left = --references_;
    if (left == 0 && !control_.doomed_)
        control_.LastReferenceGone();
    return left;
}

IUnknown* Control::Find(REFIID id) {
    // Pointers are made to the very interface asked for: the caller will use them as that.
    const auto as = [](auto* face) { return reinterpret_cast<IUnknown*>(face); };
    const std::pair<const IID*, IUnknown*> faces[] = {
        {&IID_IDispatch, as(static_cast<IAddOnControl*>(&hostFaces_))},
        {&IID_IAddOnControl, as(static_cast<IAddOnControl*>(&hostFaces_))},
        {&IID_IAddOn, as(static_cast<IAddOn*>(&hostFaces_))},
        {&IID_IAddOnGUI, as(static_cast<IAddOnGUI*>(&hostFaces_))},
        {&IID_IAddOnCompatibility, as(static_cast<IAddOnCompatibility*>(&hostFaces_))},
        {&IID_IOleObject, as(static_cast<IOleObject*>(&objectFaces_))},
        {&IID_IOleControl, as(static_cast<IOleControl*>(&objectFaces_))},
        {&IID_IOleWindow, as(static_cast<IOleInPlaceObject*>(&inPlaceFaces_))},
        {&IID_IOleInPlaceObject, as(static_cast<IOleInPlaceObject*>(&inPlaceFaces_))},
        {&IID_IOleInPlaceActiveObject, as(static_cast<IOleInPlaceActiveObject*>(&inPlaceFaces_))},
        {&IID_IViewObject, as(static_cast<IViewObject2*>(&viewFaces_))},
        {&IID_IViewObject2, as(static_cast<IViewObject2*>(&viewFaces_))},
        {&IID_IPersist, as(static_cast<IPersistStreamInit*>(&persistFaces_))},
        {&IID_IPersistStreamInit, as(static_cast<IPersistStreamInit*>(&persistFaces_))},
        {&IID_IPersistPropertyBag, as(static_cast<IPersistPropertyBag*>(&persistFaces_))},
        {&IID_IProvideClassInfo, as(static_cast<IProvideClassInfo*>(&identityFaces_))},
        {&IID_ISupportErrorInfo, as(static_cast<ISupportErrorInfo*>(&identityFaces_))},
    };
    for (const auto& [face, pointer] : faces)
        if (*face == id)
            return pointer;
    return nullptr;
}

void Control::LeaveCall() {
    --calls_;
}

bool Control::Settled() const {
    return calls_ == 0 && product_->Terminated() && !product_->Busy() && !surroundings_->Waiting();
}

bool Control::Idle() const {
    return Settled() && !HostCallScope::Running() && !platform::win32::ProcedureScope::Running();
}

// References that come and go while the control says good-bye to its site do not count any more.
void Control::LastReferenceGone() {
    doomed_ = true;
    {
        const CallScope call(*this);
        Guarded([this] { Close(); });
        site_.Set(nullptr);
    }
    Reaper::Dispose(*this);
}

bool Control::Close() {
    if (std::exchange(closed_, true))
        return false;
    // Waits are woken and boxes answered before the windows go: their code looks at the product once more.
    product_->Terminate();
    InPlaceDeactivate();
    return true;
}

// Also while an activation is only on its way: it belongs to the site that it began with.
void Control::SetSite(IOleClientSite* site) {
    const ComPtr<IOleClientSite> next(site);
    if (site != site_.Client().Get())
        InPlaceDeactivate();
    site_.Set(site);
}

HRESULT Control::DoVerb(LONG verb) {
    if (closed_)
        return OLE_E_NOTRUNNING;
    switch (verb) {
    case OLEIVERB_PRIMARY:
    case OLEIVERB_SHOW:
    case OLEIVERB_OPEN:
    case OLEIVERB_INPLACEACTIVATE:
        return ShowInPlace(false);
    case OLEIVERB_UIACTIVATE:
        return ShowInPlace(true);
    case OLEIVERB_HIDE:
        Hide();
        return S_OK;
    case OLEIVERB_DISCARDUNDOSTATE:
        return S_OK;
    default:
        return verb > 0 ? OLEOBJ_S_INVALIDVERB : E_NOTIMPL;
    }
}

// The container is asked and told on the way, and the host runs: what either has taken back meanwhile stays so.
HRESULT Control::ShowInPlace(bool uiActive) {
    const auto meanwhileHidden = [this, before = hides_] { return hides_ != before; };
    const HRESULT result = inPlace_.Activate();
    if (result != S_OK)
        return result;
    if (meanwhileHidden())
        return E_ABORT;
    window_->Show(true);
    if (const auto client = site_.Client())
        client->ShowObject();
    if (meanwhileHidden())
        return E_ABORT;
    // A host that shows what the product hid itself begins anew; the product showing itself does not.
    if (!switching_ && std::exchange(hiddenByUs_, false))
        shown_ = false;
    if (!switching_ && !std::exchange(shown_, true))
        product_->Show();
    if (meanwhileHidden())
        return E_ABORT;
    return uiActive ? inPlace_.UIActivate(true) : S_OK;
}

void Control::Hidden() {
    ++hides_;
    if (!switching_)
        shown_ = false;
}

void Control::Hide() {
    Hidden();
    inPlace_.UIDeactivate();
    window_->Show(false);
}

void Control::InPlaceDeactivate() {
    Hidden();
    inPlace_.Deactivate();
}

void Control::FocusArrived() {
    const CallScope call(*this);
    if (!inPlace_.Active() || inPlace_.UIActive())
        return;
    if (inPlace_.UIActivate(false) == S_OK)
        site_.OnFocus(true);
}

bool Control::PassOn(MSG& message) {
    const CallScope call(*this);
    return inPlace_.TranslateAccelerator(message);
}

// An extender may keep a flag and leave the window alone; the user goes by the window.
void Control::SetVisible(bool visible) {
    const CallScope call(*this);
    const platform::Restoring done([this] { switching_ = false; });
    switching_ = true;
    hiddenByUs_ = !visible;
    site_.PutExtender(L"Visible", visible);
    window_->Show(visible);
}

void Control::SetEnabled(bool enabled) {
    const CallScope call(*this);
    site_.PutExtender(L"Enabled", enabled);
    window_->Enable(enabled);
}

HWND Control::BoxOwner() {
    return window_->BoxOwner();
}

void Control::EnableModeless(bool enable) {
    const CallScope call(*this);
    inPlace_.EnableModeless(enable);
}

} // namespace orv::addon::com
