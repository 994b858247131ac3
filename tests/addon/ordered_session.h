#pragma once
// A session in which everything the component calls stands in one list: the host's objects, the device's service, log
// lines, boxes, the message loop and the container. The list is the bench host's call log, so each of them can be told
// to fail as well.
#include <algorithm>
#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/addon/session.h"
#include "tests/support/scripted_service.h"

namespace orv::test {

/// The bench's services with the gate before those that have none of their own.
class ListedServices final : public Surroundings {
  public:
    explicit ListedServices(Bench& bench)
        : bench_(bench), boxes_(bench),
          pump_(bench), services_{boxes_, bench.platform.debug, pump_, bench.platform.registry, bench.platform.desktop},
          state_(services_, bench.host) {
        state_.current = bench.state.current;
        bench.platform.debug.echo = [&gate = bench.host.Gate()](std::wstring_view line) {
            gate.Enter("Log", [&] { return std::wstring(line); });
        };
    }
    addon::ProcessState& State() override { return state_; }
    std::shared_ptr<device::HostApplication> Application() override { return bench_.host.Application(); }
    void Enter(const std::function<void()>& call) override { call(); }

  private:
    struct Boxes final : platform::MessageBoxes {
        explicit Boxes(Bench& to) : bench(to) {}
        platform::Answer Show(const platform::MessageBox& box) override {
            bench.host.Gate().Enter("MessageBoxes.Show", [&] { return box.title + L": " + box.text; });
            return bench.platform.boxes.Show(box);
        }
        void Beep() override {
            bench.host.Gate().Enter("MessageBoxes.Beep");
            bench.platform.boxes.Beep();
        }
        void Close() override { bench.platform.boxes.Close(); }
        Bench& bench;
    };
    struct Pump final : platform::MessagePump {
        explicit Pump(Bench& to) : bench(to) {}
        platform::Wait PumpUntil(const std::function<bool()>& predicate) override {
            return bench.platform.pump.PumpUntil(predicate);
        }
        void ProcessPending() override {
            bench.host.Gate().Enter("MessagePump.ProcessPending");
            bench.platform.pump.ProcessPending();
        }
        void Post(std::function<void()> task) override { bench.platform.pump.Post(std::move(task)); }
        void Close() override { bench.platform.pump.Close(); }
        Bench& bench;
    };

    Bench& bench_;
    Boxes boxes_;
    Pump pump_;
    platform::Services services_;
    addon::ProcessState state_;
};

using Starts = std::vector<std::string>;

struct OrderedSession : Session {
    explicit OrderedSession(const std::string& sample = "tiny.json", std::int16_t device = 0)
        : Session(sample, {}, device, [](Bench& on) { return std::make_unique<ListedServices>(on); }) {
        service->post = [this](std::function<void()> answer) { bench.platform.pump.Post(std::move(answer)); };
        bench.host.SetService(service);
        container.gate = &gate;
        Create();
        gate.KeepLog(true);
    }

    /// The calls since the list was begun, one a line, that start with one of `only`; all of them without any.
    std::string Calls(const Starts& only = {}) {
        std::string lines;
        for (const sim::CallGate::Call& call : gate.Log()) {
            const std::string line = Line(call);
            if (only.empty() || std::any_of(only.begin(), only.end(),
                                            [&](const std::string& start) { return line.starts_with(start); }))
                lines += line;
        }
        return lines;
    }
    void BeginList(std::deque<int> answers = {}) {
        gate.Reset();
        service->codes = std::move(answers);
    }

    sim::CallGate& gate = bench.host.Gate();
    std::shared_ptr<ScriptedService> service = std::make_shared<ScriptedService>();

  private:
    static std::string Line(const sim::CallGate::Call& call) {
        std::string arguments(call.arguments.begin(), call.arguments.end());
        // An entry's handle is the host's own business.
        if (call.name == "ParameterTable.SetValue" || call.name == "ParameterTable.GetValue")
            arguments.erase(0, arguments.find(", ") + 2);
        std::replace(arguments.begin(), arguments.end(), '\n', ' ');
        return call.name + (arguments.empty() ? "" : " " + arguments) + "\n";
    }
};

} // namespace orv::test
