#pragma once
// Parameters of one device, found by number, path or entry name. Used by the bench host's tables and by the device.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/sim/description.h"

namespace orv::sim {

/// One element of one parameter.
struct ElementAddress {
    std::size_t parameter = 0; ///< position in the description
    std::int32_t element = 0;  ///< 0-based, below the parameter's element count
};

class ParameterStore {
  public:
    explicit ParameterStore(DeviceDescription description);

    /// One number for each element of the device, from 0. Raises 5 for a number that is none.
    std::int32_t Ordinal(ElementAddress address) const { return begins_[address.parameter] + address.element; }
    ElementAddress At(std::int32_t ordinal) const;

    std::optional<ElementAddress> FindNumber(std::int32_t number) const;
    /// `name` is a path or path + "[" + element + "]". Nothing for an unknown path and an element past the end.
    std::optional<ElementAddress> FindName(std::wstring_view name) const;
    /// Path of a scalar, path + "[" + element + "]" of an element.
    std::wstring Name(ElementAddress address) const;

    const ParameterDescription& Parameter(ElementAddress address) const;
    device::Value Get(ElementAddress address) const;
    /// Converts to the parameter's type: raises 6 or 13 when it cannot, and leaves the old value. Limits are not
    /// checked: a value beyond them that came from the device must find its way back.
    void Set(ElementAddress address, const device::Value& value);

    /// By number, for tests and tools. Raises 9 for an unknown number or element.
    device::Value Get(std::int32_t number, std::int32_t element = 0) const;
    void Set(std::int32_t number, std::int32_t element, const device::Value& value);

    /// The description with the present values.
    const DeviceDescription& Contents() const { return description_; }

  private:
    ElementAddress Require(std::int32_t number, std::int32_t element) const;

    DeviceDescription description_;
    // Positions in the description. Half of a map's memory, which counts where a file has hundreds of thousands.
    std::vector<std::uint32_t> byNumber_;
    std::vector<std::uint32_t> byPath_;
    std::vector<std::int32_t> begins_; ///< ordinal of each parameter's first element
    std::int32_t elements_ = 0;
};

} // namespace orv::sim
