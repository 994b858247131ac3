#include "controls/mb_edit.h"

#include <algorithm>

#include "controls/form.h"
#include "controls/simple_widgets.h"
#include "controls/typed_byte.h"
#include "platform/guarded.h"
#include "text/texts.h"

namespace orv::controls {
namespace {

constexpr int kNamedBytes = 33;

std::vector<std::wstring> NameList() {
    std::vector<std::wstring> list;
    for (int byte = 0; byte < kNamedBytes; ++byte) {
        const auto code = static_cast<std::uint8_t>(byte);
        list.push_back(text::ByteToken(code, true, true) + L"\t" + text::Hex2(code));
    }
    return list;
}

} // namespace

MBEdit::MBEdit(std::wstring name, int index) : Widget(Kind::MBEdit, std::move(name), index) {
    SetTabStop(true);
    core_.onChange = [this] {
        pending_ = true;
        Shown();
        if (onChange)
            onChange();
    };
    core_.onSelChange = [this] { Mirror(Aspect::Selection); };
    core_.onKeyPress = [this](std::uint16_t& code) {
        if (onKeyPress)
            onKeyPress(code);
    };
    core_.onMaxLengthExceeded = [this] {
        if (Form* form = OwningForm())
            form->Boxes().Beep();
        if (onMaxLengthExceeded)
            onMaxLengthExceeded();
    };
}

template <typename Action>
void MBEdit::Guard(Action&& action) {
    Form* form = OwningForm();
    if (!Interactive())
        return;
    if (form)
        platform::Guarded(form->Boxes(), L"MBEdit.KeyHandler", action);
    else
        action();
}

void MBEdit::SetData(const Bytes& data) {
    core_.SetData(data);
    pending_ = false;
    Shown();
}

void MBEdit::SetMaxLength(std::size_t characters) {
    core_.SetMaxLength(characters);
    if (count_)
        count_->SetWidest(CountText(characters));
    Shown();
}

void MBEdit::SetTooltips(bool show) {
    tooltips_ = show;
    Shown();
}

std::wstring MBEdit::CountText(std::size_t length) const {
    std::wstring text = std::to_wstring(length);
    if (core_.MaxLength() > 0)
        text += L" " + text::Load(text::Id::CountOf) + L" " + std::to_wstring(core_.MaxLength());
    return text;
}

void MBEdit::Shown() {
    Mirror(Aspect::Content);
    if (tooltips_)
        SetToolTip(core_.HexTip());
    if (count_)
        count_->SetCaption(CountText(core_.TextLength()));
    if (onShown)
        onShown();
}

void MBEdit::Attach(DropButton* names, Label* count) {
    names_ = names;
    count_ = count;
    if (names_) {
        names_->SetEntries(NameList());
        names_->onChoose = [this](int entry) { InsertCC(static_cast<std::uint8_t>(entry)); };
    }
    SetMaxLength(core_.MaxLength());
}

void MBEdit::TypeText(std::wstring_view text) {
    for (wchar_t character : text) {
        Guard([&] {
            if (const auto byte = TypedByte(character))
                core_.TypeCharacter(*byte);
            else if (Form* form = OwningForm())
                form->Boxes().Beep();
        });
    }
}

void MBEdit::InsertCC(std::uint8_t byte) {
    Guard([&] { core_.InsertCC(byte); });
    // What is typed next goes on behind the chosen name.
    if (Form* form = OwningForm(); form && !Focused() && Interactive()) {
        const std::size_t caret = core_.Caret();
        if (form->SetFocus(*this))
            core_.MoveCaret(caret, false);
    }
}

void MBEdit::PointAt(std::size_t position, bool extend) {
    Guard([&] { core_.MoveCaret(position, extend); });
}

void MBEdit::PointAtToken(std::size_t position) {
    Guard([&] { core_.Select(position, 1); });
}

void MBEdit::Copy() {
    Guard([&] {
        if (Form* form = OwningForm(); form && core_.SelLength() > 0)
            form->TheClipboard().Put({core_.SelectedText(), core_.SelectedData()});
    });
}

void MBEdit::Cut() {
    Copy();
    Guard([&] { core_.DeleteSelection(); });
}

void MBEdit::Paste() {
    Guard([&] {
        Form* form = OwningForm();
        if (!form)
            return;
        const ClipboardContent content = form->TheClipboard().Get();
        core_.Paste(content.bytes ? *content.bytes : MBEditCore::Parse(content.text));
    });
}

void MBEdit::Undo() {
    Guard([&] { core_.Undo(); });
}

void MBEdit::Redo() {
    Guard([&] { core_.Redo(); });
}

void MBEdit::FocusEntered(bool byKeyboard) {
    if (autoSelect_ && byKeyboard)
        core_.SelectAll();
}

KeyOutcome MBEdit::HandleKey(const KeyEvent& key) {
    if (!Interactive())
        return KeyOutcome::NotHandled;
    KeyOutcome outcome = KeyOutcome::Handled;
    Guard([&] { outcome = Dispatch(key); });
    return outcome;
}

KeyOutcome MBEdit::Dispatch(const KeyEvent& key) {
    // Ctrl and Alt together type the third character of a key.
    const bool types = key.character != 0 && key.alt == key.ctrl;
    const bool control = key.character != 0 && key.character < L' ' && key.ctrl && !key.alt;
    if (types || control) {
        TypeText({&key.character, 1});
        return KeyOutcome::Handled;
    }
    if (key.alt) {
        if (key.key == Key::Down && names_)
            names_->Open();
        return key.key == Key::Down && names_ ? KeyOutcome::Handled : KeyOutcome::NotHandled;
    }
    if (key.key == Key::Return || key.key == Key::Escape)
        return core_.TypeCharacter(static_cast<std::uint16_t>(key.key)) ? KeyOutcome::Handled : KeyOutcome::Native;
    return Command(key) || Navigate(key) ? KeyOutcome::Handled : KeyOutcome::NotHandled;
}

bool MBEdit::Command(const KeyEvent& key) {
    const auto is = [&key](Key code, bool ctrl, bool shift) {
        return key.key == code && key.ctrl == ctrl && key.shift == shift;
    };
    if (is(Key::C, true, false) || is(Key::Insert, true, false))
        Copy();
    else if (is(Key::X, true, false) || is(Key::Delete, false, true))
        Cut();
    else if (is(Key::V, true, false) || is(Key::Insert, false, true))
        Paste();
    else if (is(Key::Z, true, false))
        Undo();
    else if (is(Key::Y, true, false) || is(Key::Z, true, true))
        Redo();
    else if (is(Key::A, true, false))
        core_.SelectAll();
    else
        return false;
    return true;
}

bool MBEdit::Navigate(const KeyEvent& key) {
    switch (key.key) {
    case Key::Left:
        core_.StepLeft(key.shift);
        return true;
    case Key::Right:
        core_.StepRight(key.shift);
        return true;
    case Key::Home:
        core_.MoveCaret(0, key.shift);
        return true;
    case Key::End:
        core_.MoveCaret(core_.TextLength(), key.shift);
        return true;
    case Key::Back:
        // The host form sees Backspace as a key press, too, before the display acts on it.
        if (std::uint16_t code = 8; onKeyPress) {
            onKeyPress(code);
            if (code == 0)
                return true;
        }
        core_.Backspace();
        return true;
    case Key::Delete:
        core_.Delete();
        return true;
    default:
        return false;
    }
}

Size MBEdit::MinimumSize(const TextMeasure& measure) const {
    return {measure.Width(L"n") * widthInCharacters_ + measure.Scale(8),
            std::max(measure.LineHeight() + measure.Scale(6), measure.Scale(22))};
}

} // namespace orv::controls
