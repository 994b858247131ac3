#include "editor/item_panel.h"

#include <algorithm>

#include "editor/node_key.h"
#include "editor/page.h"
#include "model/catalogue.h"
#include "model/length_rule.h"
#include "model/tree_labels.h"

namespace orv::editor {
namespace {

using namespace model::item_category;
using model::OutItem;
using model::Store;
using text::Id;
using text::Load;

constexpr std::int32_t kCutByCount = 1;
constexpr std::int32_t kCutByPattern = 2;
constexpr std::int32_t kDiagnosticStats = 29;
constexpr std::int32_t kTypesPerCategory = 256;

/// Range, and numbers to step through, of the lengths that a rule allows; what it does not allow stays free, so that
/// a stored length can be put right.
struct Lengths {
    std::uint8_t least = 0;
    std::uint8_t greatest = 255;
    std::vector<controls::NumberBox::Number> allowed;
};

Lengths LengthsOf(const model::LengthRule& rule) {
    using Kind = model::LengthRule::Kind;
    if (rule.kind == Kind::Range)
        return {rule.minimum, rule.maximum, {}};
    if (rule.kind != Kind::List)
        return {};
    const auto [least, greatest] = std::minmax_element(rule.lengths.begin(), rule.lengths.end());
    return {*least, *greatest, {rule.lengths.begin(), rule.lengths.end()}};
}

model::LengthRule RuleOf(const model::ToolItem* entry, std::int32_t format) {
    if (!entry || !entry->HasAllowedFormats() || format < 0 || format > 3)
        return {};
    return model::ParseLengthRule(entry->AllowedFormatLen(format));
}

struct Format {
    std::int32_t type = 0;
    std::uint8_t length = 0;
};

/// Format and length stay when the type allows them.
Format FormatUnder(const model::ToolItem* entry, const OutItem& item) {
    Format format{item.FormatType(), item.FormatLength()};
    if (entry && !RuleOf(entry, format.type).Allows(format.length))
        entry->GetDefaultFormatAndLen(format.type, format.length);
    return format;
}

/// Of a format that was chosen: the length stays when its rule allows it.
std::uint8_t LengthUnder(const model::ToolItem* entry, std::int32_t format, std::uint8_t length) {
    const model::LengthRule rule = RuleOf(entry, format);
    const bool stays = rule.kind == model::LengthRule::Kind::NotAllowed || rule.Allows(length);
    return stays ? length : model::LeadingNumber(entry->AllowedFormatLen(format));
}

} // namespace

OutItem& ItemPanel::Item() const {
    OutItem* item = item_();
    if (!item)
        throw Error(error_number::kObjectNotSet);
    return *item;
}

const model::ToolItem* ItemPanel::Entry() const {
    return EntryOf(context_.catalogue(), Item());
}

void ItemPanel::Changed() {
    ShowWhatApplies();
    if (onShown)
        onShown();
}

void ItemPanel::StoreType(std::int32_t data) {
    OutItem& item = Item();
    const std::int32_t category = data / kTypesPerCategory;
    const std::int32_t type = data % kTypesPerCategory;
    // Looked up first: what takes memory must not fail between the type and its format.
    const Format format = FormatUnder(context_.catalogue().Find(model::CatalogueKey(category, type)), item);
    Store(item, &OutItem::ItemCategory, category);
    Store(item, &OutItem::CodeRelType, type);
    Store(item, &OutItem::GlobalType, type);
    // Nobody saw a number format that was not read, so nobody changes it by the way.
    if (!IsUnread(item, &OutItem::FormatType) && !IsUnread(item, &OutItem::FormatLength)) {
        Store(item, &OutItem::FormatType, format.type);
        Store(item, &OutItem::FormatLength, format.length);
    }
    FillLists();
    FillFormat();
    Changed();
}

void ItemPanel::StoreCode(std::int32_t code) {
    Store(Item(), &OutItem::CodeNumber, static_cast<std::uint8_t>(code));
    Changed();
}

void ItemPanel::StoreFormat(std::int32_t format) {
    OutItem& item = Item();
    const std::uint8_t length = LengthUnder(Entry(), format, item.FormatLength());
    Store(item, &OutItem::FormatType, format);
    Store(item, &OutItem::FormatLength, length);
    ShowLengthRule();
    Changed();
}

void ItemPanel::StoreDevice(std::int32_t device) {
    Store(Item(), &OutItem::DeviceNumber, static_cast<std::int16_t>(device));
    Changed();
}

void ItemPanel::GoToCode() {
    const std::int32_t number = Item().CodeNumber();
    context_.jumpTo(model::ShowsGroups(context_.root()) ? GroupKey(number) : CodeKey(number));
}

void ItemPanel::Fill() {
    const OutItem* item = item_();
    shown_ = nullptr;
    lblItem_.SetCaption(item ? Load(Id::ItemHeading) + std::to_wstring(item->Index()) : std::wstring());
    const Restoring filled([this] { filling_ = false; });
    filling_ = true;
    if (!item) {
        ShowNothing();
        return;
    }
    FillLists();
    FillFormat();
    FillValues();
    ShowWhatApplies();
    shown_ = item;
}

void ItemPanel::FillLists() {
    const OutItem& item = Item();
    int selected = -1;
    type_.Box().SetEntries(TypeEntries(context_.catalogue(), item, selected));
    type_.Box().SetSelected(type_.Present() && !TypeIsRead(item) ? -1 : selected);
    codeSel_.Box().SetEntries(CodeEntries(context_.root()));
    ShowField(codeSel_, item, &OutItem::CodeNumber);
}

void ItemPanel::FillFormat() {
    const OutItem& item = Item();
    const model::ToolItem* entry = Entry();
    Entries entries = entry && entry->HasAllowedFormats() ? FormatEntries(*entry) : Entries();
    const std::int32_t format = item.FormatType();
    // A stored format that the type does not allow is shown by its name, and kept.
    if (format >= 0 && format <= 3 &&
        std::none_of(entries.begin(), entries.end(), [&](const auto& e) { return e.data == format; }))
        entries.push_back({model::kFormatNames[format], format});
    format_.Box().SetEntries(std::move(entries));
    ShowField(format_, item, &OutItem::FormatType);
    ShowLengthRule();
}

void ItemPanel::ShowLengthRule() {
    const OutItem& item = Item();
    Lengths lengths = LengthsOf(RuleOf(Entry(), item.FormatType()));
    device::ControlSetup setup = lengthSetup_;
    setup.description.hasRange = true;
    setup.description.minimum = lengths.least;
    setup.description.maximum = lengths.greatest;
    formatLen_.SetUp(Load(Id::HintItemFormatLength), kFormatLength, setup, 0, 255);
    formatLen_.Box().SetAllowed(std::move(lengths.allowed));
    ShowField(formatLen_, item, &OutItem::FormatLength);
}

void ItemPanel::FillValues() {
    const OutItem& item = Item();
    ShowField(link_, item, &OutItem::LinkTo);
    ShowField(align_, item, &OutItem::Alignment);
    ShowField(alignLength_, item, &OutItem::AlignLength);
    ShowField(alignFiller_, item, &OutItem::AlignFiller);
    ShowField(diagsEvent_, item, &OutItem::DiagnosticEvent);
    ShowField(userString_, item, &OutItem::StringText);
    ShowField(codeCut_, item, &OutItem::CodeCut);
    ShowField(cutLeading_, item, &OutItem::CodeCutLeading);
    ShowField(cutTrailing_, item, &OutItem::CodeCutTrailing);
    ShowField(cutPattern_, item, &OutItem::CodeCutPattern);
    ShowField(cutPatternMode_, item, &OutItem::CodeCutPatternMode);
    ShowField(deviceSel_, item, &OutItem::DeviceNumber);
    ShowField(scaleType_, item, &OutItem::ScaleType);
}

void ItemPanel::ShowWhatApplies() {
    const OutItem& item = Item();
    const model::ToolItem* entry = Entry();
    const bool ofCode = item.ItemCategory() == kCodeRelated;
    const bool plain = item.ItemCategory() != kMiscellaneous;
    const bool known = plain && entry;
    lblNoItem_.SetVisible(false);
    type_.SetVisible(true);
    link_.SetVisible(true);
    align_.SetVisible(plain);
    codeSel_.SetVisible(ofCode);
    cmdGoItemCode_.SetVisible(ofCode);
    SetFieldUsable(cmdGoItemCode_, Load(Id::HintItemGoToCode), true, item.CodeNumber() > 0, Load(Id::ReasonNoCode));
    fraDataFormat_.SetVisible(known && entry->HasAllowedFormats());
    fraMiscString_.SetVisible(!plain);
    fraCodeCutting_.SetVisible(known && entry->IsCode());
    fraDeviceSel_.SetVisible(known && entry->DeviceDependent());
    scaleType_.SetVisible(known && entry->UseScaleType());
    fraItemAlign_.SetVisible(plain && item.Alignment() != 0);
    // The two below follow the cut alone, whatever the type: a cut left over from another type is seen, on purpose.
    fraCodeCutSimple_.SetVisible(plain && item.CodeCut() == kCutByCount);
    fraCodeCutPattern_.SetVisible(plain && item.CodeCut() == kCutByPattern);
    fraDiagsEvent_.SetVisible(item.ItemCategory() == kGlobal && item.GlobalType() == kDiagnosticStats);
}

void ItemPanel::HideAll() {
    for (const auto& child : fraItem_.Children())
        child->SetVisible(child.get() == &lblNoItem_);
}

void ItemPanel::ShowNothing() {
    HideAll();
    codeSel_.Box().SetEntries({});
    // What was typed for an item that is gone is no longer due.
    for (NumberField* field : {&alignLength_, &formatLen_, &cutLeading_, &cutTrailing_})
        field->Show(0);
    for (MBField* field : {&alignFiller_, &userString_, &cutPattern_})
        field->Show({});
}

bool ItemPanel::CommitPending() {
    return CommitAll(alignLength_, alignFiller_, userString_, formatLen_, cutLeading_, cutTrailing_, cutPattern_);
}

} // namespace orv::editor
