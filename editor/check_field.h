#pragma once
// A switch of the device as a check box.
#include <cstdint>
#include <functional>
#include <string>

#include "controls/simple_widgets.h"
#include "device/parameter_access.h"
#include "editor/context.h"

namespace orv::editor {

class CheckField {
  public:
    using Store = std::function<void(bool)>;

    /// Adds the box to `parent`. A click by the user is stored under the handler `name`_Click. The context outlives
    /// the field.
    CheckField(Context& context, controls::Widget& parent, const std::wstring& name, int index, Store store);

    controls::CheckBox& Box() { return *box_; }

    /// The caption is the meaning, too.
    void SetUp(std::int32_t number, const device::ControlSetup& setup);
    void Show(bool on) { box_->SetChecked(on); }
    /// Neither on nor off: the value was never read.
    void ShowNothing() { box_->SetUndetermined(); }
    bool Present() const { return present_; }

  private:
    controls::CheckBox* box_;
    bool present_ = false;
};

} // namespace orv::editor
