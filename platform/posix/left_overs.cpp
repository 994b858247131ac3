// Temporaries of runs that were killed.
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "platform/posix/descriptor.h"
#include "platform/temporary_name.h"

namespace orv::platform {
namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

bool IsOurs(const struct stat& info) {
    return S_ISREG(info.st_mode) && info.st_nlink == 1 && (info.st_uid == geteuid() || geteuid() == 0);
}

/// A living writer holds a lock, which goes with its process; where there are no locks nothing is removed.
void RemoveIfDead(int folder, const char* name) {
    const posix::Descriptor file(openat(folder, name, O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat held {};
    struct stat named {};
    if (file.Get() < 0 || fstat(file.Get(), &held) != 0 || !IsOurs(held) || flock(file.Get(), LOCK_EX | LOCK_NB) != 0)
        return;
    if (fstatat(folder, name, &named, AT_SYMLINK_NOFOLLOW) == 0 && named.st_ino == held.st_ino &&
        named.st_dev == held.st_dev)
        unlinkat(folder, name, 0);
}

} // namespace

void RemoveLeftOvers(const FileName& target) noexcept {
    try {
        const FileName name = posix::FolderOf(target);
        const std::string machine = posix::MachineName();
        const std::unique_ptr<DIR, CloseFolder> folder(opendir(name.empty() ? "." : name.c_str()));
        while (const dirent* entry = folder ? readdir(folder.get()) : nullptr)
            if (IsTemporaryName(entry->d_name, machine))
                RemoveIfDead(dirfd(folder.get()), entry->d_name);
    } catch (const std::exception&) {
        return; // no memory: the next run will do it
    }
}

} // namespace orv::platform
