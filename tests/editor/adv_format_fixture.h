#pragma once
// The page of an advanced format over a cluster of four devices. Format 1 has five items, format 2 four, format 3 one
// and format 4 none; each holds up to 20.
#include "controls/number_box.h"
#include "controls/picture_list.h"
#include "controls/text_box.h"
#include "controls/toolbar.h"
#include "fixture.h"

namespace orv::test {

struct AdvFormatFixture : EditorFixture {
    AdvFormatFixture() : AdvFormatFixture(Sample("tunnel.json")) {}
    explicit AdvFormatFixture(const sim::SystemDescription& system) : EditorFixture(system) {
        root.Advanced(true);
        editor->BuildTree();
        Click(L"Format1");
    }

    model::AdvancedFormat& Format(int index) { return root.AdvancedFormats().Item(index); }
    model::OutItem& Item(int format, int position) { return Format(format).OutItems().Item(position); }
    controls::PictureList& List() { return Get<controls::PictureList>(L"pls"); }
    controls::ComboBox& Combo(const wchar_t* name) { return Get<controls::ComboBox>(name); }
    std::wstring Output() { return Get<controls::OutputStrip>(L"advOutput").Line(); }

    /// Appends an item of that type to a format, behind the page's back.
    model::OutItem& Append(int format, std::int32_t category, std::int32_t type) {
        model::OutItems& items = Format(format).OutItems();
        model::OutItem& item = items.Create(static_cast<std::int16_t>(items.Count() + 1), {});
        item.ItemCategory(category);
        item.CodeRelType(type);
        item.GlobalType(type);
        return item;
    }
    /// The only item of format 4, on display.
    model::OutItem& ShowOnly(std::int32_t category, std::int32_t type) {
        Format(4).OutItems().Clear();
        model::OutItem& item = Append(4, category, type);
        Click(L"Format4");
        return item;
    }
    /// Types of the items as the catalogue calls them, in their order.
    std::wstring Keys(int format) {
        std::wstring keys;
        for (const model::OutItem& item : Format(format).OutItems())
            keys += (keys.empty() ? L"" : L" ") + item.GetItemTypeKey();
        return keys;
    }
    void Choose(const wchar_t* name, std::int32_t data) {
        const auto& entries = Combo(name).Entries();
        for (std::size_t i = 0; i < entries.size(); ++i)
            if (entries[i].data == data) {
                Combo(name).Select(static_cast<int>(i));
                return;
            }
        ADD_FAILURE() << "not listed: " << data;
    }
};

} // namespace orv::test
