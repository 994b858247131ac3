#pragma once
// Key messages of the system as key events of the widgets.
#include "platform/win32/system.h"

#include <optional>

#include "controls/key_event.h"

namespace orv::controls::win32 {

class KeyMessages {
  public:
    enum class Reading {
        Event,  ///< `event` is to be routed
        Repeat, ///< the character of a key that was routed as a key: nobody may act on it again
        Other,  ///< not for the widgets
    };
    struct Result {
        Reading reading = Reading::Other;
        KeyEvent event;
    };

    static bool IsKeyMessage(UINT message);
    Result Read(UINT message, WPARAM wparam);
    /// The key message just read goes on to where it turns into a character.
    void ExpectCharacterOf(const KeyEvent& event);

  private:
    wchar_t expected_[2] = {};
};

} // namespace orv::controls::win32
