#include "host/sim/portable_platform.h"

#include <algorithm>

#include "text/error.h"

namespace orv::sim {

using platform::Answer;
using platform::Buttons;

Answer ScriptedBoxes::Show(const platform::MessageBox& box) {
    shown.push_back(box);
    ++open;
    if (whileOpen) {
        // The hook may replace itself.
        const auto hook = whileOpen;
        try {
            hook(box);
        } catch (...) {
            --open;
            throw;
        }
    }
    --open;
    return AnswerTo(box);
}

void ScriptedBoxes::ShowPlain(const wchar_t* text, const wchar_t* title) noexcept {
    Show({text, title, platform::Icon::Critical});
}

Answer ScriptedBoxes::AnswerTo(const platform::MessageBox& box) {
    if (closed_)
        return Answer::No;
    if (!answers.empty()) {
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    if (box.buttons == Buttons::Ok)
        return Answer::Ok;
    const Answer answer = defaultAnswer.value_or(box.preset);
    return answer == Answer::No ? Answer::No : Answer::Yes;
}

void RecordedDebug::Line(std::wstring_view line) {
    lines.emplace_back(line);
    if (echo)
        echo(line);
}

bool RecordedDebug::Contains(std::wstring_view line) const {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

std::optional<std::wstring> MapRegistry::LocalMachineValue(const std::wstring& key, const std::wstring& value) {
    const auto found = values.find({key, value});
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

Bytes FakeDesktop::ReadStart(const std::wstring& path, std::size_t count) {
    if (locked.contains(path) || !FileExists(path))
        throw Error(error_number::kFileAccess, path);
    const auto found = contents.find(path);
    Bytes start = found == contents.end() ? Bytes() : found->second;
    start.resize(std::min(start.size(), count));
    return start;
}

bool FakeDesktop::RemoveFile(const std::wstring& path) {
    return !locked.contains(path) && files.erase(path) + contents.erase(path) > 0;
}

void FakeDesktop::DuplicateFile(const std::wstring& from, const std::wstring& to) {
    if (locked.contains(to) || !FileExists(from))
        throw Error(error_number::kFileAccess, to);
    contents[to] = contents[from];
}

std::wstring FakeDesktop::ChooseSaveFile(const platform::SaveFileRequest& request) {
    saveFileRequests.push_back(request);
    if (saveFileNames.empty())
        return {};
    std::wstring name = saveFileNames.front();
    saveFileNames.pop_front();
    return name;
}

} // namespace orv::sim
