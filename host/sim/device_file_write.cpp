#include <nlohmann/json.hpp>

#include "host/sim/description.h"
#include "host/sim/utf8.h"
#include "platform/file_writer.h"

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

using Sink = std::function<void(std::string_view)>;

/// `row` of each entry, separated by commas.
template <typename Entries, typename Row>
void WriteRows(const Entries& entries, const Sink& write, const Row& row) {
    bool first = true;
    for (const auto& entry : entries) {
        write(first ? "" : ",\n");
        row(entry);
        first = false;
    }
    write(first ? "" : "\n");
}

void WriteDevice(const DeviceDescription& device, const Sink& write) {
    write("    {\n      \"cluster\": " + std::to_string(device.cluster) +
          ",\n      \"device\": " + std::to_string(device.device) +
          ",\n      \"description\": " + Json(ToUtf8(device.description)).dump() + ",\n      \"parameters\": [\n");
    WriteRows(device.parameters, write,
              [&](const auto& parameter) { write("        " + ParameterJson(parameter).dump()); });
    write("      ]\n    }");
}

} // namespace

void WriteDescription(const SystemDescription& system, const Sink& write) {
    write("{\n  \"accessLevel\": " + std::to_string(system.accessLevel) + ",\n  \"clusters\": [\n");
    WriteRows(system.clusters, write, [&](const ClusterDescription& cluster) {
        write("    " + Json{{"index", cluster.index}, {"description", ToUtf8(cluster.description)}}.dump());
    });
    write("  ],\n  \"devices\": [\n");
    WriteRows(system.devices, write, [&](const DeviceDescription& device) { WriteDevice(device, write); });
    write("  ]\n}\n");
}

std::string FormatDescription(const SystemDescription& system) {
    std::string text;
    WriteDescription(system, [&text](std::string_view bytes) { text += bytes; });
    return text;
}

void SaveDescription(const SystemDescription& system, const std::filesystem::path& file) {
    try {
        platform::FileWriter writer(file.native());
        WriteDescription(system, [&writer](std::string_view bytes) { writer.Append(bytes); });
        writer.Commit();
    } catch (const Error& error) {
        // The wide form would depend on the locale outside Windows.
        const std::u8string name = file.u8string();
        throw FileError(std::string(name.begin(), name.end()), "",
                        "the file cannot be written: " + ToUtf8(error.Description()));
    }
}

} // namespace orv::sim
