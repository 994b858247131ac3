#include "editor/item_texts.h"

#include <algorithm>
#include <iterator>

#include "controls/mb_edit_core.h"
#include "model/tree_labels.h"
#include "text/texts.h"

namespace orv::editor {
namespace {

using namespace model::item_category;
using model::CellOf;
using model::ReadMarks;
using text::Id;
using text::Load;

constexpr std::int32_t kTypesPerCategory = 256;
constexpr std::int32_t kTypeWithPictureAlone = 29;
constexpr std::int32_t kMostDevices = 31;

std::int32_t TypeOf(const model::OutItem& item) {
    if (item.ItemCategory() == kMiscellaneous)
        return 0;
    return item.ItemCategory() == kGlobal ? item.GlobalType() : item.CodeRelType();
}

std::wstring TypeEntryText(const model::ToolItem& entry) {
    return (entry.ItemCategory() == kGlobal ? Load(Id::GlobalPrefix) : std::wstring()) + entry.ItemText();
}

/// " Dec 3"; a format without a name leaves its place out.
std::wstring FormatText(const model::OutItem& item) {
    std::wstring text;
    if (item.FormatType() >= 0 && item.FormatType() < static_cast<std::int32_t>(std::size(model::kFormatNames)))
        text = std::wstring(L" ") + model::kFormatNames[item.FormatType()];
    return text + L" " + std::to_wstring(item.FormatLength());
}

/// A device that does not answer is none to choose.
std::wstring DescriptionOrEmpty(device::ParameterAccess& access, std::int16_t device) {
    try {
        return access.ClusterOrDeviceDescription(device);
    } catch (const Error&) {
        return {};
    }
}

} // namespace

bool TypeIsRead(const model::OutItem& item) {
    const ReadMarks& marks = item.Marks();
    if (!marks.Any())
        return true;
    const auto type = item.ItemCategory() == kGlobal ? &model::OutItem::GlobalType : &model::OutItem::CodeRelType;
    return !marks.Has(CellOf(&model::OutItem::ItemCategory)) &&
           (item.ItemCategory() == kMiscellaneous || !marks.Has(CellOf(type)));
}

const model::ToolItem* EntryOf(model::ToolItems& catalogue, const model::OutItem& item) {
    return TypeIsRead(item) ? catalogue.Find(item.GetItemTypeKey()) : nullptr;
}

std::wstring PictureOf(const model::ToolItem* entry, const model::OutItem& item) {
    if (entry)
        return entry->ImageKey();
    const bool known = item.ItemCategory() == kCodeRelated && item.CodeRelType() == kTypeWithPictureAlone;
    return known ? L"CheckDigitID" : L"";
}

std::wstring TypeText(const model::ToolItem* entry, const model::OutItem& item) {
    if (!entry && !TypeIsRead(item))
        return Load(Id::ItemTypeNotRead);
    return entry ? entry->ItemText() : Load(Id::UnknownType) + std::to_wstring(TypeOf(item));
}

std::wstring Displayed(device::ParameterAccess& access, const std::wstring& text) {
    controls::MBEditCore core;
    core.SetData(access.StringToBytes(text));
    return core.Text();
}

std::wstring ItemChip(const model::OutFormatConfig& root, const model::ToolItem* entry, const model::OutItem& item,
                      const std::wstring& userText) {
    if (item.ItemCategory() == kMiscellaneous)
        return L"\"" + userText + L"\"";
    std::wstring text = TypeText(entry, item);
    if (!entry)
        return text;
    if (entry->IsCode() && item.CodeNumber() > 0)
        return text + (model::ShowsGroups(root) ? Load(Id::OfGroup) : L" ") + std::to_wstring(item.CodeNumber());
    return entry->HasAllowedFormats() ? text + FormatText(item) : text;
}

std::wstring ItemReference(const model::OutFormatConfig& root, const model::ToolItem* entry,
                           const model::OutItem& item) {
    if (item.ItemCategory() != kCodeRelated || item.CodeNumber() == 0 || (entry && entry->IsCode()))
        return {};
    return Load(model::ShowsGroups(root) ? Id::OfGroup : Id::OfCode) + std::to_wstring(item.CodeNumber());
}

std::int32_t TypeData(std::int32_t category, std::int32_t type) {
    // A category that the device made up is only to be told apart; it may be any number.
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(category) * kTypesPerCategory +
                                     static_cast<std::uint32_t>(type));
}

Entries TypeEntries(model::ToolItems& catalogue, const model::OutItem& item, int& selected) {
    const model::ToolItem* own = EntryOf(catalogue, item);
    Entries entries;
    selected = -1;
    for (const model::ToolItem& entry : catalogue) {
        if (!entry.Supported() && &entry != own)
            continue;
        if (&entry == own)
            selected = static_cast<int>(entries.size());
        entries.push_back({TypeEntryText(entry), TypeData(entry.ItemCategory(), entry.ItemType())});
    }
    if (selected < 0) {
        selected = static_cast<int>(entries.size());
        entries.push_back({TypeText(nullptr, item), TypeData(item.ItemCategory(), TypeOf(item))});
    }
    return entries;
}

Entries CodeEntries(const model::OutFormatConfig& root) {
    Entries entries{{Load(Id::AnyCode), 0}};
    if (model::ShowsGroups(root)) {
        for (const model::Group& group : root.Codes().Groups())
            entries.push_back({model::NodeText(group), group.Index()});
        return entries;
    }
    for (const model::CodeDef& code : root.Codes())
        if (code.Enabled())
            entries.push_back({model::NodeText(code), code.Index()});
    return entries;
}

Entries FormatEntries(const model::ToolItem& entry) {
    Entries entries;
    for (int format = 0; format < static_cast<int>(std::size(model::kFormatNames)); ++format)
        if (!entry.AllowedFormatLen(format).empty())
            entries.push_back({model::kFormatNames[format], format});
    return entries;
}

Entries DeviceEntries(device::ParameterAccess access, const device::Description& range) {
    // The host lists no devices, but answers for each one that it has.
    const std::int32_t first = range.hasRange ? std::max(range.minimum, 0) : 0;
    const std::int32_t last = range.hasRange ? std::min(range.maximum, kMostDevices) : kMostDevices;
    Entries entries;
    // Asked for the master, the host answers with the name of the whole cluster.
    if (first == 0 && last >= 0)
        entries.push_back({Load(Id::DeviceMaster), 0});
    for (std::int32_t device = std::max(first, 1); device <= last; ++device) {
        const std::wstring text = DescriptionOrEmpty(access, static_cast<std::int16_t>(device));
        if (!text.empty())
            entries.push_back({std::to_wstring(device) + L" - " + text, device});
    }
    return entries;
}

} // namespace orv::editor
