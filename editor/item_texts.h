#pragma once
// What the user reads of an output item: in the list, in the output, and as choices of its fields.
#include <cstdint>
#include <string>
#include <vector>

#include "controls/combo_box.h"
#include "device/parameter_access.h"
#include "model/out_format_config.h"
#include "model/tool_items.h"

namespace orv::editor {

using Entries = std::vector<controls::ComboBox::Entry>;

/// Category and type, as far as the category asks for one.
bool TypeIsRead(const model::OutItem& item);
/// Null for a type that the catalogue does not hold, or that was never read.
const model::ToolItem* EntryOf(model::ToolItems& catalogue, const model::OutItem& item);
/// Key of the item's picture; empty when there is none.
std::wstring PictureOf(const model::ToolItem* entry, const model::OutItem& item);
/// "Code", "Unknown type 29".
std::wstring TypeText(const model::ToolItem* entry, const model::OutItem& item);
/// The displayed form of a text with control characters.
std::wstring Displayed(device::ParameterAccess& access, const std::wstring& text);

/// What the output shows of an item: "Code 1", "Length Dec 3", or the text of the user's own in quotes, which comes as
/// `userText` in displayed form.
std::wstring ItemChip(const model::OutFormatConfig& root, const model::ToolItem* entry, const model::OutItem& item,
                      const std::wstring& userText);
/// ", code 2" or ", group 2" for what the chip leaves out; else empty.
std::wstring ItemReference(const model::OutFormatConfig& root, const model::ToolItem* entry,
                           const model::OutItem& item);

/// Category and type in one number, as the entries of the type list carry it.
std::int32_t TypeData(std::int32_t category, std::int32_t type);
/// All types that the device supports, and `item`'s own, which stands last when it is none of them.
Entries TypeEntries(model::ToolItems& catalogue, const model::OutItem& item, int& selected);
/// Any, and the enabled codes; the groups instead while codes are combined by expression.
Entries CodeEntries(const model::OutFormatConfig& root);
/// The number formats that an entry allows.
Entries FormatEntries(const model::ToolItem& entry);
/// The master and the devices of the cluster that have a description, out of those that `range` admits.
Entries DeviceEntries(device::ParameterAccess access, const device::Description& range);

} // namespace orv::editor
