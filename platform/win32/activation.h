#pragma once
// Visual styles for a component inside an application that may have none: the component's own manifest is made
// active while windows, common dialogs and message boxes are created.
#include "platform/win32/system.h"

namespace orv::platform::win32 {

/// Made from the manifest with resource id 2 of `module`. Without such a manifest scopes do nothing and windows
/// look as the application's own manifest says.
class ActivationContext {
  public:
    explicit ActivationContext(HMODULE module);
    ActivationContext(const ActivationContext&) = delete;
    ActivationContext& operator=(const ActivationContext&) = delete;
    ~ActivationContext();
    bool Valid() const { return handle_ != INVALID_HANDLE_VALUE; }

  private:
    friend class ActivationScope;
    HANDLE handle_;
};

/// Active from construction to destruction, strictly nested on one thread: never hold one across a wait, for a wait
/// may run code that activates and leaves in another order.
class ActivationScope {
  public:
    explicit ActivationScope(const ActivationContext& context);
    ActivationScope(const ActivationScope&) = delete;
    ActivationScope& operator=(const ActivationScope&) = delete;
    ~ActivationScope();

  private:
    ULONG_PTR cookie_ = 0;
    bool active_;
};

} // namespace orv::platform::win32
