// Where a name leads, and what stands there.
#include <cerrno>
#include <climits>
#include <cstring>

#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include "platform/posix/descriptor.h"
#include "text/error.h"

namespace orv::platform {
namespace posix {

void RaiseSystemError(int code) {
    const std::string reason = std::strerror(code);
    throw Error(error_number::kFileAccess, std::wstring(reason.begin(), reason.end()));
}

std::string MachineName() {
    char name[HOST_NAME_MAX + 1] = {};
    return gethostname(name, sizeof name - 1) == 0 ? name : "";
}

namespace {

constexpr int kMostLinks = 40;

FileName Follow(const FileName& link) {
    char text[PATH_MAX];
    const ssize_t length = readlink(link.c_str(), text, sizeof text);
    if (length < 0)
        RaiseSystemError(errno);
    const FileName next(text, static_cast<std::size_t>(length));
    return next.starts_with('/') ? next : FolderOf(link) + next;
}

/// Such a link is no name but an open file, /dev/stdout for one: whoever opened it wants the bytes in that one.
bool IsOpenFile(const FileName& link) {
    struct statfs system {};
    const FileName folder = FolderOf(link);
    return statfs(folder.empty() ? "." : folder.c_str(), &system) == 0 && system.f_type == PROC_SUPER_MAGIC;
}

Way WayTo(const struct stat& info) {
    if (S_ISDIR(info.st_mode))
        RaiseSystemError(EISDIR);
    if (!S_ISREG(info.st_mode))
        return Way::Straight;
    return info.st_nlink > 1 ? Way::InPlace : Way::Beside;
}

} // namespace
} // namespace posix

FileTarget FindTarget(const FileName& given) {
    using namespace posix;
    FileName name = given;
    // By hand: a link whose end is missing is to be followed as well.
    for (int links = 0; links < kMostLinks; ++links) {
        struct stat info {};
        if (lstat(name.c_str(), &info) != 0) {
            if (errno == ENOENT)
                return {name, Way::Beside, false};
            RaiseSystemError(errno);
        }
        if (!S_ISLNK(info.st_mode))
            return {name, WayTo(info), true};
        if (IsOpenFile(name))
            return {name, Way::Straight, true};
        name = Follow(name);
    }
    RaiseSystemError(ELOOP);
}

} // namespace orv::platform
