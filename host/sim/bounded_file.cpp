#include "host/sim/bounded_file.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <system_error>

#include "host/sim/description.h"
#include "host/sim/utf8.h"

namespace orv::sim {
namespace {

constexpr std::size_t kMebibyte = std::size_t{1} << 20;

[[noreturn]] void RaiseUnreadable(const std::filesystem::path& file, int number) {
    std::string reason = "the file cannot be read";
    if (number != 0)
        reason += ": " + Excerpt(std::generic_category().message(number));
    throw FileError(NameOf(file), "", reason);
}

/// Room for what is announced, so that a large file is not copied while it is read. 0 for what has no size.
std::size_t AnnouncedSize(const std::filesystem::path& file) {
    std::error_code failed;
    const std::uintmax_t size = std::filesystem::file_size(file, failed);
    return failed ? 0 : static_cast<std::size_t>(std::min<std::uintmax_t>(size, kLargestFile));
}

} // namespace

std::string NameOf(const std::filesystem::path& file) {
    // The wide form would depend on the locale outside Windows.
    const std::u8string utf8 = file.u8string();
    return Excerpt({reinterpret_cast<const char*>(utf8.data()), utf8.size()});
}

std::string ReadFile(const std::filesystem::path& file) {
    std::error_code failed;
    if (std::filesystem::is_directory(file, failed))
        RaiseUnreadable(file, EISDIR);
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        RaiseUnreadable(file, errno);
    std::string contents;
    std::string chunk(kMebibyte, '\0');
    contents.reserve(AnnouncedSize(file) + chunk.size());
    while (stream && contents.size() <= kLargestFile) {
        errno = 0;
        stream.read(chunk.data(), static_cast<std::streamsize>(chunk.size()));
        contents.append(chunk.data(), static_cast<std::size_t>(stream.gcount()));
    }
    if (stream.bad())
        RaiseUnreadable(file, errno);
    if (contents.size() > kLargestFile)
        throw FileError(NameOf(file), "",
                        "the file is larger than " + std::to_string(kLargestFile / kMebibyte) + " MB");
    return contents;
}

} // namespace orv::sim
