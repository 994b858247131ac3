#include "host/sim/fault_plan.h"

#include <charconv>

#include "host/sim/utf8.h"

namespace orv::sim {
namespace {

template <typename Number>
bool ParseNumber(std::string_view text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

} // namespace

bool Spend(FaultCount& count) {
    if (count == 0)
        return false;
    if (count > 0)
        --count;
    return true;
}

std::optional<SetFault> ParseSetFault(std::string_view text) {
    std::vector<std::string_view> fields;
    while (true) {
        const std::size_t colon = text.find(':');
        fields.push_back(text.substr(0, colon));
        if (colon == std::string_view::npos)
            break;
        text.remove_prefix(colon + 1);
    }
    SetFault fault;
    if (fields.size() < 2 || fields.size() > 3 || fields[0].empty() || !ParseNumber(fields[1], fault.code))
        return {};
    if (fields.size() == 3 && (!ParseNumber(fields[2], fault.times) || fault.times < 1))
        return {};
    fault.entry = FromUtf8(fields[0]);
    std::int64_t position = 0;
    if (fields[0][0] == '#' && (!ParseNumber(fields[0].substr(1), position) || position < 1))
        return {};
    return fault;
}

} // namespace orv::sim
