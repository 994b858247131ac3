#include "editor/about_dialog.h"

#include <algorithm>

#include "platform/full_path.h"
#include "text/texts.h"

namespace orv::editor {
namespace {

using controls::Grow;
using text::Id;
using text::Load;

constexpr wchar_t kToolKey[] = L"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
constexpr wchar_t kToolValue[] = L"PATH";
constexpr wchar_t kFolderKey[] = L"SOFTWARE\\Microsoft\\Shared Tools Location";
constexpr wchar_t kFolderValue[] = L"MSINFO";
constexpr wchar_t kToolFile[] = L"\\MSINFO32.EXE";

std::wstring Padded(int number, std::size_t digits) {
    const std::wstring text = std::to_wstring(number);
    return std::wstring(digits - std::min(digits, text.size()), L'0') + text;
}

std::wstring VersionText(const platform::Version& version) {
    std::wstring text = Load(Id::AboutVersion) + std::to_wstring(version.major) + L"." + Padded(version.minor, 2);
    if (version.revision != 0)
        text += L"." + Padded(version.revision, 4);
    return text;
}

/// A path as the registry keeps it, without the quotes that some put round it. Empty when there is none, and when it is
/// not a full one: what is started must not depend on where the application happens to stand.
std::wstring FullPath(platform::Services& services, const wchar_t* key, const wchar_t* value) {
    std::wstring path = services.registry.LocalMachineValue(key, value).value_or(std::wstring());
    if (path.size() > 1 && path.front() == L'"' && path.back() == L'"')
        path = path.substr(1, path.size() - 2);
    return platform::IsFullPath(path) ? path : std::wstring();
}

/// Empty when there is none.
std::wstring SystemInformationTool(platform::Services& services) {
    std::wstring path = FullPath(services, kToolKey, kToolValue);
    if (!path.empty())
        return path;
    const std::wstring folder = FullPath(services, kFolderKey, kFolderValue);
    path = folder + kToolFile;
    return !folder.empty() && services.desktop.FileExists(path) ? path : std::wstring();
}

void StartSystemInformation(platform::Services& services) {
    const std::wstring tool = SystemInformationTool(services);
    if (!tool.empty()) {
        services.desktop.StartProcess(tool);
        return;
    }
    platform::MessageBox box;
    box.text = Load(Id::NoSystemInformation);
    box.title = Load(Id::AddOnTitle);
    services.boxes.Show(box);
}

class AboutDialog : public controls::Dialog {
  public:
    explicit AboutDialog(platform::Services& services);

  private:
    controls::Button& AddButton(const wchar_t* name, Id caption);

    controls::Label& lblTitle_;
    controls::Label& lblVersion_;
};

AboutDialog::AboutDialog(platform::Services& services)
    : Dialog(services.boxes, services.pump), lblTitle_(Form().Root().Add<controls::Label>(L"lblTitle")),
      lblVersion_(Form().Root().Add<controls::Label>(L"lblVersion")) {
    SetTitle(Load(Id::AboutTitle) + Load(Id::AddOnTitle));
    lblTitle_.SetCaption(Load(Id::AddOnTitle));
    lblTitle_.SetHeading(true);
    lblVersion_.SetCaption(VersionText(services.desktop.ComponentVersion()));
    controls::Button& cmdOK = AddButton(L"cmdOK", Id::ButtonOK);
    controls::Button& cmdSysInfo = AddButton(L"cmdSysInfo", Id::ButtonSystemInformation);
    cmdOK.onClick = [this] { Close(); };
    cmdSysInfo.onClick = [&services] {
        platform::Guarded(services.boxes, L"frmAbout.cmdSysInfo_Click", [&] { StartSystemInformation(services); });
    };
    SetDefaultButton(&cmdOK);
    SetCancelButton(&cmdOK);
    SetContent(controls::Column(controls::Boxed(
        Cell(lblTitle_), Cell(lblVersion_), controls::Spring(Grow::Down),
        controls::Row(controls::Boxed(controls::Spring(Grow::Across), Cell(cmdOK), Cell(cmdSysInfo))))));
}

controls::Button& AboutDialog::AddButton(const wchar_t* name, Id caption) {
    auto& button = Form().Root().Add<controls::Button>(name);
    button.SetCaption(Load(caption));
    return button;
}

} // namespace

void ShowAbout(Context& context) {
    AboutDialog dialog(context.state.platform);
    context.runDialog(dialog);
}

} // namespace orv::editor
