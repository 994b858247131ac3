#pragma once
// The few services of the operating system that the product uses, abstract. Portable code gets them by reference.
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "text/bytes.h"

namespace orv::platform {

enum class Icon { None, Information, Warning, Critical };
enum class Buttons { Ok, YesNo };
enum class Answer { Ok, Yes, No };

struct MessageBox {
    std::wstring text;
    std::wstring title;
    Icon icon = Icon::None;
    Buttons buttons = Buttons::Ok;
    Answer preset = Answer::Ok; ///< default button; Answer::No makes "No" the default of a Yes/No box
};

class MessageBoxes {
  public:
    virtual ~MessageBoxes() = default;
    /// Modal; dispatches messages while it is open. Answers No when the component is closed under it.
    virtual Answer Show(const MessageBox& box) = 0;
    /// A critical box with an OK button for who has no memory left: takes none for itself. Only a sound where nothing
    /// can be shown.
    virtual void ShowPlain(const wchar_t* /*text*/, const wchar_t* /*title*/) noexcept { Beep(); }
    /// The system's warning sound. Never fails.
    virtual void Beep() = 0;
    /// The component is going: open boxes, and those still to come, are answered No (or OK where that is all).
    virtual void Close() = 0;
};

class DebugOutput {
  public:
    virtual ~DebugOutput() = default;
    /// One call of the platform's debug output a line; `line` comes without a line break.
    virtual void Line(std::wstring_view line) = 0;
};

enum class Wait { Satisfied, Closing, Quit };

class MessagePump {
  public:
    virtual ~MessagePump() = default;
    /// Dispatches messages until `predicate` holds. Looks at it before the first sleep (an answer may come at
    /// once) and after each message; sleeps in the operating system in between. Closing and Quit end every wait.
    virtual Wait PumpUntil(const std::function<bool()>& predicate) = 0;
    /// Dispatches what is pending, once.
    virtual void ProcessPending() = 0;
    /// Runs `task` from the message loop, after the present handler has returned.
    virtual void Post(std::function<void()> task) = 0;
    /// The component is going: wakes every wait, which answers Closing from now on.
    virtual void Close() = 0;
};

class Registry {
  public:
    virtual ~Registry() = default;
    /// A value under the local-machine hive as text; numbers as "&h" and hexadecimal digits. Nothing when key or
    /// value is missing.
    virtual std::optional<std::wstring> LocalMachineValue(const std::wstring& key, const std::wstring& value) = 0;
};

struct SaveFileRequest {
    std::wstring title;
    std::wstring filterName; ///< shown as it stands, so it names the pattern, too
    std::wstring filterPattern;
    std::wstring defaultExtension;
    std::wstring suggestedName;
};

struct Version {
    int major = 0;
    int minor = 0;
    int revision = 0;
};

class Desktop {
  public:
    virtual ~Desktop() = default;
    virtual bool FileExists(const std::wstring& path) = 0;
    /// The first `count` bytes, or fewer when there are no more. Raises the system's error.
    virtual Bytes ReadStart(const std::wstring& path, std::size_t count) = 0;
    /// False when it could not be removed, or was not there.
    virtual bool RemoveFile(const std::wstring& path) = 0;
    /// Takes the place of a file of that name. Raises the system's error.
    virtual void DuplicateFile(const std::wstring& from, const std::wstring& to) = 0;
    virtual void StartProcess(const std::wstring& path) = 0;
    virtual void OpenDocument(const std::wstring& path) = 0;
    /// Empty when the user cancels.
    virtual std::wstring ChooseSaveFile(const SaveFileRequest& request) = 0;
    /// Folder of the component's own file, without a separator at the end.
    virtual std::wstring ComponentFolder() = 0;
    /// The user's folder for temporary files, without a separator at the end. Raises the system's error.
    virtual std::wstring TemporaryFolder() = 0;
    /// From the version record of the component's own file; zeros without one.
    virtual Version ComponentVersion() = 0;
};

/// All of them, owned by whoever made the component.
struct Services {
    MessageBoxes& boxes;
    DebugOutput& debug;
    MessagePump& pump;
    Registry& registry;
    Desktop& desktop;
};

/// Raised by whoever waited when the wait was not satisfied: the component is closing or the application quits.
/// Unwinds quietly; no handler shows a message for it.
struct WaitAbandoned {};

} // namespace orv::platform
