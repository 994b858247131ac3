#pragma once
// What a device description file holds: the configuration of the bench host and the contents of the simulated device.
#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "device/host.h"
#include "host/sim/parameter_values.h"

namespace orv::sim {

struct ParameterDescription {
    std::int32_t number = 0; ///< 1 or above, unique within the device
    std::wstring path;       ///< starts with '/', unique within the device
    device::WireType type = device::WireType::Int32;
    std::int32_t level = 0; ///< 0 to 3: access level needed to see the parameter
    device::Description details;
    ParameterValues values; ///< one an element, each held as `type` asks for it
};

struct ClusterDescription {
    std::int16_t index = 0;
    std::wstring description;
};

struct DeviceDescription {
    std::int16_t cluster = 0;
    std::int16_t device = 0; ///< 0 is the master
    std::wstring description;
    std::vector<ParameterDescription> parameters;

    /// cluster × 32 + device.
    std::int32_t Address() const { return cluster * 32 + device; }
};

struct SystemDescription {
    std::int32_t accessLevel = 0; ///< of the configuration, 0 to 3
    std::vector<ClusterDescription> clusters;
    std::vector<DeviceDescription> devices;

    /// Null when there is no such device. Owned by this description.
    const DeviceDescription* Find(std::int16_t cluster, std::int16_t device) const;
};

bool operator==(const ParameterDescription& a, const ParameterDescription& b);
bool operator==(const ClusterDescription& a, const ClusterDescription& b);
bool operator==(const DeviceDescription& a, const DeviceDescription& b);
bool operator==(const SystemDescription& a, const SystemDescription& b);

/// A description file that cannot be used. what() is one line of UTF-8: file, JSON pointer, reason.
class FileError : public std::exception {
  public:
    /// Shows excerpts of `file` and `pointer`. In `reason` the caller does that where something comes from the file.
    FileError(std::string_view file, std::string_view pointer, std::string_view reason);
    const char* what() const noexcept override { return line_.c_str(); }

  private:
    std::string line_;
};

/// Raises FileError: file missing, larger than 64 MB, not JSON, nested too deep, against the schema, a parameter twice,
/// a value that its type cannot hold.
SystemDescription LoadDescription(const std::filesystem::path& file);

/// The same for a text already read; `name` stands for the file in messages.
SystemDescription ParseDescription(std::string_view json, std::string_view name);

/// The file's text: stable order of keys, one line a parameter, a line break at the end.
std::string FormatDescription(const SystemDescription& system);

/// The same text bit by bit.
void WriteDescription(const SystemDescription& system, const std::function<void(std::string_view)>& write);

/// A reader sees the old file or the new one, never a part. Raises FileError with the system's reason.
void SaveDescription(const SystemDescription& system, const std::filesystem::path& file);

/// A value as files and the device's protocol write it: decimal, the text itself, or hexadecimal digits.
std::wstring FormatValue(const device::Value& value);

} // namespace orv::sim
