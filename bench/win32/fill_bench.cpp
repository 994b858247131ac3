// A long value set into the edit box's window against the same coloured text streamed into a bare rich-text box.
#include "platform/win32/system.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <ole2.h>
#include <richedit.h>

#include "controls/form.h"
#include "controls/mb_edit.h"
#include "controls/mb_edit_rtf.h"
#include "controls/win32/mb_edit_dress.h"
#include "controls/win32/peer_host.h"
#include "platform/win32/activation.h"
#include "platform/win32/module.h"
#include "platform/win32/pump.h"

namespace orv::bench {
namespace {

constexpr std::size_t kBytes = 4096;
constexpr double kAim = 1.3;

class NoBoxes final : public platform::MessageBoxes {
  public:
    platform::Answer Show(const platform::MessageBox&) override { return platform::Answer::Ok; }
    void Beep() override {}
    void Close() override {}
};

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

double Seconds(const std::function<void()>& action) {
    LARGE_INTEGER before{}, after{}, frequency{};
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&before);
    action();
    QueryPerformanceCounter(&after);
    return static_cast<double>(after.QuadPart - before.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double Quantile(std::vector<double> samples, double part) {
    std::sort(samples.begin(), samples.end());
    return samples[static_cast<std::size_t>(part * static_cast<double>(samples.size() - 1))];
}

/// Both boxes beside each other in one window.
struct Stage {
    Stage() {
        edit.SetBounds({10, 10, 400, 26});
        host.Attach(parent.Get());
        ShowWindow(parent.Get(), SW_SHOW);
        bare.Reset(CreateWindowExW(WS_EX_CLIENTEDGE, MSFTEDIT_CLASS, L"", WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 10,
                                   50, 400, 26, parent.Get(), nullptr, platform::win32::OwnModule(), nullptr));
        SendMessageW(bare.Get(), WM_SETFONT, reinterpret_cast<WPARAM>(host.Font()), FALSE);
        SendMessageW(bare.Get(), EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
    }

    /// What the box itself streams, made beforehand.
    std::string RichOf(const Bytes& data) {
        controls::MBEditCore core;
        core.SetData(data);
        CHARFORMAT2W format{};
        format.cbSize = sizeof format;
        SendMessageW(bare.Get(), EM_GETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&format));
        const controls::win32::ViewColours colours = controls::win32::ColoursOf(edit);
        controls::RichTextStyle style;
        style.face = format.szFaceName;
        style.halfPoints = static_cast<int>(format.yHeight / 10);
        style.text = colours.text;
        style.token = colours.token;
        return controls::RichText(core.Text(), core.Cells(), style);
    }

    NoBoxes boxes;
    platform::win32::ActivationContext context{platform::win32::OwnModule()};
    platform::win32::SystemPump pump;
    controls::Form form{boxes, pump};
    controls::MBEdit& edit = form.Root().Add<controls::MBEdit>(L"mbe");
    controls::win32::PeerHost host{form, context, {}};
    platform::win32::OwnedWindow parent{CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 20,
                                                        20, 500, 200, nullptr, nullptr, platform::win32::OwnModule(),
                                                        nullptr)};
    platform::win32::OwnedWindow bare;
};

int Run(int pairs) {
    Stage stage;
    const HWND window = stage.host.WindowOf(L"mbe");
    const Bytes values[] = {Mixed(1), Mixed(2)};
    const std::string rich[] = {stage.RichOf(values[0]), stage.RichOf(values[1])};
    std::vector<double> ours, theirs, ratios;
    for (int i = -2; i < pairs; ++i) { // the first two only warm up
        const int which = i & 1;
        const std::function<void()> box = [&] {
            stage.edit.SetData(values[which]);
            UpdateWindow(window);
        };
        const std::function<void()> bare = [&] { StreamInto(stage.bare.Get(), rich[which]); };
        const bool first = (i & 2) == 0;
        double time = first ? Seconds(box) : 0;
        const double other = Seconds(bare);
        time = first ? time : Seconds(box);
        if (i < 0)
            continue;
        ours.push_back(time);
        theirs.push_back(other);
        ratios.push_back(time / other);
    }
    if (GetWindowTextLengthW(window) != static_cast<int>(stage.edit.TextLength()) ||
        GetWindowTextLengthW(stage.bare.Get()) != GetWindowTextLengthW(window)) {
        std::puts("The two boxes do not show the same text");
        return 1;
    }
    const double ratio = Quantile(ratios, 0.5);
    std::printf(
        "4 KB into the box's window: %.1f ms, streamed into a bare rich-text box: %.1f ms, ratio %.2f, middle half "
        "%.2f .. %.2f of %zu pairs, aim at most %.2f: %s\n",
        Quantile(ours, 0.5) * 1e3, Quantile(theirs, 0.5) * 1e3, ratio, Quantile(ratios, 0.25), Quantile(ratios, 0.75),
        ratios.size(), kAim, ratio <= kAim ? "met" : "missed");
    return 0;
}

} // namespace
} // namespace orv::bench

int main(int argc, char** argv) {
    if (FAILED(OleInitialize(nullptr)))
        return 1;
    const int status = orv::bench::Run(argc > 1 ? std::max(2, std::atoi(argv[1])) : 40);
    OleUninitialize();
    return status;
}
