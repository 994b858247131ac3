#pragma once
// The device's service with a connection that the user can cut.
#include <memory>

#include "host/sim/line_service.h"

namespace orv::host {

class DroppableService final : public device::MibSapService {
  public:
    explicit DroppableService(std::shared_ptr<sim::LineService> service) : service_(std::move(service)) {}

    /// Answers whether there was a connection; its client hears that it is lost.
    bool Drop();

    void Connect(std::int32_t deviceAddress, std::shared_ptr<device::MibSapEvents> events) override;
    void Disconnect() override;
    void StartSession(const std::wstring& accessLevel, const std::wstring& password) override;
    void EndSession(const std::wstring& mode) override;
    void GetEntry(const std::wstring& entry) override;
    void SetNumericEntry(const std::wstring& entry, const std::wstring& decimal) override;
    void SetStringEntry(const std::wstring& entry, const std::wstring& text) override;

  private:
    std::shared_ptr<sim::LineService> service_;
    std::shared_ptr<device::MibSapEvents> events_;
};

} // namespace orv::host
