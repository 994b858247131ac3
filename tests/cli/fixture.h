#pragma once
// Runs the program in process, over copies of the samples.
#include <atomic>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/command_line.h"
#include "cli/device_file.h"
#include "host/sim/description.h"
#include "host/sim/parameter_store.h"

namespace orv::cli::testing {

struct Result {
    int status = -1;
    std::string out;
    std::string err;
};

inline Result RunProgram(std::vector<std::string> arguments) {
    std::ostringstream out;
    std::ostringstream err;
    const int status = Run(std::move(arguments), {out, err});
    return {status, out.str(), err.str()};
}

inline std::string SamplePath(const std::string& name) {
    return ORV_SOURCE_DIR "/samples/" + name;
}

inline std::string ReadAll(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// A folder of the test's own that goes with it.
class Folder {
  public:
    Folder() {
        static std::atomic<int> count{0};
        path_ = std::filesystem::temp_directory_path() /
                ("outfmt-test-" + std::to_string(getpid()) + "-" + std::to_string(++count));
        std::filesystem::create_directories(path_);
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string File(const std::string& name) const {
        const std::u8string utf8 = (path_ / std::filesystem::u8path(name)).u8string();
        return {utf8.begin(), utf8.end()};
    }
    std::string Write(const std::string& name, const std::string& text) const {
        std::ofstream(std::filesystem::u8path(File(name)), std::ios::binary) << text;
        return File(name);
    }

  private:
    std::filesystem::path path_;
};

/// The first device of a file as it stands there.
inline sim::ParameterStore StoreOf(const std::string& file) {
    return sim::ParameterStore(sim::LoadDescription(std::filesystem::u8path(file)).devices.front());
}

} // namespace orv::cli::testing
