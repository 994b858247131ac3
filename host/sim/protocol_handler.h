#pragma once
// The device's side of the protocol for one connection: bytes in, answers out. Knows no sockets.
#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/sim/line_protocol.h"
#include "host/sim/sim_device.h"

namespace orv::sim {

class ProtocolHandler {
  public:
    struct Reply {
        std::string bytes;                  ///< may be empty when only the connection goes
        bool close = false;                 ///< the connection ends after `bytes`
        std::chrono::milliseconds delay{0}; ///< wait so long before sending
    };

    explicit ProtocolHandler(std::shared_ptr<SimDevice> device);
    /// The connection is gone: the device forgets the session.
    ~ProtocolHandler();
    ProtocolHandler(const ProtocolHandler&) = delete;
    ProtocolHandler& operator=(const ProtocolHandler&) = delete;

    /// One reply a request that is answered, in order; nothing behind one that closes. Never raises for what
    /// `bytes` holds.
    std::vector<Reply> Feed(std::string_view bytes);

  private:
    Reply Handle(const LineSplitter::Line& line);
    Reply Dispatch(const ProtocolLine& line);
    Reply Request(const ProtocolLine& line);
    Reply Hello(const ProtocolLine& line);
    Reply Ask(const ProtocolLine& line);
    Reply Render(const DeviceAnswer& answer) const;

    std::shared_ptr<SimDevice> device_;
    LineSplitter splitter_;
    bool greeted_ = false;
    bool closed_ = false;
};

/// The answer to a client that comes while another is connected.
std::string BusyAnswer();

} // namespace orv::sim
