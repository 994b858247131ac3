#include "addon/add_on.h"

#include <exception>
#include <utility>

#include "device/mib_param_cache.h"
#include "editor/omissions.h"
#include "platform/guarded.h"
#include "text/texts.h"

namespace orv::addon {
namespace {

using platform::Restoring;
using text::Id;
using text::Load;

/// For the releases of the end, whose failures are nobody's business any more.
template <typename Action>
void IgnoringErrors(Action&& action) noexcept {
    try {
        action();
    } catch (...) {
    }
}

template <typename Pointer>
auto& Required(const Pointer& object) {
    if (!object)
        throw Error(error_number::kObjectNotSet);
    return *object;
}

} // namespace

/// Runs one call of the host; `Terminate` waits for the outermost one to return.
template <typename Action>
void AddOn::Handle(const wchar_t* handler, Action&& action) {
    if (terminating_)
        return;
    const Restoring leave([this] { Leave(); });
    ++depth_;
    platform::Guarded(state_.platform.boxes, handler, action);
}

void AddOn::Leave() {
    if (--depth_ == 0 && terminating_ && !terminated_)
        ReleaseAll();
}

AddOn::AddOn(ProcessState& state, Container& container) : state_(state), container_(container) {
    auto root = std::make_unique<model::OutFormatConfig>(state_);
    auto catalogue = std::make_unique<model::ToolItems>(state_, *root);
    editor_ = std::make_unique<editor::Editor>(
        state_,
        [this]() -> model::OutFormatConfig& {
            if (!state_.root)
                throw Error(error_number::kObjectNotSet);
            return *state_.root;
        },
        [this]() -> model::ToolItems& {
            if (!state_.catalogue)
                throw Error(error_number::kObjectNotSet);
            return *state_.catalogue;
        },
        static_cast<editor::Commands&>(*this));
    // Only a whole component leaves anything behind in its state.
    state_.root = std::move(root);
    state_.catalogue = std::move(catalogue);
}

AddOn::~AddOn() {
    Terminate();
}

void AddOn::CurrentClusterIndex(std::int16_t index) {
    state_.current.cluster = index;
    TargetChanged();
}

void AddOn::CurrentDeviceIndex(std::int16_t index) {
    state_.current.device = index;
    TargetChanged();
}

/// The line that names the device follows; a host that cannot describe it now is no reason to fail a plain store.
void AddOn::TargetChanged() {
    if (loaded_ && !saving_ && !terminating_)
        IgnoringErrors([this] { editor_->RefreshDeviceLine(); });
}

void AddOn::Register(std::shared_ptr<device::HostApplication> application) {
    state_.application = std::move(application);
}

void AddOn::Unregister() {
    state_.application.reset();
}

bool AddOn::RequestUnload() {
    bool userMode = true;
    IgnoringErrors([&] { userMode = container_.UserMode(); });
    return userMode;
}

void AddOn::Show() {
    // Visible again after the slave question is no show by the host.
    if (!enabled_ || askingSlave_)
        return;
    if (saving_) {
        showPending_ = true;
        return;
    }
    Handle(L"AddOnControl.UserControl_Show", [this] { ShowSteps(); });
    TargetChanged(); // the level may be another one although a later step failed
}

void AddOn::ShowSteps() {
    if (!state_.manager)
        state_.manager = state_.factory.CreateConfigurationManager();
    device::ConfigurationManager& manager = Required(state_.manager);
    if (const auto earlier = std::exchange(state_.configuration, nullptr))
        manager.ReleaseConfiguration(earlier);
    state_.configuration = manager.GetConfiguration();
    state_.current.accessLevel = Required(state_.configuration).AccessLevel();
    Required(state_.application).SetCaption(Load(Id::AddOnTitle));
    state_.common->calls.Increment();
    editor_->SetDesignFlag(state_.common->calls.Flag());
    editor_->ShowFirstPage();
    state_.progressOwner = container_.Window();
    if (loaded_)
        ShowValues();
}

/// The host may have hidden the control and show it under another level: what the model holds was read under the old
/// one.
void AddOn::ShowValues() {
    const bool stored = editor_->CommitPending();
    // Another device is not read unasked: it may be a slave, which takes a question.
    if (editor_->LevelDiffers() && !editor_->DeviceDiffers() && stored && !editor_->Modified())
        ReadAgain();
    else
        editor_->Reopen();
}

void AddOn::Activate() {
    if (activating_)
        return;
    if (saving_) {
        activatePending_ = true;
        return;
    }
    Handle(L"AddOnControl.IAddOnGUI_Activate", [this] {
        const Restoring done([this] { activating_ = false; });
        activating_ = true;
        if (state_.current.device != 0 && !ConfirmSlave())
            return;
        if (!loaded_) {
            LoadStep();
            loaded_ = true;
        }
        TargetChanged();
    });
}

bool AddOn::ConfirmSlave() {
    const Restoring asked([this] { askingSlave_ = false; });
    askingSlave_ = true;
    bool declined = false;
    const Restoring visible([&] {
        if (!declined)
            container_.SetVisible(true);
    });
    container_.SetVisible(false);
    platform::MessageBox box;
    box.text = Load(Id::SlaveQuestion);
    box.title = Load(Id::WarningTitle);
    box.icon = platform::Icon::Warning;
    box.buttons = platform::Buttons::YesNo;
    declined = state_.platform.boxes.Show(box) == platform::Answer::No;
    if (declined)
        CloseAddOn();
    return !declined;
}

void AddOn::LoadValues() {
    state_.root->Reload();
    model::FillCatalogue(*state_.catalogue);
    editor_->ValuesRead();
    editor_->BuildTree();
}

void AddOn::ReadAgain() {
    if (saving_ || terminating_)
        throw platform::WaitAbandoned{};
    const Restoring done([this, before = activating_] { activating_ = before; });
    activating_ = true;
    // Until all of it is there nothing can be edited; the next activation tries again. The line names the new level.
    const Restoring named([this] {
        if (!loaded_)
            IgnoringErrors([this] { editor_->RefreshDeviceLine(); });
    });
    loaded_ = false;
    editor_->ValuesLost();
    Required(state_.root).ForgetIdentifiers();
    LoadValues();
    editor_->Reopen();
    editor_->SetModified(false);
    loaded_ = true;
}

void AddOn::LoadStep() {
    LoadValues();
    editor_->SelectFirstNode();
    result_ = 2;
    state_.platform.pump.ProcessPending();
    editor_->SetModified(false);
}

void AddOn::Save(bool interactive) {
    // A second save would write into the first one's session. Whoever asked for it must not go on as if it had run.
    if (saving_ || terminating_)
        throw platform::WaitAbandoned{};
    const bool toDevice = interactive && !editor_->NoInteractive();
    // Another control's session would be cut by this one's: the host's service carries one.
    const device::DeviceState* nobody = nullptr;
    if (toDevice && !state_.common->onTheWire.compare_exchange_strong(nobody, &state_)) {
        state_.platform.boxes.Beep();
        throw platform::WaitAbandoned{};
    }
    std::exception_ptr failure;
    {
        const Restoring leave([this] { Leave(); });
        ++depth_;
        saving_ = true;
        try {
            SaveSteps(toDevice);
        } catch (...) {
            failure = std::current_exception();
        }
        saving_ = false;
    }
    RunPutOff();
    if (failure)
        std::rethrow_exception(failure);
}

void AddOn::SaveSteps(bool toDevice) {
    const device::DeviceState* own = &state_;
    const Restoring offTheWire([&] { state_.common->onTheWire.compare_exchange_strong(own, nullptr); });
    const Restoring enable([this] { container_.SetEnabled(true); });
    container_.SetEnabled(false);
    const bool saved = state_.root->Save(toDevice);
    if (saved)
        editor_->SetModified(false);
    const model::SaveReport& report = state_.root->LastSave();
    editor_->SetSaveReport({saved, report.stoppedAt, report.written, report.queued, report.endError,
                            editor::WithoutPlace(report.leftOut)});
    result_ = 1;
}

/// What the host asked for while a save ran.
void AddOn::RunPutOff() {
    if (std::exchange(showPending_, false))
        Show();
    if (std::exchange(activatePending_, false))
        Activate();
    TargetChanged();
}

void AddOn::CloseAddOn() {
    if (!terminating_)
        Required(state_.application).CloseAddOn();
}

void AddOn::Terminate() {
    if (terminating_)
        return;
    terminating_ = true;
    state_.platform.pump.Close();
    state_.platform.boxes.Close();
    if (depth_ == 0)
        ReleaseAll();
}

void AddOn::ReleaseAll() {
    terminated_ = true;
    state_.catalogue.reset();
    state_.root.reset();
    if (const auto service = std::exchange(state_.mibSap, nullptr); service && state_.common->onTheWire == nullptr)
        IgnoringErrors([&] { service->Disconnect(); });
    const auto configuration = std::exchange(state_.configuration, nullptr);
    if (const auto manager = std::exchange(state_.manager, nullptr); manager && configuration)
        IgnoringErrors([&] { manager->ReleaseConfiguration(configuration); });
    state_.application.reset();
    if (whenTerminated)
        IgnoringErrors(whenTerminated);
}

} // namespace orv::addon
