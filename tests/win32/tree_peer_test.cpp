#include "fixture.h"

#include <commctrl.h>

#include "controls/tree.h"

namespace orv::tests {
namespace {

using namespace controls;

struct TreeTest : Windows {
    Tree& tree = form.Root().Add<Tree>(L"tvw");
    HWND window = nullptr;
    std::vector<std::wstring> clicked;
    TreeTest() {
        tree.SetBounds({10, 10, 200, 200});
        Build();
        tree.onNodeClick = [this](const Tree::Node& node) { clicked.push_back(node.key); };
        Show();
        window = WindowOf(L"tvw");
    }
    void Build() {
        tree.Clear();
        tree.AddNode(L"", L"CodeDef", L"Codes Definition");
        tree.AddNode(L"CodeDef", L"Code1", L"1 - label");
        tree.AddNode(L"CodeDef", L"Code2", L"2 - (None)");
        tree.AddNode(L"", L"FormatDef", L"Format Definition");
    }
    HTREEITEM Item(int row) const {
        HTREEITEM item = TreeView_GetRoot(window);
        while (item != nullptr && row-- > 0)
            item = TreeView_GetNextVisible(window, item);
        return item;
    }
    std::wstring Text(HTREEITEM item) const {
        wchar_t text[64] = {};
        TVITEMW request{};
        request.mask = TVIF_TEXT;
        request.hItem = item;
        request.pszText = text;
        request.cchTextMax = 64;
        TreeView_GetItem(window, &request);
        return text;
    }
    void ClickRow(int row) {
        RECT area{};
        TreeView_GetItemRect(window, Item(row), &area, TRUE);
        PostClick(window, area.left + 3, (area.top + area.bottom) / 2);
        Drain();
    }
    std::wstring SelectedText() const { return Text(TreeView_GetSelection(window)); }
};

TEST_F(TreeTest, ShowsNodesBoldAndExpansion) {
    EXPECT_EQ(TreeView_GetCount(window), 4u);
    EXPECT_EQ(Text(Item(1)), L"1 - label");
    tree.SetBold(L"Code1", true);
    tree.SetText(L"Code2", L"2 - label 7");
    EXPECT_TRUE(TreeView_GetItemState(window, Item(1), TVIS_BOLD) & TVIS_BOLD);
    EXPECT_EQ(Text(Item(2)), L"2 - label 7");
    tree.SetExpanded(L"CodeDef", false);
    EXPECT_EQ(Text(Item(1)), L"Format Definition");
    tree.Reveal(L"Code2");
    EXPECT_EQ(Text(Item(2)), L"2 - label 7");
}

TEST_F(TreeTest, ClicksAndKeysSelectThroughTheWidget) {
    ClickRow(2);
    EXPECT_EQ(SelectedText(), L"2 - (None)");
    ClickRow(2);
    PostMessageW(window, WM_KEYDOWN, VK_UP, 1);
    Drain();
    EXPECT_EQ(SelectedText(), L"1 - label");
    EXPECT_EQ(clicked, (std::vector<std::wstring>{L"Code2", L"Code2", L"Code1"}));
    tree.SetSelectedKey(L"FormatDef");
    EXPECT_EQ(SelectedText(), L"Format Definition");
    EXPECT_EQ(clicked.size(), 3u);
}

TEST_F(TreeTest, ButtonCollapsesAndTakesTheSelectionAlong) {
    tree.SetSelectedKey(L"Code1");
    RECT area{};
    TreeView_GetItemRect(window, Item(0), &area, TRUE);
    PostClick(window, area.left - 8, (area.top + area.bottom) / 2);
    Drain();
    EXPECT_EQ(Text(Item(1)), L"Format Definition");
    EXPECT_EQ(tree.SelectedKey(), L"CodeDef");
    EXPECT_EQ(SelectedText(), L"Codes Definition");
}

TEST_F(TreeTest, HandlerMayRebuildTheTreeUnderTheClick) {
    tree.onNodeClick = [this](const Tree::Node& node) {
        const std::wstring key = node.key;
        Build();
        tree.AddNode(L"FormatDef", L"Format1", L"1 - SerMain");
        tree.SetSelectedKey(key);
    };
    ClickRow(1);
    EXPECT_EQ(TreeView_GetCount(window), 5u);
    EXPECT_EQ(SelectedText(), L"1 - label");
}

} // namespace
} // namespace orv::tests
