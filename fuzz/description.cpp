// The loader of device description files: a file is refused with its one kind of error, or loads, is written, and
// loads to the same.
#include <string_view>

#include "fuzz/fuzz.h"
#include "host/sim/description.h"

namespace orv::fuzz {
namespace {

void Check(std::string_view text) {
    sim::SystemDescription system;
    try {
        system = sim::ParseDescription(text, "input");
    } catch (const sim::FileError& error) {
        Require(std::string_view(error.what()).find('\n') == std::string_view::npos, "a message is one line");
        return;
    }
    const std::string written = sim::FormatDescription(system);
    try {
        const sim::SystemDescription again = sim::ParseDescription(written, "written");
        Require(again == system, "what is written loads to the same");
        Require(sim::FormatDescription(again) == written, "writing is a fixed point");
    } catch (const sim::FileError& error) {
        Require(false, error.what());
    }
    ++Accepted();
}

} // namespace
} // namespace orv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orv::fuzz::Check(std::string_view(reinterpret_cast<const char*>(data), size));
    return 0;
}
