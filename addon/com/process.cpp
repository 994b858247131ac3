#include "addon/com/process.h"

namespace orv::addon::com {
namespace {

std::weak_ptr<Process>& Current() {
    static std::weak_ptr<Process> current;
    return current;
}

} // namespace

std::shared_ptr<Process> Process::Acquire() {
    std::shared_ptr<Process> process = Current().lock();
    if (!process) {
        process = std::make_shared<Process>();
        Current() = process;
    }
    return process;
}

Process::Process()
    : services_({[this] { return party_ ? party_->BoxOwner() : nullptr; }, [this](bool open) { Modal(open); }}),
      view_(services_.View()), state_(view_, factory_) {}

void Process::ForgetParty(const ModalParty* party) {
    if (party_ == party)
        party_ = nullptr;
}

void Process::Retire() {
    if (Current().lock().get() == this)
        Current().reset();
}

void Process::Modal(bool open) {
    modal_ += open ? 1 : -1;
    if (party_)
        party_->EnableModeless(!open);
}

} // namespace orv::addon::com
