#pragma once
// What the host and scripts call.
#include "platform/win32/system.h"

#include <OrvOutFormat.h>

#include "addon/com/face.h"

namespace orv::addon::com {

/// The default interface repeats the members of the three others: one body serves both.
class HostFaces final : public Face<IAddOnControl, IAddOn, IAddOnGUI, IAddOnCompatibility> {
  public:
    using Face::Face;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* failure, UINT* argument) override;

    HRESULT STDMETHODCALLTYPE get_Argument(BSTR* argument) override;
    HRESULT STDMETHODCALLTYPE put_Argument(BSTR argument) override;
    HRESULT STDMETHODCALLTYPE get_CurrentClusterIndex(SHORT* index) override;
    HRESULT STDMETHODCALLTYPE put_CurrentClusterIndex(SHORT index) override;
    HRESULT STDMETHODCALLTYPE get_CurrentDeviceIndex(SHORT* index) override;
    HRESULT STDMETHODCALLTYPE put_CurrentDeviceIndex(SHORT index) override;
    HRESULT STDMETHODCALLTYPE get_OrvProtocol(IDispatch** protocol) override;
    HRESULT STDMETHODCALLTYPE put_OrvProtocol(IDispatch* protocol) override;
    HRESULT STDMETHODCALLTYPE putref_OrvProtocol(IDispatch* protocol) override;
    HRESULT STDMETHODCALLTYPE get_MultipleInstances(VARIANT_BOOL* allowed) override;
    HRESULT STDMETHODCALLTYPE get_ProgID(BSTR* progId) override;
    HRESULT STDMETHODCALLTYPE get_GetResult(SHORT* result) override;
    HRESULT STDMETHODCALLTYPE Register(IOrvApplication* application) override;
    HRESULT STDMETHODCALLTYPE Register(IDispatch* application) override;
    HRESULT STDMETHODCALLTYPE Unregister() override;
    HRESULT STDMETHODCALLTYPE get_SelectedDevicesIndexes(VARIANT* indexes) override;
    HRESULT STDMETHODCALLTYPE put_SelectedDevicesIndexes(VARIANT indexes) override;

    HRESULT STDMETHODCALLTYPE Activate() override;
    HRESULT STDMETHODCALLTYPE get_CloseOnActiveDeviceChange(VARIANT_BOOL* close) override;
    HRESULT STDMETHODCALLTYPE Enable() override;
    HRESULT STDMETHODCALLTYPE GetMenuEntry(SHORT index, BSTR menu, BSTR caption, VARIANT state,
                                           VARIANT_BOOL* present) override;
    HRESULT STDMETHODCALLTYPE GetMinSize(FLOAT* width, FLOAT* height) override;
    HRESULT STDMETHODCALLTYPE GetMinSize(VARIANT* width, VARIANT* height) override;
    HRESULT STDMETHODCALLTYPE GetToolbarButton(SHORT index, BSTR key, BSTR caption, BSTR tip, SHORT style,
                                               VARIANT state, VARIANT_BOOL* present) override;
    HRESULT STDMETHODCALLTYPE GetToolbarPicture(SHORT index, BSTR key, VARIANT picture, VARIANT_BOOL* present) override;
    HRESULT STDMETHODCALLTYPE MenuClicked(SHORT index) override;
    HRESULT STDMETHODCALLTYPE get_Modal(VARIANT_BOOL* modal) override;
    HRESULT STDMETHODCALLTYPE put_Modal(VARIANT_BOOL modal) override;
    HRESULT STDMETHODCALLTYPE get_Picture(IDispatch** picture) override;
    HRESULT STDMETHODCALLTYPE ToolbarButtonClicked(SHORT index, BSTR key) override;
    HRESULT STDMETHODCALLTYPE RequestUnload(VARIANT_BOOL* agreed) override;

    HRESULT STDMETHODCALLTYPE get_MinSupportedVersion(LONG* version) override;
    HRESULT STDMETHODCALLTYPE get_Version(BSTR* version) override;

  private:
    ITypeInfo& Info();

    ComPtr<ITypeInfo> info_;
};

} // namespace orv::addon::com
