#include "editor/omissions.h"

#include <algorithm>

#include "text/filled.h"

namespace orv::editor {
namespace {

using device::LeftOut;
using text::Filled;
using text::Id;

constexpr std::int32_t kExpression = 191;

void Join(std::wstring& list, const std::wstring& item) {
    list += (list.empty() ? L"" : L", ") + item;
}

/// 1-based; 0 for what is no item's.
std::int32_t ItemOf(const LeftOut& one, const model::AdvancedFormat* format) {
    const auto rows = model::OutItem::Fields();
    const bool isItem =
        std::any_of(rows.begin(), rows.end(), [&](const auto& row) { return row.parameter == one.number; });
    return format && isItem ? format->PositionAt(one.element) : 0;
}

/// Numbers of one item, or of none, that share a reason, as one entry of the list.
struct Entry {
    std::int32_t item = 0;
    std::wstring numbers;
    std::wstring reason;

    std::wstring Text() const {
        return item == 0 ? Filled(Id::NotReadEntry, {{L"number", numbers}, {L"reason", reason}})
                         : Filled(Id::NotReadItemEntry,
                                  {{L"item", std::to_wstring(item)}, {L"number", numbers}, {L"reason", reason}});
    }
};

} // namespace

std::wstring WithoutPlace(const std::vector<LeftOut>& leftOut) {
    std::wstring list;
    for (const LeftOut& one : leftOut)
        if (one.why == LeftOut::Why::NoPlace)
            Join(list, one.reason);
    return list;
}

std::wstring Omissions::NotRead(bool keepsExpression, const model::AdvancedFormat* format) const {
    std::vector<Entry> entries;
    for (const LeftOut& one : cache_.WhatIsLeftOut()) {
        if (one.why != LeftOut::Why::NotRead || (keepsExpression && one.number == kExpression))
            continue;
        const std::int32_t item = ItemOf(one, format);
        if (entries.empty() || entries.back().item != item || entries.back().reason != one.reason)
            entries.push_back({item, {}, one.reason});
        Join(entries.back().numbers, std::to_wstring(one.number));
    }
    std::wstring list;
    for (const Entry& entry : entries)
        Join(list, entry.Text());
    return list;
}

std::vector<std::wstring> Omissions::Strips(const model::OutFormatConfig& root,
                                            const model::AdvancedFormat* format) const {
    const bool keepsExpression = !root.Codes().KeptExpression().empty();
    std::vector<std::wstring> strips;
    if (const std::wstring list = WithoutPlace(cache_.WhatIsLeftOut()); !list.empty())
        strips.push_back(Filled(Id::NoPlaceStrip, {{L"list", list}}));
    for (const LeftOut& one : cache_.WhatIsLeftOut())
        if (keepsExpression && one.number == kExpression)
            strips.push_back(one.reason); // a sentence of its own
    if (const std::wstring list = NotRead(keepsExpression, format); !list.empty()) {
        std::wstring strip = Filled(Id::NotReadStrip, {{L"list", list}});
        const auto& leftOut = cache_.WhatIsLeftOut();
        if (std::any_of(leftOut.begin(), leftOut.end(), [&](const LeftOut& one) { return ItemOf(one, format) > 0; }))
            strip = Filled(Id::NotReadStaysWithPlace, {{L"strip", strip}});
        strips.push_back(std::move(strip));
    }
    return strips;
}

} // namespace orv::editor
