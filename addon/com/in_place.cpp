#include "addon/com/in_place.h"

#include "addon/com/failure.h"

namespace orv::addon::com {

/// Brackets what is said to the container from the first word to the last.
class InPlace::Step {
  public:
    explicit Step(InPlace& owner) : owner_(owner) { owner_.stepping_ = true; }
    ~Step() {
        owner_.Settle();
        owner_.stepping_ = false;
    }
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;

  private:
    InPlace& owner_;
};

HRESULT InPlace::Activate() {
    if (stepping_)
        return OLEOBJ_S_CANNOT_DOVERB_NOW;
    if (Active() && window_.Handle())
        return S_OK;
    Deactivate(); // the container may have destroyed the window without saying so
    HRESULT result = S_OK;
    {
        const Step step(*this);
        limit_ = Level::UI;
        result = Guarded([this] { return Enter(); });
        if (FAILED(result))
            limit_ = Level::None;
    }
    return SUCCEEDED(result) && !Active() ? E_ABORT : result;
}

HRESULT InPlace::Enter() {
    const auto site = site_.As<IOleInPlaceSite>();
    if (!site)
        return E_NOINTERFACE;
    HRESULT result = site->CanInPlaceActivate();
    if (result != S_OK)
        return FAILED(result) ? result : E_FAIL;
    if (!Wanted(Level::InPlace))
        return E_ABORT;
    result = site->OnInPlaceActivate();
    if (FAILED(result))
        return result;
    place_ = site;
    level_ = Level::InPlace;
    return MakeWindow();
}

HRESULT InPlace::MakeWindow() {
    HWND parent = nullptr;
    HRESULT result = Wanted(Level::InPlace) ? place_->GetWindow(&parent) : E_ABORT;
    if (FAILED(result))
        return result;
    RECT clip{};
    OLEINPLACEFRAMEINFO info{};
    info.cb = sizeof info;
    if (Wanted(Level::InPlace))
        result = place_->GetWindowContext(frame_.Put(), document_.Put(), &position_, &clip, &info);
    if (FAILED(result))
        return result;
    if (!Wanted(Level::InPlace) || !IsWindow(parent))
        return E_ABORT;
    window_.Create(parent, position_);
    window_.Place(position_, &clip);
    return S_OK;
}

HRESULT InPlace::UIActivate(bool takeFocus) {
    if (stepping_)
        return OLEOBJ_S_CANNOT_DOVERB_NOW;
    if (!Active())
        return E_UNEXPECTED;
    if (!UIActive()) {
        HRESULT result = S_OK;
        {
            const Step step(*this);
            limit_ = Level::UI;
            result = Announce();
        }
        if (FAILED(result) || !UIActive())
            return FAILED(result) ? result : E_ABORT;
    }
    if (takeFocus && !window_.HasFocus())
        window_.TakeFocus();
    return S_OK;
}

HRESULT InPlace::Announce() {
    const HRESULT result = place_->OnUIActivate();
    if (FAILED(result))
        return result;
    level_ = Level::UI;
    const std::wstring name = Wanted(Level::UI) ? site_.DisplayName() : std::wstring();
    if (frame_ && Wanted(Level::UI))
        frame_->SetActiveObject(&active_, name.c_str());
    if (document_ && Wanted(Level::UI))
        document_->SetActiveObject(&active_, name.c_str());
    // No tools of our own: the frame keeps its own ones.
    if (frame_ && Wanted(Level::UI))
        frame_->SetBorderSpace(nullptr);
    if (document_ && Wanted(Level::UI))
        document_->SetBorderSpace(nullptr);
    return S_OK;
}

void InPlace::Lower(Level limit) {
    limit_ = std::min(limit_, limit);
    if (!stepping_)
        const Step step(*this);
}

void InPlace::Settle() {
    if (level_ == Level::UI && !Wanted(Level::UI))
        Retract();
    if (level_ == Level::InPlace && !Wanted(Level::InPlace))
        Leave();
}

void InPlace::Retract() {
    level_ = Level::InPlace;
    if (document_)
        document_->SetActiveObject(nullptr, nullptr);
    if (frame_)
        frame_->SetActiveObject(nullptr, nullptr);
    place_->OnUIDeactivate(FALSE);
    if (const auto control = place_.As<IOleControlSite>())
        control->OnFocus(FALSE);
}

void InPlace::Leave() {
    level_ = Level::None;
    window_.Destroy();
    // What is open now closes when nobody can tell the frame any more.
    while (frame_ && modal_ > 0)
        EnableModeless(true);
    frame_ = nullptr;
    document_ = nullptr;
    place_->OnInPlaceDeactivate();
    place_ = nullptr;
}

void InPlace::SetRects(const RECT& position, const RECT* clip) {
    position_ = position;
    window_.Place(position, clip);
}

void InPlace::EnableModeless(bool enable) {
    const auto frame = frame_;
    if (!frame || (enable && modal_ == 0))
        return;
    modal_ += enable ? -1 : 1;
    frame->EnableModeless(enable);
}

bool InPlace::TranslateAccelerator(MSG& message) const {
    if (site_.TranslateAccelerator(message))
        return true;
    const auto frame = frame_;
    return frame && frame->TranslateAccelerator(&message, 0) == S_OK;
}

} // namespace orv::addon::com
