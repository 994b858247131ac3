#pragma once
// The items of a tree window, kept like a list of nodes.
#include "platform/win32/system.h"

#include <string>
#include <vector>

#include <commctrl.h>

#include "controls/tree.h"

namespace orv::controls::win32 {

class TreeNodes {
  public:
    explicit TreeNodes(HWND window) : window_(window) {}
    /// Only what differs is touched while keys and parents are the same; else the items are made anew, with the
    /// first visible one kept.
    void Show(const std::vector<Tree::Node>& nodes);
    /// Nothing for an unknown key or item.
    HTREEITEM ItemOf(const std::wstring& key) const;
    const std::wstring* KeyOf(HTREEITEM item) const;

  private:
    struct Entry {
        Tree::Node node;
        HTREEITEM item;
    };
    bool SameShape(const std::vector<Tree::Node>& nodes) const;
    void Rebuild(const std::vector<Tree::Node>& nodes);
    void Update(Entry& entry, const Tree::Node& node);
    void Expand(const Entry& entry);

    HWND window_;
    std::vector<Entry> entries_;
};

} // namespace orv::controls::win32
