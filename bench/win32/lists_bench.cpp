// Lists and trees of the form against bare windows of the same classes that show the same.
#include "platform/win32/system.h"

#include <algorithm>

#include "bench/win32/bare_lists.h"
#include "bench/win32/rows.h"
#include "controls/check_list.h"
#include "controls/picture_list.h"
#include "controls/tree.h"

namespace orv::bench {
namespace {

constexpr double kAim = 1.3;
constexpr controls::Rect kPlace{10, 10, 300, 320};

struct PictureLists : Stage {
    using Row = controls::PictureList::Row;

    PictureLists() {
        list.SetBounds(kPlace);
        Show();
        window = host.WindowOf(L"pls");
        for (int i = 0; i < 500; ++i) {
            const std::wstring caption = L"Item " + std::to_wstring(i) + L" of the data string";
            rows.push_back({std::to_wstring(i), pictures[i % 3], caption, L"What it adds", false});
            bareRows.push_back({caption, host.Images().IndexOf(pictures[i % 3])});
        }
    }

    const wchar_t* pictures[3] = {L"Code", L"Length", L"Day"};
    controls::PictureList& list = form.Root().Add<controls::PictureList>(L"pls");
    HWND window = nullptr;
    std::vector<Row> rows;
    std::vector<VirtualList::Row> bareRows;
};

void MeasureFilling(const Rows& rows, PictureLists& both, VirtualList& bare) {
    const ItemList items(both, {330, 10, 300, 320}, 0);
    ListView_SetImageList(items.window, both.host.Images().List(), LVSIL_SMALL);
    const Sides filled{[&] {
                           both.list.SetRows(both.rows);
                           Paint(both.window);
                       },
                       [&] {
                           bare.rows = both.bareRows;
                           bare.Changed();
                           Paint(bare.Window());
                       }};
    rows.Measure({"picture list, 500 items set", "bare virtual list", kAim}, filled);
    rows.Measure({"picture list, 500 items set", "bare list, item by item", kAim}, {filled.ours, [&] {
                                                                                        items.Fill(both.bareRows);
                                                                                        Paint(items.window);
                                                                                    }});
    DestroyWindow(items.window);
}

void MeasureChanges(const Rows& rows, PictureLists& both, VirtualList& bare) {
    const auto change = [&](auto&& of) {
        return Sides{[&both, of] {
                         of(both.rows);
                         both.list.SetRows(both.rows);
                         Paint(both.window);
                     },
                     [&bare, of] {
                         of(bare.rows);
                         bare.Changed();
                         Paint(bare.Window());
                     }};
    };
    rows.Measure({"picture list, one of 500 moved", "bare virtual list", kAim},
                 change([](auto& all) { std::rotate(all.begin() + 2, all.begin() + 3, all.begin() + 8); }));
    rows.Measure({"picture list, one of 500 removed and inserted", "bare virtual list", kAim}, change([](auto& all) {
                     auto row = all[5];
                     all.erase(all.begin() + 5);
                     all.insert(all.begin() + 4, std::move(row));
                 }));
    int row = 0;
    rows.Measure({"picture list, selection moved", "bare virtual list", kAim}, {[&] {
                                                                                    both.list.SetSelected(row);
                                                                                    Paint(both.window);
                                                                                },
                                                                                [&] {
                                                                                    bare.Select(row);
                                                                                    Paint(bare.Window());
                                                                                },
                                                                                [&] { row = (row + 1) % 8; }});
}

void MeasurePictureList(const Rows& rows) {
    PictureLists both;
    VirtualList bare(both, kPlace, both.host.Images().List());
    MeasureFilling(rows, both, bare);
    MeasureChanges(rows, both, bare);
    Require(ListView_GetItemCount(both.window) == ListView_GetItemCount(bare.Window()), "The lists differ");
}

void MeasureCheckList(const Rows& rows) {
    Stage stage;
    auto& list = stage.form.Root().Add<controls::CheckList>(L"lvw");
    list.SetBounds(kPlace);
    stage.Show();
    const HWND window = stage.host.WindowOf(L"lvw");
    const ItemList bare(stage, kPlace, LVS_EX_CHECKBOXES);
    std::vector<controls::CheckList::Row> ours;
    std::vector<VirtualList::Row> theirs;
    for (int i = 0; i < 64; ++i) {
        ours.push_back({L"Code " + std::to_wstring(i + 1), i, i % 2 == 0, false});
        theirs.push_back({ours.back().text, 0});
    }
    rows.Measure({"check list, 64 rows set", "bare list, item by item", kAim}, {[&] {
                                                                                    list.SetRows(ours);
                                                                                    Paint(window);
                                                                                },
                                                                                [&] {
                                                                                    bare.Fill(theirs);
                                                                                    for (int i = 0; i < 64; i += 2)
                                                                                        bare.Check(i, true);
                                                                                    Paint(bare.window);
                                                                                }});
    bool checked = false;
    rows.Measure({"check list, all 64 boxes turned", "bare list", kAim}, {[&] {
                                                                              for (int i = 0; i < 64; ++i)
                                                                                  list.SetChecked(i, checked);
                                                                              Paint(window);
                                                                          },
                                                                          [&] {
                                                                              for (int i = 0; i < 64; ++i)
                                                                                  bare.Check(i, checked);
                                                                              Paint(bare.window);
                                                                          },
                                                                          [&] { checked = !checked; }});
    Require(ListView_GetCheckState(window, 3) == ListView_GetCheckState(bare.window, 3), "The check lists differ");
}

struct Trees : Stage {
    Trees() {
        tree.SetBounds(kPlace);
        Show();
        window = host.WindowOf(L"tvw");
        bare = Bare(WC_TREEVIEWW, TVS_HASBUTTONS | TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_FULLROWSELECT,
                    WS_EX_CLIENTEDGE, kPlace);
        TreeView_SetExtendedStyle(bare, TVS_EX_DOUBLEBUFFER, TVS_EX_DOUBLEBUFFER);
    }

    /// A key that differs from build to build makes the window take all nodes anew.
    void Build(const std::wstring& build) {
        {
            const controls::Tree::Batch batch(tree);
            tree.Clear();
            for (int i = 0; i < 4; ++i) {
                const std::wstring root = build + std::to_wstring(i);
                tree.AddNode({}, root, L"Root " + std::to_wstring(i));
                for (int j = 0; j < 50; ++j)
                    tree.AddNode(root, root + L"." + std::to_wstring(j), L"Node " + std::to_wstring(j));
            }
        }
        Paint(window);
    }
    HTREEITEM Insert(HTREEITEM above, std::wstring text) const {
        TVINSERTSTRUCTW insert{};
        insert.hParent = above;
        insert.hInsertAfter = TVI_LAST;
        insert.item.mask = TVIF_TEXT;
        insert.item.pszText = text.data();
        return TreeView_InsertItem(bare, &insert);
    }
    void BuildBare() const {
        SendMessageW(bare, WM_SETREDRAW, FALSE, 0);
        TreeView_DeleteAllItems(bare);
        for (int i = 0; i < 4; ++i) {
            const HTREEITEM root = Insert(TVI_ROOT, L"Root " + std::to_wstring(i));
            for (int j = 0; j < 50; ++j)
                Insert(root, L"Node " + std::to_wstring(j));
            TreeView_Expand(bare, root, TVE_EXPAND);
        }
        SendMessageW(bare, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(bare, nullptr, TRUE);
        Paint(bare);
    }
    void RenameBare(std::wstring text) const {
        TVITEMW item{};
        item.mask = TVIF_TEXT | TVIF_HANDLE;
        item.hItem = TreeView_GetChild(bare, TreeView_GetRoot(bare));
        item.pszText = text.data();
        TreeView_SetItem(bare, &item);
        Paint(bare);
    }

    controls::Tree& tree = form.Root().Add<controls::Tree>(L"tvw");
    HWND window = nullptr;
    HWND bare = nullptr;
};

void MeasureTree(const Rows& rows) {
    Trees trees;
    int build = 0;
    rows.Measure({"tree, 204 nodes built", "bare tree", kAim},
                 {[&] { trees.Build(build % 2 == 0 ? L"a" : L"b"); }, [&] { trees.BuildBare(); }, [&] { ++build; }});
    Require(TreeView_GetCount(trees.window) == TreeView_GetCount(trees.bare), "The trees differ");
    trees.Build(L"a");
    rows.Measure({"tree, one node of 204 renamed", "bare tree", kAim},
                 {[&] {
                      trees.tree.SetText(L"a0.0", L"Node " + std::to_wstring(build));
                      Paint(trees.window);
                  },
                  [&] { trees.RenameBare(L"Node " + std::to_wstring(build)); }, [&] { ++build; }});
}

void Measure(const Rows& rows) {
    MeasurePictureList(rows);
    MeasureCheckList(rows);
    MeasureTree(rows);
}

} // namespace
} // namespace orv::bench

int main(int argc, char** argv) {
    return orv::bench::Run(argc, argv, orv::bench::Measure);
}
