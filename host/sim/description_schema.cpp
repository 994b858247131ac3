#include "host/sim/description_schema.h"

#include <map>
#include <memory>
#include <vector>

#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validation_results.hpp>
#include <valijson/validator.hpp>

#include "host/sim/description.h"
#include "host/sim/device_file_schema.h"
#include "host/sim/utf8.h"

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

const char* DefinitionOf(Part part) {
    switch (part) {
    case Part::Cluster:
        return "cluster";
    case Part::Device:
        return "device";
    case Part::Parameter:
        return "parameter";
    case Part::Choice:
        return "choice";
    default:
        return nullptr;
    }
}

std::unique_ptr<const valijson::Schema> MakeSchema(const json& file, const char* definition) {
    json text = file;
    if (definition != nullptr)
        text = {{"definitions", file["definitions"]}, {"$ref", std::string("#/definitions/") + definition}};
    auto made = std::make_unique<valijson::Schema>();
    valijson::SchemaParser().populateSchema(NlohmannJsonAdapter(text), *made);
    return made;
}

const valijson::Schema& SchemaOf(Part part) {
    static const auto schemas = [] {
        const json file = json::parse(kDeviceFileSchema);
        std::map<Part, std::unique_ptr<const valijson::Schema>> made;
        for (const Part each : {Part::System, Part::Cluster, Part::Device, Part::Parameter, Part::Choice})
            made.emplace(each, MakeSchema(file, DefinitionOf(each)));
        return made;
    }();
    return *schemas.at(part);
}

} // namespace

void RequireSchema(Part part, const json& value, std::string_view name, const std::string& place) {
    valijson::Validator validator;
    const NlohmannJsonAdapter adapter(value);
    if (validator.validate(SchemaOf(part), adapter, nullptr))
        return;
    valijson::ValidationResults results;
    validator.validate(SchemaOf(part), adapter, &results);
    // The innermost place is the one that the writer of the file has to mend.
    valijson::ValidationResults::Error worst;
    for (const auto& error : results)
        if (error.context.size() > worst.context.size())
            worst = error;
    throw FileError(name, place + Pointer(worst.context), Excerpt(worst.description));
}

} // namespace orv::sim
