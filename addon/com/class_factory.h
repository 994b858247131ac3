#pragma once
#include <atomic>

#include "addon/com/module.h"

namespace orv::addon::com {

/// Makes controls. Keeps the module loaded as any object does.
class ClassFactory final : public IClassFactory {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

  private:
    ~ClassFactory() = default;
    ModuleLock lock_;
    std::atomic<ULONG> references_ = 0;
};

} // namespace orv::addon::com
