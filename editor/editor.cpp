#include "editor/editor.h"

#include <algorithm>

#include "editor/code_def_page.h"
#include "editor/context.h"
#include "editor/format_def_page.h"
#include "editor/node_key.h"
#include "editor/shell.h"
#include "model/save_concerns.h"
#include "text/texts.h"

namespace orv::editor {

using text::Id;
using text::Load;

Editor::Editor(device::DeviceState& state, RootAccess root, Commands& commands)
    : state_(state), root_(std::move(root)), commands_(commands), form_(state.platform.boxes, state.platform.pump),
      context_(std::make_unique<Context>(
          Context{state, root_, form_, [this] { SetModified(true); }, [this] { BuildTree(); },
                  [this](const controls::Widget& widget) { return windowOf ? windowOf(widget) : 0; }})),
      shell_(std::make_unique<Shell>(form_)) {
    pages_.push_back(std::make_unique<CodeDefPage>(*context_));
    pages_.push_back(std::make_unique<FormatDefPage>(*context_));
    // Nothing to edit before the values were read: what is typed into an empty page would be lost.
    for (const auto& page : pages_)
        page->Frame().SetEnabled(false);
    shell_->AddBottom();
    BindShell();
    SetModified(false);
}

Editor::~Editor() = default;

void Editor::BindShell() {
    shell_->tvw.onNodeClick = [this](const controls::Tree::Node& node) {
        context_->Handle(L"tvw_NodeClick", [&] { OnNodeClick(node.key); });
    };
    shell_->tvw.onCollapse = [this](const controls::Tree::Node& node) {
        context_->Handle(L"tvw_Collapse", [&] { shell_->tvw.Reveal(node.key); });
    };
    shell_->cmdApply->onClick = [this] { context_->Handle(L"cmdApply_Click", [this] { OnApply(); }); };
    shell_->cmdOK->onClick = [this] { context_->Handle(L"cmdOK_Click", [this] { OnOK(); }); };
    shell_->cmdCancel->onClick = [this] { context_->Handle(L"cmdCancel_Click", [this] { commands_.CloseAddOn(); }); };
    form_.onFocusChanged = [this](controls::Widget*) { ShowHint(); };
}

void Editor::OnApply() {
    state_.Support().CommitPanel(bottomPanelWindow ? bottomPanelWindow() : 0);
    if (!CommitPending() || !ValidateBeforeSave())
        return;
    commands_.Save(true);
}

void Editor::OnOK() {
    if (!CommitPending() || !ValidateBeforeSave())
        return;
    commands_.Save(false);
    commands_.CloseAddOn();
}

bool Editor::ValidateBeforeSave() {
    platform::MessageBox box;
    box.text = model::SaveQuestion(model::SaveConcerns(root_()));
    if (box.text.empty())
        return true;
    box.title = Load(Id::WarningTitle);
    box.icon = platform::Icon::Warning;
    box.buttons = platform::Buttons::YesNo;
    return state_.platform.boxes.Show(box) != platform::Answer::No;
}

void Editor::ShowFirstPage() {
    ShowPage(pages_.front()->Frame());
}

void Editor::BuildTree() {
    controls::Tree& tree = shell_->tvw;
    const controls::Tree::Batch batch(tree);
    const std::wstring selected = tree.SelectedKey();
    tree.Clear();
    AddNodes();
    if (!selected.empty() && tree.FindNode(selected))
        tree.SetSelectedKey(selected);
}

void Editor::AddNodes() {
    // The order is what the user reads from top to bottom: codes, groups between them and the formats.
    controls::Tree& tree = shell_->tvw;
    tree.AddNode({}, kCodesKey, Load(Id::NodeCodes));
    tree.AddNode({}, kFormatsKey, Load(Id::NodeFormats));
}

void Editor::SelectFirstNode() {
    if (shell_->tvw.Nodes().empty())
        return;
    const std::wstring key = shell_->tvw.Nodes().front().key;
    shell_->tvw.SetSelectedKey(key);
    context_->Handle(L"tvw_NodeClick", [&] { OnNodeClick(key); });
}

void Editor::OnNodeClick(const std::wstring& key) {
    CommitPending();
    shell_->tvw.ClearBold();
    ShowNode(key);
}

void Editor::ShowNode(const std::wstring& key) {
    const controls::Tree::Node* node = shell_->tvw.FindNode(key);
    if (!node)
        throw Error(error_number::kSubscript);
    const std::wstring caption = node->text;
    const NodeKind kind = ParseNodeKey(key).kind;
    const wchar_t* name = kind == NodeKind::Codes ? L"fraCodeDef" : kind == NodeKind::Formats ? L"fraFormatDef" : L"";
    const auto page =
        std::find_if(pages_.begin(), pages_.end(), [&](const auto& p) { return p->Frame().Name() == name; });
    if (page == pages_.end())
        throw Error(error_number::kSubscript);
    (*page)->LoadModel();
    LayoutPages();
    ShowPage((*page)->Frame());
    ShowCut(shell_->lblPage, caption);
}

void Editor::ShowPage(const controls::Widget& frame) {
    for (const auto& child : form_.Root().Children()) {
        const auto* page = dynamic_cast<const controls::Frame*>(child.get());
        if (page && page->IsPage())
            child->SetVisible(child.get() == &frame);
    }
}

void Editor::SetModified(bool modified) {
    modified_ = modified;
    shell_->cmdOK->SetEnabled(modified);
    shell_->cmdApply->SetEnabled(modified);
    if (modified && !saveReport_.empty()) {
        saveReport_.clear();
        ShowHint();
    }
}

bool Editor::NoInteractive() const {
    return shell_->chkNoInteractive->Checked();
}

bool Editor::CommitPending() {
    bool stored = true;
    for (const auto& page : pages_)
        stored = page->CommitPending() && stored;
    return stored;
}

void Editor::SetDesignFlag(bool flag) {
    shell_->fraDesign->SetEnabled(flag);
}

void Editor::ValuesRead() {
    readFrom_ = state_.current;
    hasRead_ = true;
    for (const auto& page : pages_) {
        page->Frame().SetEnabled(true);
        page->ForgetSetup();
    }
    RefreshDeviceLine();
}

void Editor::Layout(controls::Size client, const controls::TextMeasure& measure) {
    measure_ = &measure;
    pageArea_ = shell_->Layout(client, measure);
    LayoutPages();
}

void Editor::LayoutPages() {
    if (!measure_)
        return;
    for (const auto& page : pages_) {
        page->Frame().SetBounds(pageArea_);
        page->Layout(*measure_);
    }
}

void Editor::Resize(controls::Size client, const controls::TextMeasure& measure) {
    context_->Handle(L"UserControl_Resize", [&] { Layout(client, measure); });
}

} // namespace orv::editor
