#include "host/app/orvhost/commands.h"
#include "host/app/orvhost/file_dialogs.h"
#include "host/app/orvhost/host_app.h"
#include "host/com/application_face.h"
#include "host/sim/utf8.h"
#include "text/excerpt.h"

namespace orv::host {

void HostApp::OnCommand(int command) {
    try {
        Dispatch(command);
    } catch (const Error& failure) {
        Report(sim::ToUtf8(text::Excerpt(failure.Description())));
    } catch (const std::bad_alloc&) {
        Report("there is not enough memory for it");
    } catch (const std::exception& failure) {
        Report(failure.what());
    }
}

void HostApp::Dispatch(int command) {
    switch (command) {
    case kOpen:
        return AskOpen();
    case kSave:
        return Save();
    case kSaveAs:
        return AskSaveAs();
    case kExit:
        return OnCloseRequest();
    case kShow:
        return ShowAddOn();
    case kActivate:
        return ActivateAddOn();
    case kHide:
        if (session_)
            session_->SetVisible(false);
        return;
    case kCloseAddOn:
        return CloseAddOn();
    case kDropConnection:
        return DropConnection();
    case kClearLog:
        return window_->Log().Clear();
    case kShowLog:
        return window_->ToggleLog();
    case kNextPane:
        return NextPane();
    default:
        return ChangeTarget(command);
    }
}

void HostApp::ChangeTarget(int command) {
    if (!workspace_)
        return;
    if (command >= kDeviceFirst && command < kTargetEnd) {
        target_.device = static_cast<std::int16_t>(command - kDeviceFirst);
    } else if (command >= kClusterFirst && command < kDeviceFirst) {
        target_.cluster = static_cast<std::int16_t>(command - kClusterFirst);
        if (!workspace_->Has(target_.cluster, target_.device))
            target_.device = 0;
    } else if (command >= kLevelFirst && command <= kLevelFirst + 3) {
        // The add-on takes the level when it is shown, so an open one keeps its own.
        workspace_->Bench()->SetAccessLevel(command - kLevelFirst);
        options_.level = command - kLevelFirst;
    }
    NameTarget();
    if (session_)
        session_->SetTarget(target_);
    UpdateFrame();
}

void HostApp::OpenFile(const std::filesystem::path& file) {
    Adopt(Load(file));
}

void HostApp::AskOpen() {
    if (const auto file = AskOpenFile(window_->Window()); !file.empty())
        OpenFile(file);
}

void HostApp::AskSaveAs() {
    if (!workspace_)
        return;
    if (const auto file = AskSaveFile(window_->Window(), workspace_->File()); !file.empty())
        SaveTo(file);
}

void HostApp::Save() {
    if (workspace_)
        SaveTo(workspace_->File());
}

void HostApp::ShowAddOn() {
    if (!workspace_)
        throw std::runtime_error("no device description is open");
    if (!session_)
        session_ = std::make_shared<Session>(
            component_.Create(), *this,
            ComPtr<IOrvApplication>::Adopt(new ApplicationFace(workspace_->Bench()->Application())), target_,
            options_.extender);
    const auto session = session_;
    UpdateFrame();
    session->Show();
    UpdateFrame();
    if (!player_ && session == session_)
        ActivateAddOn();
}

void HostApp::ActivateAddOn() {
    const auto session = session_;
    if (!session)
        throw std::runtime_error("the add-on is not shown");
    session->Activate();
}

void HostApp::CloseAddOn() {
    const auto session = std::move(session_);
    if (!session)
        return;
    const std::int16_t result = session->Close();
    modal_ = 0;
    Say(L"closed: result " + std::to_wstring(result));
    window_->Log().Add(LogSource::Host, L"Add-on closed, result " + std::to_wstring(result));
    window_->SetStatusText({});
    UpdateFrame();
}

void HostApp::DropConnection() {
    if (workspace_ && !workspace_->Service().Drop())
        Log(LogSource::Host, L"There is no connection to drop");
}

void HostApp::NextPane() {
    const HWND log = window_->Log().Window();
    if (IsWindowVisible(log) && (GetFocus() != log || !session_)) {
        SetFocus(log);
        return;
    }
    if (!session_)
        return;
    MSG tab{window_->Window(), WM_KEYDOWN, VK_TAB, 1, static_cast<DWORD>(GetMessageTime()), {}};
    session_->Enter(&tab);
}

} // namespace orv::host
