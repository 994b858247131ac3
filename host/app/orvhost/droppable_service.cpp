#include "host/app/orvhost/droppable_service.h"

#include <utility>

#include "host/sim/sim_device.h"

namespace orv::host {

bool DroppableService::Drop() {
    const auto events = std::exchange(events_, nullptr);
    if (!events)
        return false;
    service_->Disconnect();
    events->Error(sim::device_code::kConnectionLost);
    return true;
}

void DroppableService::Connect(std::int32_t deviceAddress, std::shared_ptr<device::MibSapEvents> events) {
    events_ = events;
    service_->Connect(deviceAddress, std::move(events));
}

void DroppableService::Disconnect() {
    events_.reset();
    service_->Disconnect();
}

void DroppableService::StartSession(const std::wstring& accessLevel, const std::wstring& password) {
    service_->StartSession(accessLevel, password);
}

void DroppableService::EndSession(const std::wstring& mode) {
    service_->EndSession(mode);
}

void DroppableService::GetEntry(const std::wstring& entry) {
    service_->GetEntry(entry);
}

void DroppableService::SetNumericEntry(const std::wstring& entry, const std::wstring& decimal) {
    service_->SetNumericEntry(entry, decimal);
}

void DroppableService::SetStringEntry(const std::wstring& entry, const std::wstring& text) {
    service_->SetStringEntry(entry, text);
}

} // namespace orv::host
