#pragma once
// The host's MIB/SAP service over the line protocol; how lines travel is the derived class's affair.
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "device/host.h"

namespace orv::sim {

/// User-interface thread only. Every request is answered by one event; one at a time is under way. The answer to a
/// session's end is told only when the device has closed the connection behind it: a line more than there were requests
/// means that the answers before it may have been those of other requests.
class LineService : public device::MibSapService {
  public:
    /// A line that was sent ("> ...") or received ("< ..."), passwords replaced, or why the connection ended
    /// ("! CODE ...").
    /// Called on the user-interface thread.
    using Traffic = std::function<void(std::wstring_view)>;
    void SetTraffic(Traffic traffic) { traffic_ = std::move(traffic); }

    void Connect(std::int32_t deviceAddress, std::shared_ptr<device::MibSapEvents> events) override;
    void Disconnect() override;
    void StartSession(const std::wstring& accessLevel, const std::wstring& password) override;
    void EndSession(const std::wstring& mode) override;
    void GetEntry(const std::wstring& entry) override;
    void SetNumericEntry(const std::wstring& entry, const std::wstring& decimal) override;
    void SetStringEntry(const std::wstring& entry, const std::wstring& text) override;

  protected:
    /// Begins to connect; ends in OnOpened or OnLost, now or later.
    virtual void Open(std::int32_t deviceAddress) = 0;
    /// Must not wait. No OnOpened, OnLine, OnClosed or OnLost of that connection may follow.
    virtual void Close() = 0;
    /// Tells the device that nothing more is asked; ends in OnClosed or OnLost, now or later.
    virtual void Finish() = 0;
    /// `line` ends with a line break.
    virtual void Send(std::string line) = 0;

    void OnOpened();
    void OnLine(std::string_view line);
    /// The device closed the connection, every request answered.
    void OnClosed();
    /// `reason` is for people; may be empty.
    void OnLost(std::int32_t code, std::wstring_view reason = {});

  private:
    enum class Pending { Nothing, Connection, Answer, End, Closing };
    void Request(std::string line, Pending pending = Pending::Answer);
    /// `shown` stands for a line that must not be seen.
    void Request(std::string line, std::string_view shown, Pending pending);
    void Accept(Pending answered, std::wstring text);
    void RaiseError(std::int32_t code);
    void Report(wchar_t direction, std::string_view line);
    void Tell(wchar_t mark, const std::wstring& text);

    std::shared_ptr<device::MibSapEvents> events_;
    Traffic traffic_;
    Pending pending_ = Pending::Nothing;
    bool open_ = false;
    std::int32_t address_ = 0;
    std::int32_t lossCode_ = 0; ///< answers a request without connection
    std::wstring farewell_;     ///< answer to the session's end, kept until the connection is closed
};

} // namespace orv::sim
