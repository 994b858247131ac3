#pragma once
// A small add-on for the container: it notes what is done to it, keeps what it is given, and answers as the test wants.
#include <functional>
#include <string>
#include <vector>

#include "host/app/orvhost/system.h"
#include "host/com/dual.h"

#include <OrvAddon.h>

namespace orv::host {

/// What the add-on was told, outside of it: the host lets go of the add-on itself.
struct AddOnDiary {
    std::vector<std::string> calls;
    LONG extentWidth = 0;
    RECT rects{};
    bool siteHeld = false;
    bool applicationHeld = false;
    SHORT cluster = -1;
    SHORT device = -1;
    HRESULT registered = S_OK;           ///< answer to Register
    std::function<void()> whenActivated; ///< run inside Activate
    std::function<void(LONG)> whenVerb;  ///< run inside DoVerb
    WPARAM eats = 0;                     ///< a key that the add-on keeps
    int alive = 0;                       ///< add-ons alive
};

/// The add-on behind a class that reads as a component would be created.
ComPtr<IAddOn> MakeTestAddOn(AddOnDiary& diary);

} // namespace orv::host
