#pragma once
// What the fuzz targets share: a failed expectation ends the program, since that is what a fuzzer notices.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

/// Runs the code under test on one input. The name is the fuzzer's, not ours.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace orv::fuzz {

/// Inputs that went all the way. A corpus that gets nowhere tests nothing, so the replay looks at it.
inline int& Accepted() {
    static int count = 0;
    return count;
}

inline void Require(bool held, const char* what) {
    if (held)
        return;
    std::fprintf(stderr, "Expectation failed: %s\n", what);
    std::abort();
}

/// One character a byte.
inline std::wstring Widened(const std::uint8_t* data, std::size_t size) {
    return {data, data + size};
}

} // namespace orv::fuzz
