#include "cli/element_counts.h"

#include <map>
#include <string_view>

#include "model/device_shape.h"
#include "model/out_format_config.h"

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

Needs NeedsOf(device::ParameterAccess& access) {
    const std::int32_t formats = model::FormatCount(access);
    Needs needs;
    Add<model::CodeDef>(needs, {model::CodeSlotCount(access), "code slots"});
    Add<model::Group>(needs, {model::GroupLimit(access), "groups"});
    Add<model::AdvancedFormat>(needs, {formats, "formats"});
    Add<model::OutItem>(needs, {formats * model::ItemSlotCount(access, formats), "items"});
    return needs;
}

} // namespace

std::optional<ShortParameter> FindShort(device::ParameterAccess& access, const sim::DeviceDescription& device) {
    Needs needs;
    try {
        needs = NeedsOf(access);
    } catch (const Error&) {
        return {};
    }
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
