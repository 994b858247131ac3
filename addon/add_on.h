#pragma once
// Life cycle of the component, independent of COM and windows: initialize, show, activate, save, terminate.
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "addon/container.h"
#include "addon/process_state.h"
#include "editor/editor.h"

namespace orv::addon {

/// What the host calls on the component. No member raises: a failure is shown under its qualified name
/// ("AddOnControl.IAddOnGUI_Activate") and the call returns normally. All calls come on the user-interface thread
/// and may come again from inside a wait.
class AddOn : private editor::Commands {
  public:
    /// Initialize. `state` is this add-on's alone; it and `container` must outlive the add-on.
    AddOn(ProcessState& state, Container& container);
    ~AddOn() override;
    AddOn(const AddOn&) = delete;
    AddOn& operator=(const AddOn&) = delete;

    // IAddOn
    const std::wstring& Argument() const { return argument_; }
    void Argument(std::wstring argument) { argument_ = std::move(argument); }
    std::int16_t CurrentClusterIndex() const { return state_.current.cluster; }
    void CurrentClusterIndex(std::int16_t index);
    std::int16_t CurrentDeviceIndex() const { return state_.current.device; }
    void CurrentDeviceIndex(std::int16_t index);
    std::int16_t GetResult() const { return static_cast<std::int16_t>(result_); }
    void Register(std::shared_ptr<device::HostApplication> application);
    void Unregister();

    // IAddOnGUI
    void Enable() { enabled_ = true; }
    void Activate();
    bool RequestUnload();

    /// The control became visible. A control made visible again after the slave question does not come here twice: see
    /// Activate.
    void Show();

    /// Releases everything. Called from inside a wait it wakes the wait and puts the releases off until the outermost
    /// call has returned; `Terminated` says when they are done, `whenTerminated` is called then.
    void Terminate();
    bool Terminated() const { return terminated_; }
    bool Busy() const { return depth_ > 0; }
    std::function<void()> whenTerminated;

    /// The editor, for its peers and its layout. Valid until the add-on is destroyed.
    editor::Editor& Editor() { return *editor_; }
    bool Saving() const { return saving_; }

  private:
    template <typename Action>
    void Handle(const wchar_t* handler, Action&& action);
    void Leave();
    void TargetChanged();
    void Save(bool interactive) override;
    void SaveSteps(bool toDevice);
    void RunPutOff();
    void CloseAddOn() override;
    void ReadAgain() override;
    void EnterHandler() override { ++depth_; }
    void LeaveHandler() override { Leave(); }
    void ShowSteps();
    bool ConfirmSlave();
    void LoadStep();
    void LoadValues();
    void ShowValues();
    void ReleaseAll();

    ProcessState& state_;
    Container& container_;
    std::unique_ptr<editor::Editor> editor_;
    std::wstring argument_;
    std::int32_t result_ = -1;
    bool enabled_ = false;
    bool loaded_ = false;
    bool saving_ = false;
    bool activating_ = false;
    bool activatePending_ = false;
    bool showPending_ = false;
    bool askingSlave_ = false;
    bool terminating_ = false;
    bool terminated_ = false;
    int depth_ = 0;
};

} // namespace orv::addon
