#pragma once
// Plays a script on the running host. Commands run when the host is idle; those marked "meanwhile", the answers to
// message boxes and the time limits come from a timer, so they work while the component waits.
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/app/orvhost/box_watch.h"
#include "host/app/orvhost/host_pump.h"
#include "host/app/orvhost/script.h"

namespace orv::host {

/// What a script can reach of the host. Members raise std::exception when something cannot be done.
class PlayerHost {
  public:
    virtual ~PlayerHost() = default;
    virtual void Say(const std::wstring& line) = 0;
    virtual HWND FrameWindow() = 0;
    virtual HWND ControlWindow() = 0; ///< null when no control is shown
    virtual HostPump& Pump() = 0;
    virtual std::wstring HostValue(std::int32_t number, std::int32_t element) = 0;
    virtual std::wstring DeviceValue(std::int32_t number, std::int32_t element) = 0;
    virtual std::int16_t Result() = 0;
    virtual void SaveTo(const std::filesystem::path& file) = 0;
    /// Closes the add-on when it is still there, and gives its code back.
    virtual void Terminate() = 0;
    /// Called now and then for as long as the script makes progress.
    virtual void Alive() = 0;
};

class Player {
  public:
    Player(std::vector<ScriptCommand> commands, PlayerHost& host, std::filesystem::path shots, int timeLimitSeconds);
    ~Player();
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    /// The host has nothing to do: ends the present command and begins the next.
    void Idle();
    /// The host's own loop has handled a message.
    void Handled() { ++handled_; }
    /// Something went on in the host or on the line: whoever waits, waits for more than that.
    void Stirred() {
        stalledTicks_ = 0;
        begun_ = GetTickCount64();
    }
    /// Ends the script with a failure of the present command.
    void Fail(const std::string& reason);
    int Status() const { return failed_ ? 1 : 0; }

  private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD);
    void Tick();
    void Begin();
    void RunNow();
    void Finish();
    void Execute(const ScriptCommand& command);
    void ExecuteOnControl(const ScriptCommand& command);
    void Print(const ScriptCommand& command);
    std::wstring Asked(const ScriptCommand& command);
    void SendKey(const std::wstring& name);
    void RunMenu(const std::wstring& caption);
    void TakeShot(const std::wstring& name);
    void Post(int command);
    bool NextIsMeanwhile() const;
    bool NextIsInside() const;

    static Player* instance_;
    PlayerHost& host_;
    std::vector<ScriptCommand> commands_;
    std::filesystem::path shots_;
    BoxWatch boxes_;
    std::size_t next_ = 0;
    bool pending_ = false; ///< the last command's outcome is not printed yet
    bool failed_ = false;
    bool ended_ = false;
    bool busy_ = false;  ///< a command of ours is on the stack and pumps
    bool inKey_ = false; ///< a key of ours is on the stack, and what it opened has a loop of its own
    unsigned long handled_ = 0;
    unsigned long handledAtTick_ = 0;
    int stalledTicks_ = 0;
    ULONGLONG begun_ = GetTickCount64();
    ULONGLONG limit_;
    UINT_PTR timer_ = 0;
};

} // namespace orv::host
