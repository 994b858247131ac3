// A device that holds anything: whatever its parameters are, of what kind, how many and how limited, it is shown page
// by page, exported and saved; only documented errors come up, and what was saved is loaded and saved as the same.
#include <algorithm>
#include <iterator>
#include <vector>

#include "controls/tree.h"
#include "device/value.h"
#include "fuzz/component.h"
#include "fuzz/fuzz.h"
#include "fuzz/source.h"
#include "model/format_export.h"
#include "tests/model/wire.h"
#include "text/error.h"

namespace orv::fuzz {
namespace {

using device::Value;
using device::WireType;
using sim::ParameterDescription;

constexpr std::int32_t kMostElements = 6;
/// Parameters whose values say how much there is to read.
constexpr std::int32_t kCounts[] = {340, 349};

bool IsCount(std::int32_t number) {
    return std::find(std::begin(kCounts), std::end(kCounts), number) != std::end(kCounts);
}

WireType TypeFrom(Source& source) {
    static constexpr WireType kTypes[] = {WireType::Int16, WireType::Int32, WireType::Byte, WireType::Text,
                                          WireType::ByteArray};
    return kTypes[source.Below(std::size(kTypes))];
}

/// Texts that mean something in one of the parameters that hold texts: numbers, masks, lists, expressions.
std::wstring TextFrom(Source& source) {
    static const wchar_t* const kTexts[] = {L"0",    L"-1",     L" 7 ",       L"65536", L"9999999999",
                                            L"FFFF", L"1&2",    L"[1|2]&3^4", L"1 2 3", L",,A,B",
                                            L"<CR>", L"1|2|3&", L"[1]&[2]&3", L"  &1",  L"80000000"};
    const std::size_t chosen = source.Below(32);
    return chosen < std::size(kTexts) ? kTexts[chosen] : source.Text(30);
}

Value ValueFrom(Source& source, WireType type) {
    static constexpr std::int32_t kOdd[] = {0, 1, 2, 3, -1, 255, 256, 32767, -32768, 40000};
    const auto number = [&] {
        const std::size_t chosen = source.Below(16);
        return chosen < std::size(kOdd) ? kOdd[chosen] : source.Number();
    };
    switch (type) {
    case WireType::Int16:
        return static_cast<std::int16_t>(number());
    case WireType::Int32:
        return number();
    case WireType::Byte:
        return static_cast<std::uint8_t>(number());
    case WireType::Text:
        return TextFrom(source);
    case WireType::ByteArray:
        break;
    }
    return source.Some(40);
}

/// More than a handful of formats or items takes long and shows nothing else.
Value Bounded(Value value) {
    try {
        const std::int32_t number = device::ToInt32(value);
        if (number > 2 * kMostElements)
            value = static_cast<std::int16_t>(number % (2 * kMostElements));
    } catch (const Error&) { // no number at all is as good as any
    }
    return value;
}

void FillValues(Source& source, ParameterDescription& parameter) {
    for (Value& value : parameter.values) {
        value = ValueFrom(source, parameter.type);
        if (IsCount(parameter.number))
            value = device::Convert(Bounded(value), parameter.type);
    }
}

void ChangeLimits(Source& source, device::Description& details) {
    switch (source.Below(5)) {
    case 0:
        details.choices.clear();
        break;
    case 1:
        details.choices.push_back({source.Number(), source.Text(8)});
        break;
    case 2:
        details.hasRange = source.Flag();
        details.minimum = source.Number();
        details.maximum = source.Number();
        break;
    case 3:
        details.maximumStringLength = static_cast<std::int32_t>(source.Word()) - 2;
        break;
    default:
        details.choices.resize(std::min<std::size_t>(details.choices.size(), source.Below(3)));
    }
}

void Change(Source& source, std::vector<ParameterDescription>& parameters) {
    const std::size_t at = source.Below(256) % parameters.size();
    ParameterDescription& parameter = parameters[at];
    switch (source.Below(8)) {
    case 0:
        parameter.type = TypeFrom(source);
        FillValues(source, parameter);
        break;
    case 1:
        parameter.details.elementCount = static_cast<std::int32_t>(1 + source.Below(kMostElements));
        parameter.values.resize(static_cast<std::size_t>(parameter.details.elementCount), parameter.values.front());
        break;
    case 2:
        parameters.erase(parameters.begin() + static_cast<std::ptrdiff_t>(at));
        break;
    case 3:
        parameter.level = static_cast<std::int32_t>(source.Below(4));
        break;
    case 4:
        ChangeLimits(source, parameter.details);
        break;
    default:
        FillValues(source, parameter);
    }
}

sim::SystemDescription SystemFrom(Source& source) {
    sim::SystemDescription system = Tiny();
    system.accessLevel = 3 - static_cast<std::int32_t>(source.Below(8) % 4);
    auto& parameters = system.devices.front().parameters;
    for (int changes = 0; changes < 60 && !source.Empty() && parameters.size() > 1; ++changes)
        Change(source, parameters);
    return system;
}

/// Numbers that a load, a page or a save may raise for a value: overflow, subscript, mismatch, an identifier that was
/// never defined.
bool IsDocumented(const std::wstring& text) {
    static const wchar_t* const kNumbers[] = {L"\n6:", L"\n9:", L"\n13:", L"\n381:"};
    return std::any_of(std::begin(kNumbers), std::end(kNumbers),
                       [&](const wchar_t* number) { return text.find(number) != std::wstring::npos; });
}

/// Boxes since the last look; what is not documented ends the run.
bool Complained(Component& component) {
    auto& boxes = component.platform.boxes.shown;
    bool complained = false;
    for (const platform::MessageBox& box : boxes)
        if (Component::TellsOfFailure(box)) {
            complained = true;
            Require(IsDocumented(box.text), Narrow(box.text).c_str());
        }
    boxes.clear();
    return complained;
}

void ShowEveryPage(Component& component) {
    auto& tree = dynamic_cast<controls::Tree&>(*component.Editor().Root().Find(L"tvw"));
    std::vector<std::wstring> keys;
    for (const auto& node : tree.Nodes())
        keys.push_back(node.key);
    for (const std::wstring& key : keys)
        tree.Click(key);
}

void Export(Component& component) {
    try {
        model::FormatStructure(component.Root(), component.state);
    } catch (const Error& error) {
        Require(IsDocumented(L"\n" + std::to_wstring(error.Number()) + L":"), "the export raises what is documented");
    }
}

/// Loaded and saved into the configuration. False when something was refused on the way.
bool LoadAndSave(Component& component) {
    try {
        component.Root().Reload();
        return component.Root().Save(false);
    } catch (const Error& error) {
        Require(IsDocumented(L"\n" + std::to_wstring(error.Number()) + L":"), "load and save raise what is documented");
        return false;
    }
}

bool IsSlotParameter(std::int32_t number) {
    return std::any_of(model::wire::kCodeSlot.begin(), model::wire::kCodeSlot.end(),
                       [number](const auto& row) { return row.number == number; });
}

/// Written as 1 or 0 whatever it was.
bool IsSwitch(std::int32_t number) {
    static constexpr std::int32_t kSwitches[] = {1, 5, 330, 3005, 3006};
    return (number >= 3013 && number <= 3019) ||
           std::find(std::begin(kSwitches), std::end(kSwitches), number) != std::end(kSwitches);
}

/// What a save changes on purpose: lengths that follow from one another, the expression, the count of items.
bool IsDerived(std::int32_t number) {
    static constexpr std::int32_t kDerived[] = {3, 4, 70, 191, 349};
    return std::find(std::begin(kDerived), std::end(kDerived), number) != std::end(kDerived);
}

/// The same, be it another spelling of the number.
bool Means(const Value& before, const Value& after) {
    try {
        return before == after || device::ToInt32(before) == device::ToInt32(after);
    } catch (const Error&) {
        return false;
    }
}

/// A slot that cannot be read stays as it was made, and is saved like that; anything else is refused as a whole or
/// comes back.
void CheckKept(const sim::SystemDescription& before, const sim::SystemDescription& after) {
    bool slotsRead = true;
    for (const ParameterDescription& parameter : before.devices.front().parameters)
        for (const auto& row : model::wire::kCodeSlot)
            slotsRead &= row.number != parameter.number || row.type == parameter.type;
    const auto& now = after.devices.front().parameters;
    for (std::size_t i = 0; i < now.size(); ++i) {
        const ParameterDescription& was = before.devices.front().parameters[i];
        if (IsDerived(was.number) || IsSwitch(was.number) || (!slotsRead && IsSlotParameter(was.number)))
            continue;
        for (std::size_t element = 0; element < now[i].values.size(); ++element)
            Require(Means(was.values[element], now[i].values[element]),
                    ("a save keeps what was read: " + Narrow(was.path)).c_str());
    }
}

/// An expression of codes without a name is printed as something else; and a device that hides the parameters from
/// the level that the groups are read under is not asked for their strings.
bool KeepsGroups(const sim::SystemDescription& system) {
    model::Groups groups;
    for (const ParameterDescription& parameter : system.devices.front().parameters)
        if (parameter.number == 191) {
            const std::wstring text = device::LogForm(parameter.values.front());
            if (!groups.ParseExpression(text))
                return true;
        }
    model::Groups again;
    return again.ParseExpression(groups.GetExpression(false)) && again.Count() == groups.Count();
}

void CheckFixedPoint(Component& component, const sim::SystemDescription& system) {
    if (!LoadAndSave(component))
        return;
    const sim::SystemDescription once = component.host.Contents();
    CheckKept(system, once);
    Require(LoadAndSave(component), "what was saved once is saved again");
    const sim::SystemDescription twice = component.host.Contents();
    Require(!KeepsGroups(system) || once == twice, "what was saved is loaded and saved as the same");
    ++Accepted();
}

void Check(Source& source) {
    const sim::SystemDescription system = SystemFrom(source);
    Component component(system);
    component.Start();
    if (!Complained(component)) {
        ShowEveryPage(component);
        Complained(component);
        Export(component);
    }
    Require(component.host.AccessLevel() == system.accessLevel, "the access level is put back");
    CheckFixedPoint(component, system);
}

} // namespace
} // namespace orv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orv::fuzz::Source source(data, size);
    orv::fuzz::Check(source);
    return 0;
}
