#pragma once
// The MIB/SAP service over devices in the same process.
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/sim/line_service.h"
#include "host/sim/protocol_handler.h"
#include "platform/services.h"

namespace orv::sim {

class LocalMibSapService final : public LineService {
  public:
    /// Runs an answer later, on the user-interface thread.
    using Deliver = std::function<void(std::function<void()>)>;

    /// Answers through `deliver`; an empty one answers at once, before the request has returned. A device's delay is
    /// left to `deliver`.
    LocalMibSapService(std::vector<std::shared_ptr<SimDevice>> devices, Deliver deliver);
    /// Answers through MessagePump::Post; `pump` must outlive the service.
    LocalMibSapService(std::vector<std::shared_ptr<SimDevice>> devices, platform::MessagePump& pump);
    ~LocalMibSapService() override;

  protected:
    void Open(std::int32_t deviceAddress) override;
    void Close() override;
    void Finish() override;
    void Send(std::string line) override;

  private:
    struct Link;
    void Later(std::function<void()> action);
    void Take(const ProtocolHandler::Reply& reply);

    std::vector<std::shared_ptr<SimDevice>> devices_;
    Deliver deliver_;
    std::shared_ptr<Link> link_; ///< of the present connection; an answer whose link is gone is dropped
};

} // namespace orv::sim
