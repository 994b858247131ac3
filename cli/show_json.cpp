#include <ostream>

#include <nlohmann/json.hpp>

#include "cli/commands.h"
#include "cli/definition.h"
#include "cli/values.h"
#include "host/sim/utf8.h"

namespace orv::cli {
namespace {

using nlohmann::ordered_json;
using sim::ToUtf8;

class JsonPrinter {
  public:
    explicit JsonPrinter(DeviceFile& file) : model_(file.Model()), access_(file.State()), file_(file) {}

    ordered_json Document() {
        const Definition definition = Describe(file_);
        const sim::DeviceDescription& device = file_.Store().Contents();
        ordered_json document{{"cluster", device.cluster},
                              {"device", device.device},
                              {"description", ToUtf8(device.description)},
                              {"accessLevel", file_.State().current.accessLevel}};
        document.update(Fields(definition.settings.section));
        document["Codes"] = Fields(definition.codes.section);
        document["Codes"]["readableExpression"] = ToUtf8(model_.Codes().Groups().GetExpression(true));
        document["Codes"]["slots"] = ordered_json::array();
        for (const DefinitionNode& slot : definition.codes.children)
            document["Codes"]["slots"].push_back(Slot(slot));
        document["Groups"] = Nodes(definition.groups);
        document["StandardFormat"] = Node(definition.standard);
        document["AdvancedFormats"] = ordered_json::array();
        for (const DefinitionNode& format : definition.formats)
            document["AdvancedFormats"].push_back(Format(format));
        return document;
    }

  private:
    ordered_json Node(const DefinitionNode& node) {
        ordered_json object{{"name", ToUtf8(node.section.name)}};
        if (!node.title.empty())
            object["title"] = ToUtf8(node.title);
        object["inUse"] = node.inUse;
        object.update(Fields(node.section));
        return object;
    }

    ordered_json Nodes(const std::vector<DefinitionNode>& nodes) {
        ordered_json array = ordered_json::array();
        for (const DefinitionNode& node : nodes)
            array.push_back(Node(node));
        return array;
    }

    ordered_json Slot(const DefinitionNode& slot) {
        ordered_json object = Node(slot);
        object["symbology"] = nullptr;
        if (const ordered_json& type = object["CodeType"]; !type.is_null())
            object["symbology"] = ToUtf8(model_.Codes().CodeDescription(type.get<std::int32_t>() & 0xFF));
        return object;
    }

    ordered_json Format(const DefinitionNode& format) {
        ordered_json object = Node(format);
        object["transportNames"] = ordered_json::array();
        const ordered_json& transports = object["Transports"];
        const std::int32_t mask = transports.is_null() ? 0 : transports.get<std::int32_t>();
        for (const std::wstring& name : TransportNames(model_, mask))
            object["transportNames"].push_back(ToUtf8(name));
        object["OutItems"] = ordered_json::array();
        for (const DefinitionNode& item : format.children) {
            ordered_json entry = Node(item);
            entry.erase("title");
            entry["typeKey"] = ToUtf8(item.title);
            object["OutItems"].push_back(std::move(entry));
        }
        return object;
    }

    /// A field with an index becomes an array.
    ordered_json Fields(const Section& section) {
        ordered_json object = ordered_json::object();
        for (const FieldRef& field : section.fields) {
            const std::size_t open = field.name.find(L'(');
            const std::string name = ToUtf8(field.name.substr(0, open));
            if (open == std::wstring::npos)
                object[name] = Value(field);
            else
                object[name].push_back(Value(field));
        }
        return object;
    }

    ordered_json Value(const FieldRef& field) {
        if (!field.IsRead() && AbsenceNote(field, access_).empty())
            return nullptr;
        if (const auto* custom = std::get_if<CustomCodeField>(&field.place))
            if (!model_.CustomCodeIDDefined(custom->index))
                return nullptr;
        const device::Value value = FieldValue(field);
        if (std::holds_alternative<std::wstring>(value))
            return ToUtf8(FieldText(field, access_));
        const std::int32_t number = device::ToInt32(value);
        const bool isSwitch = std::holds_alternative<model::Property<bool>*>(field.place) ||
                              std::holds_alternative<SwitchField>(field.place);
        return isSwitch ? ordered_json(number != 0) : ordered_json(number);
    }

    model::OutFormatConfig& model_;
    device::ParameterAccess access_;
    DeviceFile& file_;
};

} // namespace

void ShowJson(DeviceFile& file, std::ostream& out) {
    out << JsonPrinter(file).Document().dump(2) << '\n';
}

} // namespace orv::cli
