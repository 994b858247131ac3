#include "editor/export_command.h"

#include "model/format_export.h"
#include "platform/file_writer.h"
#include "text/filled.h"
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

void Write(const std::wstring& file, std::string_view bytes) {
    try {
        platform::WriteWhole(platform::NameFrom(file), bytes);
    } catch (const Error& error) {
        throw Error(error.Number(),
                    text::Filled(Id::FileNotWritten, {{L"file", file}, {L"reason", error.Description()}}));
    }
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
        Write(file, model::FormatStructure(context.root(), context.state));
}

} // namespace orv::editor
