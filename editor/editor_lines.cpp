// The lines of the shell that tell the user where the editor stands: device line, warning strip, hint line.
#include "device/parameter_access.h"
#include "editor/context.h"
#include "editor/editor.h"
#include "editor/fields.h"
#include "editor/page.h"
#include "editor/shell.h"
#include "text/texts.h"

namespace orv::editor {
namespace {

using text::Id;
using text::Load;

/// Ornament: a device that does not say what it is called is no reason to stop.
std::wstring DescriptionOrEmpty(const Context& context, std::int16_t device) {
    try {
        return context.Access().ClusterOrDeviceDescription(device);
    } catch (const Error&) {
        return {};
    }
}

std::wstring DeviceLine(const Context& context) {
    const device::Target& target = context.state.current;
    std::wstring cluster = DescriptionOrEmpty(context, 0);
    if (cluster.empty())
        cluster = std::to_wstring(target.cluster);
    std::wstring device = std::to_wstring(target.device);
    // The call answers the cluster's description for the master, which stands in front already.
    if (target.device != 0)
        if (const std::wstring description = DescriptionOrEmpty(context, target.device); !description.empty())
            device += L" " + description;
    return cluster + L" / " + device + L" / " + Load(Id::Level) + L" " + std::to_wstring(target.accessLevel);
}

std::wstring Place(const device::Target& target, bool withCluster) {
    const std::wstring device = std::to_wstring(target.device);
    return withCluster ? std::to_wstring(target.cluster) + L"/" + device : device;
}

std::wstring TargetWarning(const device::Target& read, const device::Target& current) {
    if (read.cluster == current.cluster && read.device == current.device)
        return {};
    const bool clusters = read.cluster != current.cluster;
    return Load(Id::ReadFromDevice) + Place(read, clusters) + Load(Id::SavingToDevice) + Place(current, clusters);
}

} // namespace

void Editor::RefreshDeviceLine() {
    ShowCut(shell_->lblDevice, DeviceLine(*context_));
    ShowCut(shell_->lblTarget, hasRead_ ? TargetWarning(readFrom_, state_.current) : std::wstring());
    if (measure_)
        Layout({Root().Bounds().width, Root().Bounds().height}, *measure_);
}

void Editor::SetSaveReport(const SaveReport& report) {
    saveReport_.clear();
    if (!report.complete) {
        saveReport_ = report.stoppedAt.empty() ? Load(Id::SaveNotStarted) : Load(Id::StoppedAt) + report.stoppedAt;
        saveReport_ += L", " + std::to_wstring(report.written) + L" " + Load(Id::CountOf) + L" " +
                       std::to_wstring(report.total) + Load(Id::Written);
    }
    ShowHint();
}

void Editor::Refuse(const std::wstring& reason) {
    refusal_ = reason;
    ShowHint();
}

void Editor::ShowHint() {
    // A report stays until the next change: while the save disables the control the focus comes and goes.
    const controls::Widget* focused = form_.Focused();
    const std::wstring hint = focused ? focused->Hint() : std::wstring();
    ShowCut(*shell_->lblHint, !refusal_.empty() ? refusal_ : !saveReport_.empty() ? saveReport_ : hint);
}

} // namespace orv::editor
