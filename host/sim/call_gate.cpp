#include "host/sim/call_gate.h"

#include <algorithm>
#include <utility>

#include "text/error.h"

namespace orv::sim {

void CallGate::KeepLog(bool on) {
    logging_ = on;
    UpdateWatching();
}

std::int64_t CallGate::Count(std::string_view name) const {
    return std::count_if(log_.begin(), log_.end(), [&](const Call& call) { return call.name == name; });
}

void CallGate::FailCall(std::int64_t k, std::int32_t number, std::wstring description) {
    FailNamed({}, k, number, std::move(description));
}

void CallGate::FailNamed(std::string_view name, std::int64_t n, std::int32_t number, std::wstring description,
                         std::int64_t times) {
    faults_.push_back({std::string(name), n - 1, times, number, std::move(description)});
    UpdateWatching();
}

void CallGate::Before(std::string_view name, std::function<void()> hook) {
    if (hook)
        hooks_.insert_or_assign(std::string(name), Hook{std::move(hook)});
    else if (const auto found = hooks_.find(name); found != hooks_.end())
        hooks_.erase(found);
    UpdateWatching();
}

void CallGate::Reset() {
    faults_.clear();
    hooks_.clear();
    log_.clear();
    UpdateWatching();
}

void CallGate::UpdateWatching() {
    watching_ = logging_ || !faults_.empty() || !hooks_.empty();
}

void CallGate::Watch(std::string_view name, std::wstring arguments) {
    if (logging_)
        log_.push_back({std::string(name), std::move(arguments)});
    RunHook(name);
    RaiseFault(name);
}

void CallGate::RunHook(std::string_view name) {
    const auto found = hooks_.find(name);
    if (found == hooks_.end() || found->second.running)
        return;
    // The hook may take itself away, so it runs as a copy and the mark is looked up anew.
    const std::function<void()> run = found->second.run;
    const auto mark = [&](bool running) {
        if (const auto again = hooks_.find(name); again != hooks_.end())
            again->second.running = running;
    };
    mark(true);
    try {
        run();
    } catch (...) {
        mark(false);
        throw;
    }
    mark(false);
}

void CallGate::RaiseFault(std::string_view name) {
    const Fault* due = nullptr;
    for (Fault& fault : faults_) {
        if (!fault.name.empty() && fault.name != name)
            continue;
        if (fault.skip > 0) {
            --fault.skip;
        } else if (!due) {
            --fault.times;
            due = &fault;
        }
    }
    if (!due)
        return;
    const Error error(due->number, due->description);
    std::erase_if(faults_, [](const Fault& fault) { return fault.times <= 0; });
    UpdateWatching();
    throw error;
}

} // namespace orv::sim
