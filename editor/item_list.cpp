#include "editor/item_list.h"

#include <algorithm>

#include "editor/fields.h"
#include "editor/item_texts.h"
#include "text/excerpt.h"
#include "text/texts.h"

namespace orv::editor {
namespace {

using text::Id;
using text::Load;

constexpr std::int32_t kItemCount = 349;

/// What a new item starts with, in the order in which the settings are made; both types are set, whatever the category.
void SetDefaults(model::OutItem& item, const model::ToolItem& entry) {
    item.ItemCategory(entry.ItemCategory());
    item.CodeRelType(entry.ItemType());
    item.GlobalType(entry.ItemType());
    item.Alignment(0);
    item.AlignLength(0);
    item.AlignFiller(L" ");
    item.CodeCut(0);
    item.LinkTo(0);
    item.ScaleType(1);
}

void SetDefaultFormat(model::OutItem& item, const model::ToolItem& entry) {
    std::int32_t format = item.FormatType();
    std::uint8_t length = item.FormatLength();
    entry.GetDefaultFormatAndLen(format, length);
    item.FormatType(format);
    item.FormatLength(length);
}

} // namespace

ItemList::ItemList(Context& context, controls::Frame& parent, FormatAccess format)
    : context_(context), format_(std::move(format)), lblItems_(parent.Add<controls::Label>(L"lblItems")),
      pls_(parent.Add<controls::PictureList>(L"pls")) {
    lblItems_.SetHeading(true);
    lblItems_.SetElides(true);
    lblItems_.SetCaption(Load(Id::ItemsHeading));
    pls_.SetAccessibleName(lblItems_.PlainCaption());
    pls_.SetEmptyText(Load(Id::NoItemsYet));
    pls_.onDrop = [this](const std::wstring& key, int gap) { Drop(key, gap); };
    pls_.onMove = [this](int item, int to) { Move(item, to); };
    pls_.onDelete = [this](int item) { Delete(item); };
    pls_.onSelect = [this] { Select(); };
}

void ItemList::SetUp() {
    pls_.SetHint(FieldHint(Load(Id::HintItems), kItemCount, context_.Access().SetupFor(kItemCount)));
}

void ItemList::Fill(int index) {
    index_ = index;
    Show(selected_.try_emplace(index, 1).first->second);
}

void ItemList::Show(int position) {
    Refresh();
    pls_.SetSelected(std::min(position, format_().OutItems().Count()) - 1);
    selected_[index_] = pls_.Selected() + 1;
    onSelected();
}

controls::PictureList::Row ItemList::RowFor(const model::OutItem& item) {
    const model::OutFormatConfig& root = context_.root();
    const model::ToolItem* entry = EntryOf(context_.catalogue(), item);
    const std::wstring position = std::to_wstring(item.Index());
    controls::PictureList::Row row;
    row.key = position;
    row.picture = PictureOf(entry, item);
    row.caption = ItemChip(root, entry, item, userText(item)) + ItemReference(root, entry, item);
    row.tip = entry ? entry->TooltipText() : std::wstring();
    row.greyed = entry == nullptr;
    return row;
}

void ItemList::Refresh() {
    model::AdvancedFormat& format = format_();
    std::vector<controls::PictureList::Row> rows;
    for (const model::OutItem& item : format.OutItems())
        rows.push_back(RowFor(item));
    pls_.SetRows(std::move(rows));
    // A number that nobody read is not shown as 0.
    std::wstring heading = Load(Id::ItemsHeading);
    if (format.ItemsAreRead())
        heading += L" " + std::to_wstring(format.OutItems().Count());
    if (format.ItemCountIsRead())
        heading += L" " + Load(Id::CountOf) + L" " + std::to_wstring(format.MaxItemsCount());
    lblItems_.SetCaption(heading);
    pls_.SetEmptyText(Load(format.ItemsAreRead() ? Id::NoItemsYet : Id::ReasonItemCount));
}

void ItemList::Select() {
    context_.Handle(L"pls_ItemSelect", [this] {
        if (!onLeave()) {
            pls_.SetSelected(selected_[index_] - 1);
            return;
        }
        selected_[index_] = pls_.Selected() + 1;
        onSelected();
    });
}

void ItemList::Take(const std::wstring& key) {
    Drop(key, Selected() > 0 ? Selected() : static_cast<int>(pls_.Rows().size()));
}

void ItemList::Drop(const std::wstring& key, int gap) {
    context_.Handle(L"pls_ItemDrop", [&] {
        try {
            if (!onLeave() || CountIsFixed() || IsFull())
                return;
            Insert(key, gap);
            context_.changed();
        } catch (const Error& error) {
            // This one message has a form of its own.
            context_.state.platform.boxes.Show({Load(Id::ItemDropError) + text::Excerpt(error.Description()),
                                                Load(Id::AddOnTitle), platform::Icon::Critical});
        }
    });
}

bool ItemList::CountIsFixed() {
    if (format_().ItemCountIsRead())
        return false;
    context_.form.Boxes().Beep();
    context_.refuse(Load(Id::HintItems) + L": " + Load(Id::ReasonItemCount));
    return true;
}

bool ItemList::IsFull() {
    if (format_().OutItems().Count() < format_().MaxItemsCount())
        return false;
    context_.state.platform.boxes.Show({Load(Id::MaximumItems), Load(Id::WarningTitle), platform::Icon::Warning});
    return true;
}

void ItemList::Insert(const std::wstring& key, int gap) {
    const model::ToolItem& entry = context_.catalogue().Item(key);
    model::OutItem& item = format_().OutItems().Create(static_cast<std::int16_t>(gap + 1), {});
    SetDefaults(item, entry);
    if (codes->Selected() >= 0)
        item.CodeNumber(static_cast<std::uint8_t>(codes->SelectedData()));
    SetDefaultFormat(item, entry);
    if (item.AlignFiller().empty())
        item.AlignFiller(L" ");
    Show(item.Index());
}

void ItemList::Move(int item, int to) {
    context_.Handle(L"pls_ItemMove", [&] {
        if (!onLeave())
            return;
        model::OutItems& items = format_().OutItems();
        // Taking the item out shifts those behind it.
        const int wanted = to > item ? to - 1 : to;
        const int place = std::clamp(wanted, 1, static_cast<int>(items.Count()));
        if (place == item)
            return;
        items.Add(items.Remove(item), static_cast<std::int16_t>(place), {});
        Show(place);
        context_.changed();
    });
}

void ItemList::Delete(int item) {
    context_.Handle(L"pls_ItemDelete", [&] {
        if (CountIsFixed())
            return;
        const platform::MessageBox question{Load(Id::RemoveSelectedItem), Load(Id::WarningTitle),
                                            platform::Icon::Warning, platform::Buttons::YesNo, platform::Answer::No};
        if (context_.state.platform.boxes.Show(question) != platform::Answer::Yes)
            return;
        format_().OutItems().Remove(item);
        Show(item);
        context_.changed();
    });
}

controls::LayoutPtr ItemList::Layout() {
    return controls::Column(controls::Boxed(Cell(lblItems_, controls::Grow::Across), Cell(pls_, controls::Grow::Both)),
                            4);
}

} // namespace orv::editor
