#include "host/sim/parameter_store.h"

#include <algorithm>
#include <numeric>

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

ParameterStore::ParameterStore(DeviceDescription description)
    : description_(std::move(description)), byNumber_(description_.parameters.size()) {
    const auto& parameters = description_.parameters;
    std::iota(byNumber_.begin(), byNumber_.end(), 0U);
    byPath_ = byNumber_;
    std::ranges::stable_sort(byNumber_, {}, [&](std::uint32_t i) { return parameters[i].number; });
    std::ranges::stable_sort(byPath_, {}, [&](std::uint32_t i) { return std::wstring_view(parameters[i].path); });
    begins_.reserve(parameters.size());
    for (const ParameterDescription& parameter : parameters) {
        begins_.push_back(elements_);
        elements_ += parameter.details.elementCount;
    }
}

ElementAddress ParameterStore::At(std::int32_t ordinal) const {
    if (ordinal < 0 || ordinal >= elements_)
        throw Error(error_number::kInvalidArgument);
    const auto next = std::upper_bound(begins_.begin(), begins_.end(), ordinal);
    return {static_cast<std::size_t>(next - begins_.begin()) - 1, ordinal - *(next - 1)};
}

std::optional<ElementAddress> ParameterStore::FindNumber(std::int32_t number) const {
    const auto numberOf = [this](std::uint32_t i) { return description_.parameters[i].number; };
    const auto found = std::ranges::lower_bound(byNumber_, number, {}, numberOf);
    if (found == byNumber_.end() || numberOf(*found) != number)
        return {};
    return ElementAddress{*found, 0};
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
    const auto pathOf = [this](std::uint32_t i) { return std::wstring_view(description_.parameters[i].path); };
    const auto found = std::ranges::lower_bound(byPath_, name, {}, pathOf);
    if (found == byPath_.end() || pathOf(*found) != name ||
        element >= description_.parameters[*found].details.elementCount)
        return {};
    return ElementAddress{*found, element};
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

device::Value ParameterStore::Get(ElementAddress address) const {
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

device::Value ParameterStore::Get(std::int32_t number, std::int32_t element) const {
    return Get(Require(number, element));
}

void ParameterStore::Set(std::int32_t number, std::int32_t element, const device::Value& value) {
    Set(Require(number, element), value);
}

} // namespace orv::sim
