#include "tests/support/usage.h"

#include <array>
#include <cstdint>
#include <iomanip>
#include <ostream>
#include <vector>

#include <psapi.h>
#include <winternl.h>

namespace orv::tests {
namespace {

/// One row of the table that every process shares with the drawing system.
struct DrawingEntry {
    std::uint64_t object;
    std::uint32_t owner;
    std::uint16_t unique;
    std::uint8_t type;
    std::uint8_t flags;
    std::uint64_t user;
};
constexpr std::size_t kDrawingTable = 0xF8; // in the process's block
constexpr int kDrawingEntries = 0x4000;

/// One row of the system's table of handles.
struct HandleEntry {
    ULONG process;
    UCHAR type;
    UCHAR flags;
    USHORT value;
    void* object;
    ULONG access;
};
constexpr auto kHandleTable = static_cast<SYSTEM_INFORMATION_CLASS>(16);
constexpr NTSTATUS kMoreRoom = static_cast<NTSTATUS>(0xC0000004);

constexpr ULONG_PTR kFirstUserHandle = 0x20;
constexpr ULONG_PTR kLastUserHandle = 0xFFFF;

BOOL CALLBACK CountOne(HWND, LPARAM count) {
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

BOOL CALLBACK CountTree(HWND window, LPARAM count) {
    CountOne(window, count);
    EnumChildWindows(window, &CountOne, count);
    return TRUE;
}

int Windows() {
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), &CountTree, reinterpret_cast<LPARAM>(&count));
    for (HWND window = nullptr; (window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;)
        count += GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId() ? 1 : 0;
    return count;
}

bool IsIcon(HICON icon) {
    ICONINFO info{};
    if (!GetIconInfo(icon, &info))
        return false;
    DeleteObject(info.hbmMask);
    if (info.hbmColor)
        DeleteObject(info.hbmColor);
    return true;
}

int MenusAndIcons() {
    int count = 0;
    for (ULONG_PTR handle = kFirstUserHandle; handle <= kLastUserHandle; handle += 2)
        count += IsMenu(reinterpret_cast<HMENU>(handle)) || IsIcon(reinterpret_cast<HICON>(handle)) ? 1 : 0;
    return count;
}

int Drawing() {
    if (const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS))
        return static_cast<int>(counted);
    PROCESS_BASIC_INFORMATION process{};
    if (NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process, sizeof process, nullptr) != 0)
        return 0;
    const auto* block = reinterpret_cast<const std::byte*>(process.PebBaseAddress);
    const auto* table = *reinterpret_cast<const DrawingEntry* const*>(block + kDrawingTable);
    int count = 0;
    for (int i = 0; table && i < kDrawingEntries; ++i)
        count += table[i].type != 0 ? 1 : 0;
    return count;
}

int Handles() {
    if (DWORD counted = 0; GetProcessHandleCount(GetCurrentProcess(), &counted) && counted > 0)
        return static_cast<int>(counted);
    std::vector<std::byte> table(0x10000);
    ULONG needed = 0;
    NTSTATUS status = 0;
    while ((status = NtQuerySystemInformation(kHandleTable, table.data(), static_cast<ULONG>(table.size()), &needed)) ==
           kMoreRoom)
        table.resize(table.size() * 2);
    if (status != 0)
        return 0;
    const ULONG rows = *reinterpret_cast<const ULONG*>(table.data());
    const auto* row = reinterpret_cast<const HandleEntry*>(table.data() + sizeof(void*));
    int count = 0;
    for (ULONG i = 0; i < rows; ++i)
        count += row[i].process == GetCurrentProcessId() ? 1 : 0;
    return count;
}

void LookAtHeaps(Usage& usage) {
    std::array<HANDLE, 64> heaps{};
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    for (DWORD i = 0; i < count && i < heaps.size(); ++i) {
        PROCESS_HEAP_ENTRY entry{};
        HeapLock(heaps[i]);
        while (HeapWalk(heaps[i], &entry)) {
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) == 0)
                continue;
            ++usage.blocks;
            usage.bytes += entry.cbData;
        }
        HeapUnlock(heaps[i]);
    }
}

} // namespace

Usage Look() {
    Usage usage;
    usage.windows = Windows();
    usage.menusAndIcons = MenusAndIcons();
    usage.drawing = Drawing();
    usage.handles = Handles();
    LookAtHeaps(usage);
    PROCESS_MEMORY_COUNTERS memory{};
    if (GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory))
        usage.privateBytes = memory.PagefileUsage;
    return usage;
}

Usage Growth(const Usage& before, const Usage& after) {
    // Sizes wrap where there is less than before; they are read as signed numbers.
    return {after.windows - before.windows,
            after.menusAndIcons - before.menusAndIcons,
            after.drawing - before.drawing,
            after.handles - before.handles,
            after.blocks - before.blocks,
            after.bytes - before.bytes,
            after.privateBytes - before.privateBytes};
}

std::ostream& operator<<(std::ostream& out, const Usage& usage) {
    const auto size = [](std::size_t value) { return static_cast<std::ptrdiff_t>(value); };
    const auto put = [&out](std::ptrdiff_t value) { out << std::setw(kUsageColumn) << value; };
    for (const int count : {usage.windows, usage.menusAndIcons, usage.drawing, usage.handles})
        put(count);
    put(size(usage.blocks));
    put(size(usage.bytes));
    put(size(usage.privateBytes) / 1024);
    return out;
}

} // namespace orv::tests
