// How the panel of the selected item is put together.
#include "editor/item_panel.h"

namespace orv::editor {
namespace {

using controls::Grow;
using model::OutItem;
using text::Id;
using text::Load;

constexpr int kChoiceWidth = 132;
constexpr int kFormatWidth = 76;
constexpr int kFillerWidth = 7;
constexpr int kRowGap = 6;

enum Parameter : std::int32_t {
    kAlignment = 352,
    kAlignLength = 353,
    kAlignFiller = 354,
    kType = 355,
    kDiagnosticEvent = 357,
    kCodeNumber = 358,
    kCut = 359,
    kCutLeading = 360,
    kCutTrailing = 361,
    kCutPattern = 362,
    kCutPatternMode = 363,
    kFormat = 364,
    kLink = 366,
    kScale = 367,
    kText = 368,
    kDevice = 369,
};

constexpr auto kNoIndex = controls::Widget::kNoIndex;

} // namespace

ItemPanel::ItemPanel(Context& context, controls::Frame& parent, ItemAccess item)
    : context_(context), item_(std::move(item)), lblItem_(parent.Add<controls::Label>(L"lblItem")),
      fraItem_(parent.Add<controls::Frame>(L"fraItem")), lblNoItem_(fraItem_.Add<controls::Label>(L"lblNoItem")),
      type_(SpecialChoice(fraItem_, L"cboItemType", &ItemPanel::StoreType)),
      link_(Choice(fraItem_, L"cboLinkTo", &OutItem::LinkTo)),
      align_(Choice(fraItem_, L"cboItemAlign", &OutItem::Alignment)),
      fraItemAlign_(fraItem_.Add<controls::Frame>(L"fraItemAlign")),
      alignLength_(Count(fraItemAlign_, L"txtItemAlignLength", &OutItem::AlignLength)),
      alignFiller_(Bytes(fraItemAlign_, L"mbeItemAlignFiller", &OutItem::AlignFiller)),
      codeSel_(SpecialChoice(fraItem_, L"cboCodeSel", &ItemPanel::StoreCode)),
      cmdGoItemCode_(fraItem_.Add<controls::Button>(L"cmdGoItemCode")),
      fraDiagsEvent_(fraItem_.Add<controls::Frame>(L"fraDiagsEvent")),
      diagsEvent_(Choice(fraDiagsEvent_, L"cboDiagsEvent", &OutItem::DiagnosticEvent)),
      fraMiscString_(fraItem_.Add<controls::Frame>(L"fraMiscString")),
      userString_(Bytes(fraMiscString_, L"mbeUserString", &OutItem::StringText)),
      fraDataFormat_(fraItem_.Add<controls::Frame>(L"fraDataFormat")),
      format_(SpecialChoice(fraDataFormat_, L"cboFormat", &ItemPanel::StoreFormat)),
      formatLen_(Count(fraDataFormat_, L"txtFormatLen", &OutItem::FormatLength)),
      fraCodeCutting_(fraItem_.Add<controls::Frame>(L"fraCodeCutting")),
      codeCut_(Choice(fraCodeCutting_, L"cboCodeCut", &OutItem::CodeCut)),
      fraCodeCutSimple_(fraItem_.Add<controls::Frame>(L"fraCodeCutSimple")),
      cutLeading_(Count(fraCodeCutSimple_, L"txtCutLeading", &OutItem::CodeCutLeading)),
      cutTrailing_(Count(fraCodeCutSimple_, L"txtCutTrailing", &OutItem::CodeCutTrailing)),
      fraCodeCutPattern_(fraItem_.Add<controls::Frame>(L"fraCodeCutPattern")),
      cutPattern_(Bytes(fraCodeCutPattern_, L"mbeCutPattern", &OutItem::CodeCutPattern)),
      cutPatternMode_(Choice(fraCodeCutPattern_, L"cboCutPatternMode", &OutItem::CodeCutPatternMode)),
      fraDeviceSel_(fraItem_.Add<controls::Frame>(L"fraDeviceSel")),
      deviceSel_(SpecialChoice(fraDeviceSel_, L"cboDeviceSel", &ItemPanel::StoreDevice)),
      scaleType_(Choice(fraItem_, L"cboScaleType", &OutItem::ScaleType)) {
    SetCaptions();
    lblItem_.SetHeading(true);
    lblItem_.SetElides(true);
    lblNoItem_.SetCaption(Load(Id::NoItemSelected));
    alignFiller_.Box().SetWidthInCharacters(kFillerWidth);
    format_.Box().SetWidth(kFormatWidth);
    userString_.Box().onShown = [this] {
        if (!filling_ && onShown)
            onShown();
    };
    AddGoButton();
    HideAll();
}

void ItemPanel::SetCaptions() {
    const std::pair<controls::Label&, Id> captions[] = {
        {type_.Label(), Id::ItemTypeLabel},
        {link_.Label(), Id::ItemLink},
        {align_.Label(), Id::ItemAlignLabel},
        {alignLength_.Label(), Id::ItemWidth},
        {alignFiller_.Label(), Id::ItemFiller},
        {codeSel_.Label(), Id::ItemCodeSel},
        {diagsEvent_.Label(), Id::ItemEvent},
        {userString_.Label(), Id::ItemUserString},
        {format_.Label(), Id::ItemFormatLabel},
        {formatLen_.Label(), Id::ItemFormatLength},
        {codeCut_.Label(), Id::ItemCut},
        {cutLeading_.Label(), Id::ItemCutLeading},
        {cutTrailing_.Label(), Id::ItemCutTrailing},
        {cutPattern_.Label(), Id::ItemCutPattern},
        {cutPatternMode_.Label(), Id::ItemCutPatternMode},
        {deviceSel_.Label(), Id::ItemDevice},
        {scaleType_.Label(), Id::ItemScale},
    };
    for (const auto& [label, caption] : captions)
        label.SetCaption(Load(caption));
}

ChoiceField ItemPanel::Choice(controls::Frame& parent, const wchar_t* name,
                              model::Property<std::int32_t> OutItem::*member) {
    ChoiceField field(context_, parent, name, [this, member](std::int32_t value) {
        model::Store(Item(), member, value);
        Changed();
    });
    field.Box().SetWidth(kChoiceWidth);
    return field;
}

ChoiceField ItemPanel::SpecialChoice(controls::Frame& parent, const wchar_t* name,
                                     void (ItemPanel::*store)(std::int32_t)) {
    ChoiceField field(context_, parent, name, [this, store](std::int32_t value) { (this->*store)(value); });
    field.Box().SetWidth(kChoiceWidth);
    return field;
}

template <typename T>
NumberField ItemPanel::Count(controls::Frame& parent, const wchar_t* name, model::Property<T> OutItem::*member) {
    return {context_, parent, name, [this, member](NumberField::Number number) {
                model::Store(Item(), member, static_cast<T>(number));
                Changed();
                return true;
            }};
}

MBField ItemPanel::Bytes(controls::Frame& parent, const wchar_t* name, model::Property<std::wstring> OutItem::*member) {
    return {context_, parent, name, kNoIndex, false, [this, member](const std::wstring& text) {
                model::Store(Item(), member, text);
                Changed();
            }};
}

void ItemPanel::AddGoButton() {
    cmdGoItemCode_.SetCaption(Load(Id::ItemGoToCode));
    cmdGoItemCode_.onClick = [this] { context_.Handle(L"cmdGoItemCode_Click", [this] { GoToCode(); }); };
}

void ItemPanel::SetUp() {
    device::ParameterAccess access = context_.Access();
    SetUpChoices(access);
    SetUpNumbers(access);
    alignFiller_.SetUp(Load(Id::HintItemFiller), kAlignFiller, access.SetupFor(kAlignFiller));
    userString_.SetUp(Load(Id::HintItemUserString), kText, access.SetupFor(kText));
    cutPattern_.SetUp(Load(Id::HintItemCutPattern), kCutPattern, access.SetupFor(kCutPattern));
}

void ItemPanel::SetUpChoices(device::ParameterAccess& access) {
    const struct {
        ChoiceField& field;
        Id meaning;
        std::int32_t parameter;
    } choices[] = {
        {type_, Id::HintItemType, kType},
        {link_, Id::HintItemLink, kLink},
        {align_, Id::HintItemAlign, kAlignment},
        {codeSel_, Id::HintItemCodeSel, kCodeNumber},
        {diagsEvent_, Id::HintItemEvent, kDiagnosticEvent},
        {format_, Id::HintItemFormat, kFormat},
        {codeCut_, Id::HintItemCut, kCut},
        {cutPatternMode_, Id::HintItemCutPatternMode, kCutPatternMode},
        {deviceSel_, Id::HintItemDevice, kDevice},
        {scaleType_, Id::HintItemScale, kScale},
    };
    for (const auto& choice : choices)
        choice.field.SetUp(Load(choice.meaning), choice.parameter, access.SetupFor(choice.parameter));
    const device::ControlSetup devices = access.SetupFor(kDevice);
    if (devices.present && devices.description.choices.empty())
        deviceSel_.Box().SetEntries(DeviceEntries(access, devices.description));
}

void ItemPanel::SetUpNumbers(device::ParameterAccess& access) {
    alignLength_.SetUp(Load(Id::HintItemWidth), kAlignLength, access.SetupFor(kAlignLength), 0, 32767);
    cutLeading_.SetUp(Load(Id::HintItemCutLeading), kCutLeading, access.SetupFor(kCutLeading), 0, 255);
    cutTrailing_.SetUp(Load(Id::HintItemCutTrailing), kCutTrailing, access.SetupFor(kCutTrailing), 0, 255);
    lengthSetup_ = access.SetupFor(kFormatLength);
}

controls::LayoutPtr ItemPanel::Leading(controls::Label& label, controls::LayoutPtr field) {
    // The fields stand in frames of their own and line up all the same.
    std::wstring widest;
    for (const Id caption : {Id::ItemCut, Id::ItemCutLeading, Id::ItemCutPattern, Id::ItemCutPatternMode})
        if (text::Load(caption).size() > widest.size())
            widest = text::Load(caption);
    label.SetWidest(widest);
    return controls::Row(controls::Boxed(Cell(label), std::move(field)));
}

controls::LayoutPtr ItemPanel::CodeSlot() {
    auto jump = controls::Row(controls::Boxed(controls::Spring(Grow::Across), Cell(cmdGoItemCode_)));
    auto code = controls::Column(
        controls::Boxed(Leading(codeSel_.Label(), Cell(codeSel_.Box(), Grow::Across)), std::move(jump)), kRowGap);
    auto text = controls::Column(
        controls::Boxed(Cell(userString_.Label()), controls::Row(controls::Boxed(Cell(userString_.Box(), Grow::Across),
                                                                                 Cell(userString_.Names())))),
        kRowGap);
    return controls::Overlay(controls::Boxed(
        std::move(code),
        controls::Group(fraDiagsEvent_, Leading(diagsEvent_.Label(), Cell(diagsEvent_.Box(), Grow::Across)), 0),
        controls::Group(fraMiscString_, std::move(text), 0)));
}

controls::LayoutPtr ItemPanel::FormatSlot() {
    auto format = controls::Row(controls::Boxed(Leading(format_.Label(), Cell(format_.Box(), Grow::Across)),
                                                Cell(formatLen_.Label()), Cell(formatLen_.Box())));
    auto cut = Leading(codeCut_.Label(), Cell(codeCut_.Box(), Grow::Across));
    return controls::Overlay(controls::Boxed(controls::Group(fraDataFormat_, std::move(format), 0),
                                             controls::Group(fraCodeCutting_, std::move(cut), 0)));
}

controls::LayoutPtr ItemPanel::CutSlot() {
    auto counts = controls::Row(controls::Boxed(Leading(cutLeading_.Label(), Cell(cutLeading_.Box())),
                                                Cell(cutTrailing_.Label()), Cell(cutTrailing_.Box())));
    auto pattern = controls::Row(controls::Boxed(Leading(cutPattern_.Label(), Cell(cutPattern_.Box(), Grow::Across)),
                                                 Cell(cutPattern_.Names())));
    auto mode = Leading(cutPatternMode_.Label(), Cell(cutPatternMode_.Box(), Grow::Across));
    auto both = controls::Column(controls::Boxed(std::move(pattern), std::move(mode)), kRowGap);
    return controls::Overlay(controls::Boxed(controls::Group(fraCodeCutSimple_, std::move(counts), 0),
                                             controls::Group(fraCodeCutPattern_, std::move(both), 0)));
}

controls::LayoutPtr ItemPanel::Layout() {
    auto alignment = controls::Row(controls::Boxed(Leading(alignLength_.Label(), Cell(alignLength_.Box())),
                                                   Cell(alignFiller_.Label()), Cell(alignFiller_.Box()),
                                                   Cell(alignFiller_.Names())));
    const auto choice = [](ChoiceField& field) { return Leading(field.Label(), Cell(field.Box(), Grow::Across)); };
    auto rows = controls::Column(
        controls::Boxed(controls::Overlay(controls::Boxed(choice(type_), Cell(lblNoItem_))), choice(link_),
                        choice(align_), controls::Group(fraItemAlign_, std::move(alignment), 0), CodeSlot(),
                        FormatSlot(), CutSlot(),
                        controls::Overlay(
                            controls::Boxed(controls::Group(fraDeviceSel_, choice(deviceSel_), 0), choice(scaleType_))),
                        controls::Spring(Grow::Down)),
        kRowGap);
    return controls::Column(
        controls::Boxed(Cell(lblItem_, Grow::Across), controls::Group(fraItem_, std::move(rows), 0)), 4);
}

} // namespace orv::editor
