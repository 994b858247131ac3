#pragma once
// The one place that reads device parameters from, and writes them to, the host's configuration.
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "device/device_state.h"
#include "device/host.h"
#include "device/value.h"

namespace orv::device {

/// A parameter's number or its path.
using ParameterId = std::variant<std::int32_t, std::wstring>;

/// What a control takes from a parameter: a range for an up-down, entries for a list, a length for an edit box.
struct ControlSetup {
    bool present = false; ///< false: the device lacks the parameter or it is above the level
    Description description;
};

enum class BytesForm { Hexadecimal, Display };

class ParameterAccess {
  public:
    explicit ParameterAccess(DeviceState& state) : state_(state) {}

    /// Reads at the current target, under `accessLevel` (default: the current one). The configuration's level is put
    /// back on every way out. Empty when the id cannot be resolved; a host's error flies.
    Value Read(const ParameterId& id, std::int16_t element = 0, std::optional<std::int32_t> accessLevel = {});
    /// The value's bytes as text; a failed read gives the empty string.
    std::wstring ReadString(const ParameterId& id, std::int16_t element = 0,
                            std::optional<std::int32_t> accessLevel = {});
    /// The value's bytes through the code page; failures propagate.
    std::wstring ReadByteString(const ParameterId& id, std::int16_t element = 0,
                                std::optional<std::int32_t> accessLevel = {});
    /// The value itself as text; failures propagate.
    std::wstring ReadText(const ParameterId& id, std::int16_t element = 0,
                          std::optional<std::int32_t> accessLevel = {});

    /// The two conversions of an answer: the value as text, bytes through the code page; the bytes through the code
    /// page, a text as it is. Raise 6 or 13.
    std::wstring AsText(Value value);
    std::wstring AsByteString(Value value);

    Bytes StringToBytes(const std::wstring& text);
    std::wstring BytesToString(const Bytes& bytes);

    /// Writes at once, with its two log lines. The overload without target takes the current one.
    void Write(const std::wstring& path, const Value& value);
    void Write(const std::wstring& path, const Value& value, const Target& target);

    /// cluster × 32 + device in 16-bit arithmetic; raises 6 (overflow).
    static std::int16_t DeviceAddress(const Target& target);

    /// The cluster's description for 0, else that of the device.
    std::wstring ClusterOrDeviceDescription(std::int16_t device);

    std::wstring ByteToDisplayText(std::uint8_t byte, bool brackets, bool nameSpace);
    /// "????" for a value that is neither a byte array nor a text.
    std::wstring BytesToDisplayText(const Value& value, BytesForm form);
    static Bytes HexTextToBytes(const std::wstring& digits);

    /// 0 when the number is unknown. With an access level, that level holds for the look-up, as for a read.
    std::int32_t ElementCount(std::int32_t number, std::optional<std::int32_t> accessLevel = {});
    /// Label of the first choice with that value, else empty.
    std::wstring ValueLabel(std::int32_t number, std::int32_t value, std::optional<std::int32_t> accessLevel = {});
    ControlSetup SetupFor(std::int32_t number);

    /// Name by which element `element` of a parameter is addressed; empty when unknown or above the target's level.
    std::wstring EntryName(std::int32_t number, std::int16_t element, const Target& target);

    std::shared_ptr<ParameterTable> Table(const Target& target);

  private:
    EntryHandle Resolve(ParameterTable& table, const ParameterId& id, std::int32_t accessLevel);
    Description Describe(std::int32_t number, bool& present, std::optional<std::int32_t> accessLevel = {});

    DeviceState& state_;
    std::wstring line_; ///< of the log; kept, since a save writes thousands of them
};

} // namespace orv::device
