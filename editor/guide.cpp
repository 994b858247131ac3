#include "editor/guide.h"

#include <algorithm>

#include "text/bytes.h"
#include "text/error.h"
#include "text/excerpt.h"
#include "text/texts.h"

namespace orv::editor {
namespace {

using text::Id;
using text::Load;

constexpr wchar_t kDefaultName[] = L"OrvOutFormat";
constexpr std::int32_t kDefaultLanguage = 0x0409;
constexpr wchar_t kGuide[] = L".chm";
constexpr wchar_t kDocument[] = L".pdf";
constexpr std::string_view kDocumentMark = "%PDF";

/// Four digits, padded with zeros.
std::wstring LanguageDigits(std::int32_t language) {
    const auto bits = static_cast<std::uint32_t>(language);
    return text::Hex2(static_cast<std::uint8_t>(bits >> 8)) + text::Hex2(static_cast<std::uint8_t>(bits));
}

/// Names a file of the component's folder, and nothing beside, above or below it.
bool IsPlainName(const std::wstring& name) {
    return std::none_of(name.begin(), name.end(), [](wchar_t c) {
        return static_cast<std::uint32_t>(c) < 0x20 ||
               std::wstring_view(L"\\/:*?\"<>|").find(c) != std::wstring_view::npos;
    });
}

std::wstring NameOfGuide(device::HostApplication& host) {
    std::wstring name = host.HelpName();
    std::erase(name, L'-');
    return name.empty() || !IsPlainName(name) ? kDefaultName : name;
}

/// Copies `guide` to `document`. An earlier copy that cannot be replaced is good enough: a viewer that has it open
/// locks it. Raises the system's error when there is none.
void Provide(platform::Desktop& desktop, const std::wstring& guide, const std::wstring& document) {
    desktop.RemoveFile(document);
    try {
        desktop.DuplicateFile(guide, document);
    } catch (const Error&) {
        if (!desktop.FileExists(document))
            throw;
    }
}

} // namespace

template <typename Action>
bool Guide::Reported(const std::wstring& prefix, Action&& action) {
    try {
        action();
        return true;
    } catch (const Error& error) {
        platform::MessageBox box;
        box.text = prefix + text::Excerpt(error.Description());
        box.title = Load(Id::AddOnTitle);
        box.icon = platform::Icon::Critical;
        state_.platform.boxes.Show(box);
        return false;
    }
}

bool Guide::CheckHelpFile() {
    return Reported(Load(Id::ErrorInCheckHelpFile), [this] {
        // Held: the host may unregister itself from inside one of its own calls.
        const auto application = state_.application;
        if (!application)
            throw Error(error_number::kObjectNotSet);
        const std::wstring name = state_.platform.desktop.ComponentFolder() + L"\\" + NameOfGuide(*application) + L"_";
        basePath_ = name + LanguageDigits(application->HelpLanguage());
        if (!state_.platform.desktop.FileExists(basePath_ + kGuide))
            basePath_ = name + LanguageDigits(kDefaultLanguage);
    });
}

bool Guide::IsAcrobatDocument(const std::wstring& path) {
    bool is = false;
    Reported(Load(Id::ErrorInIsAcrobatDocument) + path + L"): ", [&] {
        Bytes start = state_.platform.desktop.ReadStart(path, kDocumentMark.size());
        for (std::uint8_t& byte : start)
            byte = byte >= 'a' && byte <= 'z' ? static_cast<std::uint8_t>(byte - 'a' + 'A') : byte;
        is = std::equal(start.begin(), start.end(), kDocumentMark.begin(), kDocumentMark.end());
    });
    return is;
}

void Guide::Open() {
    if (CheckHelpFile())
        Reported(Load(Id::ErrorInGuide), [this] { OpenFile(); });
}

void Guide::OpenFile() {
    platform::Desktop& desktop = state_.platform.desktop;
    const std::wstring guide = basePath_ + kGuide;
    if (!desktop.FileExists(guide))
        throw Error(error_number::kFileAccess, Load(Id::NoGuide) + guide);
    if (!IsAcrobatDocument(guide)) {
        desktop.OpenDocument(guide);
        return;
    }
    // The viewer goes by the extension, and a guide may come as a document under the other one.
    std::wstring document = basePath_ + kDocument;
    try {
        Provide(desktop, guide, document);
    } catch (const Error&) {
        // Most users may not write where programs are installed.
        document = desktop.TemporaryFolder() + document.substr(document.find_last_of(L'\\'));
        Provide(desktop, guide, document);
    }
    desktop.OpenDocument(document);
}

} // namespace orv::editor
