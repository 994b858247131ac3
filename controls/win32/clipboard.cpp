#include "controls/win32/clipboard.h"

#include <cstring>
#include <utility>

#include "platform/win32/owned.h"

namespace orv::controls::win32 {
namespace {

struct FreeGlobal {
    void operator()(HGLOBAL memory) const { GlobalFree(memory); }
};
using OwnedGlobal = platform::win32::Owned<HGLOBAL, FreeGlobal>;

class Open {
  public:
    explicit Open(HWND owner) {
        // Another program looks at the clipboard just when it has changed; it is done in a moment.
        constexpr int kTries = 10;
        for (int i = 0; i < kTries && !open_; ++i) {
            if (i > 0)
                Sleep(10);
            open_ = OpenClipboard(owner) != FALSE;
        }
    }
    Open(const Open&) = delete;
    Open& operator=(const Open&) = delete;
    ~Open() {
        if (open_)
            CloseClipboard();
    }
    explicit operator bool() const { return open_; }

  private:
    bool open_ = false;
};

bool PutMemory(UINT format, const void* data, std::size_t size) {
    OwnedGlobal memory(GlobalAlloc(GMEM_MOVEABLE, size));
    void* target = memory ? GlobalLock(memory.Get()) : nullptr;
    if (target == nullptr)
        return false;
    std::memcpy(target, data, size);
    GlobalUnlock(memory.Get());
    if (SetClipboardData(format, memory.Get()) == nullptr)
        return false;
    memory.Release(); // it is the system's from here on
    return true;
}

/// A block of the clipboard may be longer than asked for: the count goes in front.
Bytes BlockOf(const Bytes& bytes) {
    const auto count = static_cast<std::uint32_t>(bytes.size());
    Bytes block(sizeof count + bytes.size());
    std::memcpy(block.data(), &count, sizeof count);
    std::copy(bytes.begin(), bytes.end(), block.begin() + sizeof count);
    return block;
}

template <typename Use>
void GetMemory(UINT format, Use&& use) {
    const HGLOBAL memory = GetClipboardData(format);
    const void* data = memory != nullptr ? GlobalLock(memory) : nullptr;
    if (data == nullptr)
        return;
    use(data, GlobalSize(memory));
    GlobalUnlock(memory);
}

} // namespace

SystemClipboard::SystemClipboard(std::function<HWND()> owner)
    : owner_(std::move(owner)), bytesFormat_(RegisterClipboardFormatW(L"OrvOutFormat.Bytes")) {}

bool SystemClipboard::Put(const ClipboardContent& content) {
    const Bytes block = content.bytes ? BlockOf(*content.bytes) : Bytes();
    const Open open(owner_());
    if (!open || !EmptyClipboard())
        return false;
    return PutMemory(CF_UNICODETEXT, content.text.c_str(), (content.text.size() + 1) * sizeof(wchar_t)) &&
           (!content.bytes || PutMemory(bytesFormat_, block.data(), block.size()));
}

ClipboardContent SystemClipboard::Get() {
    ClipboardContent content;
    const Open open(owner_());
    if (!open)
        return content;
    GetMemory(CF_UNICODETEXT, [&](const void* data, std::size_t size) {
        const std::wstring text(static_cast<const wchar_t*>(data), size / sizeof(wchar_t));
        content.text = text.substr(0, text.find(L'\0'));
    });
    GetMemory(bytesFormat_, [&](const void* data, std::size_t size) {
        std::uint32_t count = 0;
        if (size < sizeof count)
            return;
        std::memcpy(&count, data, sizeof count);
        const auto* first = static_cast<const std::uint8_t*>(data) + sizeof count;
        if (count <= size - sizeof count)
            content.bytes.emplace(first, first + count);
    });
    return content;
}

} // namespace orv::controls::win32
