#include "bench/rig.h"

#include <algorithm>
#include <stdexcept>

namespace orv::bench {
namespace {

std::string Difference(const char* what, const auto& model, const auto& script, const auto& same) {
    const auto [a, b] = std::mismatch(model.begin(), model.end(), script.begin(), script.end(), same);
    if (a == model.end() && b == script.end())
        return {};
    return std::string(what) + " " + std::to_string(a - model.begin()) + " of " + std::to_string(model.size()) +
           " and " + std::to_string(script.size()) + " differs";
}

} // namespace

Rig::Rig(const DeviceSize& deviceSize)
    : size(deviceSize), host(LargeSystem(deviceSize)), state(services, host), root(state) {
    state.application = host.Application();
    state.manager = host.CreateConfigurationManager();
    state.configuration = state.manager->GetConfiguration();
    state.current.accessLevel = 3;
    state.Support(); // made once a process, so it belongs to neither side
    loadScript_ = ScriptOf(Record([&] { Load(); }).calls, {});
    // The first save may put lengths right; from the second on a save writes what is there already.
    Save();
    const Trace save = Record([&] { Save(); });
    saveScript_ = ScriptOf(save.calls, root.Plan().writes);
}

void Rig::Save() {
    if (!root.Save(false))
        throw std::runtime_error("the save failed");
}

HostObjects Rig::Host() {
    return {*state.configuration, state.Support(), *state.application, debug};
}

template <typename Action>
Rig::Trace Rig::Record(const Action& action) {
    debug.lines.clear();
    debug.keep = true;
    host.Gate().KeepLog(true);
    action();
    host.Gate().KeepLog(false);
    debug.keep = false;
    Trace trace{host.Gate().Log(), std::move(debug.lines)};
    host.Gate().Reset();
    return trace;
}

std::string Rig::CheckScripts() {
    const auto sameCall = [](const auto& a, const auto& b) { return a.name == b.name && a.arguments == b.arguments; };
    const Trace load = Record([&] { Load(); });
    const Trace save = Record([&] { Save(); });
    std::string difference = Difference("call of a load", load.calls, Record([&] { PlayLoad(); }).calls, sameCall);
    for (const Lines lines : {Lines::Prepared, Lines::Built}) {
        const Trace played = Record([&] { PlaySave(lines); });
        if (difference.empty())
            difference = Difference("call of a save", save.calls, played.calls, sameCall);
        if (difference.empty())
            difference = Difference("line of a save", save.lines, played.lines, std::equal_to<>());
    }
    return difference;
}

std::size_t Rig::Reads() const {
    return static_cast<std::size_t>(std::count_if(loadScript_.begin(), loadScript_.end(), [](const HostStep& step) {
        return step.call == HostStep::Call::GetValue;
    }));
}

} // namespace orv::bench
