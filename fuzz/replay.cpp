// Replays a target's corpus, so that the target keeps building and what was once found stays mended.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/fuzz.h"

namespace orv::fuzz {
namespace {

std::vector<std::filesystem::path> Inputs() {
    std::vector<std::filesystem::path> inputs;
    for (const auto& entry : std::filesystem::directory_iterator(ORV_CORPUS))
        inputs.push_back(entry.path());
    std::sort(inputs.begin(), inputs.end());
    return inputs;
}

std::vector<std::uint8_t> Content(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// An input that was cut off is the most common kind of bad one where inputs are texts. The copy ends where its memory
/// ends, so that a read past it is seen.
void RunWithPrefixes(const std::vector<std::uint8_t>& content) {
    const std::size_t step = content.size() / (ORV_PREFIXES + 1) + 1;
    for (std::size_t size = ORV_PREFIXES > 0 ? 0 : content.size(); size < content.size(); size += step) {
        const std::vector<std::uint8_t> prefix(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(size));
        LLVMFuzzerTestOneInput(prefix.data(), prefix.size());
    }
    LLVMFuzzerTestOneInput(content.data(), content.size());
}

TEST(Replay, HoldsForTheCorpus) {
    const auto inputs = Inputs();
    for (const auto& input : inputs) {
        // A failed expectation ends the program; the last name in the log is the input that did it.
        std::fprintf(stderr, "%s\n", input.filename().c_str());
        RunWithPrefixes(Content(input));
    }
    // A minimised corpus holds one input for each way of being refused, so no share of them is asked for.
    EXPECT_GE(Accepted(), 5) << "every input is turned away at the door";
}

} // namespace
} // namespace orv::fuzz
