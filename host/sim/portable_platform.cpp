#include "host/sim/portable_platform.h"

#include <algorithm>

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

std::wstring FakeDesktop::ChooseSaveFile(const platform::SaveFileRequest& request) {
    saveFileRequests.push_back(request);
    if (saveFileNames.empty())
        return {};
    std::wstring name = saveFileNames.front();
    saveFileNames.pop_front();
    return name;
}

} // namespace orv::sim
