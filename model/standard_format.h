#pragma once
// The three strings that frame every reading while the standard format is in use.
#include <span>
#include <string>

#include "device/device_state.h"
#include "model/field.h"

namespace orv::model {

/// Any text is stored as it is; limits are the editor's.
class StandardFormat : public Marked {
  public:
    explicit StandardFormat(device::DeviceState& state) : state_(state) {}

    Property<std::wstring> Header;
    Property<std::wstring> Terminator;
    Property<std::wstring> CodeSeparator;

    /// Always true; a failed read flies and leaves what was read.
    bool Load();
    /// Queues the same.
    void Save(device::MIBParamCache& cache) const;

    static std::span<const Field<StandardFormat>> Fields();

  private:
    device::DeviceState& state_;
};

} // namespace orv::model
