#include "editor/code_page.h"

#include <algorithm>

#include "editor/node_key.h"
#include "editor/omissions.h"
#include "text/error.h"
#include "text/texts.h"

namespace orv::editor {
namespace {

using text::Id;
using text::Load;

constexpr std::int32_t kSymbology = 2;
constexpr std::int32_t kLocalNoRead = 18;
constexpr std::int32_t kLocalMultipleRead = 328;
constexpr std::int32_t kLastSymbology = 18;
constexpr std::int32_t kInterleaved = 1;
constexpr wchar_t kNoneKey[] = L"NONE";
constexpr wchar_t kNonePicture[] = L"None";
constexpr wchar_t kSymbologyPicture[] = L"Barcode";
constexpr int kSymbologyGroup = 1;
constexpr std::size_t kManyButtons = 19;
constexpr int kWideButton = 105;
constexpr int kNarrowButton = 90;
constexpr int kScrollBar = 18;

std::wstring SymbologyKey(std::int32_t codeType) {
    return std::to_wstring(codeType) + L"CodeType";
}

} // namespace

CodePage::LocalString::LocalString(CodePage& page, controls::Widget& parent, const wchar_t* frameName,
                                   const wchar_t* boxName, Id caption,
                                   model::Property<std::wstring> model::CodeDef::*member)
    : frame(parent.Add<controls::Frame>(frameName)),
      field(page.context_, frame, boxName, controls::Widget::kNoIndex, false,
            [&page, member](const std::wstring& text) { model::Store(page.Slot(), member, text); }) {
    field.Label().SetCaption(Load(caption));
}

controls::LayoutPtr CodePage::LocalString::Layout() {
    auto row = controls::Row(
        controls::Boxed(Cell(field.Label()), Cell(field.Box(), controls::Grow::Across), Cell(field.Names())));
    return controls::Group(frame, std::move(row), 0);
}

void CodePage::LocalString::Show(bool visible, bool used, const std::wstring& reason) {
    frame.SetVisible(visible);
    field.SetUsable(used, meaning + L": " + reason);
}

CodePage::CodePage(Context& context)
    : Page(context, L"fraCode", Load(Id::PageCode)), tbrCodeType_(frame_.Add<controls::Toolbar>(L"tbrCodeType")),
      fraLocalStrings_(frame_.Add<controls::Frame>(L"fraLocalStrings")),
      noRead_(*this, fraLocalStrings_, L"fraCodeLocalNoRead", L"mbeCodeLocalNoRead", Id::NoRead,
              &model::CodeDef::NoReadString),
      multipleRead_(*this, fraLocalStrings_, L"fraCodeLocalMultipleRead", L"mbeCodeLocalMultipleRead", Id::MultipleRead,
                    &model::CodeDef::MultipleReadString),
      length_(context, frame_, [this]() -> model::CodeDef& { return Slot(); }),
      fields_(context, [this]() -> model::CodeDef& { return Slot(); }), options_(fields_, frame_) {
    tbrCodeType_.SetAccessibleName(Load(Id::Symbology));
    tbrCodeType_.onClick = [this](const controls::Toolbar::Button& button) {
        context_.Edit(L"tbrCodeType_ButtonClick", [&] { ChooseSymbology(button); });
    };
    fraLocalStrings_.SetCaption(Load(Id::LocalStrings));
    fraLocalStrings_.SetGroupBox(true);
    noRead_.field.Label().SetWidest(multipleRead_.field.Label().PlainCaption()); // both boxes begin in one line
    auto strings = controls::Column(controls::Boxed(controls::When(offersNoRead_, noRead_.Layout()),
                                                    controls::When(offersMultipleRead_, multipleRead_.Layout())),
                                    6);
    auto local = controls::When(offersStrings_, controls::Group(fraLocalStrings_, std::move(strings)));
    layout_ =
        controls::Column(controls::Boxed(Cell(tbrCodeType_, controls::Grow::Across), std::move(local), length_.Layout(),
                                         options_.Layout(), controls::Spring(controls::Grow::Down)));
}

model::CodeDef& CodePage::Slot() {
    model::CodeDef* slot = context_.root().Codes().Code(Index());
    if (!slot)
        throw Error(error_number::kObjectNotSet);
    return *slot;
}

void CodePage::SetUp() {
    device::ParameterAccess access = context_.Access();
    SetUpToolbar();
    noRead_.meaning = Load(Id::HintLocalNoRead);
    noRead_.field.SetUp(noRead_.meaning, kLocalNoRead, access.SetupFor(kLocalNoRead));
    multipleRead_.meaning = Load(Id::HintLocalMultipleRead);
    multipleRead_.field.SetUp(multipleRead_.meaning, kLocalMultipleRead, access.SetupFor(kLocalMultipleRead));
    length_.SetUp();
    fields_.SetUp();
}

void CodePage::SetUpToolbar() {
    const device::ControlSetup setup = context_.Access().SetupFor(kSymbology);
    std::vector<controls::Toolbar::Button> buttons = SymbologyButtons();
    buttonWidth_ = buttons.size() < kManyButtons ? kWideButton : kNarrowButton;
    tbrCodeType_.SetButtonWidth(buttonWidth_);
    tbrCodeType_.SetButtons(std::move(buttons));
    SetFieldUsable(tbrCodeType_, FieldHint(Load(Id::Symbology), kSymbology, setup), setup.present, true, {});
}

std::vector<controls::Toolbar::Button> CodePage::SymbologyButtons() {
    using Button = controls::Toolbar::Button;
    const auto make = [](std::wstring key, std::wstring caption, const wchar_t* picture, std::wstring tip) {
        Button button;
        button.key = std::move(key);
        button.caption = std::move(caption);
        button.picture = picture;
        button.tip = std::move(tip);
        button.group = kSymbologyGroup;
        return button;
    };
    std::vector<Button> buttons{make(kNoneKey, Load(Id::CodeNotUsed), kNonePicture, Load(Id::TipCodeNotUsed))};
    for (std::int32_t value = 0; value <= kLastSymbology; ++value) {
        const std::wstring label = context_.root().Codes().CodeDescription(value);
        if (label.empty())
            continue;
        const std::wstring caption = value == kInterleaved ? Load(Id::ShortInterleaved) : label;
        buttons.push_back(make(SymbologyKey(value), caption, kSymbologyPicture, label));
        buttons.back().tag = std::to_wstring(value);
    }
    return buttons;
}

void CodePage::BeforeLayout(const controls::TextMeasure& measure) {
    const int width = std::max(1, measure.Scale(buttonWidth_));
    // What the page is wide at least, it is wide in a narrower view as well.
    tbrCodeType_.SetLeastColumns(1);
    const int room = std::max(frame_.Bounds().width - measure.Scale(kScrollBar), layout_->Minimum(measure).width);
    tbrCodeType_.SetLeastColumns(std::clamp(room / width, 1, static_cast<int>(kManyButtons) + 1));
}

void CodePage::Fill() {
    model::CodeDef& slot = Slot();
    tbrCodeType_.SetPressed(ButtonOf(slot));
    length_.Show(slot);
    fields_.Show(slot);
    options_.EnableTypes();
    ShowField(noRead_.field, slot, &model::CodeDef::NoReadString);
    ShowField(multipleRead_.field, slot, &model::CodeDef::MultipleReadString);
    ShowParts(slot);
    ShowStrings(slot);
    context_.setNodeText(CodeKey(Index()), slot.Description());
}

/// Key of the button that is pressed; empty for none.
std::wstring CodePage::ButtonOf(const model::CodeDef& slot) const {
    if (!slot.Enabled())
        return IsUnread(slot, &model::CodeDef::Enabled) ? std::wstring() : kNoneKey;
    const std::wstring key = SymbologyKey(slot.CodeType());
    const bool listed = !IsUnread(slot, &model::CodeDef::CodeType) && tbrCodeType_.IndexOf(key) >= 0;
    return listed ? key : std::wstring();
}

void CodePage::ShowParts(const model::CodeDef& slot) {
    CodeParts parts;
    if (slot.Enabled())
        parts = tbrCodeType_.Pressed() ? PartsOf(slot.CodeType()) : kPartsOfUnlisted;
    length_.Frame().SetVisible(parts.length);
    options_.ShowParts(parts);
}

void CodePage::ShowStrings(const model::CodeDef& slot) {
    const model::Codes& codes = context_.root().Codes();
    offersNoRead_ = HasLocalNoRead(codes);
    offersMultipleRead_ = HasLocalMultipleRead(codes);
    offersStrings_ = offersNoRead_ || offersMultipleRead_;
    const bool noRead = slot.Enabled() && offersNoRead_;
    const bool multipleRead = slot.Enabled() && offersMultipleRead_;
    noRead_.Show(noRead, UsesNoReadText(codes), Load(Id::ReasonNoReadText));
    multipleRead_.Show(multipleRead, UsesMultipleReadText(codes), Load(Id::ReasonMultipleReadText));
    fraLocalStrings_.SetVisible(noRead || multipleRead);
}

std::wstring CodePage::Caption(const std::wstring&) {
    return Load(Id::CaptionCode) + Slot().Description();
}

void CodePage::ChooseSymbology(const controls::Toolbar::Button& button) {
    CommitPending();
    model::CodeDef& slot = Slot();
    model::Store(slot, &model::CodeDef::Enabled, !button.tag.empty());
    if (!button.tag.empty())
        model::Store(slot, &model::CodeDef::CodeType, std::stoi(button.tag));
    Fill(); // drops what could not be stored: its field may be hidden now and could never be put right
    context_.setCaption(Caption({}));
}

std::vector<std::wstring> CodePage::Remarks() {
    Omissions omissions(context_.state);
    Slot().Save(omissions.Queue());
    return omissions.Strips(context_.root());
}

bool CodePage::CommitPending() {
    return CommitAll(noRead_.field, multipleRead_.field, length_, fields_);
}

} // namespace orv::editor
