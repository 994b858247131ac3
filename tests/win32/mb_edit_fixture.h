#pragma once
// One edit box in a window, with its button of names.
#include "fixture.h"

#include <richedit.h>

#include <string_view>

#include "controls/mb_edit.h"
#include "controls/simple_widgets.h"

namespace orv::tests {

using namespace controls;

struct MBEditTest : Windows {
    MBEdit& edit = form.Root().Add<MBEdit>(L"mbeHeader");
    DropButton& names = form.Root().Add<DropButton>(L"cmdNames");
    HWND window = nullptr;
    MBEditTest() {
        edit.SetBounds({10, 10, 400, 26});
        names.SetBounds({412, 10, 22, 26});
        edit.Attach(&names, nullptr);
        edit.SetMaxLength(128);
        Show();
        window = WindowOf(L"mbeHeader");
        form.SetFocus(edit);
        Drain();
    }
    void Type(std::wstring_view characters) {
        for (wchar_t character : characters)
            PostMessageW(window, WM_CHAR, character, 1);
        Drain();
    }
    POINT PointOf(int position) const {
        POINTL place{};
        SendMessageW(window, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), position);
        return {place.x, place.y + 4};
    }
    void Mouse(UINT message, WPARAM keys, POINT place) {
        PostMessageW(window, message, keys, MAKELPARAM(place.x, place.y));
        Drain();
    }
    CHARRANGE Selection() const {
        CHARRANGE range{};
        SendMessageW(window, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
        return range;
    }
    void ExpectSelection(LONG from, LONG to) const {
        EXPECT_EQ(Selection().cpMin, from);
        EXPECT_EQ(Selection().cpMax, to);
    }
    COLORREF ColourAt(LONG position) const {
        const CHARRANGE kept = Selection();
        CHARRANGE range{position, position + 1};
        CHARFORMAT2W format{};
        format.cbSize = sizeof format;
        SendMessageW(window, EM_SETEVENTMASK, 0, 0);
        SendMessageW(window, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
        SendMessageW(window, EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
        range = kept;
        SendMessageW(window, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
        SendMessageW(window, EM_SETEVENTMASK, 0, ENM_SELCHANGE | ENM_CHANGE);
        return format.crTextColor;
    }
};

} // namespace orv::tests
