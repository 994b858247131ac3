#include "host/app/orvhost/script.h"

#include <algorithm>
#include <array>
#include <optional>

#include "host/sim/ask_device.h"
#include "host/sim/code_page.h"
#include "host/sim/utf8.h"

namespace orv::host {
namespace {

constexpr std::wstring_view kBlanks = L" \t\r";

enum class Shape {
    Nothing,
    Text,
    Typed,
    Number,
    Control,
    ControlAndText,
    ControlAndTyped,
    ControlAndItem,
    Drag,
    Box,
    Question,
    QuestionAndText
};

struct Form {
    std::wstring_view words;
    Verb verb;
    Shape shape;
};

// Longer forms stand before those that they begin with.
constexpr std::array kForms = {
    Form{L"show", Verb::Show, Shape::Nothing},
    Form{L"activate", Verb::Activate, Shape::Nothing},
    Form{L"close", Verb::Close, Shape::Nothing},
    Form{L"terminate", Verb::Terminate, Shape::Nothing},
    Form{L"quit", Verb::Quit, Shape::Nothing},
    Form{L"select", Verb::Select, Shape::Text},
    Form{L"focus", Verb::Focus, Shape::Control},
    Form{L"type", Verb::Type, Shape::Typed},
    Form{L"key", Verb::Key, Shape::Text},
    Form{L"set", Verb::Set, Shape::ControlAndText},
    Form{L"enter", Verb::Enter, Shape::ControlAndTyped},
    Form{L"press", Verb::Press, Shape::Control},
    Form{L"click", Verb::Click, Shape::ControlAndItem},
    Form{L"double-click", Verb::DoubleClick, Shape::ControlAndItem},
    Form{L"check", Verb::Check, Shape::ControlAndItem},
    Form{L"uncheck", Verb::Uncheck, Shape::ControlAndItem},
    Form{L"drag", Verb::Drag, Shape::Drag},
    Form{L"expect-box", Verb::ExpectBox, Shape::Box},
    Form{L"expect-file", Verb::ExpectFile, Shape::Text},
    Form{L"expect host", Verb::ExpectHost, Shape::QuestionAndText},
    Form{L"expect device", Verb::ExpectDevice, Shape::QuestionAndText},
    Form{L"expect result", Verb::ExpectResult, Shape::Number},
    Form{L"expect enabled", Verb::ExpectEnabled, Shape::Control},
    Form{L"expect disabled", Verb::ExpectDisabled, Shape::Control},
    Form{L"expect visible", Verb::ExpectVisible, Shape::Control},
    Form{L"expect hidden", Verb::ExpectHidden, Shape::Control},
    Form{L"expect node", Verb::ExpectNode, Shape::Text},
    Form{L"expect value", Verb::ExpectValue, Shape::ControlAndText},
    Form{L"picture", Verb::Picture, Shape::Text},
    Form{L"print host", Verb::PrintHost, Shape::Question},
    Form{L"print device", Verb::PrintDevice, Shape::Question},
    Form{L"print result", Verb::PrintResult, Shape::Nothing},
    Form{L"print enabled", Verb::PrintEnabled, Shape::Control},
    Form{L"print value", Verb::PrintValue, Shape::Control},
    Form{L"save", Verb::Save, Shape::Text},
    Form{L"menu", Verb::Menu, Shape::Text},
    Form{L"wait-idle", Verb::WaitIdle, Shape::Nothing},
};

std::wstring_view Trim(std::wstring_view text) {
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::wstring_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Cuts the next word off `rest`; words are separated by any blanks.
std::wstring_view TakeWord(std::wstring_view& rest) {
    const auto end = std::min(rest.find_first_of(kBlanks), rest.size());
    const auto word = rest.substr(0, end);
    rest = Trim(rest.substr(end));
    return word;
}

/// Cuts `words` off `rest` when it begins with them.
bool TakeWords(std::wstring_view& rest, std::wstring_view words) {
    auto left = rest;
    while (!words.empty()) {
        if (TakeWord(left) != TakeWord(words))
            return false;
    }
    rest = left;
    return true;
}

std::optional<std::int32_t> ParseIndex(std::wstring_view digits) {
    if (digits.empty() || digits.size() > 5 ||
        !std::all_of(digits.begin(), digits.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; }))
        return std::nullopt;
    return std::stoi(std::wstring(digits));
}

/// NAME or NAME(INDEX).
void ParseControl(std::wstring_view word, ScriptCommand& command) {
    const auto open = word.find(L'(');
    command.name = word.substr(0, open);
    if (command.name.empty())
        throw std::invalid_argument("the name of a control is missing");
    if (open == std::wstring_view::npos)
        return;
    const auto index = word.back() == L')' ? ParseIndex(word.substr(open + 1, word.size() - open - 2)) : std::nullopt;
    if (!index)
        throw std::invalid_argument("an index is a number in parentheses");
    command.index = *index;
}

/// TEXT-PART, then "answer yes", "answer no" or "answer ok" when one is given.
void ParseBox(std::wstring_view rest, ScriptCommand& command) {
    constexpr std::wstring_view marker = L" answer ";
    const auto at = rest.rfind(marker);
    command.text = Trim(rest.substr(0, at));
    if (command.text.empty())
        throw std::invalid_argument("a part of the box's text is missing");
    if (at == std::wstring_view::npos)
        return;
    const auto word = Trim(rest.substr(at + marker.size()));
    if (word == L"yes")
        command.answer = BoxAnswer::Yes;
    else if (word == L"no")
        command.answer = BoxAnswer::No;
    else if (word != L"ok")
        throw std::invalid_argument("an answer is yes, no or ok");
}

/// ITEM to CONTROL GAP; the item's text may hold a "to" of its own.
void ParseDrag(std::wstring_view rest, ScriptCommand& command) {
    constexpr std::wstring_view marker = L" to ";
    const auto at = rest.rfind(marker);
    auto target = at == std::wstring_view::npos ? std::wstring_view() : Trim(rest.substr(at + marker.size()));
    command.text = Trim(rest.substr(0, at));
    command.target = TakeWord(target);
    const auto gap = ParseIndex(target);
    if (command.text.empty() || command.target.empty() || !gap)
        throw std::invalid_argument("takes CONTROL ITEM to CONTROL GAP");
    command.number = *gap;
}

void ParseQuestion(std::wstring_view word, ScriptCommand& command) {
    const auto question = sim::ParseQuestion(sim::ToUtf8(word));
    if (!question)
        throw std::invalid_argument("a parameter is NUMBER or NUMBER:ELEMENT");
    command.number = question->number;
    command.element = question->element;
}

void ParseNumber(std::wstring_view rest, ScriptCommand& command) {
    const bool negative = rest.starts_with(L'-');
    const auto number = ParseIndex(rest.substr(negative ? 1 : 0));
    if (!number)
        throw std::invalid_argument("takes a number");
    command.number = negative ? -*number : *number;
}

void ParseArguments(Shape shape, std::wstring_view rest, ScriptCommand& command) {
    switch (shape) {
    case Shape::Nothing:
        if (!rest.empty())
            throw std::invalid_argument("takes no argument");
        return;
    case Shape::Text:
        command.text = rest;
        break;
    case Shape::Typed:
        command.text = ExpandTokens(rest);
        break;
    case Shape::Control:
        ParseControl(TakeWord(rest), command);
        if (!rest.empty())
            throw std::invalid_argument("takes one argument");
        return;
    case Shape::ControlAndText:
        ParseControl(TakeWord(rest), command);
        command.text = rest;
        return; // an empty value is one
    case Shape::ControlAndTyped:
        ParseControl(TakeWord(rest), command);
        command.text = ExpandTokens(rest);
        return;
    case Shape::ControlAndItem:
        ParseControl(TakeWord(rest), command);
        command.text = rest;
        break;
    case Shape::Drag:
        ParseControl(TakeWord(rest), command);
        return ParseDrag(rest, command);
    case Shape::Number:
        return ParseNumber(rest, command);
    case Shape::Box:
        ParseBox(rest, command);
        return;
    case Shape::Question:
        return ParseQuestion(rest, command);
    case Shape::QuestionAndText:
        ParseQuestion(TakeWord(rest), command);
        command.text = rest;
        return;
    }
    if (command.text.empty())
        throw std::invalid_argument("an argument is missing");
}

ScriptCommand ParseLine(std::wstring_view source) {
    ScriptCommand command;
    command.source = source;
    auto rest = source;
    command.meanwhile = TakeWords(rest, L"meanwhile");
    command.inside = !command.meanwhile && TakeWords(rest, L"inside");
    for (const Form& form : kForms) {
        if (!TakeWords(rest, form.words))
            continue;
        command.verb = form.verb;
        ParseArguments(form.shape, rest, command);
        return command;
    }
    throw std::invalid_argument("unknown command");
}

} // namespace

ScriptError::ScriptError(int line, std::string_view reason)
    : std::runtime_error("line " + std::to_string(line) + ": " + sim::Excerpt(reason)) {}

std::wstring ExpandTokens(std::wstring_view text) {
    std::wstring expanded;
    while (!text.empty()) {
        if (text.front() != L'<') {
            expanded += text.front();
            text.remove_prefix(1);
            continue;
        }
        if (text.starts_with(L"<<")) {
            expanded += L'<';
            text.remove_prefix(2);
            continue;
        }
        bool found = false;
        for (int byte = 0; byte < 256 && !found; ++byte) {
            const auto value = static_cast<std::uint8_t>(byte);
            const std::wstring name = text::ByteName(value, true);
            if (name.empty() || !text.starts_with(L"<" + name + L">"))
                continue;
            expanded += sim::FromCodePage(std::span(&value, 1));
            text.remove_prefix(name.size() + 2);
            found = true;
        }
        if (!found)
            throw std::invalid_argument("\"<\" begins the name of a character (\"<<\" is \"<\" itself)");
    }
    return expanded;
}

std::vector<ScriptCommand> ParseScript(std::string_view script) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (script.starts_with(mark))
        script.remove_prefix(mark.size());
    std::vector<ScriptCommand> commands;
    for (int line = 1; !script.empty(); ++line) {
        const auto end = std::min(script.find('\n'), script.size());
        const std::wstring text = sim::FromUtf8(script.substr(0, end));
        script.remove_prefix(std::min(end + 1, script.size()));
        const auto source = Trim(text);
        if (source.empty() || source.front() == L'#')
            continue;
        try {
            commands.push_back(ParseLine(source));
            commands.back().line = line;
        } catch (const std::invalid_argument& failure) {
            throw ScriptError(line, failure.what());
        }
    }
    return commands;
}

} // namespace orv::host
