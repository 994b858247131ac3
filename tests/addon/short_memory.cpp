#include "tests/addon/short_memory.h"

#include <cstdio>
#include <cstdlib>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace orv::test::memory {
namespace {

struct State {
    bool inside = false;
    bool exhausted = false;
    bool failed = false;
    Shortage shortage = Shortage::None;
    std::int64_t count = 0;
    std::int64_t failAt = 0;
    std::int64_t live = 0;
};
State state;

void ShowPlace() {
#if defined(__SANITIZE_ADDRESS__)
    static const bool wanted = std::getenv("ORV_SHOW_PLACE") != nullptr;
    if (wanted && !state.failed)
        __sanitizer_print_stack_trace();
#endif
}

bool Refuses() {
    if (!state.inside)
        return false;
    ++state.count;
    const bool due = state.shortage != Shortage::None && state.count == state.failAt;
    if (!due && !state.exhausted)
        return false;
    ShowPlace();
    state.failed = true;
    state.exhausted = state.shortage == Shortage::FromThenOn;
    return true;
}

void* Take(std::size_t size, std::size_t alignment) noexcept {
    if (Refuses())
        return nullptr;
    void* block = alignment == 0 ? std::malloc(size == 0 ? 1 : size)
                                 : std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
    if (block != nullptr)
        ++state.live;
    return block;
}

void* TakeOrThrow(std::size_t size, std::size_t alignment) {
    void* block = Take(size, alignment);
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

void Give(void* block) noexcept {
    if (block == nullptr)
        return;
    --state.live;
    std::free(block);
}

} // namespace

Inside::Inside() noexcept : before_(state.inside) {
    state.inside = true;
}
Inside::~Inside() {
    state.inside = before_;
}
Outside::Outside() noexcept : before_(state.inside) {
    state.inside = false;
}
Outside::~Outside() {
    state.inside = before_;
}

void Fail(std::int64_t k, Shortage shortage) noexcept {
    state.count = 0;
    state.failAt = k;
    state.shortage = shortage;
    state.failed = false;
    state.exhausted = false;
}
void Relax() noexcept {
    state.exhausted = false;
}
void Forget() noexcept {
    Fail(0, Shortage::None);
}
std::int64_t Count() noexcept {
    return state.count;
}
bool Failed() noexcept {
    return state.failed;
}
std::int64_t Live() noexcept {
    return state.live;
}

} // namespace orv::test::memory

using orv::test::memory::Give;
using orv::test::memory::Take;
using orv::test::memory::TakeOrThrow;

void* operator new(std::size_t size) {
    return TakeOrThrow(size, 0);
}
void* operator new[](std::size_t size) {
    return TakeOrThrow(size, 0);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return TakeOrThrow(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return TakeOrThrow(size, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Take(size, 0);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return Take(size, 0);
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return Take(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return Take(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* block) noexcept {
    Give(block);
}
void operator delete[](void* block) noexcept {
    Give(block);
}
void operator delete(void* block, std::size_t) noexcept {
    Give(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    Give(block);
}
void operator delete(void* block, std::align_val_t) noexcept {
    Give(block);
}
void operator delete[](void* block, std::align_val_t) noexcept {
    Give(block);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
    Give(block);
}
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept {
    Give(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
    Give(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    Give(block);
}
