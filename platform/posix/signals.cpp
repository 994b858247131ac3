// Signals that would end the program in the middle of a write.
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

#include "platform/system_file.h"

namespace orv::platform {
namespace {

constexpr int kEndings[] = {SIGINT, SIGTERM, SIGHUP};

} // namespace

EndingHeld::EndingHeld() noexcept {
    sigset_t endings;
    sigset_t before;
    sigemptyset(&endings);
    for (const int signal : kEndings)
        sigaddset(&endings, signal);
    if (pthread_sigmask(SIG_BLOCK, &endings, &before) != 0)
        return;
    unsigned bit = 1;
    for (const int signal : kEndings) {
        if (sigismember(&before, signal) == 0)
            held_ |= bit;
        bit <<= 1;
    }
}

EndingHeld::~EndingHeld() {
    sigset_t released;
    sigemptyset(&released);
    unsigned bit = 1;
    for (const int signal : kEndings) {
        if ((held_ & bit) != 0)
            sigaddset(&released, signal);
        bit <<= 1;
    }
    pthread_sigmask(SIG_UNBLOCK, &released, nullptr);
}

void FailWritesQuietly() noexcept {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) == -1)
            open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY); // of the wrong kind: its use still fails
}

} // namespace orv::platform
