#pragma once
#include "platform/services.h"

namespace orv::platform::win32 {

class SystemRegistry final : public Registry {
  public:
    std::optional<std::wstring> LocalMachineValue(const std::wstring& key, const std::wstring& value) override;
};

} // namespace orv::platform::win32
