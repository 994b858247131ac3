#pragma once
// The program: joins window, workspace, add-on and script.
#include <filesystem>
#include <memory>
#include <string>

#include "host/app/orvhost/component_file.h"
#include "host/app/orvhost/debug_lines.h"
#include "host/app/orvhost/host_pump.h"
#include "host/app/orvhost/main_window.h"
#include "host/app/orvhost/options.h"
#include "host/app/orvhost/player.h"
#include "host/app/orvhost/progress_window.h"
#include "host/app/orvhost/session.h"
#include "host/app/orvhost/watchdog.h"
#include "host/app/orvhost/workspace.h"
#include "host/com/class_objects.h"

namespace orv::host {

class HostApp final : public FrameListener, public ContainerEvents, public PlayerHost {
  public:
    /// Opens the file that the options name. Raises sim::FileError, or std::runtime_error for a target that the file
    /// does not have.
    explicit HostApp(Options options);
    ~HostApp() override;

    /// Until the window is closed; answers the exit status.
    int Run(std::vector<ScriptCommand> script);

  private:
    // FrameListener
    void OnCommand(int command) override;
    void OnCloseRequest() override;
    void OnAreaResized() override;
    void OnFrameActivated(bool active) override;
    void OnPaneFocused() override;
    // ContainerEvents
    HWND Frame() override { return window_->Window(); }
    HWND Area() override { return window_->Area(); }
    void SetStatusText(const std::wstring& text) override;
    void SetModeless(bool enabled) override;
    void LeaveControl(bool backwards) override;
    bool ControlVisible() override;
    void SetControlVisible(bool visible) override;
    bool ControlEnabled() override;
    void SetControlEnabled(bool enabled) override;
    IDispatch* Control() override;
    // PlayerHost
    void Say(const std::wstring& line) override;
    HWND FrameWindow() override { return window_->Window(); }
    HWND ControlWindow() override;
    HostPump& Pump() override { return pump_; }
    std::wstring HostValue(std::int32_t number, std::int32_t element) override;
    std::wstring DeviceValue(std::int32_t number, std::int32_t element) override;
    std::int16_t Result() override;
    void SaveTo(const std::filesystem::path& file) override;
    void Terminate() override;
    void Alive() override;

    void Adopt(std::unique_ptr<Workspace> workspace);
    void Dispatch(int command);
    void ChangeTarget(int command);
    std::unique_ptr<Workspace> Load(const std::filesystem::path& file);
    void OpenFile(const std::filesystem::path& file);
    void AskOpen();
    void AskSaveAs();
    void Save();
    void ShowAddOn();
    void ActivateAddOn();
    void CloseAddOn();
    void DropConnection();
    void NextPane();
    void NameTarget();
    void Log(LogSource source, const std::wstring& text);
    void PrintTrace();
    void Report(const std::string& failure);
    void UpdateFrame();
    FrameState State() const;
    bool Filter(MSG& message);
    void Loop();

    Options options_;
    HostPump pump_;
    Session::Target target_;
    std::unique_ptr<MainWindow> window_;
    ProgressWindow progress_;
    std::unique_ptr<DebugLines> debug_;
    std::unique_ptr<Workspace> workspace_;
    std::unique_ptr<ClassObjects> classes_;
    ComponentFile component_;
    std::shared_ptr<Session> session_; ///< shared with the calls that are under way
    std::unique_ptr<Player> player_;
    std::unique_ptr<Watchdog> watchdog_;
    std::size_t traced_ = 0;
    int modal_ = 0; ///< how often the control asked to be left alone
};

} // namespace orv::host
