#pragma once
// The place in a container that a control is given, with everything a careless container leaves out.
#include <string>

#include "addon/com/automation.h"
#include "addon/com/com_ptr.h"

#include <ocidl.h>
#include <olectl.h>

namespace orv::addon::com {

class Site {
  public:
    void Set(IOleClientSite* client) { client_ = ComPtr<IOleClientSite>(client); }
    const ComPtr<IOleClientSite>& Client() const { return client_; }
    template <typename I>
    ComPtr<I> As() const {
        return client_.As<I>();
    }

    /// The ambient property; true where the container has none.
    bool UserMode() const;
    /// The ambient property; empty where the container has none.
    std::wstring DisplayName() const;
    /// A property of the extender object. False when there is no extender, or it refused.
    bool PutExtender(const wchar_t* property, bool value) const;
    /// True when the container has dealt with the key.
    bool TranslateAccelerator(MSG& message) const;
    void OnFocus(bool gained) const;

  private:
    bool Ambient(DISPID property, VARTYPE type, Variant& value) const;

    ComPtr<IOleClientSite> client_;
};

} // namespace orv::addon::com
