#pragma once
// The control: one object of many faces round the portable life cycle.
#include <memory>

#include "addon/add_on.h"
#include "addon/com/control_window.h"
#include "addon/com/host_faces.h"
#include "addon/com/in_place.h"
#include "addon/com/in_place_faces.h"
#include "addon/com/module.h"
#include "addon/com/object_faces.h"
#include "addon/com/reaper.h"
#include "addon/com/site.h"
#include "addon/com/surroundings.h"
#include "addon/com/view_faces.h"

namespace orv::addon::com {

class Control final : private addon::Container, private ModalParty {
  public:
    static constexpr DWORD kMiscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT |
                                         OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST;

    /// For the class factory; `outer` may be nothing.
    static HRESULT Create(IUnknown* outer, REFIID id, void** object);
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    IUnknown& Outer() { return *outer_; }
    addon::AddOn& Product() { return *product_; }
    Site& TheSite() { return site_; }
    ControlWindow& Pane() { return *window_; }
    InPlace& Activation() { return inPlace_; }

    HRESULT DoVerb(LONG verb);
    void SetSite(IOleClientSite* site);
    void InPlaceDeactivate();
    void UIDeactivate() { inPlace_.UIDeactivate(); }
    /// The end of the product's life; the object answers on, and does nothing any more. False when it was closed
    /// before.
    bool Close();
    /// In hundredths of a millimetre.
    SIZEL Extent() const { return extent_; }
    void SetExtent(SIZEL extent) { extent_ = extent; }

    // For CallScope and whoever collects what is left.
    void EnterCall() { ++calls_; }
    void LeaveCall();
    /// Nothing of the product is on the stack; for the control's own thread.
    bool Idle() const;
    /// The same as far as the control knows it of itself.
    bool Settled() const;

  private:
    /// The object's own identity, whether a container has wrapped it or not.
    class Inner final : public IUnknown {
      public:
        explicit Inner(Control& control) : control_(control) {}
        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
        ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
        ULONG STDMETHODCALLTYPE Release() override;

      private:
        Control& control_;
        std::atomic<ULONG> references_ = 0;
    };
    friend class Reaper;

    explicit Control(IUnknown* outer);
    ~Control() override;

    // Container
    void SetVisible(bool visible) override;
    void SetEnabled(bool enabled) override;
    bool UserMode() override { return site_.UserMode(); }
    device::WindowHandle Window() override { return reinterpret_cast<device::WindowHandle>(window_->Handle()); }
    // ModalParty
    HWND BoxOwner() override;
    void EnableModeless(bool enable) override;

    IUnknown* Find(REFIID id);
    void LastReferenceGone();
    HRESULT ShowInPlace(bool uiActive);
    void Hide();
    void Hidden();
    void FocusArrived();
    bool PassOn(MSG& message);

    ModuleLock lock_;
    Inner inner_;
    IUnknown* outer_;
    std::unique_ptr<Surroundings> surroundings_;
    HostFaces hostFaces_;
    ObjectFaces objectFaces_;
    InPlaceFaces inPlaceFaces_;
    ViewFaces viewFaces_;
    PersistFaces persistFaces_;
    IdentityFaces identityFaces_;
    Site site_;
    std::unique_ptr<addon::AddOn> product_;
    std::unique_ptr<ControlWindow> window_;
    platform::win32::SystemPump::PreTranslation preTranslation_;
    InPlace inPlace_;
    SIZEL extent_;
    Reaper::Place place_;
    int calls_ = 0;
    unsigned hides_ =
        0; ///< how often it was hidden or deactivated: whoever shows it looks whether that happened meanwhile
    bool doomed_ = false;
    bool closed_ = false;
    bool shown_ = false;     ///< by the host, and told to the product
    bool switching_ = false; ///< the product changes its own visibility
    bool hiddenByUs_ = false;
};

} // namespace orv::addon::com
