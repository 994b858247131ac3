// An open file.
#include <cerrno>
#include <random>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "platform/posix/descriptor.h"
#include "platform/posix/kept_attributes.h"
#include "platform/temporary_name.h"

namespace orv::platform {

using posix::Descriptor;
using posix::FolderOf;
using posix::RaiseSystemError;

namespace {

constexpr int kMostNames = 100;
constexpr int kLockTries = 200;
constexpr useconds_t kLockPause = 10000;

std::uint64_t Chance() {
    std::random_device device;
    return std::uint64_t{device()} << 32 | device();
}

int Checked(int fd) {
    if (fd < 0)
        RaiseSystemError(errno);
    return fd;
}

/// Whoever cleans up may have been quicker than the lock.
bool IsStillThere(int fd) {
    struct stat info {};
    return fstat(fd, &info) == 0 && info.st_nlink > 0;
}

/// Not every file system has locks; without them nobody cleans up either.
bool Locked(int fd) {
    return flock(fd, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

/// Another program may have set the pipe that we share with it not to wait.
bool CanWriteLater(int fd, int code) {
    pollfd waiting{fd, POLLOUT, 0};
    return code == EINTR || (code == EAGAIN && poll(&waiting, 1, -1) >= 0);
}

/// The new name outlives a power failure. Some systems cannot promise that of a folder.
void FlushFolder(const FileName& name) {
    const FileName folder = FolderOf(name);
    const Descriptor opened(open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.Get() >= 0)
        fsync(opened.Get());
}

} // namespace

SystemFile SystemFile::CreateBeside(const FileTarget& target) {
    const std::string machine = posix::MachineName();
    // Nobody shall read the new bytes who could not read the old ones.
    const mode_t mode = target.exists ? 0600 : 0666;
    for (int tries = 0; tries < kMostNames; ++tries) {
        const FileName name = FolderOf(target.name) + TemporaryName(Chance(), machine);
        Descriptor fd(open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
        if (fd.Get() < 0 && errno == EEXIST)
            continue;
        Checked(fd.Get());
        if (Locked(fd.Get()) && IsStillThere(fd.Get()))
            return SystemFile(fd.Release(), name);
    }
    RaiseSystemError(EEXIST);
}

SystemFile SystemFile::OpenInPlace(const FileName& name) {
    SystemFile file(Checked(open(name.c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC)));
    // Two of us at once would mix their bytes.
    for (int tries = 0; !Locked(static_cast<int>(file.handle_)); ++tries) {
        if (tries == kLockTries)
            RaiseSystemError(EWOULDBLOCK);
        usleep(kLockPause);
    }
    return file;
}

SystemFile SystemFile::OpenStraight(const FileName& name) {
    struct stat info {};
    const bool isFile = stat(name.c_str(), &info) == 0 && S_ISREG(info.st_mode);
    // Somebody has that file open and wrote to it before.
    return SystemFile(Checked(open(name.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC | (isFile ? O_APPEND : 0))));
}

SystemFile SystemFile::StandardOutput() {
    return SystemFile(STDOUT_FILENO, {}, false);
}

void SystemFile::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const int fd = static_cast<int>(handle_);
        const ssize_t written = write(fd, bytes.data(), bytes.size());
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
        else if (written == 0 || !CanWriteLater(fd, errno))
            RaiseSystemError(written == 0 ? EIO : errno);
    }
}

void SystemFile::Flush() {
    if (fsync(static_cast<int>(handle_)) != 0 && errno != EINVAL && errno != ENOTSUP)
        RaiseSystemError(errno);
}

std::string SystemFile::ReadAll() {
    const int fd = static_cast<int>(handle_);
    struct stat info {};
    if (fstat(fd, &info) != 0)
        RaiseSystemError(errno);
    std::string bytes(static_cast<std::size_t>(info.st_size), '\0');
    std::size_t have = 0;
    for (ssize_t got = 1; have < bytes.size() && got != 0; have += static_cast<std::size_t>(got)) {
        got = pread(fd, bytes.data() + have, bytes.size() - have, static_cast<off_t>(have));
        if (got < 0)
            RaiseSystemError(errno);
    }
    bytes.resize(have);
    lseek(fd, 0, SEEK_SET);
    return bytes;
}

void SystemFile::CutHere() {
    const int fd = static_cast<int>(handle_);
    if (ftruncate(fd, lseek(fd, 0, SEEK_CUR)) != 0)
        RaiseSystemError(errno);
}

bool SystemFile::TakeOver(const FileName& target) {
    const Descriptor old(Checked(open(target.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC)));
    return posix::KeepAttributes(old.Get(), static_cast<int>(handle_));
}

void SystemFile::Rename(const FileName& target) {
    if (rename(temporary_.c_str(), target.c_str()) != 0)
        RaiseSystemError(errno);
    temporary_.clear();
    FlushFolder(target);
    Close();
}

void SystemFile::Close() noexcept {
    if (!temporary_.empty())
        unlink(temporary_.c_str());
    temporary_.clear();
    if (owned_ && handle_ != kNone)
        close(static_cast<int>(handle_));
    handle_ = kNone;
}

} // namespace orv::platform
