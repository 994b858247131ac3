#pragma once
// Every call of a host object passes here: it is counted, logged on request, and can be told to fail.
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orv::sim {

/// A call is named by interface and method, "ParameterTable.GetValue". Used on the user-interface thread.
class CallGate {
  public:
    struct Call {
        std::string name;
        std::wstring arguments; ///< as text, joined with ", "
    };

    /// Passes a call. `name` must outlive the gate (a literal). Raises the error that was asked for.
    void Enter(std::string_view name) {
        ++count_;
        if (watching_)
            Watch(name, {});
    }
    /// `arguments` answers their text; it is asked only while a log is kept.
    template <typename Arguments>
    void Enter(std::string_view name, const Arguments& arguments) {
        ++count_;
        if (watching_)
            Watch(name, logging_ ? arguments() : std::wstring());
    }

    /// Calls since the gate was made, failed ones included.
    std::int64_t Count() const { return count_; }

    /// From now on (or no more) calls are logged and counted by name. Off at first, so that an unwatched call costs
    /// no memory.
    void KeepLog(bool on);
    const std::vector<Call>& Log() const { return log_; }
    /// Logged calls of that name.
    std::int64_t Count(std::string_view name) const;

    /// The `k`-th call from now (1 is the next) raises the error, whatever its name. One call, then no more.
    void FailCall(std::int64_t k, std::int32_t number, std::wstring description);
    /// The same for the `n`-th call of `name` from now; `times` calls in a row fail.
    void FailNamed(std::string_view name, std::int64_t n, std::int32_t number, std::wstring description,
                   std::int64_t times = 1);
    /// Runs `hook` before every call of `name`; an empty one takes it away. Calls made by the hook pass the gate, but
    /// do not run a hook of the same name again.
    void Before(std::string_view name, std::function<void()> hook);
    /// True when a failure that was asked for has not happened yet.
    bool FailurePending() const { return !faults_.empty(); }
    /// Forgets failures, hooks and the log; goes on counting.
    void Reset();

  private:
    struct Fault {
        std::string name; ///< empty: any call
        std::int64_t skip = 0;
        std::int64_t times = 1;
        std::int32_t number = 0;
        std::wstring description;
    };
    struct Hook {
        std::function<void()> run;
        bool running = false;
    };
    void Watch(std::string_view name, std::wstring arguments);
    void RunHook(std::string_view name);
    void RaiseFault(std::string_view name);
    void UpdateWatching();

    bool watching_ = false;
    bool logging_ = false;
    std::int64_t count_ = 0;
    std::vector<Call> log_;
    std::vector<Fault> faults_;
    std::map<std::string, Hook, std::less<>> hooks_;
};

} // namespace orv::sim
