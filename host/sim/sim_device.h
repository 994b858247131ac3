#pragma once
// A simulated device: keeps one device's parameters and answers requests, with faults on request. No sockets, no
// threads.
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "host/sim/fault_plan.h"
#include "host/sim/parameter_store.h"

namespace orv::sim {

/// Codes of the error answers and of the services' error events. 0 is success. 308 and 309 are transient for clients
/// and 200 is their own; the device uses them only when a fault asks for them.
namespace device_code {
inline constexpr std::int32_t kUnknownEntry = 401;
inline constexpr std::int32_t kNoSession = 402;      ///< the entry's level needs a session, or one of a higher level
inline constexpr std::int32_t kWrongPassword = 403;  ///< or a level outside 0 to 3
inline constexpr std::int32_t kBadValue = 404;       ///< the entry's type cannot hold it
inline constexpr std::int32_t kBadRequest = 405;     ///< malformed or oversized line, unknown request, wrong order
inline constexpr std::int32_t kWrongAddress = 406;   ///< no such device here
inline constexpr std::int32_t kBusy = 407;           ///< another client is connected
inline constexpr std::int32_t kConnectFault = 408;   ///< asked for by the fault plan
inline constexpr std::int32_t kSessionFault = 409;   ///< asked for by the fault plan
inline constexpr std::int32_t kNotConnected = 501;   ///< request without a connection
inline constexpr std::int32_t kConnectRefused = 502; ///< nobody listens
inline constexpr std::int32_t kConnectTimeout = 503; ///< no connection in time
inline constexpr std::int32_t kConnectionLost = 504; ///< closed by the other side or broken
} // namespace device_code

/// Password of a session of that level; empty for 0 and unknown levels.
std::wstring SessionPassword(std::int32_t level);

struct DeviceAnswer {
    std::int32_t code = 0; ///< 0 or one of device_code, or what a fault asked for
    std::wstring text;     ///< the answer, or the reason of an error
    bool silent = false;   ///< no answer at all
    bool drop = false;     ///< no answer and the connection goes
};

class SimDevice {
  public:
    explicit SimDevice(DeviceDescription description, FaultPlan faults = {});

    /// A new client; ends what an earlier one left open.
    DeviceAnswer Connect(std::int32_t address);
    /// The client is gone: ends its session, keeps the values.
    void Disconnected();
    /// `level` in decimal; level 0 needs no password.
    DeviceAnswer StartSession(std::wstring_view level, std::wstring_view password);
    /// `mode` is "V" or "P". Succeeds without a session, too: clients of level 0 start none.
    DeviceAnswer EndSession(std::wstring_view mode);
    DeviceAnswer GetEntry(std::wstring_view entry);
    DeviceAnswer SetNumericEntry(std::wstring_view entry, std::wstring_view decimal);
    /// Bytes go through the code page.
    DeviceAnswer SetStringEntry(std::wstring_view entry, std::wstring_view text);

    std::int32_t Address() const { return store_.Contents().Address(); }
    std::chrono::milliseconds Delay() const { return faults_.delay; }
    /// The values as the device holds them. Passes no fault.
    ParameterStore& Store() { return store_; }
    const ParameterStore& Store() const { return store_; }
    FaultPlan& Faults() { return faults_; }
    bool InSession() const { return sessionLevel_ > 0; }
    /// Mode of the last session that was ended; empty at first.
    const std::wstring& LastEndMode() const { return lastEndMode_; }
    /// Requests answered so far, error answers included.
    std::int64_t AnsweredCount() const { return answered_; }

  private:
    template <typename Action>
    DeviceAnswer Answered(const Action& action);
    DeviceAnswer Set(std::wstring_view entry, const device::Value& value, bool asText);
    DeviceAnswer Locate(std::wstring_view entry, ElementAddress& address) const;

    ParameterStore store_;
    FaultPlan faults_;
    std::int32_t sessionLevel_ = 0;
    std::int64_t setCount_ = 0;
    std::int64_t answered_ = 0;
    std::wstring lastEndMode_;
};

} // namespace orv::sim
