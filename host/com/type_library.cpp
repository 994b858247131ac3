#include "host/com/type_library.h"

#include <string>

#include "host/com/failure.h"

namespace orv::host {
namespace {

std::wstring ProgramFile() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

ComPtr<ITypeLib> Load() {
    ComPtr<ITypeLib> library;
    Check(LoadTypeLibEx(ProgramFile().c_str(), REGKIND_NONE, library.Receive()));
    return library;
}

} // namespace

ComPtr<ITypeInfo> DescriptionOf(REFIID iid) {
    // Kept for the process: every face asks, and reading the file each time would show.
    static const ComPtr<ITypeLib> library = Load();
    ComPtr<ITypeInfo> info;
    Check(library->GetTypeInfoOfGuid(iid, info.Receive()));
    return info;
}

} // namespace orv::host
