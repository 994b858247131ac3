#pragma once
// The parameters that a save must write, and their commit in one session.
#include <cstdint>
#include <optional>
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

/// A parameter of the device that a save does not write.
struct LeftOut {
    enum class Why {
        NotRead,     ///< nobody saw its value
        LengthStays, ///< a fixed length that cannot be written as minimum and maximum
        NoPlace,     ///< the device contradicts itself: it has no element for it
    };

    Why why = Why::NotRead;
    std::int32_t number = 0;
    std::int16_t element = 0;
    std::wstring entry;  ///< empty when it has no place
    std::wstring reason; ///< of NoPlace: what has none
};

/// Keeps the target that was current when it was made or cleared, so that a host which changes the device index in
/// mid-save does no harm.
class MIBParamCache {
  public:
    enum class Keeps { Everything, WhatIsLeftOut };

    /// One that keeps only what is left out queues nothing and looks up no entry that would be written.
    explicit MIBParamCache(DeviceState& state, Keeps keeps = Keeps::Everything);

    /// Queues element `element` of a parameter; one without an entry name is silently not queued, one that the device
    /// has no element for is left out. Converts `value` to `type`: raises 6 or 13 when it cannot.
    void Add(std::int32_t number, WireType type, Value value, std::int16_t element = 0);
    /// Before so many are added, with entry names of so many characters altogether.
    void Reserve(std::size_t count, std::size_t characters);
    /// Commits the queue. `validate` chooses the end-of-session mode: "V" when true, else "P". True when every
    /// parameter was written.
    bool Save(bool interactive, bool validate);
    void Clear();
    /// Notes what is not queued. Nothing is noted of a parameter that has no entry name, as none would be queued.
    void LeaveOut(LeftOut::Why why, std::int32_t number, std::int16_t element, std::wstring reason);
    void LeaveOutForWantOfPlace(std::wstring what) {
        leftOut_.push_back({LeftOut::Why::NoPlace, 0, 0, {}, std::move(what)});
    }
    const std::vector<LeftOut>& WhatIsLeftOut() const { return leftOut_; }
    /// Whether Add would queue it.
    bool HasEntry(std::int32_t number, std::int16_t element);

    std::int32_t LastSAPError() const { return lastSapError_; }
    std::vector<MIBParameter> Parameters() const;
    std::size_t Count() const { return queue_.size(); }
    std::size_t Characters() const { return entries_.size(); } ///< of all entry names
    /// How many were written by the last Save, and the entry it stopped at (empty when none failed).
    std::size_t WrittenCount() const { return written_; }
    const std::wstring& StoppedAt() const { return stoppedAt_; }
    /// Code with which the device refused to end the last Save's session; 0 when it did not.
    std::int32_t EndError() const { return endError_; }

  private:
    struct Queued {
        std::size_t entryEnd = 0; ///< where the entry's name ends in `entries_`; it begins where the last one ended
        Value value;
    };
    std::wstring_view EntryOf(std::size_t position) const;
    /// Nothing where the device has no such element.
    std::optional<std::wstring> NameOf(std::int32_t number, std::int16_t element);
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
    std::int32_t endError_ = 0;
    Keeps keeps_;
    std::vector<LeftOut> leftOut_;
    std::vector<std::int32_t> withoutEntry_; ///< numbers that are known to have no entry name
};

} // namespace orv::device
