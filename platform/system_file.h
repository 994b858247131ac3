#pragma once
// What the file writer asks of the operating system. `posix/` and `win32/` each define all of it. Unless it says
// otherwise, a call that fails raises error 75 with the system's reason as the description.
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

namespace orv::platform {

using FileName = std::filesystem::path::string_type;

enum class Way {
    Beside,   ///< into a temporary in the same folder, which then takes the name
    InPlace,  ///< over the old bytes: a new file could not keep everything that the old one has
    Straight, ///< no regular file: a device or a pipe takes the bytes as they come
};

struct FileTarget {
    FileName name; ///< links followed
    Way way = Way::Beside;
    bool exists = false;
};

FileTarget FindTarget(const FileName& given);

/// An open file; closed, and removed while it is a temporary, on every way out.
class SystemFile {
  public:
    SystemFile() = default;
    SystemFile(SystemFile&& other) noexcept
        : handle_(std::exchange(other.handle_, kNone)), temporary_(std::exchange(other.temporary_, {})),
          owned_(other.owned_) {}
    SystemFile& operator=(SystemFile&& other) noexcept {
        std::swap(handle_, other.handle_);
        std::swap(temporary_, other.temporary_);
        std::swap(owned_, other.owned_);
        return *this;
    }
    SystemFile(const SystemFile&) = delete;
    SystemFile& operator=(const SystemFile&) = delete;
    ~SystemFile() { Close(); }

    /// In the folder of `target`, new, under a name of its own. Held against CleanUp while it is open.
    static SystemFile CreateBeside(const FileTarget& target);
    /// For reading and writing, without cutting it.
    static SystemFile OpenInPlace(const FileName& name);
    static SystemFile OpenStraight(const FileName& name);
    /// Not closed at the end.
    static SystemFile StandardOutput();

    void Write(std::string_view bytes);
    /// Onto the disk.
    void Flush();
    /// The whole file. The next Write starts at the beginning again.
    std::string ReadAll();
    /// Cuts the file behind what was written.
    void CutHere();
    /// Owner, rights and attributes of `target`. False when the new file cannot have them all.
    [[nodiscard]] bool TakeOver(const FileName& target);
    /// A temporary takes the place of `target` in one step and is closed.
    void Rename(const FileName& target);
    void Close() noexcept;

  private:
    static constexpr std::intptr_t kNone = -1;
    explicit SystemFile(std::intptr_t handle, FileName temporary = {}, bool owned = true)
        : handle_(handle), temporary_(std::move(temporary)), owned_(owned) {}

    std::intptr_t handle_ = kNone;
    FileName temporary_; ///< empty when the file stays
    bool owned_ = true;
};

/// Removes temporaries in the folder of `target` that this program left there on this machine and that nobody holds
/// any more. Whatever cannot be told for certain stays. Never fails.
void RemoveLeftOvers(const FileName& target) noexcept;

/// Requests to end the program wait for the end of this object, so that they find either file whole.
class EndingHeld {
  public:
    EndingHeld() noexcept;
    ~EndingHeld();
    EndingHeld(const EndingHeld&) = delete;
    EndingHeld& operator=(const EndingHeld&) = delete;

  private:
    [[maybe_unused]] unsigned held_ = 0; ///< one bit a signal
};

/// For the start of a program: a closed pipe and a limit of size fail the call instead of killing the program, and a
/// standard stream that is closed is not given away to the next file that is opened.
void FailWritesQuietly() noexcept;

} // namespace orv::platform
