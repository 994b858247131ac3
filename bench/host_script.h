#pragma once
// What a load or a save asks of the host, as a list that a bare loop can go through.
#include <cstdint>
#include <string>
#include <vector>

#include "device/host.h"
#include "device/mib_param_cache.h"
#include "host/sim/call_gate.h"
#include "platform/services.h"

namespace orv::bench {

/// One parameter's turn: what is converted first, the way to the parameter, what is done there, what is converted then.
struct HostStep {
    enum class Call { GetValue, Describe, EntryName, SetValue, Minimum, Progress };

    Call call = Call::GetValue;
    bool setsLevel = false;
    bool convertsText = false;  ///< TextToBytes of `text` comes first
    bool convertsBytes = false; ///< BytesToText of the value comes last
    std::int16_t element = 0;
    std::int32_t level = 0; ///< set, or passed on
    std::int32_t number = 0;
    std::wstring path; ///< not empty: found by it instead of the number
    std::wstring text;
    std::wstring line; ///< of a write, as it is logged
    device::Value value;
    std::int32_t minimumOf[2] = {};
};

/// Two debug lines a write: none at all, their texts made beforehand, or made as the writes go.
enum class Lines { None, Prepared, Built };

struct HostObjects {
    device::Configuration& configuration;
    device::SupportObject& support;
    device::HostApplication& application;
    platform::DebugOutput& debug;
};

/// `writes` are the values of the SetValue calls, in order. Raises std::runtime_error for a log of another shape.
std::vector<HostStep> ScriptOf(const std::vector<sim::CallGate::Call>& log,
                               const std::vector<device::MIBParameter>& writes);

/// What a loop has read, as compact as it can be kept: the numbers in one row, the texts in another.
class Kept {
  public:
    /// What was kept is overwritten from the beginning.
    void Restart() { numberCount_ = textCount_ = 0; }
    void Keep(device::Value&& value);

  private:
    std::vector<std::int32_t> numbers_;
    std::vector<std::wstring> texts_;
    std::size_t numberCount_ = 0;
    std::size_t textCount_ = 0;
};

void Play(const std::vector<HostStep>& steps, const HostObjects& host, Lines lines, Kept* kept = nullptr);

} // namespace orv::bench
