#pragma once
// The program's command line. Portable.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orv::host {

/// A call of a host object that shall fail.
struct CallFault {
    std::string call;     ///< "ParameterTable.GetValue"
    std::int64_t nth = 1; ///< from the start
    std::int32_t number = 0;
    std::wstring description;
};

struct DeviceAddress {
    std::string host;
    std::uint16_t port = 0;
};

struct Options {
    std::filesystem::path file; ///< empty: none given
    std::optional<DeviceAddress> deviceAt;
    std::int16_t cluster = 0;
    std::int16_t device = 0;
    std::optional<std::int32_t> level;
    std::optional<std::int32_t> language; ///< of the guide
    std::filesystem::path script;         ///< empty: none
    std::filesystem::path shots;          ///< folder of the pictures; empty: the present one
    std::filesystem::path component;
    int width = 1024;
    int height = 768;
    std::vector<CallFault> faults;
    bool extender = true;
    bool trace = false;
    int timeLimitSeconds = 30; ///< of one command of a script, from its last sign of life on

    /// What is to be printed before the program ends (help or a complaint); then `status` is its exit status.
    std::string message;
    std::optional<int> status;
};

/// `arguments` are UTF-8, without the program's name.
Options ParseOptions(const std::vector<std::string>& arguments);

/// "CALL[:N]:NUMBER[:TEXT]"; the number in decimal or, with 0x, as the 32 bits of a result. Nothing when it is not of
/// that form.
std::optional<CallFault> ParseCallFault(std::string_view text);

/// "HOST:PORT".
std::optional<DeviceAddress> ParseDeviceAddress(std::string_view text);

} // namespace orv::host
