#include "host/app/orvhost/frame_menu.h"

#include <algorithm>

#include "host/app/orvhost/commands.h"

namespace orv::host {
namespace {

void Add(HMENU menu, int id, const std::wstring& caption, bool enabled, bool marked = false) {
    const UINT flags = MF_STRING | (enabled ? MF_ENABLED : MF_GRAYED) | (marked ? MF_CHECKED : MF_UNCHECKED);
    AppendMenuW(menu, flags, static_cast<UINT_PTR>(id), caption.c_str());
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE;
    info.fType = MFT_STRING | (id >= kLevelFirst && id < kTargetEnd ? MFT_RADIOCHECK : 0u);
    SetMenuItemInfoW(menu, static_cast<UINT>(id), FALSE, &info);
}

void AddRule(HMENU menu) {
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
}

/// The bar takes over the menu.
void AddPopup(HMENU bar, OwnedMenu popup, const wchar_t* caption, bool enabled = true) {
    if (AppendMenuW(bar, MF_POPUP | (enabled ? MF_ENABLED : MF_GRAYED), reinterpret_cast<UINT_PTR>(popup.Get()),
                    caption))
        popup.Forget();
}

OwnedMenu FileMenu(const FrameState& state) {
    OwnedMenu menu(CreatePopupMenu());
    Add(menu.Get(), kOpen, L"&Open...\tCtrl+O", state.modeless);
    Add(menu.Get(), kSave, L"&Save\tCtrl+S", state.modeless && state.hasFile);
    Add(menu.Get(), kSaveAs, L"Save &As...\tCtrl+Shift+S", state.modeless && state.hasFile);
    AddRule(menu.Get());
    Add(menu.Get(), kExit, L"E&xit\tAlt+F4", state.modeless);
    return menu;
}

OwnedMenu PlaceMenu(const std::vector<FrameState::Place>& places, std::int16_t current, int first, bool enabled) {
    OwnedMenu menu(CreatePopupMenu());
    for (const auto& place : places) {
        const std::wstring caption = std::to_wstring(place.index) + (place.label.empty() ? L"" : L"  " + place.label);
        Add(menu.Get(), first + place.index, caption, enabled, place.index == current);
    }
    return menu;
}

OwnedMenu TargetMenu(const FrameState& state) {
    const bool enabled = state.hasFile && state.modeless;
    OwnedMenu menu(CreatePopupMenu());
    AddPopup(menu.Get(), PlaceMenu(state.clusters, state.cluster, kClusterFirst, enabled), L"&Cluster", enabled);
    AddPopup(menu.Get(), PlaceMenu(state.devices, state.device, kDeviceFirst, enabled), L"&Device", enabled);
    OwnedMenu levels(CreatePopupMenu());
    for (int level = 0; level <= 3; ++level)
        Add(levels.Get(), kLevelFirst + level, L"Level &" + std::to_wstring(level), enabled, level == state.level);
    AddPopup(menu.Get(), std::move(levels), L"&Access Level", enabled);
    return menu;
}

OwnedMenu AddOnMenu(const FrameState& state) {
    OwnedMenu menu(CreatePopupMenu());
    Add(menu.Get(), kShow, L"&Show\tF5", state.hasFile && state.modeless);
    Add(menu.Get(), kActivate, L"&Activate\tF6", state.hasAddOn && state.modeless);
    Add(menu.Get(), kHide, L"&Hide", state.hasAddOn && state.modeless);
    AddRule(menu.Get());
    Add(menu.Get(), kCloseAddOn, L"&Close\tCtrl+F4", state.hasAddOn && state.modeless);
    return menu;
}

/// Up to the shortcut, without the marks of access keys and the dots of a dialog.
std::wstring PlainCaption(std::wstring_view caption) {
    std::wstring plain(caption.substr(0, caption.find(L'\t')));
    std::erase(plain, L'&');
    while (!plain.empty() && plain.back() == L'.')
        plain.pop_back();
    return plain;
}

} // namespace

OwnedMenu MakeMenu(const FrameState& state) {
    OwnedMenu bar(CreateMenu());
    AddPopup(bar.Get(), FileMenu(state), L"&File");
    AddPopup(bar.Get(), TargetMenu(state), L"&Target");
    AddPopup(bar.Get(), AddOnMenu(state), L"&Add-on");
    OwnedMenu device(CreatePopupMenu());
    Add(device.Get(), kDropConnection, L"&Drop Connection", state.hasFile);
    AddPopup(bar.Get(), std::move(device), L"&Device");
    OwnedMenu log(CreatePopupMenu());
    Add(log.Get(), kNextPane, L"&Next Pane\tCtrl+F6", true);
    Add(log.Get(), kShowLog, L"Show &Log", true, state.log);
    Add(log.Get(), kClearLog, L"&Clear Log", true);
    AddPopup(bar.Get(), std::move(log), L"&View");
    return bar;
}

OwnedAccelerators MakeAccelerators() {
    ACCEL keys[] = {{FVIRTKEY | FCONTROL, 'O', kOpen},
                    {FVIRTKEY | FCONTROL, 'S', kSave},
                    {FVIRTKEY | FCONTROL | FSHIFT, 'S', kSaveAs},
                    {FVIRTKEY, VK_F5, kShow},
                    {FVIRTKEY, VK_F6, kActivate},
                    {FVIRTKEY | FCONTROL, VK_F4, kCloseAddOn},
                    {FVIRTKEY | FCONTROL, VK_F6, kNextPane}};
    return OwnedAccelerators(CreateAcceleratorTableW(keys, static_cast<int>(std::size(keys))));
}

int FindCommand(HMENU menu, std::wstring_view caption) {
    const int count = GetMenuItemCount(menu);
    for (int i = 0; i < count; ++i) {
        if (const HMENU popup = GetSubMenu(menu, i)) {
            if (const int found = FindCommand(popup, caption))
                return found;
            continue;
        }
        wchar_t text[256];
        const int length = GetMenuStringW(menu, static_cast<UINT>(i), text, 256, MF_BYPOSITION);
        const UINT state = GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
        if (PlainCaption({text, static_cast<std::size_t>(length)}) == caption && (state & MF_GRAYED) == 0)
            return static_cast<int>(GetMenuItemID(menu, i));
    }
    return 0;
}

} // namespace orv::host
