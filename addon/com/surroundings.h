#pragma once
// What a control stands on: services of the system, factory, state. A host is told to make one control only. Where it
// makes two all the same each has its own: with one between them, the first to go would close the other's boxes and
// waits and take its model along. They share `CommonState`, which lives as long as any control does.
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

class Surroundings {
  public:
    /// `party` must outlive it.
    explicit Surroundings(ModalParty& party);
    Surroundings(const Surroundings&) = delete;
    Surroundings& operator=(const Surroundings&) = delete;

    ProcessState& State() { return state_; }
    platform::win32::SystemServices& Services() { return services_; }
    /// Some code of the product stands on the stack, waiting.
    bool Waiting() { return modal_ > 0 || services_.Pump().Depth() > 0; }

  private:
    void Modal(bool open);

    ModalParty& party_;
    int modal_ = 0;
    platform::win32::SystemServices services_;
    platform::Services view_;
    ComHostFactory factory_;
    ProcessState state_;
};

} // namespace orv::addon::com
