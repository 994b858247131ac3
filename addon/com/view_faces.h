#pragma once
// Picture, state and identity of the control, for containers that only look at it.
#include "platform/win32/system.h"

#include <ocidl.h>
#include <oleidl.h>

#include "addon/com/face.h"

namespace orv::addon::com {

/// What is drawn while there is no window: the add-on's name on plain ground.
class ViewFaces final : public Face<IViewObject2> {
  public:
    using Face::Face;

    HRESULT STDMETHODCALLTYPE Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device, HDC reference,
                                   HDC target, LPCRECTL bounds, LPCRECTL window,
                                   BOOL(STDMETHODCALLTYPE* proceed)(ULONG_PTR), ULONG_PTR argument) override;
    HRESULT STDMETHODCALLTYPE GetColorSet(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device,
                                          HDC reference, LOGPALETTE** palette) override;
    HRESULT STDMETHODCALLTYPE Freeze(DWORD aspect, LONG index, void* aspectInfo, DWORD* freeze) override;
    HRESULT STDMETHODCALLTYPE Unfreeze(DWORD freeze) override;
    HRESULT STDMETHODCALLTYPE SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    HRESULT STDMETHODCALLTYPE GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, LPSIZEL size) override;

  private:
    ComPtr<IAdviseSink> sink_;
    DWORD aspects_ = 0;
    DWORD flags_ = 0;
};

/// The component keeps no state of its own between runs: there is nothing to write, and anything may be read.
class PersistFaces final : public Face<IPersistStreamInit, IPersistPropertyBag> {
  public:
    using Face::Face;

    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* id) override;
    HRESULT STDMETHODCALLTYPE IsDirty() override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE Load(IStream*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Save(IStream*, BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* size) override;
    HRESULT STDMETHODCALLTYPE InitNew() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Load(IPropertyBag*, IErrorLog*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Save(IPropertyBag*, BOOL, BOOL) override { return S_OK; }
};

/// No second way to a site beside IOleObject: scripting hosts take it for a page's control and want a page round it.
class IdentityFaces final : public Face<IProvideClassInfo, ISupportErrorInfo> {
  public:
    using Face::Face;

    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override;
};

} // namespace orv::addon::com
