#include "host/sim/sim_device.h"

#include "host/sim/code_page.h"
#include "text/error.h"

namespace orv::sim {
namespace {

DeviceAnswer Failed(std::int32_t code, std::wstring reason) {
    return {code, std::move(reason), false, false};
}
DeviceAnswer Done() {
    return {0, L"OK", false, false};
}

bool IsTextual(device::WireType type) {
    return type == device::WireType::Text || type == device::WireType::ByteArray;
}

/// Code of the first fault that concerns this set; takes one off its times.
std::optional<std::int32_t> SetFaultFor(FaultPlan& plan, std::wstring_view entry, std::int64_t position) {
    for (SetFault& fault : plan.sets) {
        const bool concerned =
            fault.entry == L"*" || fault.entry == entry || fault.entry == L"#" + std::to_wstring(position);
        if (concerned && Spend(fault.times))
            return fault.code;
    }
    return {};
}

} // namespace

std::wstring SessionPassword(std::int32_t level) {
    switch (level) {
    case 1:
        return L"VLPX";
    case 2:
        return L"RRNN";
    case 3:
        return L"QMVRTK4826";
    default:
        return {};
    }
}

SimDevice::SimDevice(DeviceDescription description, FaultPlan faults)
    : store_(std::move(description)), faults_(std::move(faults)) {}

template <typename Action>
DeviceAnswer SimDevice::Answered(const Action& action) {
    if (faults_.silentAfter && answered_ >= *faults_.silentAfter)
        return {0, {}, true, false};
    if (faults_.dropAfter && answered_ >= *faults_.dropAfter) {
        faults_.dropAfter.reset();
        return {0, {}, false, true};
    }
    ++answered_;
    return action();
}

DeviceAnswer SimDevice::Connect(std::int32_t address) {
    Disconnected();
    return Answered([&]() -> DeviceAnswer {
        if (Spend(faults_.failConnect))
            return Failed(device_code::kConnectFault, L"connect refused by a fault");
        if (address != Address())
            return Failed(device_code::kWrongAddress, L"no such device");
        return Done();
    });
}

void SimDevice::Disconnected() {
    sessionLevel_ = 0;
}

DeviceAnswer SimDevice::StartSession(std::wstring_view level, std::wstring_view password) {
    return Answered([&]() -> DeviceAnswer {
        if (faults_.failSession)
            return Failed(device_code::kSessionFault, L"session refused by a fault");
        const bool known = level.size() == 1 && level[0] >= L'0' && level[0] <= L'3';
        const std::int32_t wanted = known ? level[0] - L'0' : 0;
        if (!known || (wanted > 0 && password != SessionPassword(wanted)))
            return Failed(device_code::kWrongPassword, L"wrong level or password");
        sessionLevel_ = wanted;
        return Done();
    });
}

DeviceAnswer SimDevice::EndSession(std::wstring_view mode) {
    return Answered([&]() -> DeviceAnswer {
        if (mode != L"V" && mode != L"P")
            return Failed(device_code::kBadRequest, L"unknown mode");
        sessionLevel_ = 0;
        lastEndMode_ = mode;
        return Done();
    });
}

DeviceAnswer SimDevice::Locate(std::wstring_view entry, ElementAddress& address) const {
    const std::optional<ElementAddress> found = store_.FindName(entry);
    if (!found)
        return Failed(device_code::kUnknownEntry, L"unknown entry");
    if (store_.Parameter(*found).level > sessionLevel_)
        return Failed(device_code::kNoSession, L"no session of the entry's level");
    address = *found;
    return Done();
}

DeviceAnswer SimDevice::GetEntry(std::wstring_view entry) {
    return Answered([&]() -> DeviceAnswer {
        ElementAddress address;
        DeviceAnswer answer = Locate(entry, address);
        if (answer.code != 0)
            return answer;
        const device::Value& value = store_.Get(address);
        const auto* bytes = std::get_if<Bytes>(&value);
        answer.text = bytes ? FromCodePage(*bytes) : device::ToText(value);
        return answer;
    });
}

DeviceAnswer SimDevice::SetNumericEntry(std::wstring_view entry, std::wstring_view decimal) {
    return Answered([&] { return Set(entry, std::wstring(decimal), false); });
}

DeviceAnswer SimDevice::SetStringEntry(std::wstring_view entry, std::wstring_view text) {
    return Answered([&] { return Set(entry, std::wstring(text), true); });
}

DeviceAnswer SimDevice::Set(std::wstring_view entry, const device::Value& value, bool asText) {
    ++setCount_;
    if (const auto code = SetFaultFor(faults_, entry, setCount_))
        return Failed(*code, L"set refused by a fault");
    ElementAddress address;
    DeviceAnswer located = Locate(entry, address);
    if (located.code != 0)
        return located;
    const device::WireType type = store_.Parameter(address).type;
    try {
        const std::wstring& text = std::get<std::wstring>(value);
        if (!asText && IsTextual(type))
            throw Error(error_number::kTypeMismatch);
        if (type == device::WireType::ByteArray)
            store_.Set(address, ToCodePage(std::wstring_view(text)));
        else
            store_.Set(address, value);
    } catch (const Error&) {
        return Failed(device_code::kBadValue, L"the entry cannot hold this value");
    }
    return Done();
}

} // namespace orv::sim
