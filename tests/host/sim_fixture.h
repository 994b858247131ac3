#pragma once
// A small device for tests of the bench host, and a sink that writes events down.
#include <filesystem>
#include <string>
#include <vector>

#include "device/host.h"
#include "host/sim/description.h"
#include "host/sim/utf8.h"

namespace orv::sim::testing {

inline std::filesystem::path Sample(const std::string& name) {
    return std::filesystem::path(ORV_SOURCE_DIR) / "samples" / name;
}

inline ParameterDescription Parameter(std::int32_t number, std::wstring path, std::int32_t level,
                                      std::vector<device::Value> values) {
    ParameterDescription parameter;
    parameter.number = number;
    parameter.path = std::move(path);
    parameter.type = device::TypeOf(values.at(0));
    parameter.level = level;
    parameter.details.elementCount = static_cast<std::int32_t>(values.size());
    parameter.values = std::move(values);
    return parameter;
}

/// Cluster 1, device 2 (address 34): one parameter of each type, levels 0 to 3.
inline DeviceDescription SmallDevice() {
    DeviceDescription device;
    device.cluster = 1;
    device.device = 2;
    device.description = L"Small";
    device.parameters = {
        Parameter(10, L"/Flags", 1, {std::int16_t{1}, std::int16_t{0}, std::int16_t{1}}),
        Parameter(11, L"/Count", 0, {std::int32_t{70000}}),
        Parameter(12, L"/Level", 2, {std::uint8_t{200}}),
        Parameter(13, L"/Name", 0, {std::wstring(L"one two")}),
        Parameter(14, L"/Raw", 3, {Bytes{0x02, 0x80}, Bytes{}}),
    };
    return device;
}

inline SystemDescription SmallSystem() {
    return {3, {{1, L"Line"}}, {SmallDevice()}};
}

class EventLog final : public device::MibSapEvents {
  public:
    std::vector<std::string> events;

    void Connected() override { events.emplace_back("connected"); }
    void Error(std::int32_t code) override { events.push_back("error " + std::to_string(code)); }
    void ResponseReceived(const std::wstring& text) override { events.push_back("answer " + ToUtf8(text)); }
};

using Events = std::vector<std::string>;

} // namespace orv::sim::testing
