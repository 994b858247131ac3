#include "addon/com/surroundings.h"

#include <memory>
#include <mutex>

namespace orv::addon::com {
namespace {

std::shared_ptr<device::CommonState> Common() {
    static std::mutex lock;
    static std::weak_ptr<device::CommonState> held;
    const std::lock_guard guard(lock); // controls are made on any thread
    auto common = held.lock();
    if (!common)
        held = common = std::make_shared<device::CommonState>();
    return common;
}

} // namespace

Surroundings::Surroundings(ModalParty& party)
    : party_(party), services_({[this] { return party_.BoxOwner(); }, [this](bool open) { Modal(open); }}),
      view_(services_.View()), state_(view_, factory_, Common()) {}

void Surroundings::Modal(bool open) {
    modal_ += open ? 1 : -1;
    party_.EnableModeless(!open);
}

} // namespace orv::addon::com
