#pragma once
// The model over the portable host, on a sample whose values a test may change.
#include <gtest/gtest.h>

#include <string>

#include "model/out_format_config.h"
#include "tests/support/bench.h"

namespace orv::test {

/// Number of the error that `action` raises; 0 when it raises none.
template <typename Action>
std::int32_t ErrorOf(const Action& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.Number();
    }
    return 0;
}

class ModelTest : public testing::Test {
  protected:
    explicit ModelTest(const std::string& sample = "conveyor.json") : bench(sample) { bench.Open(3); }

    sim::ParameterStore& Store() { return *bench.host.Store(bench.cluster, 0); }
    void Set(std::int32_t number, const device::Value& value, std::int32_t element = 0) {
        Store().Set(number, element, value);
    }
    device::Value Get(std::int32_t number, std::int32_t element = 0) { return Store().Get(number, element); }
    model::Codes& LoadedCodes() {
        root.Reload();
        return root.Codes();
    }
    model::AdvancedFormat& Format(std::int32_t position) { return root.AdvancedFormats().Item(position); }

    Bench bench;
    model::OutFormatConfig root{bench.state};
};

/// A copy of a sample to be changed before there is a host over it.
inline sim::ParameterDescription& Parameter(sim::DeviceDescription& device, std::int32_t number) {
    for (sim::ParameterDescription& parameter : device.parameters)
        if (parameter.number == number)
            return parameter;
    throw Error(error_number::kSubscript);
}

/// Gives a parameter `count` elements; new ones repeat the first.
inline void Resize(sim::ParameterDescription& parameter, std::int32_t count) {
    const device::Value filler = parameter.values.front();
    parameter.values.resize(static_cast<std::size_t>(count), filler);
    parameter.details.elementCount = count;
}

} // namespace orv::test
