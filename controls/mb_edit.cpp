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
constexpr std::size_t kWidestCount = 99999; ///< of a box without a limit

} // namespace

std::vector<std::wstring> ControlNames() {
    std::vector<std::wstring> names;
    for (int byte = 0; byte < kNamedBytes; ++byte) {
        const auto code = static_cast<std::uint8_t>(byte);
        names.push_back(text::ByteName(code, true) + L"\t" + text::Hex2(code));
    }
    return names;
}

MBEdit::MBEdit(std::wstring name, int index) : Widget(Kind::MBEdit, std::move(name), index) {
    SetTabStop(true);
    Connect();
}

void MBEdit::Connect() {
    core_.onChange = [this] {
        pending_ = true;
        Shown();
        if (onChange)
            onChange();
    };
    core_.onSelChange = [this] {
        column_.reset();
        Mirror(Aspect::Selection);
        if (onSelChange)
            onSelChange();
    };
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

void MBEdit::Guard(const std::function<void()>& action) {
    if (!Interactive())
        return;
    const bool outer = std::exchange(gesture_, true);
    const platform::Restoring done([this, outer] { gesture_ = outer; });
    if (Form* form = OwningForm(); form && !outer)
        platform::Guarded(form->Boxes(), L"MBEdit.KeyHandler", action);
    else
        action();
}

void MBEdit::SetData(const Bytes& data) {
    Bytes stored = data;
    core_.SetData(data);
    stored_ = std::move(stored);
    pending_ = false;
    column_.reset();
    Shown();
}

void MBEdit::MarkStored() {
    if (!pending_)
        return;
    stored_ = core_.Data();
    pending_ = false;
}

void MBEdit::Revert() {
    if (pending_)
        SetData(Bytes(stored_));
}

void MBEdit::SetMaxLength(std::size_t characters) {
    core_.SetMaxLength(characters);
    if (count_)
        count_->SetWidest(CountText(characters > 0 ? characters : kWidestCount));
    Shown();
}

void MBEdit::SetMultiline(bool several) {
    if (core_.Multiline() == several)
        return;
    core_.SetMultiline(several);
    column_.reset();
    Mirror(Aspect::Look);
}

void MBEdit::SetTooltips(bool show) {
    tooltips_ = show;
    if (!show)
        SetToolTip({});
    Shown();
}

void MBEdit::SetLook(const MBEditLook& look) {
    if (look_ == look)
        return;
    look_ = look;
    Mirror(Aspect::Look);
}

void MBEdit::Refresh() {
    Mirror(Aspect::Look);
    Mirror(Aspect::Content);
}

std::uintptr_t MBEdit::WindowHandle() const {
    return GetPeer() ? GetPeer()->WindowHandle() : 0;
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
        names_->SetEntries(ControlNames());
        names_->onChoose = [this](int entry) { InsertCC(static_cast<std::uint8_t>(entry)); };
    }
    SetMaxLength(core_.MaxLength());
}

std::wstring MBEdit::SpokenValue() const {
    std::wstring spoken;
    for (const std::uint8_t byte : core_.Data()) {
        if (!spoken.empty())
            spoken += L", ";
        spoken += text::ByteToken(byte, false, true);
    }
    return spoken;
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
    Guard([&] { PutSelection(); });
}

void MBEdit::Cut() {
    // In one: what could not be copied stays.
    Guard([&] {
        if (PutSelection())
            core_.DeleteSelection();
    });
}

bool MBEdit::PutSelection() {
    Form* form = OwningForm();
    if (!form || core_.SelLength() == 0)
        return false;
    std::wstring text;
    for (wchar_t character : core_.SelectedText()) {
        text += character;
        if (character == TokenText::kLineBreak)
            text += L'\n'; // other programs want both
    }
    const bool taken = form->TheClipboard().Put({text, core_.SelectedData()});
    if (!taken)
        form->Boxes().Beep();
    return taken;
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

void MBEdit::PasteText(std::wstring_view text) {
    Guard([&] { core_.Paste(MBEditCore::Parse(text)); });
}

void MBEdit::TakeText(std::wstring_view before, std::wstring_view after) {
    const std::size_t shorter = std::min(before.size(), after.size());
    std::size_t head = 0;
    while (head < shorter && before[head] == after[head])
        ++head;
    std::size_t tail = 0;
    while (tail < shorter - head && before[before.size() - tail - 1] == after[after.size() - tail - 1])
        ++tail;
    const std::size_t end = before.size() - tail;
    if (head == end && head == after.size() - tail)
        return;
    const bool deletes = head == after.size() - tail;
    // Whole tokens: two names may have characters in common.
    const std::size_t from = core_.Floor(head);
    const std::size_t to = core_.Ceiling(end);
    const std::size_t behind = before.size() - std::min(to, before.size());
    Guard([&] {
        core_.Select(from, to - from);
        if (deletes)
            core_.DeleteSelection();
        else
            core_.Paste(MBEditCore::Parse(after.substr(from, after.size() - behind - from)));
    });
}

void MBEdit::Undo() {
    Guard([&] { core_.Undo(); });
    if (!core_.CanUndo() && Data() == stored_)
        pending_ = false; // what was shown before the first key is no change
}

void MBEdit::Redo() {
    Guard([&] { core_.Redo(); });
}

void MBEdit::FocusEntered(bool /*byKeyboard*/) {
    core_.EndStep();
    if (autoSelect_)
        Guard([&] { core_.SelectAll(); });
}

Size MBEdit::MinimumSize(const TextMeasure& measure) const {
    constexpr int kBorders = 6;
    constexpr int kUsualHeight = 22;
    int line = measure.LineHeight();
    if (look_.font)
        line = std::max(line, measure.Scale(look_.font->points * 96 * 5 / (72 * 4)));
    const int width = measure.Width(L"n") * widthInCharacters_ + measure.Scale(8);
    const int height = line * (Multiline() ? heightInLines_ : 1) + measure.Scale(kBorders);
    return {width, std::max(height, measure.Scale(kUsualHeight))};
}

} // namespace orv::controls
