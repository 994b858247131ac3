#include "controls/win32/tree_nodes.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace orv::controls::win32 {
namespace {

TVITEMW Described(const Tree::Node& node) {
    TVITEMW item{};
    item.mask = TVIF_TEXT | TVIF_STATE;
    item.pszText = const_cast<wchar_t*>(node.text.c_str());
    item.stateMask = TVIS_BOLD;
    item.state = node.bold ? TVIS_BOLD : 0;
    return item;
}

} // namespace

HTREEITEM TreeNodes::ItemOf(const std::wstring& key) const {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.node.key == key; });
    return found == entries_.end() ? nullptr : found->item;
}

const std::wstring* TreeNodes::KeyOf(HTREEITEM item) const {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.item == item; });
    return found == entries_.end() ? nullptr : &found->node.key;
}

bool TreeNodes::SameShape(const std::vector<Tree::Node>& nodes) const {
    return std::equal(entries_.begin(), entries_.end(), nodes.begin(), nodes.end(),
                      [](const Entry& entry, const Tree::Node& node) {
                          return entry.node.key == node.key && entry.node.parentKey == node.parentKey;
                      });
}

void TreeNodes::Show(const std::vector<Tree::Node>& nodes) {
    if (SameShape(nodes)) {
        for (std::size_t i = 0; i < nodes.size(); ++i)
            Update(entries_[i], nodes[i]);
        return;
    }
    SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
    const HTREEITEM top = TreeView_GetFirstVisible(window_);
    const std::wstring* topKey = KeyOf(top);
    const std::wstring kept = topKey != nullptr ? *topKey : std::wstring();
    Rebuild(nodes);
    if (const HTREEITEM again = ItemOf(kept))
        TreeView_Select(window_, again, TVGN_FIRSTVISIBLE);
    SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(window_, nullptr, TRUE);
}

void TreeNodes::Rebuild(const std::vector<Tree::Node>& nodes) {
    TreeView_DeleteAllItems(window_);
    entries_.clear();
    std::unordered_map<std::wstring_view, std::size_t> places; // of the parents met so far, by the keys in `nodes`
    std::vector<std::size_t> parents;
    for (const Tree::Node& node : nodes) {
        TVINSERTSTRUCTW insert{};
        insert.hParent = TVI_ROOT;
        if (const auto above = places.find(node.parentKey); above != places.end()) {
            insert.hParent = entries_[above->second].item;
            if (parents.empty() || parents.back() != above->second)
                parents.push_back(above->second);
        }
        insert.hInsertAfter = TVI_LAST;
        insert.item = Described(node);
        places.emplace(node.key, entries_.size());
        entries_.push_back({node, TreeView_InsertItem(window_, &insert)});
    }
    // An item expands only once it has children.
    for (const std::size_t parent : parents)
        Expand(entries_[parent]);
}

void TreeNodes::Update(Entry& entry, const Tree::Node& node) {
    if (entry.node.text != node.text || entry.node.bold != node.bold) {
        TVITEMW item = Described(node);
        item.mask |= TVIF_HANDLE;
        item.hItem = entry.item;
        TreeView_SetItem(window_, &item);
    }
    const bool turned = entry.node.expanded != node.expanded;
    entry.node = node;
    if (turned)
        Expand(entry);
}

void TreeNodes::Expand(const Entry& entry) {
    TreeView_Expand(window_, entry.item, entry.node.expanded ? TVE_EXPAND : TVE_COLLAPSE);
}

} // namespace orv::controls::win32
