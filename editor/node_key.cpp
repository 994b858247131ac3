#include "editor/node_key.h"

#include <array>
#include <utility>

namespace orv::editor {
namespace {

/// Leading decimal digits as a number; 0 without any, and when they are too many for one.
std::int32_t LeadingNumber(const std::wstring& text) {
    std::int32_t number = 0;
    for (std::size_t i = 0; i < text.size() && i < 9 && text[i] >= L'0' && text[i] <= L'9'; ++i)
        number = number * 10 + (text[i] - L'0');
    return number;
}

std::wstring Without(std::wstring text, const std::wstring& word) {
    for (std::size_t at = text.find(word); at != std::wstring::npos; at = text.find(word))
        text.erase(at, word.size());
    return text;
}

} // namespace

NodeKey ParseNodeKey(const std::wstring& key) {
    // The roots first: each of them matches the pattern of its children as well.
    const std::array<std::pair<std::wstring, NodeKind>, 3> roots = {
        {{kCodesKey, NodeKind::Codes}, {kGroupsKey, NodeKind::Groups}, {kFormatsKey, NodeKind::Formats}}};
    for (const auto& [root, kind] : roots)
        if (key == root)
            return {kind, 0};
    const std::array<std::pair<std::wstring, NodeKind>, 3> patterns = {
        {{L"Code", NodeKind::Code}, {L"Group", NodeKind::Group}, {L"Format", NodeKind::Format}}};
    for (const auto& [prefix, kind] : patterns)
        if (key.starts_with(prefix))
            return {kind, LeadingNumber(Without(key, prefix))};
    return {};
}

std::wstring CodeKey(std::int32_t index) {
    return L"Code" + std::to_wstring(index);
}

std::wstring GroupKey(std::int32_t index) {
    return L"Group" + std::to_wstring(index);
}

std::wstring FormatKey(std::int32_t index) {
    return L"Format" + std::to_wstring(index);
}

} // namespace orv::editor
