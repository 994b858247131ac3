#include "host/sim/description.h"

#include <algorithm>

#include "host/sim/utf8.h"
#include "text/bytes.h"

namespace orv::sim {

const DeviceDescription* SystemDescription::Find(std::int16_t cluster, std::int16_t device) const {
    const auto found = std::find_if(devices.begin(), devices.end(), [&](const DeviceDescription& candidate) {
        return candidate.cluster == cluster && candidate.device == device;
    });
    return found == devices.end() ? nullptr : &*found;
}

bool operator==(const ParameterDescription& a, const ParameterDescription& b) {
    const device::Description& x = a.details;
    const device::Description& y = b.details;
    return a.number == b.number && a.path == b.path && a.type == b.type && a.level == b.level &&
           x.elementCount == y.elementCount && x.choices == y.choices && x.hasRange == y.hasRange &&
           x.minimum == y.minimum && x.maximum == y.maximum && x.maximumStringLength == y.maximumStringLength &&
           a.values == b.values;
}

bool operator==(const ClusterDescription& a, const ClusterDescription& b) {
    return a.index == b.index && a.description == b.description;
}

bool operator==(const DeviceDescription& a, const DeviceDescription& b) {
    return a.cluster == b.cluster && a.device == b.device && a.description == b.description &&
           a.parameters == b.parameters;
}

bool operator==(const SystemDescription& a, const SystemDescription& b) {
    return a.accessLevel == b.accessLevel && a.clusters == b.clusters && a.devices == b.devices;
}

FileError::FileError(std::string_view file, std::string_view pointer, std::string_view reason)
    : line_(Excerpt(file) + ": " + (pointer.empty() ? "/" : Excerpt(pointer)) + ": " + std::string(reason)) {}

std::wstring FormatValue(const device::Value& value) {
    if (const auto* bytes = std::get_if<Bytes>(&value))
        return text::Hex(*bytes);
    return device::ToText(value);
}

} // namespace orv::sim
