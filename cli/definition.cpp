#include "cli/definition.h"

#include "cli/values.h"
#include "model/tree_labels.h"

namespace orv::cli {
namespace {

constexpr std::int32_t kHighestLevel = 3;

DefinitionNode DescribeFormat(model::OutFormatConfig& model, std::int32_t position) {
    model::AdvancedFormat& format = model.AdvancedFormats().Item(position);
    DefinitionNode node{
        FormatSection(model, position), model::NodeText(format, position), model::ShowsFormats(model), {}};
    for (std::int32_t item = 1; item <= format.OutItems().Count(); ++item)
        node.children.push_back(
            {ItemSection(model, position, item), format.OutItems().Item(item).GetItemTypeKey(), node.inUse, {}});
    return node;
}

} // namespace

Definition Describe(DeviceFile& file) {
    model::OutFormatConfig& model = file.Model();
    Definition definition{{RootSection(model), {}, true, {}},
                          {CodesSection(model), {}, true, {}},
                          {},
                          {StandardSection(model), {}, !model::ShowsFormats(model), {}},
                          {}};
    for (std::int32_t n = 1; n <= model.Codes().Count(); ++n) {
        const model::CodeDef& code = *model.Codes().Code(n);
        definition.codes.children.push_back({CodeSection(model, n), model::NodeText(code), code.Enabled(), {}});
    }
    if (model::ShowsGroups(model))
        for (const model::Group& group : model.Codes().Groups())
            definition.groups.push_back({GroupSection(model, group.Index()), model::NodeText(group), true, {}});
    for (std::int32_t n = 1; n <= model.AdvancedFormats().Count(); ++n)
        definition.formats.push_back(DescribeFormat(model, n));
    return definition;
}

std::vector<std::wstring> TransportNames(const model::OutFormatConfig& model, std::int32_t transports) {
    std::vector<std::wstring> names;
    for (std::uint8_t bit = 0; bit < 32; ++bit)
        if ((static_cast<std::uint32_t>(transports) >> bit & 1U) != 0)
            names.push_back(model.TransportDesc(bit));
    return names;
}

std::wstring ChoiceLabel(const FieldRef& field, device::ParameterAccess& access) {
    const device::Value value = FieldValue(field);
    return std::holds_alternative<std::wstring>(value)
               ? std::wstring()
               : access.ValueLabel(field.number, device::ToInt32(value), kHighestLevel);
}

std::wstring AbsenceNote(const FieldRef& field, device::ParameterAccess& access) {
    if (access.ElementCount(field.number, kHighestLevel) <= field.element)
        return L"not on this device";
    return access.SetupFor(field.number).present ? L"" : L"above the access level";
}

} // namespace orv::cli
