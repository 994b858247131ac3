#pragma once
// Scripts that play a user: one command a line, '#' begins a comment. Portable, knows no windows.
//
//   show, activate, close, terminate, quit   the add-on's life; terminate gives its code back, quit closes the window
//   menu CAPTION, save FILE                  a command of the frame's menu; the host's configuration as a file
//   select NODE[/NODE...]                    clicks a node of the tree
//   focus C, press C                         C is a control's NAME or NAME(INDEX)
//   set C VALUE                              entry of a combo box, 1 or 0 of a check or option button, text
//   enter C TEXT                             replaces what an edit holds, as typed; "<STX>" is the character
//   type TEXT, key STROKE                    to whatever has the keyboard: "Alt+Down", "Ctrl+A", "Delete"
//   click C ITEM, double-click C ITEM        a button of a toolbar, a tab, a row of a list
//   check C ITEM, uncheck C ITEM             the check box of a row
//   drag C ITEM to LIST GAP                  a button of a toolbar to the gap before row GAP, from 0
//   expect-box PART [answer yes|no|ok]       the next message box, and what it is told
//   expect-file FILE                         the next file dialog, and what it is given
//   expect value C TEXT                      lists: "[x] One | [ ] Two", a strip's tab, a toolbar's pressed button
//   expect enabled|disabled|visible|hidden C, expect node NODE, expect result N
//   expect host|device NUMBER[:ELEMENT] TEXT what the configuration and the device hold
//   print value|enabled C, print host|device NUMBER[:ELEMENT], print result
//   picture FILE, wait-idle
//
// A text of an item or a node may end in "*" for the rest of it. What is expected and does not hold ends the script.
// "meanwhile" before a command runs it while the component waits or has a box open, "inside" within an open dialog.
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
    Enter,
    Press,
    Click,
    DoubleClick,
    Check,
    Uncheck,
    Drag,
    ExpectBox,
    ExpectFile,
    ExpectHost,
    ExpectDevice,
    ExpectResult,
    ExpectEnabled,
    ExpectDisabled,
    ExpectVisible,
    ExpectHidden,
    ExpectNode,
    ExpectValue,
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
    std::wstring text;       ///< node, text to type (control characters in place), value, file, part of a box's text
    std::int32_t number = 0; ///< of a parameter, or a result, or the gap that something is dragged to
    std::int32_t element = 0;
    std::wstring target; ///< control that something is dragged to
    BoxAnswer answer = BoxAnswer::Ok;
    /// Runs while the component waits or has a box open, not after it.
    bool meanwhile = false;
    /// Runs inside a dialog of the component.
    bool inside = false;
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
