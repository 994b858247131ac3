#include "host/app/orvhost/box_watch.h"

#include <algorithm>

#include "host/sim/utf8.h"

namespace orv::host {
namespace {

constexpr int kTextId = 0xFFFF;        // of a message box's text
constexpr int kFileNameListId = 0x47C; // of a file dialog's field for the name, with a list of former ones
constexpr int kFileNameId = 0x480;     // and without

BOOL CALLBACK Collect(HWND window, LPARAM list) {
    wchar_t type[32];
    GetClassNameW(window, type, 32);
    const HWND text = GetDlgItem(window, kTextId);
    if (lstrcmpW(type, L"#32770") != 0 || !IsWindowVisible(window) || text == nullptr)
        return TRUE;
    reinterpret_cast<std::vector<OpenBox>*>(list)->push_back({window, WindowText(window), WindowText(text)});
    return TRUE;
}

/// The field for the name in one of the system's dialogs for files.
BOOL CALLBACK FindNameField(HWND window, LPARAM found) {
    const int id = GetDlgCtrlID(window);
    if (id != kFileNameListId && id != kFileNameId)
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

struct FileDialog {
    HWND window = nullptr;
    HWND name = nullptr;
};

BOOL CALLBACK FindFileDialog(HWND window, LPARAM found) {
    auto& dialog = *reinterpret_cast<FileDialog*>(found);
    wchar_t type[32];
    GetClassNameW(window, type, 32);
    if (lstrcmpW(type, L"#32770") != 0 || !IsWindowVisible(window) || !IsWindowEnabled(window))
        return TRUE;
    EnumChildWindows(window, &FindNameField, reinterpret_cast<LPARAM>(&dialog.name));
    if (dialog.name == nullptr)
        return TRUE;
    dialog.window = window;
    return FALSE;
}

std::wstring FullPath(const std::wstring& path) {
    std::wstring full(32768, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

/// The button for an answer, or what the box has instead.
int ButtonFor(HWND box, BoxAnswer answer) {
    const int wanted = answer == BoxAnswer::Yes ? IDYES : answer == BoxAnswer::No ? IDNO : IDOK;
    for (const int button : {wanted, IDNO, IDOK, IDCANCEL}) {
        if (GetDlgItem(box, button) != nullptr)
            return button;
    }
    return IDCANCEL;
}

} // namespace

std::vector<OpenBox> OpenBoxes() {
    std::vector<OpenBox> boxes;
    EnumThreadWindows(GetCurrentThreadId(), &Collect, reinterpret_cast<LPARAM>(&boxes));
    return boxes;
}

bool BoxWatch::Look() {
    const auto boxes = OpenBoxes();
    // Forgets the closed ones: the system uses a handle again.
    const auto gone = [&boxes](HWND window) {
        return std::none_of(boxes.begin(), boxes.end(), [window](const OpenBox& box) { return box.window == window; });
    };
    std::erase_if(announced_, gone);
    std::erase_if(answered_, gone);
    for (const OpenBox& box : boxes) {
        if (announced_.insert(box.window).second)
            say(L"box: [" + box.title + L"] " + box.text);
    }
    return !boxes.empty();
}

void BoxWatch::AnswerAll() {
    for (const OpenBox& box : OpenBoxes()) {
        if (answered_.insert(box.window).second)
            AnswerBox(box);
    }
}

void BoxWatch::AnswerBox(const OpenBox& box) {
    BoxAnswer answer = BoxAnswer::No;
    if (!expected_.empty() && box.text.find(expected_.front().part) != std::wstring::npos) {
        answer = expected_.front().answer;
        expected_.pop_front();
    } else {
        fail("unexpected box: " + sim::ToUtf8(box.text));
    }
    const int button = ButtonFor(box.window, answer);
    say(std::wstring(L"answer: ") + (button == IDYES ? L"yes" : button == IDNO ? L"no" : L"ok"));
    PostMessageW(box.window, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(box.window, button)));
}

void BoxWatch::AnswerFileDialog() {
    FileDialog dialog;
    EnumThreadWindows(GetCurrentThreadId(), &FindFileDialog, reinterpret_cast<LPARAM>(&dialog));
    if (std::exchange(fileDialog_, dialog.window) != dialog.window) {
        fileAnswered_ = false;
        return; // it may still be filling itself
    }
    if (dialog.window == nullptr || std::exchange(fileAnswered_, true))
        return;
    say(L"file dialog: [" + WindowText(dialog.window) + L"] " + WindowText(dialog.name));
    if (files_.empty()) {
        fail("unexpected file dialog");
        PostMessageW(dialog.window, WM_COMMAND, IDCANCEL, 0);
        return;
    }
    SetWindowTextW(dialog.name, FullPath(files_.front()).c_str());
    files_.pop_front();
    PostMessageW(dialog.window, WM_COMMAND, IDOK, 0);
}

} // namespace orv::host
