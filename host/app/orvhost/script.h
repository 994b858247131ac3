#pragma once
// Scripts that play a user: one command a line, '#' begins a comment. Portable, knows no windows.
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace orv::host {

enum class Verb {
    Show,
    Activate,
    Close,
    Terminate,
    Quit,
    Select,
    Focus,
    Type,
    Key,
    Set,
    Press,
    ExpectBox,
    Picture,
    PrintHost,
    PrintDevice,
    PrintResult,
    PrintEnabled,
    PrintValue,
    Save,
    Menu,
    WaitIdle
};

/// Of a control that is the only one of its name.
inline constexpr std::int32_t kNoIndex = -1;

enum class BoxAnswer { Ok, Yes, No };

struct ScriptCommand {
    Verb verb = Verb::Quit;
    int line = 0;        ///< in the file, 1-based
    std::wstring source; ///< as written, without blanks around it
    std::wstring name;   ///< of a control or a menu command
    std::int32_t index = kNoIndex;
    std::wstring text; ///< node, text to type (control characters in place), value, file, part of a box's text
    std::int32_t number = 0;
    std::int32_t element = 0;
    BoxAnswer answer = BoxAnswer::Ok;
    /// Runs while the component waits or has a box open, not after it.
    bool meanwhile = false;
};

/// what() is one line of UTF-8: "line N: reason".
class ScriptError : public std::runtime_error {
  public:
    ScriptError(int line, std::string_view reason);
};

/// `script` is UTF-8 with either kind of line end, with or without a byte order mark. Raises ScriptError for the first
/// line that is none.
std::vector<ScriptCommand> ParseScript(std::string_view script);

/// "<STX>", "<Space>" and "<$C8>" become the character meant, "<<" a "<". Raises std::invalid_argument for a name that
/// is none.
std::wstring ExpandTokens(std::wstring_view text);

} // namespace orv::host
