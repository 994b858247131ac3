// The tree of definitions, and which page belongs to which node.
#include "controls/number_box.h"
#include "editor/context.h"
#include "editor/editor.h"
#include "editor/fields.h"
#include "editor/node_key.h"
#include "editor/page.h"
#include "editor/shell.h"
#include "model/tree_labels.h"
#include "text/texts.h"

namespace orv::editor {
namespace {

using text::Id;
using text::Load;

controls::NumberBox* WrongNumber(controls::Widget& below) {
    for (const auto& child : below.Children()) {
        if (!child->Visible())
            continue;
        auto* box = dynamic_cast<controls::NumberBox*>(child.get());
        if (box && box->Enabled() && !box->Valid())
            return box;
        if (controls::NumberBox* found = WrongNumber(*child))
            return found;
    }
    return nullptr;
}

} // namespace

void Editor::ShowFirstPage() {
    ShowPage(pages_.front()->Frame());
}

void Editor::BuildTree() {
    controls::Tree& tree = shell_->tvw;
    const controls::Tree::Batch batch(tree);
    const std::wstring selected = tree.SelectedKey();
    controls::Tree::Contents before = tree.Exchange({});
    try {
        AddNodes();
        if (!selected.empty() && tree.FindNode(selected))
            tree.SetSelectedKey(selected);
    } catch (...) {
        // A tree of which half is missing leads nowhere.
        tree.Exchange(std::move(before));
        throw;
    }
    context_->doubtful = false;
}

void Editor::AddNodes() {
    // The order is what the user reads from top to bottom: codes, groups between them and the formats.
    controls::Tree& tree = shell_->tvw;
    const model::OutFormatConfig& root = root_();
    tree.AddNode({}, kCodesKey, Load(Id::NodeCodes));
    std::int32_t position = 0;
    for (const model::CodeDef& code : root.Codes())
        tree.AddNode(kCodesKey, CodeKey(++position), model::NodeText(code));
    if (model::ShowsGroups(root)) {
        tree.AddNode({}, kGroupsKey, Load(Id::NodeGroups));
        for (const model::Group& group : root.Codes().Groups())
            tree.AddNode(kGroupsKey, GroupKey(group.Index()), model::NodeText(group));
    }
    tree.AddNode({}, kFormatsKey, Load(Id::NodeFormats));
    if (!model::ShowsFormats(root))
        return;
    position = 0;
    for (const model::AdvancedFormat& format : root.AdvancedFormats()) {
        ++position;
        tree.AddNode(kFormatsKey, FormatKey(position), model::NodeText(format, position));
    }
}

void Editor::SelectFirstNode() {
    if (shell_->tvw.Nodes().empty())
        return;
    const std::wstring key = shell_->tvw.Nodes().front().key;
    shell_->tvw.SetSelectedKey(key);
    context_->Handle(L"tvw_NodeClick", [&] { OnNodeClick(key); });
}

bool Editor::StaysForWrongNumber() {
    controls::NumberBox* wrong = WrongNumber(form_.Root());
    if (!wrong)
        return false;
    SelectNode(shownKey_);
    form_.SetFocus(*wrong);
    wrong->Commit(); // says what is wrong
    return true;
}

void Editor::OnNodeClick(const std::wstring& key) {
    if (key != shownKey_ && StaysForWrongNumber())
        return;
    CommitPending();
    // A handler that failed may have changed the nodes before it could show them.
    if (context_->doubtful)
        BuildTree();
    shell_->tvw.ClearBold();
    ShowNode(shell_->tvw.FindNode(key) ? key : shell_->tvw.Nodes().front().key);
}

void Editor::JumpTo(const std::wstring& key) {
    CommitPending();
    const std::wstring from = shell_->tvw.SelectedKey();
    shell_->tvw.ClearBold();
    shell_->tvw.SetSelectedKey(key);
    form_.SetFocus(shell_->tvw); // as after a click there; what had the focus is about to be hidden
    ShowNode(key);
    if (!from.empty() && from != key)
        shell_->tvw.SetBold(from, true);
}

void Editor::SelectNode(const std::wstring& key) {
    if (shell_->tvw.FindNode(key))
        shell_->tvw.SetSelectedKey(key);
}

Page& Editor::PageOf(NodeKind kind) {
    switch (kind) {
    case NodeKind::Codes:
        return *pages_[0];
    case NodeKind::Code:
        return *pages_[1];
    case NodeKind::Groups:
    case NodeKind::Group:
        return *pages_[2];
    case NodeKind::Formats:
        return *pages_[3];
    case NodeKind::Format:
        return *pages_[4];
    case NodeKind::Unknown:
        break;
    }
    throw Error(error_number::kSubscript);
}

void Editor::ShowNode(const std::wstring& key) {
    const controls::Tree::Node* node = shell_->tvw.FindNode(key);
    if (!node)
        throw Error(error_number::kSubscript);
    const std::wstring text = node->text;
    const NodeKey parsed = ParseNodeKey(key);
    Page& page = PageOf(parsed.kind);
    page.Open(parsed.index);
    if (measure_) { // the other pages are laid out when they are opened
        page.Frame().SetBounds(pageArea_);
        page.Layout(*measure_);
    }
    ShowPage(page.Frame());
    shownKey_ = key;
    ShowCut(shell_->lblPage, page.Caption(text));
}

void Editor::ShowPage(const controls::Widget& frame) {
    for (const auto& child : form_.Root().Children()) {
        const auto* page = dynamic_cast<const controls::Frame*>(child.get());
        if (page && page->IsPage())
            child->SetVisible(child.get() == &frame);
    }
}

} // namespace orv::editor
