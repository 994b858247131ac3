#pragma once
// Blocking calls over the host's asynchronous MIB/SAP service.
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "device/device_state.h"
#include "device/value.h"

namespace orv::device {

/// One connection at a time. Used on the user-interface thread; every call pumps messages while it waits, and raises
/// platform::WaitAbandoned when the wait was not satisfied.
class COrvMIBSAPMonitor {
  public:
    enum class Status : std::int32_t { Error = -1, Idle = 0, Connected = 1, Waiting = 2, Answered = 3 };

    /// Works for `target`: its access level decides whether a session is started.
    COrvMIBSAPMonitor(DeviceState& state, const Target& target);
    ~COrvMIBSAPMonitor();
    COrvMIBSAPMonitor(const COrvMIBSAPMonitor&) = delete;
    COrvMIBSAPMonitor& operator=(const COrvMIBSAPMonitor&) = delete;

    std::int32_t DeviceAddress() const { return deviceAddress_; }
    void DeviceAddress(std::int32_t address) { deviceAddress_ = address; }
    const std::wstring& Password() const { return password_; }
    void Password(std::wstring password) { password_ = std::move(password); }
    std::int32_t LastError() const;
    Status State() const;

    bool Connect();
    bool Disconnect();
    /// A whole one-entry read; nothing when any step fails.
    std::optional<Value> GetData(const std::wstring& entry);
    /// A whole one-entry transaction; failures leave their code in the process-wide transport error.
    bool SetData(const std::wstring& entry, const Value& value);

    /// The steps, for the write-back cache. `mode` of EndSession is "V" or "P".
    bool StartSession();
    bool EndSession(const std::wstring& mode);
    bool SetEntry(const std::wstring& entry, const Value& value);
    Value GetEntry(const std::wstring& entry);

  private:
    class Sink;
    template <typename Send, typename Forgive>
    bool Request(const Send& send, const Forgive& forgive);
    void LogSetError(const std::wstring& entry, const std::wstring& shown);
    void Log(std::wstring_view line);
    void WaitWhile(bool (*waiting)(Status));

    DeviceState& state_;
    Target target_;
    std::shared_ptr<Sink> sink_;
    std::int32_t deviceAddress_ = 0;
    std::wstring password_ = L"TRAVEN";
};

} // namespace orv::device
