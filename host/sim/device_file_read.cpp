// Description files: from text to what the programs work on.
#include <set>
#include <unordered_set>
#include <utility>

#include <nlohmann/json.hpp>

#include "host/sim/bounded_file.h"
#include "host/sim/description.h"
#include "host/sim/description_parts.h"
#include "host/sim/description_schema.h"
#include "host/sim/utf8.h"
#include "text/bytes.h"

namespace orv::sim {
namespace {

using nlohmann::json;

/// Turns the checked parts of a file into a description. Keeps the place, so that a message can name it.
class Reader : public PartListener {
  public:
    explicit Reader(std::string_view name) : name_(name) {}

    void Begin(Part list) override {
        if (list == Part::Clusters)
            system_.clusters.clear();
        else if (list == Part::Devices)
            system_.devices.clear();
        else if (list == Part::Parameters)
            parameters_.clear();
        else
            choices_.clear();
    }

    void Take(Part part, const json& value, const std::string& place) override {
        RequireSchema(part, value, name_, place);
        if (part == Part::Cluster)
            TakeCluster(value, place);
        else if (part == Part::Device)
            TakeDevice(value, place);
        else if (part == Part::Parameter)
            parameters_.push_back(Parameter(value, place));
        else
            choices_.push_back({value["value"], Text(value["label"])});
    }

    SystemDescription Finish(const json& document) {
        RequireSchema(Part::System, document, name_, "");
        system_.accessLevel = document["accessLevel"];
        std::set<std::int16_t> clusters;
        for (const ClusterDescription& cluster : system_.clusters)
            clusters.insert(cluster.index);
        for (std::size_t i = 0; i < system_.devices.size(); ++i)
            if (!clusters.contains(system_.devices[i].cluster))
                throw FileError(name_, "/devices/" + std::to_string(i) + "/cluster", "there is no such cluster");
        return std::move(system_);
    }

  private:
    static std::wstring Text(const json& entry) { return FromUtf8(entry.get_ref<const std::string&>()); }

    void TakeCluster(const json& entry, const std::string& place) {
        const std::int16_t index = entry["index"];
        for (const ClusterDescription& other : system_.clusters)
            if (other.index == index)
                throw FileError(name_, place + "/index", "this cluster stands in the file twice");
        system_.clusters.push_back({index, Text(entry["description"])});
    }

    void TakeDevice(const json& entry, const std::string& place) {
        DeviceDescription device;
        device.cluster = entry["cluster"];
        device.device = entry["device"];
        device.description = Text(entry["description"]);
        device.parameters = std::exchange(parameters_, {});
        RequireUnique(device.parameters, place);
        if (system_.Find(device.cluster, device.device))
            throw FileError(name_, place + "/device", "this device stands in the file twice");
        system_.devices.push_back(std::move(device));
    }

    void RequireUnique(const std::vector<ParameterDescription>& parameters, const std::string& place) const {
        std::unordered_set<std::int32_t> numbers;
        std::unordered_set<std::wstring_view> paths;
        for (std::size_t i = 0; i < parameters.size(); ++i) {
            const std::string at = place + "/parameters/" + std::to_string(i);
            const ParameterDescription& parameter = parameters[i];
            if (!numbers.insert(parameter.number).second)
                throw FileError(name_, at + "/number",
                                "parameter " + std::to_string(parameter.number) + " stands in the file twice");
            if (!paths.insert(parameter.path).second)
                throw FileError(name_, at + "/path",
                                "path " + Excerpt(ToUtf8(parameter.path)) + " stands in the file twice");
        }
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

    ParameterDescription Parameter(const json& entry, const std::string& place) {
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
        std::vector<device::Value> read;
        read.reserve(values.size());
        for (const json& value : values)
            read.push_back(Value(value, parameter.type, place, read.size()));
        parameter.values = ParameterValues::Packed(read, parameter.type);
        return parameter;
    }

    device::Description Details(const json& entry, const std::string& place) {
        device::Description details;
        details.elementCount = entry["elementCount"];
        details.choices = std::exchange(choices_, {});
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

    device::Value Value(const json& value, device::WireType type, const std::string& place, std::size_t element) const {
        if (value.is_null()) // the entry is there, a value is not
            return {};
        const auto refuse = [&](const char* reason) {
            throw FileError(name_, place + "/values/" + std::to_string(element), reason);
        };
        const bool textual = type == device::WireType::Text || type == device::WireType::ByteArray;
        if (textual != value.is_string())
            refuse(textual ? "a text is wanted" : "a number is wanted");
        try {
            if (type == device::WireType::ByteArray)
                return text::FromHex(Text(value));
            if (textual)
                return Text(value);
            return Number(value, type);
        } catch (const Error&) {
            refuse(textual ? "not a row of hexadecimal digit pairs" : "the number does not fit the type");
        }
        return {};
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
    SystemDescription system_;
    std::vector<ParameterDescription> parameters_; ///< of the device that is being read
    std::vector<device::Choice> choices_;          ///< of the parameter that is being read
};

} // namespace

SystemDescription ParseDescription(std::string_view text, std::string_view name) {
    Reader reader(name);
    const json document = ReadParts(text, name, reader);
    return reader.Finish(document);
}

SystemDescription LoadDescription(const std::filesystem::path& file) {
    return ParseDescription(ReadFile(file), NameOf(file));
}

} // namespace orv::sim
