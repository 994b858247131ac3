#pragma once
// What there is one of in the process while any control lives: services of the system, factory, state.
#include <memory>

#include "addon/com/host_adapters.h"
#include "addon/process_state.h"
#include "platform/win32/system_services.h"

namespace orv::addon::com {

/// The control whose boxes are shown.
class ModalParty {
  public:
    virtual ~ModalParty() = default;
    virtual HWND BoxOwner() = 0;
    virtual void EnableModeless(bool enable) = 0;
};

class Process {
  public:
    /// The one there is, or a new one.
    static std::shared_ptr<Process> Acquire();
    Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    ProcessState& State() { return state_; }
    platform::win32::SystemServices& Services() { return services_; }
    void SetParty(ModalParty* party) { party_ = party; }
    void ForgetParty(const ModalParty* party);
    /// Its services are closed: whoever acquires next gets a new one, though late waits still stand on this one.
    void Retire();
    /// Some code of the product stands on the stack, waiting.
    bool Waiting() { return modal_ > 0 || services_.Pump().Depth() > 0; }

  private:
    void Modal(bool open);

    ModalParty* party_ = nullptr;
    int modal_ = 0;
    platform::win32::SystemServices services_;
    platform::Services view_;
    ComHostFactory factory_;
    ProcessState state_;
};

} // namespace orv::addon::com
