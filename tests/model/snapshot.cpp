#include "tests/model/snapshot.h"

#include <algorithm>
#include <type_traits>

namespace orv::test {
namespace {

class Writer {
  public:
    template <typename T>
    void Add(std::wstring_view name, const T& value) {
        text += name;
        text += L'=';
        if constexpr (std::is_convertible_v<T, std::wstring>)
            text += value;
        else
            text += std::to_wstring(value);
        text += L'\n';
    }

    template <typename Class>
    void AddFields(const Class& object) {
        for (const auto& field : Class::Fields())
            std::visit([&](auto member) { AddProperty(field.name, object.*member); }, field.member);
    }

    std::wstring text;

  private:
    template <typename T>
    void AddProperty(const wchar_t* name, const model::Property<T>& property) {
        Add(name, property());
    }
    void AddProperty(const wchar_t* name, const model::SevenFlags& flags) {
        for (int i = 0; i < model::SevenFlags::kCount; ++i)
            Add(name, flags(i));
    }
};

void AddRoot(Writer& writer, model::OutFormatConfig& root) {
    writer.AddFields(root);
    for (int i = 0; i < model::kCustomCodeIDCount; ++i) {
        writer.Add(L"custom", root.CustomCodeID(i));
        writer.Add(L"defined", root.CustomCodeIDDefined(i));
    }
    writer.Add(L"available", root.AvailableTransports());
    writer.Add(L"not used", root.NotUsedCodeRelTypes());
    writer.Add(L"not used", root.NotUsedGlobalTypes());
    for (int i = 0; i < 32; ++i)
        writer.Add(L"transport", root.TransportDesc(static_cast<std::uint8_t>(i)));
    writer.AddFields(root.StandardFormat());
}

void AddCodes(Writer& writer, model::Codes& codes) {
    writer.AddFields(codes);
    writer.Add(L"slots", codes.Count());
    for (std::int32_t i = 1; i <= codes.Count(); ++i) {
        const model::CodeDef& code = *codes.Code(i);
        writer.Add(L"index", code.Index());
        writer.Add(L"key", codes.Code(L"Code" + std::to_wstring(i)) == &code);
        writer.AddFields(code);
        if (code.CodeType() >= 0 && code.CodeType() < 256)
            writer.Add(L"caption", code.Description());
    }
}

void AddGroups(Writer& writer, const model::Groups& groups) {
    writer.Add(L"groups", groups.Count());
    for (const model::Group& group : groups) {
        writer.Add(L"index", group.Index());
        writer.Add(L"optional", group.IsOptional());
        writer.Add(L"multiple", group.Multiple());
        for (const std::wstring& code : group.Codes())
            writer.Add(L"code", code);
        writer.AddFields(group);
    }
}

/// An item that was moved or added since the load goes by no key.
bool HasKey(model::OutItems& items, const std::wstring& key, const model::OutItem& item) {
    try {
        return &items.Item(key) == &item;
    } catch (const Error&) {
        return false;
    }
}

void AddFormats(Writer& writer, model::AdvancedFormats& formats, bool cutItems) {
    writer.Add(L"formats", formats.Count());
    for (std::int32_t i = 1; i <= formats.Count(); ++i) {
        model::AdvancedFormat& format = formats.Item(i);
        writer.Add(L"index", format.Index());
        writer.Add(L"key", &formats.Item(L"Format" + std::to_wstring(i)) == &format);
        writer.Add(L"label", format.GetLabel());
        writer.Add(L"most", format.MaxItemsCount());
        writer.AddFields(format);
        std::int32_t items = format.OutItems().Count();
        if (cutItems)
            items = std::min<std::int32_t>(items, format.MaxItemsCount());
        writer.Add(L"items", items);
        for (std::int32_t j = 1; j <= items; ++j) {
            const model::OutItem& item = format.OutItems().Item(j);
            writer.Add(L"index", item.Index());
            writer.Add(L"key", HasKey(format.OutItems(), L"Item" + std::to_wstring(j), item));
            writer.Add(L"type", item.GetItemTypeKey());
            writer.AddFields(item);
        }
    }
}

} // namespace

std::wstring Snapshot(model::OutFormatConfig& root, const SnapshotOptions& options) {
    Writer writer;
    AddRoot(writer, root);
    AddCodes(writer, root.Codes());
    if (options.groups)
        AddGroups(writer, root.Codes().Groups());
    if (options.maxCount)
        writer.Add(L"most groups", root.Codes().Groups().MaxCount());
    AddFormats(writer, root.AdvancedFormats(), options.cutItems);
    return writer.text;
}

} // namespace orv::test
