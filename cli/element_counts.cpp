#include "cli/element_counts.h"

#include <map>
#include <string_view>

#include "model/field.h"

namespace orv::cli {
namespace {

struct Need {
    std::int32_t elements;
    std::string_view what;
};
using Needs = std::map<std::int32_t, Need>; ///< by parameter

template <typename Class>
void Add(Needs& needs, const Need& need) {
    for (const model::Field<Class>& row : Class::Fields()) {
        const bool flags = std::holds_alternative<model::SevenFlags Class::*>(row.member);
        for (int part = 0; part < (flags ? model::SevenFlags::kCount : 1); ++part)
            needs.emplace(row.parameter + part, need);
    }
}

Needs NeedsOf(const model::OutFormatConfig& model) {
    const std::int32_t formats = model.AdvancedFormats().Count();
    Needs needs;
    Add<model::CodeDef>(needs, {model.Codes().Count(), "code slots"});
    Add<model::Group>(needs, {model.Codes().Groups().MaxCount(), "groups"});
    Add<model::AdvancedFormat>(needs, {formats, "formats"});
    Add<model::OutItem>(needs, {formats * model.AdvancedFormats().ItemSlots(), "items"});
    return needs;
}

} // namespace

std::optional<ShortParameter> FindShort(const model::OutFormatConfig& model, const sim::DeviceDescription& device) {
    const Needs needs = NeedsOf(model);
    for (std::size_t i = 0; i < device.parameters.size(); ++i) {
        const auto need = needs.find(device.parameters[i].number);
        const std::int32_t elements = device.parameters[i].details.elementCount;
        if (need != needs.end() && elements < need->second.elements)
            return ShortParameter{i, std::to_string(elements) + " elements for " +
                                         std::to_string(need->second.elements) + " " + std::string(need->second.what)};
    }
    return {};
}

} // namespace orv::cli
