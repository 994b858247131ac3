#pragma once
// The parameters that a save must write, and their commit in one session.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "device/device_state.h"
#include "device/parameter_access.h"
#include "device/value.h"

namespace orv::device {

class COrvMIBSAPMonitor;

/// One queued write.
struct MIBParameter {
    std::wstring entry; ///< addresses the element, too
    Value value;
};

/// Keeps the target that was current when it was made or cleared, so that a host which changes the device index in
/// mid-save does no harm.
class MIBParamCache {
  public:
    explicit MIBParamCache(DeviceState& state);

    /// Queues element `element` of a parameter; one without an entry name is silently not queued. Converts `value`
    /// to `type`: raises 6 or 13 when it cannot.
    void Add(std::int32_t number, WireType type, Value value, std::int16_t element = 0);
    /// Before so many are added, with entry names of so many characters altogether.
    void Reserve(std::size_t count, std::size_t characters);
    /// Commits the queue. `validate` chooses the end-of-session mode: "V" when true, else "P". True when every
    /// parameter was written.
    bool Save(bool interactive, bool validate);
    void Clear();

    std::int32_t LastSAPError() const { return lastSapError_; }
    std::vector<MIBParameter> Parameters() const;
    std::size_t Count() const { return queue_.size(); }
    std::size_t Characters() const { return entries_.size(); } ///< of all entry names
    /// How many were written by the last Save, and the entry it stopped at (empty when none failed).
    std::size_t WrittenCount() const { return written_; }
    const std::wstring& StoppedAt() const { return stoppedAt_; }

  private:
    struct Queued {
        std::size_t entryEnd = 0; ///< where the entry's name ends in `entries_`; it begins where the last one ended
        Value value;
    };
    std::wstring_view EntryOf(std::size_t position) const;
    bool SaveToConfiguration();
    bool SaveToDevice(bool validate);
    bool SwitchTableInteractiveOff();
    bool Commit(bool validate);
    bool WriteAll(COrvMIBSAPMonitor& monitor);
    void ConfigureMonitor(COrvMIBSAPMonitor& monitor);

    DeviceState& state_;
    ParameterAccess access_;
    Target target_;
    // The names stand in one text: thousands of texts by themselves cost more than what is written.
    std::wstring entries_;
    std::vector<Queued> queue_;
    std::int32_t lastSapError_ = 0;
    std::size_t written_ = 0;
    std::wstring stoppedAt_;
};

} // namespace orv::device
