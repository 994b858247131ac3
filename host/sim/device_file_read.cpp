#include <fstream>
#include <iterator>
#include <memory>
#include <set>
#include <system_error>

#include <nlohmann/json.hpp>
#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validation_results.hpp>
#include <valijson/validator.hpp>

#include "host/sim/description.h"
#include "host/sim/device_file_schema.h"
#include "host/sim/utf8.h"
#include "text/bytes.h"

namespace orv::sim {
namespace {

using nlohmann::json;
using valijson::adapters::NlohmannJsonAdapter;

/// The context of a validation error comes as "<root>", "[devices]", "[0]", ...
std::string Pointer(const std::vector<std::string>& context) {
    std::string pointer;
    for (const std::string& part : context)
        if (part.size() > 2 && part.front() == '[')
            pointer += "/" + part.substr(1, part.size() - 2);
    return pointer;
}

const valijson::Schema& FileSchema() {
    static const std::unique_ptr<const valijson::Schema> schema = [] {
        auto made = std::make_unique<valijson::Schema>();
        const json text = json::parse(kDeviceFileSchema);
        valijson::SchemaParser().populateSchema(NlohmannJsonAdapter(text), *made);
        return made;
    }();
    return *schema;
}

/// Turns a checked document into a description. Keeps the place, so that a message can name it.
class Reader {
  public:
    explicit Reader(std::string_view name) : name_(name) {}

    json Parse(std::string_view text) const {
        try {
            return json::parse(text);
        } catch (const json::exception& error) {
            throw FileError(name_, "", std::string("not JSON: ") + error.what());
        }
    }

    void CheckSchema(const json& document) const {
        valijson::ValidationResults results;
        valijson::Validator validator;
        if (validator.validate(FileSchema(), NlohmannJsonAdapter(document), &results))
            return;
        // The innermost place is the one that the writer of the file has to mend.
        valijson::ValidationResults::Error worst;
        for (const auto& error : results)
            if (error.context.size() > worst.context.size())
                worst = error;
        throw FileError(name_, Pointer(worst.context), worst.description);
    }

    SystemDescription System(const json& document) const {
        SystemDescription system;
        system.accessLevel = document["accessLevel"];
        std::set<std::int16_t> clusters;
        for (const json& entry : document["clusters"]) {
            const std::string place = "/clusters/" + std::to_string(system.clusters.size());
            system.clusters.push_back({entry["index"], Text(entry["description"])});
            if (!clusters.insert(system.clusters.back().index).second)
                throw FileError(name_, place + "/index", "this cluster stands in the file twice");
        }
        for (const json& entry : document["devices"]) {
            const std::string place = "/devices/" + std::to_string(system.devices.size());
            DeviceDescription device = Device(entry, place);
            if (system.Find(device.cluster, device.device))
                throw FileError(name_, place + "/device", "this device stands in the file twice");
            if (!clusters.contains(device.cluster))
                throw FileError(name_, place + "/cluster", "there is no such cluster");
            system.devices.push_back(std::move(device));
        }
        return system;
    }

  private:
    static std::wstring Text(const json& entry) { return FromUtf8(entry.get_ref<const std::string&>()); }

    DeviceDescription Device(const json& entry, const std::string& place) const {
        DeviceDescription device;
        device.cluster = entry["cluster"];
        device.device = entry["device"];
        device.description = Text(entry["description"]);
        std::set<std::int32_t> numbers;
        std::set<std::wstring> paths;
        for (const json& one : entry["parameters"]) {
            const std::string at = place + "/parameters/" + std::to_string(device.parameters.size());
            ParameterDescription parameter = Parameter(one, at);
            if (!numbers.insert(parameter.number).second)
                throw FileError(name_, at + "/number",
                                "parameter " + std::to_string(parameter.number) + " stands in the file twice");
            if (!paths.insert(parameter.path).second)
                throw FileError(name_, at + "/path", "path " + ToUtf8(parameter.path) + " stands in the file twice");
            device.parameters.push_back(std::move(parameter));
        }
        return device;
    }

    /// Checked here and not by a pattern of the schema: the library's pattern matching needs stack for each character.
    std::wstring Path(const json& entry, const std::string& place) const {
        std::wstring path = Text(entry);
        if (path.size() < 2 || path.front() != L'/' || path.find_first_of(L"[]") != std::wstring::npos)
            throw FileError(name_, place + "/path", "a path is / and a name without brackets");
        return path;
    }

    static device::WireType Type(const std::string& name) {
        using device::WireType;
        return name == "int16"   ? WireType::Int16
               : name == "int32" ? WireType::Int32
               : name == "byte"  ? WireType::Byte
               : name == "text"  ? WireType::Text
                                 : WireType::ByteArray;
    }

    ParameterDescription Parameter(const json& entry, const std::string& place) const {
        ParameterDescription parameter;
        parameter.number = entry["number"];
        parameter.path = Path(entry["path"], place);
        parameter.type = Type(entry["type"]);
        parameter.level = entry["level"];
        parameter.details = Details(entry, place);
        const json& values = entry["values"];
        if (values.size() != static_cast<std::size_t>(parameter.details.elementCount))
            throw FileError(name_, place + "/values",
                            std::to_string(values.size()) + " values for " +
                                std::to_string(parameter.details.elementCount) + " elements");
        for (const json& value : values)
            parameter.values.push_back(
                Value(value, parameter.type, place + "/values/" + std::to_string(parameter.values.size())));
        return parameter;
    }

    device::Description Details(const json& entry, const std::string& place) const {
        device::Description details;
        details.elementCount = entry["elementCount"];
        if (entry.contains("enumeration"))
            for (const json& choice : entry["enumeration"])
                details.choices.push_back({choice["value"], Text(choice["label"])});
        details.hasRange = entry.contains("minimum");
        if (details.hasRange) {
            details.minimum = entry["minimum"];
            details.maximum = entry["maximum"];
            if (details.minimum > details.maximum)
                throw FileError(name_, place + "/minimum", "the minimum is above the maximum");
        }
        details.maximumStringLength = entry.value("maximumStringLength", 0);
        return details;
    }

    device::Value Value(const json& value, device::WireType type, const std::string& place) const {
        if (value.is_null()) // the entry is there, a value is not
            return {};
        const bool textual = type == device::WireType::Text || type == device::WireType::ByteArray;
        if (textual != value.is_string())
            throw FileError(name_, place, textual ? "a text is wanted" : "a number is wanted");
        try {
            if (type == device::WireType::ByteArray)
                return text::FromHex(Text(value));
            if (textual)
                return Text(value);
            return Number(value, type);
        } catch (const Error&) {
            throw FileError(name_, place,
                            textual ? "not a row of hexadecimal digit pairs" : "the number does not fit the type");
        }
    }

    static device::Value Number(const json& value, device::WireType type) {
        // A number above the signed range would come out negative.
        if (value.is_number_unsigned() && value.get<std::uint64_t>() > 0x7FFFFFFFU)
            throw Error(error_number::kOverflow);
        const auto number = value.get<std::int64_t>();
        if (number < INT32_MIN)
            throw Error(error_number::kOverflow);
        return device::Convert(static_cast<std::int32_t>(number), type);
    }

    std::string name_;
};

} // namespace

SystemDescription ParseDescription(std::string_view text, std::string_view name) {
    const Reader reader(name);
    const json document = reader.Parse(text);
    reader.CheckSchema(document);
    return reader.System(document);
}

SystemDescription LoadDescription(const std::filesystem::path& file) {
    // The wide form would depend on the locale outside Windows.
    const std::u8string utf8 = file.u8string();
    const std::string name(utf8.begin(), utf8.end());
    std::error_code failed;
    std::ifstream stream(file, std::ios::binary);
    if (!stream || std::filesystem::is_directory(file, failed))
        throw FileError(name, "", "the file cannot be read");
    const std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (stream.bad())
        throw FileError(name, "", "the file cannot be read");
    return ParseDescription(text, name);
}

} // namespace orv::sim
