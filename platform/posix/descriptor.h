#pragma once
// What the files of this folder share.
#include <string>
#include <utility>

#include <unistd.h>

#include "platform/system_file.h"

namespace orv::platform::posix {

[[noreturn]] void RaiseSystemError(int code);

/// With the separator at its end; empty for the current folder.
inline FileName FolderOf(const FileName& name) {
    return name.substr(0, name.rfind('/') + 1);
}

std::string MachineName();

/// A file descriptor, closed at the end.
class Descriptor {
  public:
    explicit Descriptor(int fd) : fd_(fd) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (fd_ >= 0)
            close(fd_);
    }
    int Get() const { return fd_; }
    int Release() { return std::exchange(fd_, -1); }

  private:
    int fd_;
};

} // namespace orv::platform::posix
