#include "addon/com/process.h"

namespace orv::addon::com {

Process::Process(ModalParty& party)
    : party_(party), services_({[this] { return party_.BoxOwner(); }, [this](bool open) { Modal(open); }}),
      view_(services_.View()), state_(view_, factory_) {}

void Process::Modal(bool open) {
    modal_ += open ? 1 : -1;
    party_.EnableModeless(!open);
}

} // namespace orv::addon::com
