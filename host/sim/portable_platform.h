#pragma once
// The operating system's services for tests and tools: everything is recorded, answers are set beforehand.
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/sim/portable_pump.h"
#include "platform/services.h"

namespace orv::sim {

class ScriptedBoxes final : public platform::MessageBoxes {
  public:
    std::vector<platform::MessageBox> shown;
    std::deque<platform::Answer> answers; ///< taken in order, one a box
    /// What a Yes/No box is answered when none is left; nothing: its preset, Yes where that is no answer to it.
    std::optional<platform::Answer> defaultAnswer;
    int beeps = 0;
    int open = 0;                                               ///< boxes open now
    std::function<void(const platform::MessageBox&)> whileOpen; ///< run before a box is answered

    /// The component goes: Yes/No boxes are answered No from now on, those that are open, too.
    void Close() override { closed_ = true; }

    platform::Answer Show(const platform::MessageBox& box) override;
    void ShowPlain(const wchar_t* text, const wchar_t* title) noexcept override;
    void Beep() override { ++beeps; }

  private:
    platform::Answer AnswerTo(const platform::MessageBox& box);
    bool closed_ = false;
};

class RecordedDebug final : public platform::DebugOutput {
  public:
    std::vector<std::wstring> lines;
    std::function<void(std::wstring_view)> echo; ///< called with each line

    void Line(std::wstring_view line) override;
    bool Contains(std::wstring_view line) const;
};

class MapRegistry final : public platform::Registry {
  public:
    std::map<std::pair<std::wstring, std::wstring>, std::wstring> values; ///< by key and value name
    std::optional<std::wstring> LocalMachineValue(const std::wstring& key, const std::wstring& value) override;
};

class FakeDesktop final : public platform::Desktop {
  public:
    std::set<std::wstring> files;           ///< the files that exist
    std::map<std::wstring, Bytes> contents; ///< of those that have any; they exist as well
    std::set<std::wstring> locked;          ///< cannot be read, removed or written
    platform::Version version{1, 2, 0};
    std::vector<std::wstring> started;      ///< processes
    std::vector<std::wstring> opened;       ///< documents
    std::deque<std::wstring> saveFileNames; ///< answers of the file dialog; none left: cancelled
    std::vector<platform::SaveFileRequest> saveFileRequests;
    std::wstring folder = L"C:\\OrvOutFormat";
    std::wstring temporaryFolder = L"C:\\Temp";

    bool FileExists(const std::wstring& path) override { return files.contains(path) || contents.contains(path); }
    Bytes ReadStart(const std::wstring& path, std::size_t count) override;
    bool RemoveFile(const std::wstring& path) override;
    void DuplicateFile(const std::wstring& from, const std::wstring& to) override;
    void StartProcess(const std::wstring& path) override { started.push_back(path); }
    void OpenDocument(const std::wstring& path) override { opened.push_back(path); }
    std::wstring ChooseSaveFile(const platform::SaveFileRequest& request) override;
    std::wstring ComponentFolder() override { return folder; }
    std::wstring TemporaryFolder() override { return temporaryFolder; }
    platform::Version ComponentVersion() override { return version; }
};

/// All of them; `services` refers to the members, so it must not outlive this.
struct PortablePlatform {
    PortablePlatform() = default;
    PortablePlatform(const PortablePlatform&) = delete;
    PortablePlatform& operator=(const PortablePlatform&) = delete;

    ScriptedBoxes boxes;
    RecordedDebug debug;
    PortablePump pump;
    MapRegistry registry;
    FakeDesktop desktop;
    platform::Services services{boxes, debug, pump, registry, desktop};
};

} // namespace orv::sim
