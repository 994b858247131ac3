// Fields filled: a long value in the edit box's window against the same coloured text streamed into a bare rich-text
// box, combo and number boxes against bare ones.
#include "platform/win32/system.h"

#include <random>
#include <string>

#include <commctrl.h>
#include <richedit.h>

#include "bench/win32/rows.h"
#include "bench/win32/stage.h"
#include "controls/combo_box.h"
#include "controls/mb_edit.h"
#include "controls/mb_edit_rtf.h"
#include "controls/number_box.h"
#include "controls/win32/mb_edit_dress.h"

namespace orv::bench {
namespace {

constexpr std::size_t kBytes = 4096;
constexpr double kAim = 1.3;

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

void MeasureEditBox(const Rows& rows) {
    Boxes boxes;
    const Bytes values[] = {Mixed(1), Mixed(2)};
    const std::string rich[] = {boxes.RichOf(values[0]), boxes.RichOf(values[1])};
    int which = 0;
    rows.Measure({"edit box, 4 KB set", "streamed into a bare rich-text box", kAim},
                 {[&] {
                      boxes.edit.SetData(values[which]);
                      UpdateWindow(boxes.window);
                  },
                  [&] { StreamInto(boxes.bare, rich[which]); }, [&] { which ^= 1; }});
    Require(GetWindowTextLengthW(boxes.window) == static_cast<int>(boxes.edit.TextLength()) &&
                GetWindowTextLengthW(boxes.bare) == GetWindowTextLengthW(boxes.window),
            "The two boxes do not show the same text");
}

void MeasureCombos(const Rows& rows) {
    Stage stage;
    std::vector<controls::ComboBox*> combos;
    std::vector<HWND> bare;
    std::vector<controls::ComboBox::Entry> entries;
    for (int i = 0; i < 30; ++i)
        entries.push_back({L"Choice number " + std::to_wstring(i), i});
    for (int i = 0; i < 20; ++i) {
        combos.push_back(&stage.form.Root().Add<controls::ComboBox>(L"cbo", i));
        combos.back()->SetBounds({10 + i % 4 * 150, 10 + i / 4 * 40, 140, 24});
    }
    stage.Show();
    for (const controls::ComboBox* combo : combos) {
        controls::Rect open = combo->Bounds();
        open.height += 200;
        bare.push_back(stage.Bare(L"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL, 0, open));
    }
    const Action ours = [&] {
        for (controls::ComboBox* combo : combos) {
            combo->SetEntries(entries);
            combo->SetSelected(3);
        }
        Paint(stage.parent.Get());
    };
    const Action theirs = [&] {
        for (const HWND combo : bare) {
            SendMessageW(combo, WM_SETREDRAW, FALSE, 0);
            SendMessageW(combo, CB_RESETCONTENT, 0, 0);
            for (const auto& entry : entries)
                SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry.text.c_str()));
            SendMessageW(combo, CB_SETCURSEL, 3, 0);
            SendMessageW(combo, WM_SETREDRAW, TRUE, 0);
            InvalidateRect(combo, nullptr, TRUE);
        }
        Paint(stage.parent.Get());
    };
    rows.Measure({"20 combo boxes, 30 entries set in each", "bare combo boxes", kAim}, {ours, theirs});
    Require(SendMessageW(stage.host.WindowOf(L"cbo", 7), CB_GETCURSEL, 0, 0) == 3, "The combo boxes differ");
}

void MeasureNumbers(const Rows& rows) {
    Stage stage;
    std::vector<controls::NumberBox*> boxes;
    std::vector<HWND> bare;
    for (int i = 0; i < 20; ++i) {
        boxes.push_back(&stage.form.Root().Add<controls::NumberBox>(L"txt", i));
        boxes.back()->SetBounds({10 + i % 4 * 100, 10 + i / 4 * 40, 80, 24});
    }
    stage.Show();
    for (const controls::NumberBox* box : boxes) {
        const HWND edit = stage.Bare(L"EDIT", ES_AUTOHSCROLL | ES_RIGHT, WS_EX_CLIENTEDGE, box->Bounds());
        controls::Rect beside = box->Bounds();
        beside.x += beside.width;
        beside.width = 17;
        SendMessageW(stage.Bare(UPDOWN_CLASSW, UDS_ARROWKEYS, 0, beside), UDM_SETBUDDY, reinterpret_cast<WPARAM>(edit),
                     0);
        bare.push_back(edit);
    }
    int value = 0;
    rows.Measure({"20 number boxes set", "bare text boxes with arrows", kAim},
                 {[&] {
                      for (controls::NumberBox* box : boxes)
                          box->SetValue(value);
                      Paint(stage.parent.Get());
                  },
                  [&] {
                      for (const HWND box : bare)
                          SetWindowTextW(box, std::to_wstring(value).c_str());
                      Paint(stage.parent.Get());
                  },
                  [&] { ++value; }});
    Require(GetWindowTextLengthW(bare[5]) == GetWindowTextLengthW(stage.host.WindowOf(L"txt", 5)),
            "The number boxes differ");
}

void Measure(const Rows& rows) {
    MeasureEditBox(rows);
    MeasureCombos(rows);
    MeasureNumbers(rows);
}

} // namespace
} // namespace orv::bench

int main(int argc, char** argv) {
    return orv::bench::Run(argc, argv, orv::bench::Measure);
}
