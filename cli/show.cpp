#include <filesystem>

#include "cli/commands.h"
#include "cli/definition.h"
#include "cli/failure.h"
#include "cli/table.h"
#include "cli/values.h"
#include "host/sim/utf8.h"
#include "model/format_export.h"
#include "model/save_concerns.h"
#include "platform/file_writer.h"
#include "text/excerpt.h"
#include "text/texts.h"

namespace orv::cli {
namespace {

using sim::ToUtf8;

class TextPrinter {
  public:
    TextPrinter(DeviceFile& file, std::ostream& out)
        : model_(file.Model()), access_(file.State()), file_(file), out_(out) {}

    void Print() {
        const Definition definition = Describe(file_);
        const sim::DeviceDescription& device = file_.Store().Contents();
        out_ << (device.description.empty() ? "Device" : ToUtf8(text::Printable(device.description))) << ": cluster "
             << device.cluster << ", device " << device.device << ", access level " << file_.State().current.accessLevel
             << '\n';
        Print(definition.settings);
        Print(definition.codes);
        for (const DefinitionNode& group : definition.groups)
            Print(group);
        Print(definition.standard);
        for (const DefinitionNode& format : definition.formats)
            Print(format);
    }

  private:
    void Print(const DefinitionNode& node) {
        out_ << '\n' << (node.section.name.empty() ? "Settings" : ToUtf8(node.section.name));
        if (!node.title.empty())
            out_ << "  " << ToUtf8(text::Printable(node.title));
        out_ << (node.inUse ? "\n" : "  (not in use)\n");
        Table table("lll");
        for (const FieldRef& field : node.section.fields)
            table.Add({field.name, Shown(field), Note(field)});
        table.Print(out_, "  ");
        for (const DefinitionNode& child : node.children)
            Print(child);
    }

    /// Nothing for what was never read, while the device has it at this level.
    bool IsUnread(const FieldRef& field) { return !field.IsRead() && AbsenceNote(field, access_).empty(); }

    std::wstring Shown(const FieldRef& field) {
        return IsUnread(field) ? std::wstring() : DisplayValue(FieldValue(field), access_);
    }

    std::wstring Note(const FieldRef& field) {
        if (std::wstring absence = AbsenceNote(field, access_); !absence.empty())
            return absence;
        if (const auto* kept = std::get_if<ExpressionField>(&field.place);
            kept && !kept->codes->KeptExpression().empty())
            return L"not understood: " + Quoted(kept->codes->KeptExpression());
        if (!field.IsRead()) {
            const std::wstring failure = field.marks->Failure(field.cell);
            return failure.empty() ? L"not read" : L"not read: " + failure;
        }
        if (const auto* custom = std::get_if<CustomCodeField>(&field.place))
            return model_.CustomCodeIDDefined(custom->index) ? L"" : L"never defined";
        if (const auto* expression = std::get_if<ExpressionField>(&field.place))
            return expression->codes->Groups().GetExpression(true);
        if (field.name == L"Transports")
            return Joined(TransportNames(model_, device::ToInt32(FieldValue(field))));
        return ChoiceLabel(field, access_);
    }

    static std::wstring Joined(const std::vector<std::wstring>& names) {
        std::wstring joined;
        for (const std::wstring& name : names)
            joined += (joined.empty() ? L"" : L", ") + name;
        return joined;
    }

    model::OutFormatConfig& model_;
    device::ParameterAccess access_;
    DeviceFile& file_;
    std::ostream& out_;
};

std::string ConcernLine(const model::SaveConcern& concern) {
    using text::Id;
    if (concern.rule == model::SaveConcern::Rule::CodeIdentifier)
        return "AdvancedFormats(" + std::to_string(concern.format) + ").OutItems(" + std::to_string(concern.item) +
               "): " + ToUtf8(text::Load(Id::ConcernCodeIdentifier));
    return "Codes(" + std::to_string(concern.code) + "): " + ToUtf8(text::Load(Id::ConcernReadingMode)) +
           std::to_string(concern.code) + ".";
}

} // namespace

void ShowText(DeviceFile& file, std::ostream& out) {
    TextPrinter(file, out).Print();
}

int Check(DeviceFile& file, std::ostream& out) {
    const auto concerns = model::SaveConcerns(file.Model());
    for (const model::SaveConcern& concern : concerns) {
        std::string line = ConcernLine(concern);
        line.erase(line.find_last_not_of(' ') + 1);
        out << line << '\n';
    }
    if (concerns.empty())
        out << "no concerns\n";
    return concerns.empty() ? 0 : 1;
}

void Export(DeviceFile& file, const std::string& target, std::ostream& out) {
    const std::string structure = model::FormatStructure(file.Model(), file.State());
    if (target == "-") {
        out << structure;
        return;
    }
    try {
        platform::WriteWhole(std::filesystem::u8path(target).native(), structure);
    } catch (const Error& error) {
        throw Failure(status::kFile, sim::Excerpt(target) +
                                         ": the file cannot be written: " + ToUtf8(text::Excerpt(error.Description())));
    }
}

} // namespace orv::cli
