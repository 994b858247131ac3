#pragma once
// A folder for each test, and what is in it.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/file_writer.h"
#include "text/error.h"

namespace orv::platform::testing {

class FilesTest : public ::testing::Test {
  protected:
    FilesTest()
        : folder(std::filesystem::temp_directory_path() / ("orv-files-" + std::to_string(std::random_device{}()))) {
        std::filesystem::create_directories(folder);
    }
    ~FilesTest() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    static std::string Read(const std::filesystem::path& file) {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    std::filesystem::path Make(const std::filesystem::path& name, std::string_view text = "old") const {
        std::ofstream(folder / name, std::ios::binary) << text;
        return folder / name;
    }
    std::set<std::filesystem::path> Names() const {
        std::set<std::filesystem::path> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            names.insert(entry.path().filename());
        return names;
    }

    std::filesystem::path folder;
};

/// The reason why `call` failed; empty when it did not.
template <typename Call>
std::wstring ReasonOf(const Call& call) {
    try {
        call();
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), error_number::kFileAccess);
        EXPECT_FALSE(error.Description().empty());
        return error.Description();
    }
    return {};
}

inline std::wstring ReasonToWrite(const std::filesystem::path& file, std::string_view bytes = "new") {
    return ReasonOf([&] { WriteWhole(file.native(), bytes); });
}

} // namespace orv::platform::testing
