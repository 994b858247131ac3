#include "cli/assignment.h"

#include <algorithm>
#include <limits>

#include "cli/expression.h"
#include "cli/values.h"
#include "device/parameter_access.h"
#include "text/excerpt.h"
#include "text/texts.h"

namespace orv::cli {
namespace {

constexpr std::int32_t kHighestLevel = 3;

/// The description of the parameter that carries the field. Raises ValueError when nothing would be written to it.
device::Description Writable(const FieldRef& field, device::ParameterAccess& access) {
    const std::wstring parameter = L"parameter " + std::to_wstring(field.number);
    const device::ControlSetup setup = access.SetupFor(field.number);
    if (!setup.present)
        throw ValueError(access.ElementCount(field.number, kHighestLevel) > 0
                             ? parameter + L" is above the current access level"
                             : L"the device has no " + parameter);
    if (field.element >= setup.description.elementCount)
        throw ValueError(parameter + L" has no element " + std::to_wstring(field.element) + L" on this device");
    return setup.description;
}

/// Length, minimum and maximum are saved together or not at all.
void RequireWholeLength(const FieldRef& field, device::ParameterAccess& access) {
    constexpr std::int32_t kMinimum = 3;
    constexpr std::int32_t kMaximum = 4;
    constexpr std::int32_t kFixed = 70;
    if (field.number != kMinimum && field.number != kMaximum && field.number != kFixed)
        return;
    const auto isPresent = [&](std::int32_t number) { return access.SetupFor(number).present; };
    if (isPresent(kFixed) && !(isPresent(kMinimum) && isPresent(kMaximum)))
        throw ValueError(text::Load(text::Id::ReasonLengthParts));
}

std::wstring ChoiceList(const std::vector<device::Choice>& choices) {
    constexpr std::size_t kMost = 40; // of what may be thousands
    std::wstring list;
    for (std::size_t i = 0; i < std::min(choices.size(), kMost); ++i)
        list +=
            (list.empty() ? L"" : L", ") + std::to_wstring(choices[i].value) + L" " + text::Excerpt(choices[i].label);
    return choices.size() > kMost ? list + L", ..." : list;
}

void CheckNumber(std::int32_t number, const device::Description& description) {
    const auto& choices = description.choices;
    if (!choices.empty() && std::none_of(choices.begin(), choices.end(),
                                         [number](const device::Choice& choice) { return choice.value == number; }))
        throw ValueError(std::to_wstring(number) + L" is none of " + ChoiceList(choices));
    if (description.hasRange && (number < description.minimum || number > description.maximum))
        throw ValueError(std::to_wstring(number) + L" is outside " + std::to_wstring(description.minimum) + L" to " +
                         std::to_wstring(description.maximum));
}

void CheckLength(const std::wstring& text, const device::Description& description) {
    const std::int32_t maximum = description.maximumStringLength;
    if (maximum > 0 && text.size() > static_cast<std::size_t>(maximum))
        throw ValueError(std::to_wstring(text.size()) + L" characters are more than " + std::to_wstring(maximum));
}

template <typename Number>
Number ReadNumber(const std::wstring& value) {
    return static_cast<Number>(
        ParseNumber(value, static_cast<int>(sizeof(Number) * 8), std::numeric_limits<Number>::is_signed));
}

/// Reads a value for one field, checks it and stores it.
class Setter {
  public:
    Setter(const FieldRef& field, device::ParameterAccess& access, const std::wstring& value, bool force)
        : field_(field), access_(access), value_(value), force_(force), description_(Writable(field, access)) {}

    template <typename Number>
    void operator()(model::Property<Number>* property) const {
        const auto number = ReadNumber<Number>(value_);
        Check(number);
        (*property)(number);
    }
    void operator()(model::Property<bool>* property) const {
        const bool on = ParseSwitch(value_);
        Check(on ? 1 : 0);
        (*property)(on);
    }
    void operator()(model::Property<std::wstring>* property) const { (*property)(Text()); }
    void operator()(SwitchField place) const {
        const bool on = ParseSwitch(value_);
        Check(on ? 1 : 0);
        (*place.flags)(place.index, on);
    }
    void operator()(CustomCodeField place) const {
        if (!place.root->CustomCodeIDDefined(place.index))
            throw ValueError(L"the device never defined this identifier");
        place.root->CustomCodeID(place.index, Text());
    }
    void operator()(ExpressionField place) const {
        const std::wstring expression = Text();
        model::Groups groups;
        const bool parses = groups.ParseExpression(expression);
        const std::int32_t most = access_.ElementCount(model::Group::Fields()[0].parameter, kHighestLevel);
        // The save would fail half-way.
        if (parses && groups.Count() > most)
            throw ValueError(std::to_wstring(groups.Count()) + L" groups are more than the device holds (" +
                             std::to_wstring(most) + L")");
        SetExpression(*place.codes, expression);
    }

  private:
    void Check(std::int32_t number) const {
        if (!force_)
            CheckNumber(number, description_);
    }
    std::wstring Text() const {
        std::wstring text = ParseText(value_, access_, force_);
        if (!force_)
            CheckLength(text, description_);
        // What the device will make of it, so that the model holds the same.
        return field_.type == device::WireType::ByteArray ? access_.BytesToString(access_.StringToBytes(text)) : text;
    }

    const FieldRef& field_;
    device::ParameterAccess& access_;
    const std::wstring& value_;
    bool force_;
    device::Description description_;
};

} // namespace

Assignment ParseAssignment(std::wstring_view text) {
    const std::size_t equals = text.find(L'=');
    if (equals == std::wstring_view::npos)
        throw AssignmentError(text, L"an assignment is written NAME=VALUE");
    if (equals == 0)
        throw AssignmentError(text, L"the name before \"=\" is missing");
    return {std::wstring(text.substr(0, equals)), std::wstring(text.substr(equals + 1))};
}

void Apply(model::OutFormatConfig& model, device::DeviceState& state, const Assignment& assignment, bool force) {
    device::ParameterAccess access(state);
    try {
        const FieldRef field = Resolve(model, assignment.name);
        RequireWholeLength(field, access);
        std::visit(Setter(field, access, assignment.value, force), field.place);
        field.stored();
    } catch (const ValueError& error) {
        throw AssignmentError(assignment.name, error.Reason());
    } catch (const Error& error) {
        throw AssignmentError(assignment.name, text::Excerpt(error.Description()));
    }
}

} // namespace orv::cli
