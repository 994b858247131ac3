#include "platform/win32/activation.h"

namespace orv::platform::win32 {
namespace {

HANDLE Create(HMODULE module) {
    ACTCTXW request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    request.hModule = module;
    request.lpResourceName = MAKEINTRESOURCEW(2);
    return CreateActCtxW(&request);
}

} // namespace

ActivationContext::ActivationContext(HMODULE module) : handle_(Create(module)) {}

ActivationContext::~ActivationContext() {
    if (Valid())
        ReleaseActCtx(handle_);
}

ActivationScope::ActivationScope(const ActivationContext& context)
    : active_(context.Valid() && ActivateActCtx(context.handle_, &cookie_)) {}

ActivationScope::~ActivationScope() {
    if (active_)
        DeactivateActCtx(0, cookie_);
}

} // namespace orv::platform::win32
