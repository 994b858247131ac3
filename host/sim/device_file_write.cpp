#include <fstream>
#include <system_error>

#include <nlohmann/json.hpp>

#include "host/sim/description.h"
#include "host/sim/utf8.h"

namespace orv::sim {
namespace {

using Json = nlohmann::ordered_json;

const char* TypeName(device::WireType type) {
    switch (type) {
    case device::WireType::Int16:
        return "int16";
    case device::WireType::Int32:
        return "int32";
    case device::WireType::Byte:
        return "byte";
    case device::WireType::Text:
        return "text";
    case device::WireType::ByteArray:
        break;
    }
    return "bytes";
}

Json ValueJson(const device::Value& value) {
    if (std::holds_alternative<std::wstring>(value) || std::holds_alternative<Bytes>(value))
        return ToUtf8(FormatValue(value));
    if (std::holds_alternative<std::monostate>(value))
        return nullptr;
    return device::ToInt32(value);
}

Json ParameterJson(const ParameterDescription& parameter) {
    const device::Description& details = parameter.details;
    Json json;
    json["number"] = parameter.number;
    json["path"] = ToUtf8(parameter.path);
    json["type"] = TypeName(parameter.type);
    json["level"] = parameter.level;
    json["elementCount"] = details.elementCount;
    for (const device::Choice& choice : details.choices)
        json["enumeration"].push_back(Json{{"value", choice.value}, {"label", ToUtf8(choice.label)}});
    if (details.hasRange) {
        json["minimum"] = details.minimum;
        json["maximum"] = details.maximum;
    }
    if (details.maximumStringLength != 0)
        json["maximumStringLength"] = details.maximumStringLength;
    json["values"] = Json::array();
    for (const device::Value& value : parameter.values)
        json["values"].push_back(ValueJson(value));
    return json;
}

/// `line` of each entry, indented, separated by commas.
template <typename Entries, typename Line>
std::string Rows(const Entries& entries, std::string_view indent, const Line& line) {
    std::string rows;
    for (const auto& entry : entries) {
        rows += rows.empty() ? "" : ",\n";
        rows += std::string(indent) + line(entry);
    }
    return rows.empty() ? rows : rows + "\n";
}

std::string ClusterLine(const ClusterDescription& cluster) {
    return Json{{"index", cluster.index}, {"description", ToUtf8(cluster.description)}}.dump();
}

std::string DeviceBlock(const DeviceDescription& device) {
    return "{\n      \"cluster\": " + std::to_string(device.cluster) +
           ",\n      \"device\": " + std::to_string(device.device) +
           ",\n      \"description\": " + Json(ToUtf8(device.description)).dump() + ",\n      \"parameters\": [\n" +
           Rows(device.parameters, "        ", [](const auto& parameter) { return ParameterJson(parameter).dump(); }) +
           "      ]\n    }";
}

} // namespace

std::string FormatDescription(const SystemDescription& system) {
    return "{\n  \"accessLevel\": " + std::to_string(system.accessLevel) + ",\n  \"clusters\": [\n" +
           Rows(system.clusters, "    ", ClusterLine) + "  ],\n  \"devices\": [\n" +
           Rows(system.devices, "    ", DeviceBlock) + "  ]\n}\n";
}

void SaveDescription(const SystemDescription& system, const std::filesystem::path& file) {
    // The wide form would depend on the locale outside Windows.
    const std::u8string utf8 = file.u8string();
    const std::string name(utf8.begin(), utf8.end());
    std::filesystem::path beside = file;
    beside += ".new";
    std::error_code failed;
    {
        std::ofstream stream(beside, std::ios::binary | std::ios::trunc);
        stream << FormatDescription(system);
        stream.close();
        if (!stream) {
            std::filesystem::remove(beside, failed);
            throw FileError(name, "", "the file cannot be written");
        }
    }
    std::filesystem::rename(beside, file, failed);
    if (failed) {
        const std::string reason = failed.message();
        std::filesystem::remove(beside, failed);
        throw FileError(name, "", "the file cannot be replaced: " + reason);
    }
}

} // namespace orv::sim
