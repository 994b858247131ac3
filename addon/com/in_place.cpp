#include "addon/com/in_place.h"

#include "addon/com/failure.h"

namespace orv::addon::com {

HRESULT InPlace::Activate() {
    if (isActive_ && window_.Handle())
        return S_OK;
    if (isActive_)
        Deactivate(); // the container has destroyed the window without saying so
    const auto site = site_.As<IOleInPlaceSite>();
    if (!site)
        return E_NOINTERFACE;
    HRESULT result = site->CanInPlaceActivate();
    if (result != S_OK)
        return FAILED(result) ? result : E_FAIL;
    result = site->OnInPlaceActivate();
    if (FAILED(result))
        return result;
    isActive_ = true;
    result = Guarded([&] { return Enter(*site.Get()); });
    if (FAILED(result))
        Deactivate();
    return result;
}

HRESULT InPlace::Enter(IOleInPlaceSite& site) {
    HWND parent = nullptr;
    HRESULT result = site.GetWindow(&parent);
    if (FAILED(result))
        return result;
    RECT clip{};
    OLEINPLACEFRAMEINFO info{};
    info.cb = sizeof info;
    result = site.GetWindowContext(frame_.Put(), document_.Put(), &position_, &clip, &info);
    if (FAILED(result))
        return result;
    if (!isActive_ || !IsWindow(parent))
        return E_ABORT;
    window_.Create(parent, position_);
    window_.Place(position_, &clip);
    return isActive_ ? S_OK : E_ABORT;
}

HRESULT InPlace::UIActivate(bool takeFocus) {
    if (!isActive_)
        return E_UNEXPECTED;
    if (!isUIActive_) {
        const HRESULT result = Announce();
        if (FAILED(result))
            return result;
    }
    if (takeFocus && isUIActive_ && !window_.HasFocus())
        window_.TakeFocus();
    return S_OK;
}

HRESULT InPlace::Announce() {
    const auto site = site_.As<IOleInPlaceSite>();
    if (!site)
        return E_NOINTERFACE;
    isUIActive_ = true; // the focus that moves meanwhile must not announce a second time
    const HRESULT result = site->OnUIActivate();
    if (FAILED(result)) {
        isUIActive_ = false;
        return result;
    }
    const std::wstring name = site_.DisplayName();
    const auto frame = frame_;
    const auto document = document_;
    if (frame)
        frame->SetActiveObject(&active_, name.c_str());
    if (document)
        document->SetActiveObject(&active_, name.c_str());
    // No tools of our own: the frame keeps its own ones.
    if (frame)
        frame->SetBorderSpace(nullptr);
    if (document)
        document->SetBorderSpace(nullptr);
    return isUIActive_ ? S_OK : E_ABORT;
}

void InPlace::UIDeactivate() {
    if (!isUIActive_)
        return;
    isUIActive_ = false;
    const auto frame = frame_;
    const auto document = document_;
    if (document)
        document->SetActiveObject(nullptr, nullptr);
    if (frame)
        frame->SetActiveObject(nullptr, nullptr);
    if (const auto site = site_.As<IOleInPlaceSite>())
        site->OnUIDeactivate(FALSE);
}

void InPlace::Deactivate() {
    if (!isActive_)
        return;
    UIDeactivate();
    if (!isActive_)
        return;
    isActive_ = false;
    window_.Destroy();
    // What is open now closes when nobody can tell the frame any more.
    while (frame_ && modal_ > 0)
        EnableModeless(true);
    frame_ = nullptr;
    document_ = nullptr;
    if (const auto site = site_.As<IOleInPlaceSite>())
        site->OnInPlaceDeactivate();
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
