#include "host/app/orvhost/workspace.h"

#include "host/sim/ask_device.h"
#include "host/sim/local_service.h"
#include "host/sim/tcp_service.h"
#include "host/sim/utf8.h"

namespace orv::host {

Workspace::Workspace(const Options& options, const std::filesystem::path& file, platform::MessagePump& pump,
                     sim::LineService::Traffic traffic)
    : file_(file), deviceAt_(options.deviceAt), description_(sim::LoadDescription(file)),
      bench_(std::make_shared<sim::BenchHost>(description_)) {
    std::shared_ptr<sim::LineService> line;
    if (deviceAt_) {
        sim::TcpMibSapService::Endpoint endpoint;
        endpoint.host = deviceAt_->host;
        endpoint.port = deviceAt_->port;
        line = std::make_shared<sim::TcpMibSapService>(pump, endpoint);
    } else {
        for (const auto& device : description_.devices)
            devices_.push_back(std::make_shared<sim::SimDevice>(device));
        line = std::make_shared<sim::LocalMibSapService>(devices_, pump);
    }
    line->SetTraffic(std::move(traffic));
    service_ = std::make_shared<DroppableService>(line);
    bench_->SetService(service_);
    if (options.level)
        bench_->SetAccessLevel(*options.level);
    if (options.language)
        bench_->Application()->helpLanguage = *options.language;
    for (const CallFault& fault : options.faults)
        bench_->Gate().FailNamed(fault.call, fault.nth, fault.number, fault.description);
    bench_->Gate().KeepLog(options.trace);
}

void Workspace::Save(const std::filesystem::path& file) {
    sim::SaveDescription(bench_->Contents(), file);
    file_ = file;
}

bool Workspace::Has(std::int16_t cluster, std::int16_t device) const {
    return description_.Find(cluster, device) != nullptr;
}

std::wstring Workspace::LinkText() const {
    return deviceAt_ ? sim::FromUtf8(deviceAt_->host) + L":" + std::to_wstring(deviceAt_->port) : L"Simulated device";
}

std::wstring Workspace::HostValue(std::int16_t cluster, std::int16_t device, std::int32_t number,
                                  std::int32_t element) const {
    const sim::ParameterStore* const store = bench_->Store(cluster, device);
    if (store == nullptr)
        throw Error(error_number::kSubscript);
    return sim::FormatValue(store->Get(number, element));
}

std::wstring Workspace::DeviceValue(std::int16_t cluster, std::int16_t device, std::int32_t number,
                                    std::int32_t element) const {
    if (deviceAt_) {
        const auto answers = sim::AskDevice(deviceAt_->host, deviceAt_->port, {{number, element}});
        return sim::FromUtf8(answers.at(0));
    }
    for (const auto& simulated : devices_) {
        const sim::DeviceDescription& contents = simulated->Store().Contents();
        if (contents.cluster == cluster && contents.device == device)
            return sim::FormatValue(simulated->Store().Get(number, element));
    }
    throw Error(error_number::kSubscript);
}

} // namespace orv::host
