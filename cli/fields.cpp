#include "cli/fields.h"

#include <utility>

#include "cli/values.h"

namespace orv::cli {
namespace {

using model::OutFormatConfig;

std::wstring Indexed(const std::wstring& name, std::int32_t index) {
    return name + L"(" + std::to_wstring(index) + L")";
}

template <typename Class>
FieldRef Ref(std::wstring name, const model::Field<Class>& row, int part, Class& object, std::int32_t element,
             Place place) {
    const int cell = model::CellOf(row) + part;
    return {std::move(name), row.parameter + part,           element, row.type,
            place,           &std::as_const(object).Marks(), cell,    [&object, cell] { object.Stored(cell); }};
}

template <typename Class>
void Append(Section& section, Class& object, std::int32_t element) {
    for (const model::Field<Class>& row : Class::Fields())
        std::visit(
            [&](auto member) {
                auto& property = object.*member;
                if constexpr (std::is_same_v<decltype(member), model::SevenFlags Class::*>) {
                    for (int i = 0; i < model::SevenFlags::kCount; ++i)
                        section.fields.push_back(
                            Ref(Indexed(row.name, i), row, i, object, element, SwitchField{&property, i}));
                } else {
                    section.fields.push_back(Ref(row.name, row, 0, object, element, &property));
                }
            },
            row.member);
}

template <typename Class>
Section SectionOf(std::wstring name, Class& object, std::int32_t element) {
    Section section{std::move(name), {}};
    Append(section, object, element);
    return section;
}

} // namespace

Section RootSection(OutFormatConfig& model) {
    Section section = SectionOf(L"", model, 0);
    for (int i = 0; i < model::kCustomCodeIDCount; ++i)
        section.fields.push_back({Indexed(L"CustomCodeID", i), model::kFirstCustomCodeIDParameter + i, 0,
                                  device::WireType::ByteArray, CustomCodeField{&model, i},
                                  &std::as_const(model).Marks(), OutFormatConfig::CustomCodeCell(i), [] {}});
    return section;
}

Section StandardSection(OutFormatConfig& model) {
    return SectionOf(L"StandardFormat", model.StandardFormat(), 0);
}

Section CodesSection(OutFormatConfig& model) {
    Section section = SectionOf(L"Codes", model.Codes(), 0);
    // What is saved is made from the groups; the text beside them is the load's.
    for (FieldRef& field : section.fields)
        if (field.name == L"Expression")
            field.place = ExpressionField{&model.Codes()};
    return section;
}

Section CodeSection(OutFormatConfig& model, std::int32_t code) {
    model::CodeDef& slot = *model.Codes().Code(code);
    return SectionOf(Indexed(L"Codes", code), slot, slot.Index() - 1);
}

Section GroupSection(OutFormatConfig& model, std::int32_t group) {
    return SectionOf(Indexed(L"Groups", group), model.Codes().Groups().Item(group), group - 1);
}

Section FormatSection(OutFormatConfig& model, std::int32_t format) {
    return SectionOf(Indexed(L"AdvancedFormats", format), model.AdvancedFormats().Item(format), format - 1);
}

Section ItemSection(OutFormatConfig& model, std::int32_t format, std::int32_t item) {
    const std::int32_t element = (format - 1) * model.AdvancedFormats().ItemSlots() + item - 1;
    return SectionOf(Indexed(L"AdvancedFormats", format) + L"." + Indexed(L"OutItems", item),
                     model.AdvancedFormats().Item(format).OutItems().Item(item), element);
}

std::vector<Section> AllSections(OutFormatConfig& model) {
    std::vector<Section> sections{RootSection(model), CodesSection(model)};
    for (std::int32_t n = 1; n <= model.Codes().Count(); ++n)
        sections.push_back(CodeSection(model, n));
    for (std::int32_t n = 1; n <= model.Codes().Groups().Count(); ++n)
        sections.push_back(GroupSection(model, n));
    sections.push_back(StandardSection(model));
    for (std::int32_t n = 1; n <= model.AdvancedFormats().Count(); ++n) {
        sections.push_back(FormatSection(model, n));
        for (std::int32_t item = 1; item <= model.AdvancedFormats().Item(n).OutItems().Count(); ++item)
            sections.push_back(ItemSection(model, n, item));
    }
    return sections;
}

device::Value FieldValue(const FieldRef& field) {
    return std::visit(
        [](const auto& place) -> device::Value {
            using Kind = std::decay_t<decltype(place)>;
            if constexpr (std::is_same_v<Kind, model::Property<bool>*>)
                return std::int16_t{(*place)()};
            else if constexpr (std::is_same_v<Kind, SwitchField>)
                return std::int16_t{(*place.flags)(place.index)};
            else if constexpr (std::is_same_v<Kind, CustomCodeField>)
                return place.root->CustomCodeID(place.index);
            else if constexpr (std::is_same_v<Kind, ExpressionField>)
                return place.codes->Groups().GetExpression(false);
            else
                return (*place)();
        },
        field.place);
}

std::wstring FieldText(const FieldRef& field, device::ParameterAccess& access) {
    const device::Value value = FieldValue(field);
    const auto* text = std::get_if<std::wstring>(&value);
    return text != nullptr ? DisplayText(*text, access) : device::ToText(value);
}

} // namespace orv::cli
