#include "host/sim/parameter_store.h"

#include "text/error.h"

namespace orv::sim {
namespace {

/// Digits of an element; nothing for anything else, and for a number that no element can have.
std::optional<std::int32_t> ParseElement(std::wstring_view digits) {
    if (digits.empty() || digits.size() > 5)
        return {};
    std::int32_t element = 0;
    for (const wchar_t digit : digits) {
        if (digit < L'0' || digit > L'9')
            return {};
        element = element * 10 + (digit - L'0');
    }
    return element;
}

} // namespace

ParameterStore::ParameterStore(DeviceDescription description) : description_(std::move(description)) {
    for (std::size_t i = 0; i < description_.parameters.size(); ++i) {
        numbers_.emplace(description_.parameters[i].number, i);
        paths_.emplace(description_.parameters[i].path, i);
    }
}

std::optional<ElementAddress> ParameterStore::FindNumber(std::int32_t number) const {
    const auto found = numbers_.find(number);
    if (found == numbers_.end())
        return {};
    return ElementAddress{found->second, 0};
}

std::optional<ElementAddress> ParameterStore::FindName(std::wstring_view name) const {
    std::int32_t element = 0;
    if (!name.empty() && name.back() == L']') {
        const std::size_t bracket = name.rfind(L'[');
        if (bracket == std::wstring_view::npos)
            return {};
        const auto parsed = ParseElement(name.substr(bracket + 1, name.size() - bracket - 2));
        if (!parsed)
            return {};
        element = *parsed;
        name = name.substr(0, bracket);
    }
    const auto found = paths_.find(std::wstring(name));
    if (found == paths_.end() || element >= description_.parameters[found->second].details.elementCount)
        return {};
    return ElementAddress{found->second, element};
}

std::wstring ParameterStore::Name(ElementAddress address) const {
    const ParameterDescription& parameter = Parameter(address);
    if (parameter.details.elementCount == 1)
        return parameter.path;
    return parameter.path + L"[" + std::to_wstring(address.element) + L"]";
}

const ParameterDescription& ParameterStore::Parameter(ElementAddress address) const {
    return description_.parameters.at(address.parameter);
}

const device::Value& ParameterStore::Get(ElementAddress address) const {
    return Parameter(address).values.at(static_cast<std::size_t>(address.element));
}

void ParameterStore::Set(ElementAddress address, const device::Value& value) {
    ParameterDescription& parameter = description_.parameters.at(address.parameter);
    device::Value converted = device::Convert(value, parameter.type);
    parameter.values.at(static_cast<std::size_t>(address.element)) = std::move(converted);
}

ElementAddress ParameterStore::Require(std::int32_t number, std::int32_t element) const {
    std::optional<ElementAddress> found = FindNumber(number);
    if (!found || element < 0 || element >= Parameter(*found).details.elementCount)
        throw Error(error_number::kSubscript);
    found->element = element;
    return *found;
}

const device::Value& ParameterStore::Get(std::int32_t number, std::int32_t element) const {
    return Get(Require(number, element));
}

void ParameterStore::Set(std::int32_t number, std::int32_t element, const device::Value& value) {
    Set(Require(number, element), value);
}

} // namespace orv::sim
