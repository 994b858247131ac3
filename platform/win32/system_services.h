#pragma once
// All services of the operating system in one object, made by the component for one control.
#include "platform/win32/activation.h"
#include "platform/win32/debug_output.h"
#include "platform/win32/desktop.h"
#include "platform/win32/message_boxes.h"
#include "platform/win32/pump.h"
#include "platform/win32/registry.h"

namespace orv::platform::win32 {

class SystemServices {
  public:
    explicit SystemServices(ModalHooks hooks);
    SystemServices(const SystemServices&) = delete;
    SystemServices& operator=(const SystemServices&) = delete;

    Services View() { return {boxes_, debug_, pump_, registry_, desktop_}; }
    const ActivationContext& Context() const { return context_; }
    const ModalHooks& Hooks() const { return hooks_; }
    SystemPump& Pump() { return pump_; }
    SystemMessageBoxes& Boxes() { return boxes_; }

    /// The component is going: waits answer Closing, open boxes No.
    void Close();

  private:
    ModalHooks hooks_;
    ActivationContext context_;
    SystemMessageBoxes boxes_;
    SystemDebugOutput debug_;
    SystemPump pump_;
    SystemRegistry registry_;
    SystemDesktop desktop_;
};

} // namespace orv::platform::win32
