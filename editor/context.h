#pragma once
// What pages share with the shell.
#include <functional>
#include <string>
#include <utility>

#include "controls/form.h"
#include "device/device_state.h"
#include "device/parameter_access.h"
#include "model/out_format_config.h"
#include "platform/guarded.h"

namespace orv::editor {

struct Context {
    device::DeviceState& state;
    std::function<model::OutFormatConfig&()> root;
    controls::Form& form;
    std::function<void()> changed;     ///< the user changed something
    std::function<void()> rebuildTree; ///< the set of nodes changed

    device::ParameterAccess Access() const { return device::ParameterAccess(state); }

    /// Runs an event's handler; a failure is shown under "AddOnControl." and `name`.
    template <typename Action>
    bool Handle(const std::wstring& name, Action&& action) const {
        return platform::Guarded(state.platform.boxes, L"AddOnControl." + name, std::forward<Action>(action));
    }
};

} // namespace orv::editor
