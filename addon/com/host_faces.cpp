#include "addon/com/host_faces.h"

#include "addon/com/automation.h"
#include "addon/com/component_registration.h"
#include "addon/com/control.h"
#include "addon/com/host_adapters.h"
#include "addon/com/picture.h"
#include "platform/win32/late_call.h"
#include "text/version.h"

namespace orv::addon::com {

ITypeInfo& HostFaces::Info() {
    if (!info_)
        info_ = ComponentTypeInfo(IID_IAddOnControl);
    return *info_.Get();
}

HRESULT HostFaces::GetTypeInfoCount(UINT* count) {
    return Answer([&] { *count = 1; }, count);
}

HRESULT HostFaces::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
    if (info)
        *info = nullptr;
    if (index != 0)
        return DISP_E_BADINDEX;
    return Answer(
        [&] {
            Info();
            *info = ComPtr<ITypeInfo>(info_).Detach();
        },
        info);
}

HRESULT HostFaces::GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    return Answer([&] { return platform::win32::NamesLate(Info(), id, names, count, ids); }, names, ids);
}

// The members have the same ids in every interface, so that the default one can answer for all.
HRESULT HostFaces::Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                          EXCEPINFO* failure, UINT* argument) {
    return Answer(
        [&] {
            SetErrorInfo(0, nullptr);
            return platform::win32::InvokeLate(Info(), static_cast<IAddOnControl*>(this),
                                               {member, id, locale, flags, parameters, result, failure, argument});
        },
        parameters);
}

HRESULT HostFaces::get_Argument(BSTR* argument) {
    return Answer([&] { *argument = Bstr(control_.Product().Argument()).Detach(); }, argument);
}

HRESULT HostFaces::put_Argument(BSTR argument) {
    return Run([&] { control_.Product().Argument(FromBstr(argument)); });
}

HRESULT HostFaces::get_CurrentClusterIndex(SHORT* index) {
    return Answer([&] { *index = control_.Product().CurrentClusterIndex(); }, index);
}

HRESULT HostFaces::put_CurrentClusterIndex(SHORT index) {
    return Run([&] { control_.Product().CurrentClusterIndex(index); });
}

HRESULT HostFaces::get_CurrentDeviceIndex(SHORT* index) {
    return Answer([&] { *index = control_.Product().CurrentDeviceIndex(); }, index);
}

HRESULT HostFaces::put_CurrentDeviceIndex(SHORT index) {
    return Run([&] { control_.Product().CurrentDeviceIndex(index); });
}

// The component keeps no protocol object.
HRESULT HostFaces::get_OrvProtocol(IDispatch** protocol) {
    return Answer([&] { *protocol = nullptr; }, protocol);
}

HRESULT HostFaces::put_OrvProtocol(IDispatch*) {
    return S_OK;
}

HRESULT HostFaces::putref_OrvProtocol(IDispatch*) {
    return S_OK;
}

HRESULT HostFaces::get_MultipleInstances(VARIANT_BOOL* allowed) {
    return Answer([&] { *allowed = VARIANT_FALSE; }, allowed);
}

HRESULT HostFaces::get_ProgID(BSTR* progId) {
    return Answer([&] { *progId = Bstr(kProgId).Detach(); }, progId);
}

HRESULT HostFaces::get_GetResult(SHORT* result) {
    return Answer([&] { *result = control_.Product().GetResult(); }, result);
}

HRESULT HostFaces::Register(IOrvApplication* application) {
    return Run([&] {
        control_.Product().Register(application ? AdaptApplication(ComPtr<IOrvApplication>(application)) : nullptr);
    });
}

HRESULT HostFaces::Register(IDispatch* application) {
    return Run([&] {
        const auto typed = Query<IOrvApplication>(application);
        return application && !typed ? E_NOINTERFACE : Register(typed.Get());
    });
}

HRESULT HostFaces::Unregister() {
    return Run([&] { control_.Product().Unregister(); });
}

HRESULT HostFaces::get_SelectedDevicesIndexes(VARIANT* indexes) {
    return Answer([&] { VariantInit(indexes); }, indexes);
}

HRESULT HostFaces::put_SelectedDevicesIndexes(VARIANT) {
    return S_OK;
}

HRESULT HostFaces::Activate() {
    return Run([&] { control_.Product().Activate(); });
}

HRESULT HostFaces::get_CloseOnActiveDeviceChange(VARIANT_BOOL* close) {
    return Answer([&] { *close = VARIANT_FALSE; }, close);
}

HRESULT HostFaces::Enable() {
    return Run([&] { control_.Product().Enable(); });
}

HRESULT HostFaces::GetMenuEntry(SHORT, BSTR, BSTR, VARIANT, VARIANT_BOOL* present) {
    return Answer([&] { *present = VARIANT_FALSE; }, present);
}

HRESULT HostFaces::GetMinSize(FLOAT* width, FLOAT* height) {
    return Answer([&] { *width = *height = -1.0f; }, width, height);
}

HRESULT HostFaces::GetMinSize(VARIANT* width, VARIANT* height) {
    return Answer(
        [&] {
            Variant none, first, second;
            none.Get().vt = VT_R4;
            none.Get().fltVal = -1.0f;
            HRESULT fits = platform::win32::Prepare(*width, none.Get(), first.Get());
            if (SUCCEEDED(fits))
                fits = platform::win32::Prepare(*height, none.Get(), second.Get());
            if (FAILED(fits))
                return fits;
            platform::win32::Store(*width, first.Get());
            platform::win32::Store(*height, second.Get());
            return S_OK;
        },
        width, height);
}

HRESULT HostFaces::GetToolbarButton(SHORT, BSTR, BSTR, BSTR, SHORT, VARIANT, VARIANT_BOOL* present) {
    return Answer([&] { *present = VARIANT_FALSE; }, present);
}

HRESULT HostFaces::GetToolbarPicture(SHORT, BSTR, VARIANT, VARIANT_BOOL* present) {
    return Answer([&] { *present = VARIANT_FALSE; }, present);
}

HRESULT HostFaces::MenuClicked(SHORT) {
    return S_OK;
}

HRESULT HostFaces::get_Modal(VARIANT_BOOL* modal) {
    return Answer([&] { *modal = VARIANT_FALSE; }, modal);
}

HRESULT HostFaces::put_Modal(VARIANT_BOOL) {
    return S_OK;
}

HRESULT HostFaces::get_Picture(IDispatch** picture) {
    if (picture)
        *picture = nullptr;
    return Answer([&] { *picture = MakePicture().Detach(); }, picture);
}

HRESULT HostFaces::ToolbarButtonClicked(SHORT, BSTR) {
    return S_OK;
}

HRESULT HostFaces::RequestUnload(VARIANT_BOOL* agreed) {
    return Answer([&] { *agreed = FromBool(control_.Product().RequestUnload()); }, agreed);
}

HRESULT HostFaces::get_MinSupportedVersion(LONG* version) {
    return Answer([&] { *version = 0; }, version);
}

HRESULT HostFaces::get_Version(BSTR* version) {
    return Answer(
        [&] {
            *version = Bstr(std::to_wstring(text::kVersionMajor) + L"." + std::to_wstring(text::kVersionMinor) + L"." +
                            std::to_wstring(text::kVersionRevision))
                           .Detach();
        },
        version);
}

} // namespace orv::addon::com
