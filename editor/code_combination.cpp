#include "editor/code_combination.h"

#include <algorithm>

#include "model/group_references.h"
#include "model/tree_labels.h"
#include "text/texts.h"

namespace orv::editor {
namespace {

using controls::OptionButton;
using text::Id;
using text::Load;

constexpr std::int32_t kCombination = 72;
constexpr std::int32_t kGroupNoRead = 17; ///< has an element for each group that the device holds
constexpr std::size_t kOptionColumns = 2;
constexpr wchar_t kFirstCode[] = L"1";

/// Up to `count`, all of them or none.
void AddGroups(model::Groups& groups, std::int32_t count) {
    const std::int32_t before = groups.Count();
    try {
        while (groups.Count() < count) {
            model::Group& group = groups.Add();
            group.Multiple(model::kJoinedByXor);
            group.AddCode(kFirstCode);
        }
    } catch (...) {
        while (groups.Count() > before)
            groups.Remove(groups.Count());
        throw;
    }
}

} // namespace

CodeCombination::CodeCombination(Context& context, controls::Widget& page, std::function<void()> chosen)
    : context_(context), chosen_(std::move(chosen)), fraCodeComb_(page.Add<controls::Frame>(L"fraCodeComb")),
      fraCodeCombOptions_(fraCodeComb_.Add<controls::Frame>(L"fraCodeCombOptions")),
      lblCodeComb_(fraCodeComb_.Add<controls::Label>(L"lblCodeComb")),
      lblSlotsCount_(fraCodeComb_.Add<controls::Label>(L"lblSlotsCount")),
      cboSlotsCount_(fraCodeComb_.Add<controls::ComboBox>(L"cboSlotsCount")) {
    fraCodeComb_.SetCaption(Load(Id::CodeCombination));
    fraCodeComb_.SetGroupBox(true);
    fraCodeCombOptions_.SetAccessibleName(Load(Id::CodeCombination));
    lblCodeComb_.SetVisible(false);
    lblSlotsCount_.SetCaption(Load(Id::GroupCount));
    cboSlotsCount_.onClick = [this] { context_.Handle(L"cboSlotsCount_Click", [this] { ChangeCount(); }); };
}

controls::LayoutPtr CodeCombination::Layout() {
    auto options = std::make_unique<controls::Grid>(kOptionColumns, 16);
    for (OptionButton* option : used_)
        options->Add(Cell(*option));
    auto shown = used_.empty() ? Cell(lblCodeComb_) : controls::Group(fraCodeCombOptions_, std::move(options), 0);
    auto row = controls::Boxed(std::move(shown), controls::Spring(controls::Grow::Across), Cell(lblSlotsCount_),
                               Cell(cboSlotsCount_));
    return controls::Group(fraCodeComb_, controls::Row(std::move(row)));
}

controls::OptionButton& CodeCombination::Option(std::int32_t value) {
    const auto found =
        std::find_if(made_.begin(), made_.end(), [value](const OptionButton* o) { return o->Index() == value; });
    if (found != made_.end())
        return **found;
    made_.reserve(made_.size() + 1); // a button that nobody knows would show for ever
    auto& option = fraCodeCombOptions_.Add<OptionButton>(L"optCodeComb", value);
    option.onClick = [this, value] { context_.Edit(L"optCodeComb_Click", [this, value] { Choose(value); }); };
    made_.push_back(&option);
    return option;
}

void CodeCombination::SetUp() {
    SetUpOptions();
    SetUpCount();
}

void CodeCombination::SetUpOptions() {
    const device::ControlSetup setup = context_.Access().SetupFor(kCombination);
    device::ControlSetup plain = setup;
    plain.description.hasRange = false;
    const std::wstring hint = FieldHint(Load(Id::CodeCombination), kCombination, plain);
    used_.clear();
    for (OptionButton* option : made_)
        option->SetVisible(false);
    for (const device::Choice& choice : setup.description.choices) {
        OptionButton& option = Option(choice.value);
        if (std::find(used_.begin(), used_.end(), &option) != used_.end())
            continue; // listed twice
        used_.push_back(&option);
        option.SetCaption(CaptionOf(choice.label));
        option.SetHint(hint);
        option.SetVisible(true);
    }
    fraCodeCombOptions_.SetVisible(!used_.empty());
    lblCodeComb_.SetCaption(CaptionOf(hint));
    lblCodeComb_.SetVisible(used_.empty());
}

void CodeCombination::SetUpCount() {
    device::ControlSetup setup = context_.Access().SetupFor(kGroupNoRead);
    const std::int32_t most = context_.Access().ElementCount(kGroupNoRead, model::kCodesAccessLevel);
    std::vector<controls::ComboBox::Entry> entries;
    for (std::int32_t count = 0; count <= most; ++count)
        entries.push_back({std::to_wstring(count), count});
    setup.description = {};
    setup.description.hasRange = true;
    setup.description.maximum = most;
    countPresent_ = setup.present;
    countHint_ = FieldHint(Load(Id::HintGroupCount), kGroupNoRead, setup);
    cboSlotsCount_.SetEntries(std::move(entries));
    cboSlotsCount_.SetAccessibleName(Load(Id::HintGroupCount));
}

void CodeCombination::Fill() {
    const model::Codes& codes = context_.root().Codes();
    const bool unread = IsUnread(codes, &model::Codes::Combination);
    for (OptionButton* option : used_)
        option->SetChosen(!unread && option->Index() == codes.Combination());
    ShowCount();
    SetFieldUsable(cboSlotsCount_, countHint_, countPresent_, model::ShowsGroups(context_.root()),
                   Load(Id::ReasonGroupCount));
}

void CodeCombination::ShowCount() {
    const model::Codes& codes = context_.root().Codes();
    if (codes.ExpressionIsRead())
        cboSlotsCount_.SelectData(codes.Groups().Count());
    else
        cboSlotsCount_.SetSelected(-1); // any number is a change: it takes the place of what is kept
}

void CodeCombination::Choose(std::int32_t value) {
    model::Store(context_.root().Codes(), &model::Codes::Combination, value);
    chosen_();
    context_.rebuildTree();
}

void CodeCombination::ChangeCount() {
    const std::int32_t count = cboSlotsCount_.SelectedData();
    if (!RemoveItemsAbove(count)) {
        ShowCount();
        return;
    }
    model::Groups& groups = context_.root().Codes().Groups();
    while (groups.Count() > count)
        groups.Remove(groups.Count());
    AddGroups(groups, count);
    context_.root().Codes().GroupsChanged();
    context_.changed();
    context_.rebuildTree();
}

bool CodeCombination::RemoveItemsAbove(std::int32_t count) {
    const model::OutFormatConfig& before = context_.root();
    if (count >= before.Codes().Groups().Count() || !model::AnyItemRefersToGroupAbove(before, count))
        return true;
    if (!model::ItemsOfGroupsAboveCanGo(before, count)) {
        context_.form.Boxes().Beep();
        context_.refuse(Load(Id::ReasonGroupItems));
        return false;
    }
    const platform::MessageBox question{.text = Load(Id::RemoveGroupItems),
                                        .title = Load(Id::WarningTitle),
                                        .icon = platform::Icon::Warning,
                                        .buttons = platform::Buttons::YesNo,
                                        .preset = platform::Answer::No};
    if (context_.form.Boxes().Show(question) != platform::Answer::Yes)
        return false;
    model::RemoveItemsOfGroupsAbove(context_.root(), count);
    return true;
}

} // namespace orv::editor
