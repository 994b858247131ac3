// The tree of definitions, and which page belongs to which node.
#include "controls/mb_edit.h"
#include "controls/number_box.h"
#include "editor/context.h"
#include "editor/editor.h"
#include "editor/fields.h"
#include "editor/node_key.h"
#include "editor/page.h"
#include "editor/shell.h"
#include "model/tree_labels.h"
#include "text/filled.h"

namespace orv::editor {
namespace {

using text::Id;
using text::Load;

bool Keeps(const controls::Widget& widget) {
    if (!widget.Enabled())
        return false;
    if (const auto* number = dynamic_cast<const controls::NumberBox*>(&widget))
        return number->Pending();
    const auto* bytes = dynamic_cast<const controls::MBEdit*>(&widget);
    return bytes && bytes->Pending();
}

/// The first field below that holds what is not stored.
controls::Widget* PendingField(controls::Widget& below) {
    for (const auto& child : below.Children()) {
        if (!child->Visible())
            continue;
        if (Keeps(*child))
            return child.get();
        if (controls::Widget* found = PendingField(*child))
            return found;
    }
    return nullptr;
}

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

/// An item may refer to a group or a code that is not there.
std::wstring NoSuchNode(const std::wstring& key) {
    const NodeKey parsed = ParseNodeKey(key);
    const std::wstring number = std::to_wstring(parsed.index);
    return parsed.kind == NodeKind::Group ? text::Filled(Id::NoSuchGroup, {{L"group", number}})
                                          : text::Filled(Id::NoSuchCode, {{L"code", number}});
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
    if (StaysForWrongNumber())
        return;
    CommitPending();
    if (!shell_->tvw.FindNode(key)) {
        form_.Boxes().Beep();
        Refuse(NoSuchNode(key));
        return;
    }
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
    LayOutPage(page); // the other pages are laid out when they are opened
    ShowPage(page.Frame());
    ShownIs(key);
    ShowCut(shell_->lblPage, page.Caption(text));
}

void Editor::ShownIs(const std::wstring& key) {
    shownKey_ = key;
    PageOf(ParseNodeKey(key).kind).SetKey(key);
    RefreshStrip();
}

void Editor::LayOutPage(Page& page) {
    if (!measure_)
        return;
    page.Frame().SetBounds(pageArea_);
    page.Layout(*measure_);
}

void Editor::Reopen() {
    if (!hasRead_ || shownKey_.empty())
        return;
    const bool stored = CommitPending();
    ShowPage(PageOf(ParseNodeKey(shownKey_).kind).Frame()); // also where opening it fails
    if (!DeviceDiffers()) { // what is shown is not the other one's, which may not even exist
        for (const auto& page : pages_)
            page->ForgetSetup();
        if (stored)
            ShowNode(shell_->tvw.FindNode(shownKey_) ? shownKey_ : shell_->tvw.Nodes().front().key);
    }
    SelectNode(shownKey_);
    RefreshDeviceLine();
}

void Editor::ShowPending(Page& page) {
    if (!page.Frame().Visible()) {
        LayOutPage(page);
        ShowPage(page.Frame());
        SelectNode(page.Key());
        ShownIs(page.Key());
        ShowCut(shell_->lblPage, page.Caption(shell_->tvw.FindNode(page.Key()) ? shell_->tvw.FindNode(page.Key())->text
                                                                               : std::wstring()));
    }
    controls::Widget* field = PendingField(page.Frame());
    if (!field)
        return;
    form_.SetFocus(*field);
    if (auto* number = dynamic_cast<controls::NumberBox*>(field); number && !number->Valid())
        number->Commit(); // says what is wrong
}

void Editor::ShowPage(const controls::Widget& frame) {
    for (const auto& child : form_.Root().Children()) {
        const auto* page = dynamic_cast<const controls::Frame*>(child.get());
        if (page && page->IsPage())
            child->SetVisible(child.get() == &frame);
    }
}

} // namespace orv::editor
