#pragma once
// The host's MIB/SAP service over the line protocol; how lines travel is the derived class's affair.
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "device/host.h"

namespace orv::sim {

/// User-interface thread only. Every request is answered by one event; one at a time is under way.
class LineService : public device::MibSapService {
  public:
    /// A line that was sent ("> ...") or received ("< ..."), passwords replaced. Called on the user-interface thread.
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
    /// Must not wait. No OnOpened, OnLine or OnLost of that connection may follow.
    virtual void Close() = 0;
    /// `line` ends with a line break.
    virtual void Send(std::string line) = 0;

    void OnOpened();
    void OnLine(std::string_view line);
    void OnLost(std::int32_t code);

  private:
    enum class Pending { Nothing, Connection, Answer };
    void Request(std::string line);
    /// `shown` stands for a line that must not be seen.
    void Request(std::string line, std::string_view shown);
    void RaiseError(std::int32_t code);
    void Report(wchar_t direction, std::string_view line);

    std::shared_ptr<device::MibSapEvents> events_;
    Traffic traffic_;
    Pending pending_ = Pending::Nothing;
    bool open_ = false;
    std::int32_t address_ = 0;
    std::int32_t lossCode_ = 0; ///< answers a request without connection
};

} // namespace orv::sim
