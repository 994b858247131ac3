#include "addon/com/failure.h"

#include <new>

#include "addon/com/automation.h"
#include "platform/services.h"

namespace orv::addon::com {
namespace {

// Numbers below are the product's own; they travel in the facility that automation reserves for controls.
HRESULT ResultOf(std::int32_t number) {
    if (number < 0)
        return static_cast<HRESULT>(number);
    return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number & 0xFFFF);
}

void LeaveDescription(const std::wstring& description) {
    ComPtr<ICreateErrorInfo> creator;
    if (FAILED(CreateErrorInfo(creator.Put())))
        return;
    std::wstring writable = description;
    creator->SetDescription(writable.data());
    if (const auto info = creator.As<IErrorInfo>())
        SetErrorInfo(0, info.Get());
}

std::wstring DescriptionLeft(IUnknown* source, REFIID interfaceId) {
    const auto support = Query<ISupportErrorInfo>(source);
    ComPtr<IErrorInfo> info;
    if (!support || support->InterfaceSupportsErrorInfo(interfaceId) != S_OK || GetErrorInfo(0, info.Put()) != S_OK)
        return {};
    Bstr description;
    info->GetDescription(description.Put());
    return description.Text();
}

} // namespace

HRESULT CaughtAsResult() noexcept {
    try {
        throw;
    } catch (const Error& error) {
        try {
            LeaveDescription(error.Description());
        } catch (...) {
            // Without memory for the description the number alone must do.
        }
        return ResultOf(error.Number());
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const platform::WaitAbandoned&) {
        return E_ABORT;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

Error SystemError(HRESULT result) {
    wchar_t buffer[512];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                  static_cast<DWORD>(result), 0, buffer, ARRAYSIZE(buffer), nullptr);
    while (length > 0 && (buffer[length - 1] == L'\n' || buffer[length - 1] == L'\r' || buffer[length - 1] == L' '))
        --length;
    return Error(static_cast<std::int32_t>(result), std::wstring(buffer, length));
}

void Check(HRESULT result, IUnknown* source, REFIID interfaceId) {
    if (SUCCEEDED(result))
        return;
    std::wstring description = DescriptionLeft(source, interfaceId);
    if (description.empty())
        throw SystemError(result);
    throw Error(static_cast<std::int32_t>(result), std::move(description));
}

} // namespace orv::addon::com
