#include "editor/group_page.h"

#include <algorithm>

#include "editor/node_key.h"
#include "editor/omissions.h"
#include "editor/shell.h"
#include "model/tree_labels.h"

namespace orv::editor {
namespace {

using controls::Grow;
using text::Id;
using text::Load;

constexpr std::int32_t kExpression = 191;
constexpr std::int32_t kGroupNoRead = 17;
constexpr std::int32_t kGroupMultipleRead = 327;
constexpr int kCodeRows = 6;

/// A part of the expression, which has no limits of its own.
void SetUpPart(controls::Widget& widget, Id meaning, bool present) {
    widget.SetHint(FieldHint(Load(meaning), kExpression, {.present = present, .description = {}}));
    widget.SetToolTip({});
    widget.SetEnabled(true);
    if (!present)
        DisableFor(widget, widget.Hint());
}

bool Refers(const model::Group& group, std::int32_t code) {
    const auto& codes = group.Codes();
    return std::find(codes.begin(), codes.end(), std::to_wstring(code)) != codes.end();
}

} // namespace

GroupPage::GroupPage(Context& context)
    : Page(context, L"fraGroupDef", Load(Id::NodeGroups)), tbs_(frame_.Add<controls::TabStrip>(L"tbs")),
      lblCodes_(frame_.Add<controls::Label>(L"lblCodes")), lvwCodes_(frame_.Add<controls::CheckList>(L"lvwCodes")),
      cmdGoGrpCode_(frame_.Add<controls::Button>(L"cmdGoGrpCode")), fraJoin_(frame_.Add<controls::Frame>(L"fraJoin")),
      optOR_(fraJoin_.Add<controls::OptionButton>(L"optOR")), optXOR_(fraJoin_.Add<controls::OptionButton>(L"optXOR")),
      chkOptional_(frame_.Add<controls::CheckBox>(L"chkOptional")),
      noRead_(AddField(L"mbeGroupLocalNoReadStr", Id::GroupNoRead, &model::Group::NoReadString)),
      multipleRead_(
          AddField(L"mbeGroupLocalMultipleReadStr", Id::GroupMultipleRead, &model::Group::MultipleReadString)),
      lblUnlisted_(frame_.Add<controls::Label>(controls::Kind::WarningStrip, L"lblUnlisted")),
      lblExpression_(frame_.Add<controls::Label>(L"lblExpression")),
      txtExpression_(frame_.Add<controls::TextBox>(L"txtExpression")) {
    Name();
    Arrange();
    AddHandlers();
}

std::unique_ptr<MBField> GroupPage::AddField(const wchar_t* name, Id caption, StringProperty property) {
    auto field = std::make_unique<MBField>(
        context_, frame_, name, controls::Widget::kNoIndex, true,
        [this, property](const std::wstring& text) { model::Store(Shown(), property, text); });
    field->Label().SetCaption(Load(caption));
    return field;
}

void GroupPage::Name() {
    tbs_.SetAccessibleName(Load(Id::HintGroupTabs));
    tbs_.SetHint(Load(Id::HintGroupTabs));
    lblCodes_.SetCaption(Load(Id::GroupCodes));
    lvwCodes_.SetAccessibleName(lblCodes_.PlainCaption());
    lvwCodes_.SetLeastRows(kCodeRows);
    cmdGoGrpCode_.SetCaption(Load(Id::GroupGoToCode));
    cmdGoGrpCode_.SetHint(Load(Id::HintGroupGoToCode));
    fraJoin_.SetCaption(Load(Id::GroupJoin));
    fraJoin_.SetGroupBox(true);
    optOR_.SetCaption(Load(Id::GroupOr));
    optXOR_.SetCaption(Load(Id::GroupXor));
    chkOptional_.SetCaption(Load(Id::GroupOptional));
    lblUnlisted_.SetElides(true);
    lblExpression_.SetCaption(Load(Id::GroupExpression));
    txtExpression_.SetAccessibleName(lblExpression_.PlainCaption());
    txtExpression_.SetHint(Load(Id::HintGroupExpression));
}

void GroupPage::Arrange() {
    auto strings = std::make_unique<controls::Grid>(3);
    for (MBField* field : {noRead_.get(), multipleRead_.get()}) {
        strings->Add(Cell(field->Label())).Skip().Skip();
        strings->Add(Cell(field->Box(), Grow::Across)).Add(Cell(field->Names())).Add(Cell(field->Count()));
    }
    auto join = controls::Row(controls::Boxed(Cell(optOR_), Cell(optXOR_), controls::Spring(Grow::Across)), 24);
    auto codes =
        controls::Column(controls::Boxed(Cell(lblCodes_), Cell(lvwCodes_, Grow::Both), Cell(cmdGoGrpCode_)), 4);
    auto others = controls::Column(controls::Boxed(controls::Group(fraJoin_, std::move(join)), Cell(chkOptional_),
                                                   std::move(strings), controls::Spring(Grow::Down)));
    auto expression = controls::Row(controls::Boxed(Cell(lblExpression_), Cell(txtExpression_, Grow::Across)));
    layout_ = controls::Column(controls::Boxed(Cell(tbs_, Grow::Across),
                                               controls::Row(controls::Boxed(std::move(codes), std::move(others)), 16),
                                               Cell(lblUnlisted_, Grow::Across), std::move(expression)));
}

template <typename Action>
void GroupPage::Change(const wchar_t* handler, Action action) {
    context_.Edit(handler, [&] {
        model::Group& group = Shown();
        action(group);
        context_.root().Codes().GroupsChanged();
        ShowExpression();
        context_.setNodeText(GroupKey(group.Index()), model::NodeText(group));
        context_.setCaption(Caption({}));
    });
}

void GroupPage::AddHandlers() {
    tbs_.onSelecting = [this] { return CommitPending(); };
    tbs_.onSelect = [this](int tab) { context_.Handle(L"tbs_Click", [&] { OnTab(tab); }); };
    lvwCodes_.onCheck = [this](int row, bool checked) { OnCheck(row, checked); };
    lvwCodes_.onSelect = [this](int) { cmdGoGrpCode_.SetEnabled(true); };
    lvwCodes_.onActivate = [this](int row) { context_.Handle(L"lvwCodes_DblClick", [&] { GoToCode(row); }); };
    cmdGoGrpCode_.onClick = [this] {
        context_.Handle(L"cmdGoGrpCode_Click", [this] { GoToCode(lvwCodes_.Selected()); });
    };
    optOR_.onClick = [this] {
        Change(L"optOR_Click", [](model::Group& group) { group.Multiple(model::kJoinedByOr); });
    };
    optXOR_.onClick = [this] {
        Change(L"optXOR_Click", [](model::Group& group) { group.Multiple(model::kJoinedByXor); });
    };
    chkOptional_.onClick = [this] {
        Change(L"chkOptional_Click", [this](model::Group& group) { group.IsOptional(chkOptional_.Checked()); });
    };
}

void GroupPage::SetUp() {
    device::ParameterAccess access = context_.Access();
    const bool present = access.SetupFor(kExpression).present;
    SetUpPart(lvwCodes_, Id::HintGroupCodes, present);
    SetUpPart(optOR_, Id::HintGroupJoin, present);
    SetUpPart(optXOR_, Id::HintGroupJoin, present);
    SetUpPart(chkOptional_, Id::HintGroupOptional, present);
    noRead_->SetUp(Load(Id::HintGroupNoRead), kGroupNoRead, access.SetupFor(kGroupNoRead));
    multipleRead_->SetUp(Load(Id::HintGroupMultipleRead), kGroupMultipleRead, access.SetupFor(kGroupMultipleRead));
}

void GroupPage::Fill() {
    FillTabs();
    FillCodes();
    const bool any = Groups().Count() > 0;
    frame_.SetEnabled(any || Index() > 0);
    if (any && Index() == 0)
        SetIndex(1);
    if (Index() > 0)
        ShowGroup();
    else
        ShowNothing();
}

void GroupPage::FillTabs() {
    std::vector<controls::TabStrip::Tab> tabs;
    for (const model::Group& group : Groups())
        tabs.push_back({GroupKey(group.Index()), Load(Id::GroupTab) + std::to_wstring(group.Index())});
    tbs_.SetTabs(std::move(tabs));
}

void GroupPage::FillCodes() {
    std::vector<controls::CheckList::Row> rows;
    for (const model::CodeDef& code : context_.root().Codes())
        if (code.Enabled())
            rows.push_back({code.Description(), code.Index()});
    lvwCodes_.SetRows(std::move(rows));
    cmdGoGrpCode_.SetEnabled(lvwCodes_.Selected() >= 0);
}

void GroupPage::ShowGroup() {
    const model::Group& group = Shown();
    tbs_.SetSelected(Index() - 1);
    // A group of which the device never said how it is joined shows neither.
    optOR_.SetChosen(group.Multiple() == model::kJoinedByOr);
    optXOR_.SetChosen(group.Multiple() == model::kJoinedByXor);
    for (int row = 0; row < static_cast<int>(lvwCodes_.Rows().size()); ++row)
        lvwCodes_.SetChecked(row, Refers(group, lvwCodes_.Rows()[static_cast<std::size_t>(row)].data));
    chkOptional_.SetChecked(group.IsOptional());
    ShowField(*noRead_, group, &model::Group::NoReadString);
    ShowField(*multipleRead_, group, &model::Group::MultipleReadString);
    ShowExpression();
}

void GroupPage::ShowNothing() {
    optOR_.SetChosen(false);
    optXOR_.SetChosen(false);
    chkOptional_.SetChecked(false);
    noRead_->Show({});
    multipleRead_->Show({});
    txtExpression_.SetText({});
    ShowCut(lblUnlisted_, {});
}

void GroupPage::ShowExpression() {
    txtExpression_.SetText(Groups().GetExpression(true));
    ShowCut(lblUnlisted_, UnlistedReferences());
}

std::wstring GroupPage::UnlistedReferences() {
    std::wstring list;
    int count = 0;
    for (const std::wstring& reference : Shown().Codes()) {
        // A reference is a text of the device's and may be no number at all.
        const model::CodeDef* code = context_.root().Codes().Code(L"Code" + reference);
        if (code && code->Enabled())
            continue;
        list += ++count == 1 ? Load(Id::GroupAlsoRefers) : L", ";
        list += Load(code ? Id::GroupDisabledCode : Id::GroupUnknownCode) + reference;
    }
    return count == 0 ? list : list + Load(count == 1 ? Id::GroupRemovesIt : Id::GroupRemovesThem);
}

std::wstring GroupPage::Caption(const std::wstring&) {
    // The root shows its first group, so its own text is never the caption.
    return Index() == 0 ? Load(Id::GroupsNone) : Load(Id::CaptionGroup) + model::NodeText(Shown());
}

void GroupPage::OnTab(int tab) {
    SetIndex(tab + 1);
    ShowGroup();
    context_.selectNode(GroupKey(Shown().Index()));
    context_.setCaption(Caption({}));
}

void GroupPage::OnCheck(int row, bool checked) {
    Change(L"lvwCodes_ItemCheck", [&](model::Group& group) {
        // From scratch, in the order of the list: references that are not listed go with this. That is meant.
        group.ClearCodes();
        for (const std::int32_t code : lvwCodes_.CheckedData())
            group.AddCode(std::to_wstring(code));
        if (!group.Codes().empty() || checked)
            return;
        context_.state.platform.boxes.Beep();
        lvwCodes_.SetChecked(row, true);
        group.AddCode(std::to_wstring(lvwCodes_.Rows()[static_cast<std::size_t>(row)].data));
    });
}

void GroupPage::GoToCode(int row) {
    if (row >= 0)
        context_.jumpTo(CodeKey(lvwCodes_.Rows()[static_cast<std::size_t>(row)].data));
}

std::vector<std::wstring> GroupPage::Remarks() {
    const model::Codes& codes = context_.root().Codes();
    Omissions omissions(context_.state);
    codes.SaveExpression(omissions.Queue());
    codes.SaveGroups(omissions.Queue());
    return omissions.Strips(context_.root());
}

bool GroupPage::CommitPending() {
    return CommitAll(*noRead_, *multipleRead_);
}

} // namespace orv::editor
