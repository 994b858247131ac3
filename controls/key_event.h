#pragma once
// A key as widgets see it.
#include <cstdint>

namespace orv::controls {

/// Numbered like the virtual keys of the system, so that a peer hands its number on; letters and digits are their
/// upper-case characters.
enum class Key : std::uint16_t {
    None = 0,
    Back = 0x08,
    Tab = 0x09,
    Return = 0x0D,
    Escape = 0x1B,
    Space = 0x20,
    PageUp = 0x21,
    PageDown = 0x22,
    End = 0x23,
    Home = 0x24,
    Left = 0x25,
    Up = 0x26,
    Right = 0x27,
    Down = 0x28,
    Insert = 0x2D,
    Delete = 0x2E,
    A = 0x41,
    C = 0x43,
    V = 0x56,
    X = 0x58,
    Y = 0x59,
    Z = 0x5A,
    F4 = 0x73,
};

/// One press. A peer sends either a key (`character` 0) or a character (`key` None), as the system tells them apart:
/// Back, Tab, Return, Escape and all of navigation come as keys and never a second time as characters; everything
/// typed, the space included, comes as a character. Alt with a letter comes as that letter's `character` and `alt`.
struct KeyEvent {
    Key key = Key::None;
    wchar_t character = 0;
    bool shift = false;
    bool ctrl = false;
    bool alt = false;
};

/// What became of a key.
enum class KeyOutcome {
    Handled,    ///< done; the message ends here
    Native,     ///< belongs to the peer's own window (an open list, say): hand it the message
    LeaveNext,  ///< Tab past the last stop: the container moves on
    LeaveBack,  ///< Shift+Tab past the first stop
    NotHandled, ///< the container may have it, then the window
};

} // namespace orv::controls
