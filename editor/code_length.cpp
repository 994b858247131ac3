#include "editor/code_length.h"

#include <cstdint>
#include <limits>

namespace orv::editor {
namespace {

using text::Id;
using text::Load;
using Number = NumberField::Number;

constexpr std::int32_t kMinimum = 3;
constexpr std::int32_t kMaximum = 4;
constexpr std::int32_t kFixed = 70;
constexpr int kIndent = 16;

/// The boxes let nothing past the type.
std::int16_t Short(Number number) {
    return static_cast<std::int16_t>(number);
}

} // namespace

CodeLength::CodeLength(Context& context, controls::Widget& page, CodeFields::Slot slot)
    : context_(context), slot_(std::move(slot)), fraLength_(page.Add<controls::Frame>(L"fraLength")),
      optLengthFixed_(fraLength_.Add<controls::OptionButton>(L"optLengthFixed")),
      length_(context, fraLength_, L"txtLength",
              [this](Number number) {
                  model::Store(slot_(), &model::CodeDef::Length, Short(number));
                  return true;
              }),
      optLengthVariable_(fraLength_.Add<controls::OptionButton>(L"optLengthVariable")),
      limits_(
          context, fraLength_, L"txtMinLength",
          [this](Number number) {
              slot_().ChooseLength(0, Short(number), 0);
              ShowField(limits_.Least(), slot_(), &model::CodeDef::MinLength); // a 0 is not taken
          },
          L"txtMaxLength",
          [this](Number number) {
              slot_().ChooseLength(0, 0, Short(number));
              ShowField(limits_.Greatest(), slot_(), &model::CodeDef::MaxLength);
          }) {
    fraLength_.SetCaption(Load(Id::CodeLength));
    fraLength_.SetGroupBox(true);
    optLengthFixed_.SetCaption(Load(Id::LengthFixed));
    optLengthVariable_.SetCaption(Load(Id::LengthVariable));
    length_.Label().SetCaption(Load(Id::FixedLength));
    limits_.Least().Label().SetCaption(Load(Id::MinimumLength));
    limits_.Greatest().Label().SetCaption(Load(Id::MaximumLength));
    optLengthFixed_.onClick = [this] { context_.Edit(L"optLengthFixed_Click", [this] { ChooseFixed(); }); };
    optLengthVariable_.onClick = [this] { context_.Edit(L"optLengthVariable_Click", [this] { ChooseVariable(); }); };
}

controls::LayoutPtr CodeLength::Layout() {
    auto grid = std::make_unique<controls::Grid>(6, kIndent / 2);
    grid->Add(Cell(optLengthFixed_)).Add(Cell(length_.Label())).Add(Cell(length_.Box())).Skip().Skip();
    grid->Add(controls::Spring(controls::Grow::Across));
    grid->Add(Cell(optLengthVariable_)).Add(Cell(limits_.Least().Label())).Add(Cell(limits_.Least().Box()));
    grid->Add(Cell(limits_.Greatest().Label())).Add(Cell(limits_.Greatest().Box()));
    return controls::Group(fraLength_, std::move(grid));
}

void CodeLength::SetUp() {
    constexpr Number kGreatest = std::numeric_limits<std::int16_t>::max();
    device::ParameterAccess access = context_.Access();
    const device::ControlSetup minimum = access.SetupFor(kMinimum);
    const device::ControlSetup maximum = access.SetupFor(kMaximum);
    length_.SetUp(Load(Id::HintFixedLength), kMinimum, minimum, 0, kGreatest);
    limits_.Least().SetUp(Load(Id::HintMinimumLength), kMinimum, minimum, 0, kGreatest);
    limits_.Greatest().SetUp(Load(Id::HintMaximumLength), kMaximum, maximum, 0, kGreatest);
    // A fixed length moves into minimum and maximum when it is saved: what one of them lacks would be lost.
    canBeFixed_ = (minimum.present && maximum.present) || !access.SetupFor(kFixed).present;
    for (controls::OptionButton* option : {&optLengthFixed_, &optLengthVariable_})
        SetFieldUsable(*option, option->PlainCaption(), true, canBeFixed_, Load(Id::ReasonLengthParts));
}

void CodeLength::Show(const model::CodeDef& slot) {
    const bool unread = IsUnread(slot, &model::CodeDef::Length);
    optLengthFixed_.SetChosen(!unread && slot.Length() > 0);
    optLengthVariable_.SetChosen(!unread && slot.Length() < 1);
    ShowField(length_, slot, &model::CodeDef::Length);
    ShowLimits(slot);
    EnableNumbers();
}

void CodeLength::ShowLimits(const model::CodeDef& slot) {
    ShowField(limits_.Least(), slot, &model::CodeDef::MinLength);
    ShowField(limits_.Greatest(), slot, &model::CodeDef::MaxLength);
}

void CodeLength::EnableNumbers() {
    const std::wstring reason = canBeFixed_ ? std::wstring() : Load(Id::ReasonLengthParts);
    length_.SetUsable(canBeFixed_ && optLengthFixed_.Chosen(), canBeFixed_ ? Load(Id::ReasonFixedLength) : reason);
    limits_.SetUsable(canBeFixed_ && optLengthVariable_.Chosen(),
                      canBeFixed_ ? Load(Id::ReasonVariableLength) : reason);
}

void CodeLength::ChooseFixed() {
    model::CodeDef& slot = slot_();
    EnableNumbers();
    if (!length_.Box().Known())
        return; // nothing is fixed before there is a length
    const Number length = length_.Box().Value();
    slot.ChooseLength(Short(length), slot.MinLength(), slot.MaxLength());
    length_.Show(length);
    ShowLimits(slot);
}

void CodeLength::ChooseVariable() {
    model::CodeDef& slot = slot_();
    // Wrong text would stay behind where nobody can put it right.
    length_.Box().Revert();
    slot.ChooseLength(0, slot.MinLength(), slot.MaxLength());
    ShowLimits(slot);
    EnableNumbers();
}

bool CodeLength::CommitPending() {
    const bool stored = length_.CommitPending();
    return limits_.CommitPending() && stored;
}

} // namespace orv::editor
