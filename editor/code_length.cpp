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
                  slot_().Length(Short(number));
                  return true;
              }),
      optLengthVariable_(fraLength_.Add<controls::OptionButton>(L"optLengthVariable")),
      limits_(
          context, fraLength_, L"txtMinLength", [this](Number number) { slot_().SetLength(0, Short(number), 0); },
          L"txtMaxLength", [this](Number number) { slot_().SetLength(0, 0, Short(number)); }) {
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
    const device::ControlSetup minimum = context_.Access().SetupFor(kMinimum);
    const device::ControlSetup maximum = context_.Access().SetupFor(kMaximum);
    length_.SetUp(Load(Id::HintFixedLength), kMinimum, minimum, 0, kGreatest);
    limits_.Least().SetUp(Load(Id::HintMinimumLength), kMinimum, minimum, 0, kGreatest);
    limits_.Greatest().SetUp(Load(Id::HintMaximumLength), kMaximum, maximum, 0, kGreatest);
}

void CodeLength::Show(const model::CodeDef& slot) {
    (slot.Length() < 1 ? optLengthVariable_ : optLengthFixed_).SetChosen(true);
    length_.Show(slot.Length());
    limits_.Show(slot.MinLength(), slot.MaxLength());
    EnableNumbers();
}

void CodeLength::EnableNumbers() {
    length_.SetUsable(optLengthFixed_.Chosen(), Load(Id::ReasonFixedLength));
    limits_.SetUsable(optLengthVariable_.Chosen(), Load(Id::ReasonVariableLength));
}

void CodeLength::ChooseFixed() {
    model::CodeDef& slot = slot_();
    const Number length = length_.Box().Value();
    slot.SetLength(Short(length), slot.MinLength(), slot.MaxLength());
    length_.Show(length);
    limits_.Show(slot.MinLength(), slot.MaxLength());
    EnableNumbers();
}

void CodeLength::ChooseVariable() {
    model::CodeDef& slot = slot_();
    length_.Show(length_.Box().Value()); // wrong text would stay behind where nobody can put it right
    limits_.Show(slot.MinLength(), slot.MaxLength());
    slot.SetLength(0, Short(limits_.Least().Box().Value()), Short(limits_.Greatest().Box().Value()));
    EnableNumbers();
}

bool CodeLength::CommitPending() {
    const bool stored = length_.CommitPending();
    return limits_.CommitPending() && stored;
}

} // namespace orv::editor
