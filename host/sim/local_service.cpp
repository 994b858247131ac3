#include "host/sim/local_service.h"

#include <algorithm>
#include <utility>

namespace orv::sim {

struct LocalMibSapService::Link {
    explicit Link(std::shared_ptr<SimDevice> device) : handler(std::move(device)) {}
    ProtocolHandler handler;
    LineSplitter splitter;
    bool current = true; ///< until the connection is closed; what still comes over it then is dropped
};

LocalMibSapService::LocalMibSapService(std::vector<std::shared_ptr<SimDevice>> devices, Deliver deliver)
    : devices_(std::move(devices)), deliver_(std::move(deliver)) {}

LocalMibSapService::LocalMibSapService(std::vector<std::shared_ptr<SimDevice>> devices, platform::MessagePump& pump)
    : LocalMibSapService(std::move(devices), [&pump](std::function<void()> task) { pump.Post(std::move(task)); }) {}

LocalMibSapService::~LocalMibSapService() {
    LocalMibSapService::Close();
}

void LocalMibSapService::Open(std::int32_t deviceAddress) {
    const auto found = std::find_if(devices_.begin(), devices_.end(),
                                    [&](const auto& device) { return device->Address() == deviceAddress; });
    if (found == devices_.end()) {
        // A link to nowhere, so that this answer can be dropped like any other.
        link_ = std::make_shared<Link>(nullptr);
        Later([this] { OnLost(device_code::kWrongAddress); });
        return;
    }
    link_ = std::make_shared<Link>(*found);
    Later([this] { OnOpened(); });
}

void LocalMibSapService::Close() {
    if (link_)
        link_->current = false;
    link_.reset();
}

/// The device in this process sends answers and nothing else, all of them before this.
void LocalMibSapService::Finish() {
    Later([this] {
        Close();
        OnClosed();
    });
}

void LocalMibSapService::Send(std::string line) {
    const std::shared_ptr<Link> link = link_;
    if (!link)
        return;
    for (ProtocolHandler::Reply& reply : link->handler.Feed(line)) {
        if (!link->current)
            return;
        Later([this, taken = std::move(reply)] { Take(taken); });
    }
}

void LocalMibSapService::Later(std::function<void()> action) {
    if (!deliver_) {
        action();
        return;
    }
    deliver_([link = std::weak_ptr<Link>(link_), action = std::move(action)] {
        const std::shared_ptr<Link> present = link.lock();
        if (present && present->current)
            action();
    });
}

void LocalMibSapService::Take(const ProtocolHandler::Reply& reply) {
    const std::shared_ptr<Link> link = link_;
    for (const LineSplitter::Line& line : link->splitter.Feed(reply.bytes))
        if (link->current)
            OnLine(line.text);
    if (reply.close && link->current) {
        Close();
        OnLost(device_code::kConnectionLost);
    }
}

} // namespace orv::sim
