#include "editor/editor.h"

#include "editor/about_dialog.h"
#include "editor/adv_format_page.h"
#include "editor/code_def_page.h"
#include "editor/code_page.h"
#include "editor/context.h"
#include "editor/fields.h"
#include "editor/format_def_page.h"
#include "editor/group_page.h"
#include "editor/guide.h"
#include "editor/shell.h"
#include "model/save_concerns.h"
#include "text/texts.h"

namespace orv::editor {

using text::Id;
using text::Load;

Editor::Editor(device::DeviceState& state, RootAccess root, CatalogueAccess catalogue, Commands& commands)
    : state_(state), root_(std::move(root)), catalogue_(std::move(catalogue)), commands_(commands),
      form_(state.platform.boxes, state.platform.pump), context_(MakeContext()), shell_(std::make_unique<Shell>(form_)),
      guide_(std::make_unique<Guide>(state)) {
    AddPages();
    shell_->AddBottom();
    BindShell();
    SetModified(false);
}

std::unique_ptr<Context> Editor::MakeContext() {
    return std::make_unique<Context>(Context{
        .state = state_,
        .commands = commands_,
        .root = root_,
        .catalogue = catalogue_,
        .form = form_,
        .changed = [this] { SetModified(true); },
        .rebuildTree = [this] { BuildTree(); },
        .refreshStrip = [this] { RefreshStrip(); },
        .setNodeText =
            [this](const std::wstring& key, const std::wstring& text) {
                const controls::Tree::Node* node = shell_->tvw.FindNode(key);
                if (node && node->text != text)
                    shell_->tvw.SetText(key, text);
            },
        .selectNode =
            [this](const std::wstring& key) {
                SelectNode(key);
                ShownIs(key);
            },
        .setCaption = [this](const std::wstring& caption) { ShowCut(shell_->lblPage, caption); },
        .jumpTo = [this](const std::wstring& key) { JumpTo(key); },
        .layOut = [this] { LayoutPages(); },
        .refuse = [this](const std::wstring& reason) { Refuse(reason); },
        .runDialog =
            [this](controls::Dialog& dialog) {
                if (runDialog)
                    runDialog(dialog);
            },
        .windowOf = [this](const controls::Widget& widget) { return windowOf ? windowOf(widget) : 0; },
    });
}

void Editor::AddPages() {
    // Reading order, and the order in which PageOf names them.
    pages_.push_back(std::make_unique<CodeDefPage>(*context_));
    pages_.push_back(std::make_unique<CodePage>(*context_));
    pages_.push_back(std::make_unique<GroupPage>(*context_));
    pages_.push_back(std::make_unique<FormatDefPage>(*context_));
    pages_.push_back(std::make_unique<AdvFormatPage>(*context_));
    // Nothing to edit before the values were read: what is typed into an empty page would be lost.
    for (const auto& page : pages_)
        page->Frame().SetEnabled(false);
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
    shell_->cmdAbout->onClick = [this] { context_->Handle(L"cmdAbout_Click", [this] { ShowAbout(*context_); }); };
    shell_->cmdGuide->onClick = [this] { context_->Handle(L"cmdGuide_Click", [this] { guide_->Open(); }); };
    shell_->cmdReadAgain->onClick = [this] { context_->Handle(L"cmdReadAgain_Click", [this] { OnReadAgain(); }); };
    form_.onFocusChanged = [this](controls::Widget*) {
        refusal_.clear();
        ShowHint();
    };
}

void Editor::OnApply() {
    state_.Support().CommitPanel(bottomPanelWindow ? bottomPanelWindow() : 0);
    if (!CommitOrShow() || !ValidateBeforeSave())
        return;
    commands_.Save(true);
}

void Editor::OnOK() {
    if (!CommitOrShow() || !ValidateBeforeSave())
        return;
    commands_.Save(false);
    commands_.CloseAddOn();
}

void Editor::OnReadAgain() {
    if (!CommitPending() || modified_) {
        const platform::MessageBox question{.text = Load(Id::ReadAgainQuestion),
                                            .title = Load(Id::WarningTitle),
                                            .icon = platform::Icon::Warning,
                                            .buttons = platform::Buttons::YesNo,
                                            .preset = platform::Answer::No};
        if (state_.platform.boxes.Show(question) != platform::Answer::Yes)
            return;
    }
    commands_.ReadAgain();
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

void Editor::SetModified(bool modified) {
    modified_ = modified;
    shell_->cmdOK->SetEnabled(modified);
    shell_->cmdApply->SetEnabled(modified);
    RefreshStrip();
    if (modified && !(saveReport_.empty() && refusal_.empty())) {
        saveReport_.clear();
        refusal_.clear();
        ShowHint();
    }
}

bool Editor::NoInteractive() const {
    return shell_->chkNoInteractive->Checked();
}

bool Editor::CommitPending() {
    return CommitPages() == nullptr;
}

Page* Editor::CommitPages() {
    Page* failed = nullptr;
    for (const auto& page : pages_)
        if (!page->CommitPending() && !failed)
            failed = page.get();
    return failed;
}

bool Editor::CommitOrShow() {
    Page* failed = CommitPages();
    if (failed)
        ShowPending(*failed);
    return !failed;
}

void Editor::SetDesignFlag(bool flag) {
    shell_->fraDesign->SetEnabled(flag);
}

void Editor::ValuesRead() {
    readFrom_ = state_.current;
    hasRead_ = true;
    shell_->tvw.SetEnabled(true);
    for (const auto& page : pages_) {
        page->Frame().SetEnabled(true);
        page->ForgetSetup();
    }
    RefreshDeviceLine();
}

void Editor::ValuesLost() {
    hasRead_ = false;
    shell_->tvw.SetEnabled(false);
    for (const auto& page : pages_) {
        page->Frame().DropPendingInside();
        page->Frame().SetEnabled(false);
    }
    SetModified(false);
}

void Editor::Layout(controls::Size client, const controls::TextMeasure& measure) {
    measure_ = &measure;
    pageArea_ = shell_->Layout(client, measure);
    LayoutPages();
}

void Editor::LayoutPages() {
    for (const auto& page : pages_)
        LayOutPage(*page);
}

void Editor::Resize(controls::Size client, const controls::TextMeasure& measure) {
    context_->Handle(L"UserControl_Resize", [&] { Layout(client, measure); });
}

} // namespace orv::editor
