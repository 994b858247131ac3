#include <stdexcept>

#include "host/app/orvhost/host_app.h"
#include "host/com/dual.h"
#include "host/sim/utf8.h"

namespace orv::host {

void HostApp::OnCloseRequest() {
    if (session_ && !player_ && !session_->MayUnload())
        return;
    CloseAddOn();
    // Seen by a wait of the component, too, when this request came from inside one.
    PostQuitMessage(0);
}

void HostApp::OnAreaResized() {
    if (session_)
        session_->Resize();
}

void HostApp::OnFrameActivated(bool active) {
    if (session_)
        session_->FrameActivated(active);
}

void HostApp::OnPaneFocused() {
    if (const auto session = session_)
        session->Leave();
}

void HostApp::SetStatusText(const std::wstring& text) {
    window_->SetStatusText(text);
}

void HostApp::SetModeless(bool enabled) {
    modal_ += enabled ? (modal_ > 0 ? -1 : 0) : 1;
    UpdateFrame();
}

void HostApp::LeaveControl(bool) {
    // One pane of our own to go to, so both directions lead there.
    SetFocus(window_->Log().Window());
}

bool HostApp::ControlVisible() {
    return session_ && session_->Visible();
}

void HostApp::SetControlVisible(bool visible) {
    if (const auto session = session_)
        session->SetVisible(visible);
}

bool HostApp::ControlEnabled() {
    return session_ && session_->Enabled();
}

void HostApp::SetControlEnabled(bool enabled) {
    if (const auto session = session_)
        session->SetEnabled(enabled);
}

IDispatch* HostApp::Control() {
    return session_ ? session_->Control() : nullptr;
}

HWND HostApp::ControlWindow() {
    return session_ ? session_->Window() : nullptr;
}

std::wstring HostApp::HostValue(std::int32_t number, std::int32_t element) {
    if (!workspace_)
        throw std::runtime_error("no device description is open");
    return workspace_->HostValue(target_.cluster, target_.device, number, element);
}

std::wstring HostApp::DeviceValue(std::int32_t number, std::int32_t element) {
    if (!workspace_)
        throw std::runtime_error("no device description is open");
    return workspace_->DeviceValue(target_.cluster, target_.device, number, element);
}

std::int16_t HostApp::Result() {
    if (!session_)
        throw std::runtime_error("the add-on is not shown");
    return session_->Result();
}

void HostApp::SaveTo(const std::filesystem::path& file) {
    if (!workspace_)
        throw std::runtime_error("no device description is open");
    workspace_->Save(file);
    UpdateFrame();
}

void HostApp::Terminate() {
    CloseAddOn();
    component_.Unload();
    Say(L"terminated: " + std::to_wstring(LiveFaces().load()) + L" host objects in use");
}

void HostApp::Alive() {
    if (watchdog_)
        watchdog_->Feed();
}

} // namespace orv::host
