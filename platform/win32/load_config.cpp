// Linked into every program and library that ships: what it imports is looked for in the system's folder alone, so that
// a file of the same name beside the application is never taken for the system's. The link step enters this record into
// the file's directory, which the linker leaves empty.
#include <cstddef>

#include "platform/win32/system.h"

namespace {

#ifdef _WIN64
constexpr DWORD kSize = sizeof(IMAGE_LOAD_CONFIG_DIRECTORY);
#else
// Without the fields of the table of exception handlers: there is none, which is not the same as an empty one.
constexpr DWORD kSize = offsetof(IMAGE_LOAD_CONFIG_DIRECTORY, SEHandlerTable);
#endif

constexpr IMAGE_LOAD_CONFIG_DIRECTORY Record() {
    IMAGE_LOAD_CONFIG_DIRECTORY record{};
    record.Size = kSize;
    record.Reserved1 = LOAD_LIBRARY_SEARCH_SYSTEM32; // the field for flags of dependent loads has no name here
    return record;
}

} // namespace

extern "C" {
extern const IMAGE_LOAD_CONFIG_DIRECTORY _load_config_used;
__attribute__((used)) const IMAGE_LOAD_CONFIG_DIRECTORY _load_config_used = Record();
}
