#pragma once
// Counting of references for the container's objects.
#include <OrvAddon.h>

#include "host/com/owned.h"

namespace orv::host {

/// `First` is the interface that stands for IUnknown; the derived class answers Find.
template <typename First, typename... Others>
class Counted : public First, public Others... {
  public:
    Counted() = default;
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    virtual ~Counted() = default;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr)
            return E_POINTER;
        *object = iid == IID_IUnknown ? static_cast<First*>(this) : Find(iid);
        if (*object == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

  protected:
    /// Not counted; null when the interface is not offered.
    virtual void* Find(REFIID iid) = 0;

  private:
    ULONG references_ = 1; // the container lives on one thread
};

} // namespace orv::host
