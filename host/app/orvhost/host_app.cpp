#include "host/app/orvhost/host_app.h"

#include <stdexcept>

#include "host/app/orvhost/commands.h"
#include "host/app/orvhost/control_driver.h"
#include "host/app/orvhost/transcript.h"
#include "host/sim/bounded_file.h"
#include "host/sim/utf8.h"
#include "text/excerpt.h"

namespace orv::host {
namespace {

constexpr int kStuckSeconds = 15; // on top of a command's time limit

void CommitPanel(device::WindowHandle panel) {
    const HWND focus = GetFocus();
    if (focus == nullptr || !IsChild(reinterpret_cast<HWND>(panel), focus))
        return;
    // What leaving the field would do, without taking the keyboard away.
    SendMessageW(GetParent(focus), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(focus), EN_KILLFOCUS),
                 reinterpret_cast<LPARAM>(focus));
}

std::int32_t ComboValue(device::WindowHandle combo) {
    const HWND window = reinterpret_cast<HWND>(combo);
    const LRESULT entry = SendMessageW(window, CB_GETCURSEL, 0, 0);
    if (entry == CB_ERR)
        throw Error(error_number::kInvalidArgument);
    return static_cast<std::int32_t>(SendMessageW(window, CB_GETITEMDATA, static_cast<WPARAM>(entry), 0));
}

void EditGotFocus(device::WindowHandle edit) {
    SendMessageW(reinterpret_cast<HWND>(edit), EM_SETSEL, 0, -1);
}

/// What the device sent is foreign; the rest of the traffic is the host's own.
std::wstring Shown(std::wstring_view traffic) {
    return traffic.starts_with(L'<') ? text::Excerpt(traffic) : text::Printable(traffic);
}

} // namespace

HostApp::HostApp(Options options)
    : options_(std::move(options)), target_{options_.cluster, options_.device}, component_(options_.component) {
    auto workspace = options_.file.empty() ? nullptr : Load(options_.file);
    if (workspace && !workspace->Has(target_.cluster, target_.device))
        throw std::runtime_error(sim::NameOf(options_.file) + ": no device " + std::to_string(target_.device) +
                                 " in cluster " + std::to_string(target_.cluster));
    window_ = std::make_unique<MainWindow>(*this, options_.width, options_.height);
    debug_ = std::make_unique<DebugLines>(
        [this](const std::wstring& line) { Log(LogSource::Debug, text::Printable(line)); });
    pump_.SetFilter([this](MSG& message) { return Filter(message); });
    if (workspace)
        Adopt(std::move(workspace));
}

HostApp::~HostApp() {
    pump_.SetFilter({});
}

std::unique_ptr<Workspace> HostApp::Load(const std::filesystem::path& file) {
    return std::make_unique<Workspace>(options_, file, pump_,
                                       [this](std::wstring_view line) { Log(LogSource::Device, Shown(line)); });
}

void HostApp::Adopt(std::unique_ptr<Workspace> workspace) {
    CloseAddOn();
    classes_.reset();
    workspace_ = std::move(workspace);
    traced_ = 0;
    sim::BenchHost& bench = *workspace_->Bench();
    classes_ = std::make_unique<ClassObjects>(workspace_->Bench());
    // Asked from inside one of the add-on's handlers: closed when that has returned.
    bench.Application()->onClose = [this] { pump_.Post([this] { CloseAddOn(); }); };
    bench.Progress().changed = [this, &progress = bench.Progress()] { progress_.Follow(progress); };
    bench.Windows() = {&CommitPanel, &ComboValue, &EditGotFocus};
    if (!workspace_->Has(target_.cluster, target_.device) && !workspace_->Description().devices.empty())
        target_ = {workspace_->Description().devices.front().cluster, workspace_->Description().devices.front().device};
    NameTarget();
    UpdateFrame();
}

void HostApp::NameTarget() {
    const auto application = workspace_->Bench()->Application();
    for (const auto& cluster : workspace_->Description().clusters) {
        if (cluster.index == target_.cluster)
            application->exportNameFirst = cluster.description;
    }
    if (const auto* const device = workspace_->Description().Find(target_.cluster, target_.device))
        application->exportNameSecond = device->description;
}

int HostApp::Run(std::vector<ScriptCommand> script) {
    if (!options_.script.empty()) {
        player_ = std::make_unique<Player>(std::move(script), *this, options_.shots, options_.timeLimitSeconds);
        watchdog_ = std::make_unique<Watchdog>(options_.timeLimitSeconds + kStuckSeconds);
    }
    ShowWindow(window_->Window(), SW_SHOWNORMAL);
    UpdateWindow(window_->Window());
    if (!player_ && workspace_ && !options_.file.empty())
        PostMessageW(window_->Window(), WM_COMMAND, kShow, 0);
    Loop();
    CloseAddOn();
    component_.Unload();
    PrintTrace();
    window_->Destroy();
    pump_.Close();
    return player_ ? player_->Status() : 0;
}

void HostApp::Loop() {
    for (;;) {
        MSG message;
        if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT)
                return;
            pump_.Handle(message);
            if (player_)
                player_->Handled();
            continue;
        }
        debug_->Drain();
        if (player_)
            player_->Idle();
        MsgWaitForMultipleObjectsEx(0, nullptr, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
}

bool HostApp::Filter(MSG& message) {
    const auto session = session_;
    return (session && session->Translate(message)) || window_->Translate(message);
}

void HostApp::PrintTrace() {
    if (!workspace_ || !options_.trace)
        return;
    const auto& calls = workspace_->Bench()->Gate().Log();
    for (; traced_ < calls.size(); ++traced_)
        Transcript::Line(L"call: " + sim::FromUtf8(calls[traced_].name) + L"(" +
                         text::Excerpt(calls[traced_].arguments) + L")");
}

void HostApp::Say(const std::wstring& line) {
    PrintTrace();
    Transcript::Line(line);
}

void HostApp::Log(LogSource source, const std::wstring& text) {
    if (source == LogSource::Debug)
        Say(L"log: " + text);
    else if (source == LogSource::Device && options_.trace)
        Say(L"wire: " + text);
    if (window_)
        window_->Log().Add(source, text::Printable(text));
    if (player_)
        player_->Stirred();
}

void HostApp::Report(const std::string& failure) {
    Log(LogSource::Host, sim::FromUtf8(failure));
    if (player_) {
        player_->Fail(failure);
        return;
    }
    Transcript::Complain(failure);
    ::MessageBoxW(window_->Window(), sim::FromUtf8(failure).c_str(), L"Bench Host", MB_OK | MB_ICONWARNING);
}

FrameState HostApp::State() const {
    FrameState state;
    state.cluster = target_.cluster;
    state.device = target_.device;
    state.hasAddOn = session_ != nullptr;
    state.modeless = modal_ == 0;
    if (!workspace_)
        return state;
    state.hasFile = true;
    state.file = workspace_->File().filename().wstring();
    state.level = workspace_->Bench()->AccessLevel();
    state.link = workspace_->LinkText();
    if (session_)
        state.caption = workspace_->Bench()->Application()->caption;
    for (const auto& cluster : workspace_->Description().clusters)
        state.clusters.push_back({cluster.index, cluster.description});
    for (const auto& device : workspace_->Description().devices) {
        if (device.cluster == target_.cluster)
            state.devices.push_back({device.device, device.description});
    }
    return state;
}

void HostApp::UpdateFrame() {
    if (window_)
        window_->Update(State());
}

} // namespace orv::host
