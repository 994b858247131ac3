#pragma once
// The grammar of combination expressions once more, by a parser library: an opponent to be measured against.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orv::bench {

/// The same fields as the model's group.
struct PegtlGroup {
    std::int16_t index = 0;
    bool isOptional = false;
    std::int32_t multiple = 0;
    std::wstring noReadString;
    std::wstring multipleReadString;
    std::vector<std::wstring> codes;
};

/// False for what is no expression; `groups` is empty then.
bool ParseByPegtl(std::wstring_view expression, std::vector<PegtlGroup>& groups);

/// The device form.
std::wstring Print(const std::vector<PegtlGroup>& groups);

} // namespace orv::bench
