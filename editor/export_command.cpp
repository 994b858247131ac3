#include "editor/export_command.h"

#include <filesystem>

#include "model/format_export.h"
#include "text/texts.h"

namespace orv::editor {
namespace {

using text::Id;
using text::Load;

constexpr wchar_t kPattern[] = L"*.TXT";
constexpr wchar_t kExtension[] = L".txt";

/// The descriptions are free texts of a configuration; the file system forbids some of what may stand in them.
std::wstring AsFileName(std::wstring text) {
    for (wchar_t& c : text)
        if (c < L' ' || std::wstring_view(L"<>:\"/\\|?*").find(c) != std::wstring_view::npos)
            c = L'_';
    return text;
}

} // namespace

void ExportFormats(const Context& context) {
    // Held: the host may unregister itself from inside one of its own calls.
    const auto application = context.state.application;
    if (!application)
        throw Error(error_number::kObjectNotSet);
    std::wstring name = application->ExportNameFirst() + L"_";
    name += application->ExportNameSecond();
    const std::wstring file =
        context.state.platform.desktop.ChooseSaveFile({.title = Load(Id::ExportTitle),
                                                       .filterName = Load(Id::ExportFilter),
                                                       .filterPattern = kPattern,
                                                       .defaultExtension = kExtension,
                                                       .suggestedName = AsFileName(name) + kExtension});
    // The dialog runs the message loop: the root is asked for behind it.
    if (!file.empty())
        model::ExportFormatStructure(context.root(), context.state, std::filesystem::path(file));
}

} // namespace orv::editor
