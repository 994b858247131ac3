// The editor's pages and its tree, in windows, against the same windows filled by hand with the same texts.
#include "platform/win32/system.h"

#include <map>
#include <memory>

#include <commctrl.h>

#include "bench/win32/rows.h"
#include "bench/win32/stage.h"
#include "bench/win32/twin.h"
#include "controls/tree.h"
#include "editor/editor.h"
#include "model/catalogue.h"
#include "tests/support/bench.h"

namespace orv::bench {
namespace {

constexpr double kAim = 1.3;
constexpr int kWidth = 800;
constexpr int kHeight = 640;

HWND Pane(HWND parent, int left) {
    return CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, left, 0, kWidth, kHeight, parent,
                           nullptr, platform::win32::OwnModule(), nullptr);
}

/// The editor over the portable host, loaded as the component loads it, with windows.
struct Desk final : editor::Commands {
    Desk() {
        bench.Open(3);
        root.Reload();
        root.Advanced(true);
        root.Codes().Combination(model::kCombinationByExpression); // so that there are groups
        model::FillCatalogue(catalogue);
        host.Attach(Pane(window.Get(), 0));
        ShowWindow(window.Get(), SW_SHOW);
        editor.ValuesRead();
        editor.BuildTree();
        editor.SelectFirstNode();
        for (const auto& node : tree.Nodes())
            if (node.key != L"CodeDef")
                Click(node.key);
        form.SetFocus(tree); // where a click on a node leaves it
        Paint(host.Parent());
    }
    void Save(bool) override {}
    void CloseAddOn() override {}
    void ReadAgain() override {}

    void Click(std::wstring key) { tree.Click(key); }
    HWND PageWindow() const {
        for (const auto& child : form.Root().Children())
            if (child->Visible() && child->Caption() == controls::kPageMark)
                return host.WindowOf(child->Name());
        return nullptr;
    }

    test::Bench bench{"tunnel.json"};
    model::OutFormatConfig root{bench.state};
    model::ToolItems catalogue{bench.state, root};
    editor::Editor editor{bench.state, [this]() -> model::OutFormatConfig& { return root; },
                          [this]() -> model::ToolItems& { return catalogue; }, *this};
    controls::Form& form = editor.Form();
    controls::Tree& tree = dynamic_cast<controls::Tree&>(*form.Root().Find(L"tvw"));
    platform::win32::ActivationContext context{platform::win32::OwnModule()};
    controls::win32::PeerHost host{form, context, {{}, [this] { editor.Resize({kWidth, kHeight}, host); }, {}}};
    platform::win32::OwnedWindow window{CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_CLIPCHILDREN, 0, 0, 2 * kWidth,
                                                        kHeight, nullptr, nullptr, platform::win32::OwnModule(),
                                                        nullptr)};
};

/// The bare side: the windows, and what each node's page shows in them.
class Bare {
  public:
    explicit Bare(Desk& desk) : twin_(CopyOf(desk)) {
        const std::vector<HWND> head{desk.host.WindowOf(L"lblPage"), desk.host.WindowOf(L"tvw")};
        for (const controls::Tree::Node& node : desk.tree.Nodes()) {
            desk.Click(node.key);
            const HWND page = desk.PageWindow();
            pages_[node.key] = {twin_.Of(page), twin_.Read(page, head)};
        }
        shown_ = Known(desk.tree.SelectedKey()).window;
    }

    void Show(const std::wstring& key) {
        const Page& page = Known(key);
        twin_.Fill(page.contents);
        if (page.window != shown_) {
            ShowWindow(page.window, SW_SHOWNA);
            ShowWindow(shown_, SW_HIDE);
        }
        shown_ = page.window;
        Paint(twin_.Root());
    }

    const Twin& Windows() const { return twin_; }

  private:
    struct Page {
        HWND window = nullptr;
        Twin::Contents contents;
    };

    static Twin CopyOf(Desk& desk) {
        const platform::win32::ActivationScope styles(desk.context);
        return {desk.host.WindowOf(L"Root"), Pane(desk.window.Get(), kWidth)};
    }

    const Page& Known(const std::wstring& key) const {
        const auto found = pages_.find(key);
        Require(found != pages_.end(), "a node is missing");
        return found->second;
    }

    Twin twin_;
    std::map<std::wstring, Page> pages_;
    HWND shown_ = nullptr;
};

void MeasurePage(const Rows& rows, Desk& desk, Bare& bare, const char* name, const wchar_t* from, const wchar_t* to) {
    const auto ours = [&](const wchar_t* key) {
        desk.Click(key);
        Paint(desk.host.Parent());
    };
    rows.Measure({name, "the same windows filled by hand", kAim}, {[&] { ours(to); }, [&] { bare.Show(to); },
                                                                   [&] {
                                                                       ours(from);
                                                                       bare.Show(from);
                                                                   }});
}

/// The nodes of a tree, inserted one after the other while it does not redraw.
class BareTree {
  public:
    explicit BareTree(HWND window) : window_(window) {}

    static std::vector<std::pair<int, std::wstring>> Read(const controls::Tree& tree) {
        std::vector<std::pair<int, std::wstring>> nodes;
        for (const controls::Tree::Node& node : tree.Nodes())
            nodes.emplace_back(tree.Level(node), node.text);
        return nodes;
    }
    void Build(const std::vector<std::pair<int, std::wstring>>& nodes) const {
        SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
        TreeView_DeleteAllItems(window_);
        HTREEITEM root = nullptr;
        for (const auto& [level, text] : nodes) {
            const HTREEITEM made = Insert(level == 0 ? TVI_ROOT : root, text);
            root = level == 0 ? made : root;
        }
        for (root = TreeView_GetRoot(window_); root; root = TreeView_GetNextSibling(window_, root))
            TreeView_Expand(window_, root, TVE_EXPAND);
        TreeView_SelectItem(window_, TreeView_GetRoot(window_));
        SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(window_, nullptr, TRUE);
        Paint(window_);
    }
    int Count() const { return static_cast<int>(TreeView_GetCount(window_)); }

  private:
    HTREEITEM Insert(HTREEITEM above, const std::wstring& text) const {
        TVINSERTSTRUCTW insert{};
        insert.hParent = above;
        insert.hInsertAfter = TVI_LAST;
        insert.item.mask = TVIF_TEXT;
        insert.item.pszText = const_cast<wchar_t*>(text.c_str());
        return TreeView_InsertItem(window_, &insert);
    }

    HWND window_;
};

/// With and without the advanced formats in turn, so that no build finds the nodes there already.
void MeasureTree(const Rows& rows, Desk& desk, Bare& bare) {
    const HWND window = desk.host.WindowOf(L"tvw");
    const BareTree tree(bare.Windows().Of(window));
    std::vector<std::pair<int, std::wstring>> nodes[2];
    desk.Click(L"CodeDef");
    for (const bool advanced : {false, true}) {
        desk.root.Advanced(advanced);
        desk.editor.BuildTree();
        nodes[advanced] = BareTree::Read(desk.tree);
    }
    bool advanced = true;
    rows.Measure({"tree build", "the same nodes inserted by hand", kAim}, {[&] {
                                                                               desk.editor.BuildTree();
                                                                               Paint(window);
                                                                           },
                                                                           [&] { tree.Build(nodes[advanced]); },
                                                                           [&] {
                                                                               advanced = !advanced;
                                                                               desk.root.Advanced(advanced);
                                                                           }});
    Require(tree.Count() == static_cast<int>(TreeView_GetCount(window)) && tree.Count() > 10, "The trees differ");
}

void Measure(const Rows& rows) {
    Desk desk;
    Bare bare(desk);
    MeasurePage(rows, desk, bare, "page switch, to the codes", L"Format1", L"CodeDef");
    MeasurePage(rows, desk, bare, "page switch, to one code", L"CodeDef", L"Code1");
    MeasurePage(rows, desk, bare, "page switch, to the next code", L"Code1", L"Code2");
    MeasurePage(rows, desk, bare, "page switch, to the groups", L"Code1", L"GroupDef");
    MeasurePage(rows, desk, bare, "page switch, to the standard format", L"GroupDef", L"FormatDef");
    MeasurePage(rows, desk, bare, "page switch, to an advanced format", L"FormatDef", L"Format1");
    MeasureTree(rows, desk, bare);
}

} // namespace
} // namespace orv::bench

int main(int argc, char** argv) {
    return orv::bench::Run(argc, argv, orv::bench::Measure);
}
