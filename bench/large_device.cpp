#include "bench/large_device.h"

#include <string_view>

#include "model/out_format_config.h"

namespace orv::bench {
namespace {

using device::Value;
using device::WireType;

/// Codes in turn alone, joined and optional, as many groups as there are to be.
std::wstring Expression(const DeviceSize& size) {
    std::wstring text;
    for (int group = 0; group < size.groups; ++group) {
        const std::wstring code = std::to_wstring(group % size.slots + 1);
        const std::wstring next = std::to_wstring((group + 1) % size.slots + 1);
        text += group > 0 ? L"&" : L"";
        text += group % 3 == 0 ? code : group % 3 == 1 ? code + L"|" + next : L"[" + code + L"^" + next + L"]";
    }
    return text;
}

/// Differs from element to element; texts are from 3 to 18 characters long.
Value Filling(WireType type, std::int32_t number, std::int32_t element) {
    const std::int32_t seed = number * 7 + element * 13;
    const auto length = static_cast<std::size_t>(3 + seed % 16);
    switch (type) {
    case WireType::Int16:
        return static_cast<std::int16_t>(seed % 2);
    case WireType::Int32:
        return seed % 3;
    case WireType::Byte:
        return static_cast<std::uint8_t>(seed % 100);
    case WireType::Text:
        return std::wstring(length, static_cast<wchar_t>(L'A' + seed % 26));
    case WireType::ByteArray:
        break;
    }
    return Bytes(length, static_cast<std::uint8_t>(seed % 256));
}

class Maker {
  public:
    explicit Maker(const DeviceSize& size) : size_(size) {}

    sim::DeviceDescription Make() {
        AddTable<model::OutFormatConfig>(L"Format", 1);
        AddTable<model::Codes>(L"Codes", 1);
        AddTable<model::CodeDef>(L"Slots", size_.slots);
        AddTable<model::Group>(L"Groups", size_.groups);
        AddTable<model::StandardFormat>(L"Standard", 1);
        AddTable<model::AdvancedFormat>(L"Formats", size_.formats);
        AddTable<model::OutItem>(L"Items", size_.AllItems());
        for (std::int32_t i = 0; i < model::kCustomCodeIDCount; ++i)
            Add(L"Custom", model::kFirstCustomCodeIDParameter + i, WireType::ByteArray, 1);
        for (const std::int32_t number : {370, 371, 601, 603})
            Add(L"Lists", number, WireType::Text, 1);
        for (const std::int32_t number : {340, 350})
            Add(L"Limits", number, WireType::Int16, 1);
        Add(L"Limits", 349, WireType::Int16, size_.formats);
        Add(L"Model", 9001, WireType::Int16, 1);
        device_.parameters.back().path = L"/SystemInfo/Model/ModelIndex";
        SetUp();
        return std::move(device_);
    }

  private:
    template <typename Class>
    void AddTable(const wchar_t* folder, std::int32_t elements) {
        for (const auto& row : Class::Fields()) {
            const int count =
                std::holds_alternative<model::SevenFlags Class::*>(row.member) ? model::SevenFlags::kCount : 1;
            for (int i = 0; i < count; ++i)
                Add(folder, row.parameter + i, row.type, elements);
        }
    }

    void Add(std::wstring_view folder, std::int32_t number, WireType type, std::int32_t elements) {
        sim::ParameterDescription parameter;
        parameter.number = number;
        parameter.path = L"/OutputFormat/" + std::wstring(folder) + L"/Parameter" + std::to_wstring(number);
        parameter.type = type;
        parameter.level = 1;
        parameter.details.elementCount = elements;
        for (std::int32_t element = 0; element < elements; ++element)
            parameter.values.push_back(Filling(type, number, element));
        device_.parameters.push_back(std::move(parameter));
    }

    void Set(std::int32_t number, const Value& value) {
        for (sim::ParameterDescription& parameter : device_.parameters)
            if (parameter.number == number)
                parameter.values.assign(parameter.values.size(), value);
    }

    /// What decides how much there is to read.
    void SetUp() {
        Set(330, std::int16_t{1});
        Set(72, model::kCombinationByExpression);
        Set(191, Expression(size_));
        Set(340, size_.formats);
        Set(349, size_.items);
        Set(350, size_.items);
    }

    DeviceSize size_;
    sim::DeviceDescription device_;
};

} // namespace

sim::SystemDescription LargeSystem(const DeviceSize& size) {
    sim::SystemDescription system;
    system.accessLevel = 3;
    system.clusters.push_back({0, L"Bench"});
    system.devices.push_back(Maker(size).Make());
    return system;
}

} // namespace orv::bench
