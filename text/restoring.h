#pragma once
// Guard for what must be put back whatever happens.
#include <exception>
#include <utility>

namespace orv {

/// Runs `restore` on every way out. A failure of `restore` is dropped while another error is in flight; on the plain
/// way out it flies.
template <typename Restore>
class Restoring {
  public:
    explicit Restoring(Restore restore) : restore_(std::move(restore)), inFlight_(std::uncaught_exceptions()) {}
    Restoring(const Restoring&) = delete;
    Restoring& operator=(const Restoring&) = delete;
    ~Restoring() noexcept(false) {
        if (std::uncaught_exceptions() == inFlight_) {
            restore_();
            return;
        }
        try {
            restore_();
        } catch (...) {
        }
    }

  private:
    Restore restore_;
    int inFlight_;
};

/// What `action` answers, with `restore` run on every way out by the same rule. For what happens for every parameter:
/// the plain way costs nothing.
template <typename Action, typename Restore>
auto Restored(const Action& action, const Restore& restore) {
    auto result = [&] {
        try {
            return action();
        } catch (...) {
            try {
                restore();
            } catch (...) {
            }
            throw;
        }
    }();
    restore();
    return result;
}

} // namespace orv
