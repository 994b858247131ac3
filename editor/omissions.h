#pragma once
// What a save leaves out of an object, in words.
#include <string>
#include <vector>

#include "device/mib_param_cache.h"
#include "model/out_format_config.h"

namespace orv::editor {

/// Objects are asked to queue themselves, as for a save; what they leave out is kept, nothing else.
class Omissions {
  public:
    explicit Omissions(device::DeviceState& state) : cache_(state, device::MIBParamCache::Keeps::WhatIsLeftOut) {}

    device::MIBParamCache& Queue() { return cache_; }
    /// A sentence for what has no place on the device, and one for what was never read; none for what is not there.
    /// Items are those of `format`.
    std::vector<std::wstring> Strips(const model::OutFormatConfig& root,
                                     const model::AdvancedFormat* format = nullptr) const;

  private:
    std::wstring NotRead(bool keepsExpression, const model::AdvancedFormat* format) const;

    device::MIBParamCache cache_;
};

/// What has no place, joined: "the strings of group 3, item 11 of format 1". Empty when all has one.
std::wstring WithoutPlace(const std::vector<device::LeftOut>& leftOut);

} // namespace orv::editor
