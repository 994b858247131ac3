#include <set>

#include "cli/assignment.h"
#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/values.h"
#include "host/sim/utf8.h"
#include "text/excerpt.h"

namespace orv::cli {
namespace {

struct Expected {
    std::wstring name;
    std::wstring value;
};

std::vector<Expected> ValuesOf(model::OutFormatConfig& model, const std::vector<Assignment>& assignments,
                               device::ParameterAccess& access) {
    std::vector<Expected> values;
    values.reserve(assignments.size());
    for (const Assignment& assignment : assignments)
        values.push_back({assignment.name, FieldText(Resolve(model, assignment.name), access)});
    return values;
}

/// A save keeps a fixed length as minimum = maximum and 0.
bool KeptAsFixedLength(model::OutFormatConfig& saved, const Expected& expected) {
    const NamePart slot = ParseName(expected.name)[0];
    if (!slot.index || !SameIgnoringCase(slot.name, L"Codes"))
        return false;
    const model::CodeDef* code = saved.Codes().Code(*slot.index);
    return code->Length() == 0 && expected.value == std::to_wstring(code->MinLength()) &&
           code->MinLength() == code->MaxLength();
}

std::wstring Reason(const FieldRef& field, const model::OutFormatConfig& saved) {
    if (std::holds_alternative<ExpressionField>(field.place) &&
        saved.Codes().Combination() != model::kCombinationByExpression)
        return L"an expression counts only with Codes.Combination=2";
    if (field.name == L"MinLength" || field.name == L"MaxLength")
        return L"the slot has a fixed Length";
    return L"the save puts another value there";
}

/// What the configuration holds, also behind a value of the same slot that cannot be read.
std::wstring NowText(const FieldRef& field, device::ParameterAccess& access) {
    if (field.IsRead())
        return FieldText(field, access);
    const device::Value value = access.Read(field.number, static_cast<std::int16_t>(field.element));
    const bool isText = field.type == device::WireType::Text || field.type == device::WireType::ByteArray;
    return isText ? DisplayText(access.AsByteString(value), access) : device::ToText(value);
}

/// Nothing that somebody asked for is lost without a word.
void RequireKept(DeviceFile& file, const std::vector<Expected>& expected) {
    device::ParameterAccess access(file.State());
    model::OutFormatConfig saved(file.State());
    saved.Reload();
    for (const Expected& one : expected) {
        const FieldRef field = Resolve(saved, one.name);
        const std::wstring now = NowText(field, access);
        if (now == one.value || (field.name == L"Length" && KeptAsFixedLength(saved, one)))
            continue;
        throw AssignmentError(one.name, Quoted(text::Excerpt(one.value)) + L" would become " +
                                            Quoted(text::Excerpt(now)) + L": " + Reason(field, saved));
    }
}

} // namespace

void SetFields(DeviceFile& file, const std::vector<std::string>& texts, const std::string& target, bool force,
               std::ostream& out, std::ostream& err) {
    std::vector<Assignment> assignments;
    assignments.reserve(texts.size());
    for (const std::string& text : texts)
        assignments.push_back(ParseAssignment(sim::FromUtf8(text)));
    for (const Assignment& assignment : assignments)
        Apply(file.Model(), file.State(), assignment, force);
    device::ParameterAccess access(file.State());
    const std::vector<Expected> expected = ValuesOf(file.Model(), assignments, access);
    file.Model().Save(false);
    RequireKept(file, expected);
    if (target == "-")
        sim::WriteDescription(file.Contents(), [&out](std::string_view bytes) { out << bytes; });
    else
        sim::SaveDescription(file.Contents(), std::filesystem::u8path(target));
    PrintLeftOut(file, file.Model().LastSave().leftOut, err);
}

} // namespace orv::cli
