// A long value set into the edit box's window against the same coloured text streamed into a bare rich-text box.
#include "platform/win32/system.h"

#include <cstdio>
#include <random>
#include <string>

#include <richedit.h>

#include "bench/win32/rows.h"
#include "bench/win32/stage.h"
#include "controls/mb_edit.h"
#include "controls/mb_edit_rtf.h"
#include "controls/win32/mb_edit_dress.h"

namespace orv::bench {
namespace {

constexpr std::size_t kBytes = 4096;

Bytes Mixed(unsigned seed) {
    std::mt19937 random(seed);
    Bytes data(kBytes);
    for (std::uint8_t& byte : data)
        byte = static_cast<std::uint8_t>(random());
    return data;
}

DWORD CALLBACK Read(DWORD_PTR cookie, LPBYTE buffer, LONG wanted, LONG* given) {
    std::string_view& rest = *reinterpret_cast<std::string_view*>(cookie);
    const std::size_t count = rest.copy(reinterpret_cast<char*>(buffer), static_cast<std::size_t>(wanted));
    rest.remove_prefix(count);
    *given = static_cast<LONG>(count);
    return 0;
}

void StreamInto(HWND window, std::string_view rich) {
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&rich), 0, &Read};
    SendMessageW(window, EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
    UpdateWindow(window);
}

struct Boxes : Stage {
    Boxes() {
        edit.SetBounds({10, 10, 400, 26});
        Show();
        window = host.WindowOf(L"mbe");
        bare = Bare(MSFTEDIT_CLASS, ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, edit.Bounds());
        SendMessageW(bare, EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
    }

    /// What the box itself streams, made beforehand.
    std::string RichOf(const Bytes& data) const {
        controls::MBEditCore core;
        core.SetData(data);
        CHARFORMAT2W format{};
        format.cbSize = sizeof format;
        SendMessageW(bare, EM_GETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&format));
        const controls::win32::ViewColours colours = controls::win32::ColoursOf(edit);
        controls::RichTextStyle style;
        style.face = format.szFaceName;
        style.halfPoints = static_cast<int>(format.yHeight / 10);
        style.text = colours.text;
        style.token = colours.token;
        return controls::RichText(core.Text(), core.Cells(), style);
    }

    controls::MBEdit& edit = form.Root().Add<controls::MBEdit>(L"mbe");
    HWND window = nullptr;
    HWND bare = nullptr;
};

void Measure(const Rows& rows) {
    Boxes boxes;
    const Bytes values[] = {Mixed(1), Mixed(2)};
    const std::string rich[] = {boxes.RichOf(values[0]), boxes.RichOf(values[1])};
    int which = 0;
    rows.Measure({"edit box, 4 KB set", "streamed into a bare rich-text box", 1.3},
                 {[&] {
                      boxes.edit.SetData(values[which]);
                      UpdateWindow(boxes.window);
                  },
                  [&] { StreamInto(boxes.bare, rich[which]); }, [&] { which ^= 1; }});
    Require(GetWindowTextLengthW(boxes.window) == static_cast<int>(boxes.edit.TextLength()) &&
                GetWindowTextLengthW(boxes.bare) == GetWindowTextLengthW(boxes.window),
            "The two boxes do not show the same text");
}

} // namespace
} // namespace orv::bench

int main(int argc, char** argv) {
    return orv::bench::Run(argc, argv, orv::bench::Measure);
}
