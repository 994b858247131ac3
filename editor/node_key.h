#pragma once
// Keys of the tree's nodes: the only link between a node and what it shows.
#include <cstdint>
#include <string>

namespace orv::editor {

inline constexpr wchar_t kCodesKey[] = L"CodeDef";
inline constexpr wchar_t kGroupsKey[] = L"GroupDef";
inline constexpr wchar_t kFormatsKey[] = L"FormatDef";

enum class NodeKind { Unknown, Codes, Groups, Formats, Code, Group, Format };

struct NodeKey {
    NodeKind kind = NodeKind::Unknown;
    std::int32_t index = 0; ///< of one code, group or format; 0 when the key has no number
    bool operator==(const NodeKey&) const = default;
};

NodeKey ParseNodeKey(const std::wstring& key);

std::wstring CodeKey(std::int32_t index);
std::wstring GroupKey(std::int32_t index);
std::wstring FormatKey(std::int32_t index);

} // namespace orv::editor
