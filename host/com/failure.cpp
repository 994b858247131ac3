#include "host/com/failure.h"

#include <new>
#include <string>

#include "host/com/owned.h"
#include "host/sim/bench_host.h"
#include "host/sim/utf8.h"

namespace orv::host {
namespace {

HRESULT Tell(REFIID iid, HRESULT result, const std::wstring& description) {
    ComPtr<ICreateErrorInfo> creator;
    if (FAILED(CreateErrorInfo(creator.Receive())))
        return result;
    std::wstring text = description;
    std::wstring source = L"OrvHost";
    creator->SetGUID(iid);
    creator->SetSource(source.data());
    creator->SetDescription(text.data());
    if (const auto info = creator.As<IErrorInfo>())
        SetErrorInfo(0, info.Get());
    return result;
}

std::wstring SystemText(HRESULT result) {
    wchar_t buffer[512];
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        static_cast<DWORD>(result), 0, buffer, 512, nullptr);
    std::wstring text(buffer, length);
    while (!text.empty() && (text.back() == L'\n' || text.back() == L'\r' || text.back() == L' '))
        text.pop_back();
    return text.empty() ? L"Automation error" : text;
}

} // namespace

HRESULT AnswerCurrentException(REFIID iid) noexcept {
    try {
        throw;
    } catch (const Error& error) {
        // A number of 0 must not read as success on the other side.
        const HRESULT result = error.Number() == 0 ? E_FAIL : ToHresult(error.Number());
        try {
            return Tell(iid, result, error.Description());
        } catch (...) {
            return result;
        }
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::exception& failure) {
        try {
            return Tell(iid, E_FAIL, sim::FromUtf8(failure.what()));
        } catch (...) {
            return E_FAIL;
        }
    } catch (...) {
        return E_UNEXPECTED;
    }
}

void Require(const void* pointer) {
    if (pointer == nullptr)
        throw Error(E_POINTER, L"A required argument is missing");
}

void Check(HRESULT result) {
    if (SUCCEEDED(result))
        return;
    ComPtr<IErrorInfo> info;
    ComText description;
    if (GetErrorInfo(0, info.Receive()) == S_OK && info)
        info->GetDescription(description.Receive());
    throw Error(result, description.View().empty() ? SystemText(result) : std::wstring(description.View()));
}

} // namespace orv::host
