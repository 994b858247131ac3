#pragma once
// One group of interfaces of the control. Identity and references are the whole control's.
#include "addon/com/failure.h"
#include "addon/com/reaper.h"

namespace orv::addon::com {

class Control;

/// While a call runs the control stays, whoever lets go of it meanwhile.
class CallScope {
  public:
    explicit CallScope(Control& control);
    ~CallScope();
    CallScope(const CallScope&) = delete;
    CallScope& operator=(const CallScope&) = delete;

  private:
    Control& control_;
};

IUnknown& OuterOf(Control& control);

template <typename... Interfaces>
class Face : public Interfaces... {
  public:
    explicit Face(Control& control) : control_(control) {}
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        return OuterOf(control_).QueryInterface(id, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return OuterOf(control_).AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return OuterOf(control_).Release(); }

  protected:
    ~Face() = default;
    /// Runs the body of a method; nothing it raises gets out.
    template <typename Action>
    HRESULT Run(Action&& action) noexcept {
        HRESULT result = S_OK;
        {
            const CallScope call(control_);
            result = Guarded(std::forward<Action>(action));
        }
        // The last reference may have gone meanwhile, and the thread may never look at its messages again.
        Reaper::Look();
        return result;
    }
    /// For a method whose out parameters are all plain: none of them may be null.
    template <typename Action, typename... Out>
    HRESULT Answer(Action&& action, Out*... out) noexcept {
        if (((out == nullptr) || ...))
            return E_POINTER;
        return Run(std::forward<Action>(action));
    }

    Control& control_;
};

} // namespace orv::addon::com
