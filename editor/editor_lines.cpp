// The lines of the shell that tell the user where the editor stands: device line, warning strip, hint line.
#include "device/parameter_access.h"
#include "editor/context.h"
#include "editor/editor.h"
#include "editor/fields.h"
#include "editor/node_key.h"
#include "editor/page.h"
#include "editor/shell.h"
#include "text/excerpt.h"
#include "text/filled.h"

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

std::wstring LevelWarning(const device::Target& read, const device::Target& current) {
    return text::Filled(Id::LevelChanged, {{L"read", std::to_wstring(read.accessLevel)},
                                           {L"level", std::to_wstring(current.accessLevel)}});
}

/// What a page says of its object is an ornament, too: a change must not fail for it.
std::vector<std::wstring> RemarksOf(Page& page) {
    try {
        return page.Remarks();
    } catch (const Error&) {
        return {};
    }
}

std::wstring Lines(const std::vector<std::wstring>& strips) {
    std::wstring lines;
    for (const std::wstring& strip : strips)
        lines += (lines.empty() ? L"" : L"\n") + strip;
    return lines;
}

std::wstring ReportOf(const SaveReport& report) {
    if (!report.complete) {
        const std::wstring stop =
            report.stoppedAt.empty() ? Load(Id::SaveNotStarted) : Load(Id::StoppedAt) + text::Excerpt(report.stoppedAt);
        return stop + L", " + std::to_wstring(report.written) + L" " + Load(Id::CountOf) + L" " +
               std::to_wstring(report.total) + Load(Id::Written);
    }
    std::wstring text;
    if (report.endError != 0)
        text = text::Filled(Id::SessionNotEnded, {{L"code", std::to_wstring(report.endError)}});
    if (!report.withoutPlace.empty())
        text += (text.empty() ? L"" : L". ") + text::Filled(Id::SavedWithoutPlace, {{L"list", report.withoutPlace}});
    return text;
}

} // namespace

void Editor::RefreshDeviceLine() {
    ShowCut(shell_->lblDevice, DeviceLine(*context_));
    RefreshStrip();
    if (measure_)
        Layout({Root().Bounds().width, Root().Bounds().height}, *measure_);
}

bool Editor::LevelDiffers() const {
    return hasRead_ && readFrom_.accessLevel != state_.current.accessLevel;
}

bool Editor::DeviceDiffers() const {
    return hasRead_ && (readFrom_.cluster != state_.current.cluster || readFrom_.device != state_.current.device);
}

void Editor::RefreshStrip() {
    std::vector<std::wstring> strips;
    if (hasRead_) {
        if (const std::wstring warning = TargetWarning(readFrom_, state_.current); !warning.empty())
            strips.push_back(warning);
        if (LevelDiffers())
            strips.push_back(LevelWarning(readFrom_, state_.current));
        const NodeKind kind = ParseNodeKey(shownKey_).kind;
        if (kind != NodeKind::Unknown)
            for (std::wstring& remark : RemarksOf(PageOf(kind)))
                strips.push_back(std::move(remark));
    }
    ShowStrips(strips);
    if (shell_->cmdReadAgain->Visible() == LevelDiffers())
        return;
    shell_->cmdReadAgain->SetVisible(LevelDiffers());
    if (measure_)
        Layout({Root().Bounds().width, Root().Bounds().height}, *measure_);
}

void Editor::ShowStrips(const std::vector<std::wstring>& strips) {
    std::wstring shown = strips.empty() ? std::wstring() : strips.front();
    if (strips.size() > 1)
        shown = text::Filled(Id::OneOfStrips,
                             {{L"number", L"1"}, {L"count", std::to_wstring(strips.size())}, {L"text", shown}});
    const std::wstring lines = Lines(strips);
    if (shell_->lblTarget.ToolTip() == lines)
        return;
    ShowCut(shell_->lblTarget, shown);
    shell_->lblTarget.SetToolTip(lines);
    shell_->lblTarget.SetAccessibleName(lines);
}

void Editor::SetSaveReport(const SaveReport& report) {
    saveReport_ = ReportOf(report);
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
