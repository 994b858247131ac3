#include "platform/posix/kept_attributes.h"

#include <cerrno>
#include <optional>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace orv::platform::posix {
namespace {

/// Null-terminated names, one behind another. Nothing when they cannot be listed.
std::optional<std::string> Names(int fd) {
    const ssize_t size = flistxattr(fd, nullptr, 0);
    if (size < 0)
        return errno == ENOTSUP ? std::optional<std::string>(std::in_place) : std::nullopt;
    std::string names(static_cast<std::size_t>(size), '\0');
    const ssize_t got = flistxattr(fd, names.data(), names.size());
    if (got < 0)
        return {};
    names.resize(static_cast<std::size_t>(got));
    return names;
}

std::optional<std::string> Read(int fd, const char* name) {
    const ssize_t size = fgetxattr(fd, name, nullptr, 0);
    if (size < 0)
        return {};
    std::string value(static_cast<std::size_t>(size), '\0');
    const ssize_t got = fgetxattr(fd, name, value.data(), value.size());
    if (got < 0)
        return {};
    value.resize(static_cast<std::size_t>(got));
    return value;
}

bool KeepExtended(int from, int to) {
    const std::optional<std::string> names = Names(from);
    if (!names)
        return false;
    for (std::size_t at = 0; at < names->size(); at = names->find('\0', at) + 1) {
        const char* const name = names->data() + at;
        const std::optional<std::string> value = Read(from, name);
        if (!value)
            return false;
        // A label that the system gave the new file by itself may be closed to us.
        if (Read(to, name) != value && fsetxattr(to, name, value->data(), value->size(), 0) != 0)
            return false;
    }
    return true;
}

} // namespace

bool KeepAttributes(int from, int to) {
    struct stat old {};
    struct stat made {};
    if (fstat(from, &old) != 0 || fstat(to, &made) != 0 || old.st_nlink > 1)
        return false;
    const bool sameOwner = old.st_uid == made.st_uid && old.st_gid == made.st_gid;
    // The owner first: a change of owner takes rights away.
    return (sameOwner || fchown(to, old.st_uid, old.st_gid) == 0) && KeepExtended(from, to) &&
           fchmod(to, old.st_mode & 07777) == 0;
}

} // namespace orv::platform::posix
