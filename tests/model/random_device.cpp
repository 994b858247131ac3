#include "tests/model/random_device.h"

#include <algorithm>
#include <limits>

#include "tests/model/fixture.h"
#include "tests/model/wire.h"

namespace orv::test {
namespace {

using device::Value;
using device::WireType;

struct Shape {
    std::int32_t slots;
    std::int32_t groups;
    std::int32_t formats;
    std::int32_t itemSlots;
};

bool In(const std::vector<model::wire::Row>& rows, std::int32_t number) {
    return std::any_of(rows.begin(), rows.end(), [number](const auto& row) { return row.number == number; });
}

std::int32_t Below(std::mt19937& random, std::int32_t end) {
    return static_cast<std::int32_t>(random() % static_cast<std::uint32_t>(end));
}

std::int32_t ElementsOf(std::int32_t number, const Shape& shape) {
    if (In(model::wire::kCodeSlot, number))
        return shape.slots;
    if (In(model::wire::kGroup, number))
        return shape.groups;
    if (In(model::wire::kFormat, number) || number == 349)
        return shape.formats;
    return In(model::wire::kItem, number) ? shape.formats * shape.itemSlots : 1;
}

std::int32_t RandomNumber(std::mt19937& random, std::int32_t least, std::int32_t most) {
    static constexpr std::int32_t kOdd[] = {0, 1, -1, 2, 255};
    if (random() % 2 == 0)
        return std::clamp(kOdd[random() % std::size(kOdd)], least, most);
    return std::uniform_int_distribution<std::int32_t>(least, most)(random);
}

Bytes RandomBytes(std::mt19937& random) {
    const std::size_t length = random() % 64 == 0 ? 300 : random() % 6;
    Bytes bytes(length);
    for (auto& byte : bytes)
        byte = static_cast<std::uint8_t>(random());
    return bytes;
}

std::wstring RandomText(std::mt19937& random) {
    std::wstring text;
    for (std::size_t length = random() % 6; length > 0; --length) {
        const std::uint32_t unit = random() % (random() % 2 == 0 ? 0x100 : 0xFFFE);
        text += static_cast<wchar_t>(unit >= 0xD800 && unit < 0xE000 ? L'?' : static_cast<wchar_t>(unit));
    }
    return text;
}

Value RandomValue(std::mt19937& random, WireType type) {
    using Limits16 = std::numeric_limits<std::int16_t>;
    using Limits32 = std::numeric_limits<std::int32_t>;
    switch (type) {
    case WireType::Int16:
        return static_cast<std::int16_t>(RandomNumber(random, Limits16::min(), Limits16::max()));
    case WireType::Int32:
        return RandomNumber(random, Limits32::min(), Limits32::max());
    case WireType::Byte:
        return static_cast<std::uint8_t>(RandomNumber(random, 0, 255));
    case WireType::Text:
        return RandomText(random);
    case WireType::ByteArray:
        return RandomBytes(random);
    }
    return {};
}

const ExpressionCase kOddExpressions[] = {
    {L" &1", L"1", true, false},    {L"1&  ", L"1", true, false},       {L"2|  ", L"2|", true, false},
    {L"[  ]&7", L"7", true, false}, {L"[   ^1]", L"[^1]", true, false},
};
const wchar_t* const kBadExpressions[] = {L"1|2^3", L"[1]|2", L"[[1]]", L"1]", L"[1|2", L"1&&2", L"1&", L"|1", L"[]"};

std::wstring Padded(const std::wstring& operand, std::mt19937& random) {
    return std::wstring(random() % 3, L' ') + operand + std::wstring(random() % 3, L' ');
}

/// One group, as a careless writer puts it down and as it is printed.
void AddGroup(ExpressionCase& expression, std::mt19937& random) {
    const bool optional = random() % 2 == 0;
    const wchar_t join = random() % 2 == 0 ? L'|' : L'^';
    expression.text += optional ? L"[" : L"";
    expression.printed += optional ? L"[" : L"";
    for (std::int32_t i = Below(random, 4); i >= 0; --i) {
        const std::wstring operand = random() % 8 == 0 ? L"a b" : std::to_wstring(1 + Below(random, 20));
        expression.text += Padded(operand, random);
        expression.printed += operand;
        if (i > 0) {
            expression.text += join;
            expression.printed += join;
        }
    }
    expression.text += optional ? L"]" : L"";
    expression.printed += optional ? L"]" : L"";
}

/// A device without groups takes any number of them: there is nothing to keep their strings in.
ExpressionCase RandomExpression(std::mt19937& random, std::int32_t deviceGroups) {
    const std::int32_t most = deviceGroups == 0 ? 10 : deviceGroups;
    if (random() % 8 == 0)
        return {kBadExpressions[random() % std::size(kBadExpressions)], L"", false, true};
    if (random() % 8 == 0 && most >= 2)
        return kOddExpressions[random() % std::size(kOddExpressions)];
    ExpressionCase expression;
    for (std::int32_t groups = Below(random, most + 1); groups > 0; --groups) {
        AddGroup(expression, random);
        expression.text += groups > 1 ? L"&" : L"";
        expression.printed += groups > 1 ? L"&" : L"";
    }
    return expression;
}

/// Values that decide how much there is to read. They are small, and right often enough to matter.
void FillCounts(sim::DeviceDescription& device, const Shape& shape, std::mt19937& random) {
    Parameter(device, 340).values = {static_cast<std::int16_t>(shape.formats)};
    Parameter(device, 350).values = {static_cast<std::int16_t>(Below(random, shape.itemSlots + 3))};
    Parameter(device, 10001).values = {Below(random, 6) - 1};
    Parameter(device, 601).values = {Value(std::wstring(L"FFFF,8001,,zz,80000000"))};
    if (random() % 2 == 0)
        Parameter(device, 72).values = {std::int32_t{2}};
    if (shape.formats > 0)
        for (Value& count : Parameter(device, 349).values)
            count = static_cast<std::int16_t>(Below(random, shape.itemSlots + 2) - 1);
}

/// Nobody asks for choices here but for the names of symbologies, and they are much to copy.
sim::SystemDescription WithoutChoices(sim::SystemDescription system) {
    for (auto& parameter : system.devices.front().parameters)
        if (parameter.number != 2)
            parameter.details.choices.clear();
    return system;
}

} // namespace

RandomDevice MakeRandomDevice(std::mt19937& random) {
    static const sim::SystemDescription base = WithoutChoices(Sample("tiny.json"));
    RandomDevice made{base, {}};
    auto& device = made.system.devices.front();
    // Every size comes up, small ones more often: a thousand devices are to be quick.
    const auto mostlySmall = [&](std::int32_t end) {
        return std::min({Below(random, end), Below(random, end), Below(random, end)});
    };
    const Shape shape{mostlySmall(13), mostlySmall(11), mostlySmall(6), 1 + mostlySmall(8)};
    std::erase_if(device.parameters, [&](const auto& parameter) { return ElementsOf(parameter.number, shape) == 0; });
    for (auto& parameter : device.parameters) {
        Resize(parameter, ElementsOf(parameter.number, shape));
        for (Value& value : parameter.values)
            value = RandomValue(random, parameter.type);
    }
    FillCounts(device, shape, random);
    made.expression = RandomExpression(random, shape.groups);
    Parameter(device, 191).values = {made.expression.text};
    return made;
}

void ScatterLevels(sim::DeviceDescription& device, std::mt19937& random) {
    for (auto& parameter : device.parameters) {
        const bool count =
            parameter.number == 340 || parameter.number == 349 || parameter.number == 350 || parameter.number == 351;
        parameter.level = count ? 0 : Below(random, 4);
    }
}

namespace {

bool IsSwitch(std::int32_t number) {
    return number == 1 || number == 5 || number == 3005 || number == 3006 || (number >= 3013 && number <= 3019);
}

std::int16_t Short(const Value& value) {
    return std::get<std::int16_t>(value);
}

void SaveElement(sim::ParameterDescription& parameter, std::size_t element, sim::DeviceDescription& before,
                 const ExpressionCase& expression, std::int32_t level) {
    Value& value = parameter.values[element];
    const auto fixedLength = [&] { return Short(Parameter(before, 70).values[element]); };
    // A fixed length moves into minimum and maximum only where both are in sight; else all three stay.
    if ((parameter.number == 3 || parameter.number == 4 || parameter.number == 70) && fixedLength() > 0 &&
        std::max(Parameter(before, 3).level, Parameter(before, 4).level) > level)
        return;
    if (parameter.number == 330)
        value = std::int16_t{Short(value) == 1};
    else if (IsSwitch(parameter.number))
        value = std::int16_t{Short(value) != 0};
    else if (parameter.number == 70)
        value = std::int16_t{0};
    else if ((parameter.number == 3 || parameter.number == 4) && fixedLength() > 0)
        value = fixedLength();
    else if (parameter.number == 191 && expression.parses &&
             Parameter(before, 72).values.front() == Value(std::int32_t{2}))
        value = expression.printed;
    else if (parameter.number == 349)
        value = std::min(std::max(Short(value), std::int16_t{0}), Short(Parameter(before, 350).values.front()));
}

} // namespace

sim::DeviceDescription AfterSave(sim::DeviceDescription device, const ExpressionCase& expression, std::int32_t level) {
    sim::DeviceDescription before = device;
    for (auto& parameter : device.parameters)
        if (parameter.level <= level)
            for (std::size_t i = 0; i < parameter.values.size(); ++i)
                SaveElement(parameter, i, before, expression, level);
    return device;
}

} // namespace orv::test
