// The edit box for bytes against plain bytes: whatever is typed, pasted, deleted, taken back or told from outside,
// text, cells, caret and value stay in step, and what is shown and kept of it can be read again.
#include <algorithm>
#include <optional>
#include <vector>

#include "controls/form.h"
#include "controls/mb_edit.h"
#include "controls/mb_edit_rtf.h"
#include "controls/typed_byte.h"
#include "fuzz/edit_twin.h"
#include "fuzz/fixed_font.h"
#include "fuzz/fuzz.h"
#include "fuzz/rich_text_reading.h"
#include "fuzz/source.h"
#include "host/sim/portable_platform.h"
#include "text/error.h"

namespace orv::fuzz {
namespace {

using controls::Key;
using controls::MBEdit;
using controls::MBEditCore;

constexpr int kMostSteps = 300;

class Play {
  public:
    explicit Play(Source& source) : source_(source), box_(form_.Root().Add<MBEdit>(L"mbe")) {
        form_.SetFocus(box_);
        box_.onChange = [this] { ++changes_; };
        versions_.Begin({});
    }

    void Run() {
        const std::size_t property = source_.Byte();
        const std::wstring foreign = source_.Text(20);
        for (int i = 0; i < kMostSteps && !source_.Empty(); ++i) {
            const int before = changes_;
            kind_ = Versions::Kind::Alone;
            goes_ = Goes::Nowhere;
            Step();
            Remember(changes_ - before);
            Check();
        }
        CheckKept(property, foreign);
        ++Accepted();
    }

  private:
    enum class Goes { Nowhere, Back, Forth };

    void Step() {
        switch (source_.Below(20)) {
        case 0:
        case 1:
        case 2:
            return Type(Character());
        case 3:
            return InsertCC(source_.Byte());
        case 4:
            return Paste(source_.Text(12));
        case 5:
            return EraseBy(Key::Back);
        case 6:
            return EraseBy(Key::Delete);
        case 7:
            return StepAside(false);
        case 8:
            return StepAside(true);
        case 9:
            return ToEnd(source_.Flag());
        case 10:
            return Point(source_.Below(64), source_.Flag());
        case 11:
            return PointAtToken(source_.Below(64));
        case 12:
        case 13:
            return TakeBack();
        case 14:
            return DoAgain();
        case 15:
            return UseClipboard(source_.Below(3));
        case 16:
            return ChangeSettings();
        case 17:
            return TakeText();
        case 18:
            return SelectAll();
        default:
            return SetData(source_.Some(12));
        }
    }

    wchar_t Character() {
        const std::uint32_t unit = source_.Byte();
        return static_cast<wchar_t>(unit == 0xFF ? source_.Word() : unit);
    }
    controls::KeyEvent Press(Key key, bool shift = false, bool ctrl = false) {
        return {.key = key, .character = 0, .shift = shift, .ctrl = ctrl};
    }

    void Type(wchar_t character) {
        box_.TypeText({&character, 1});
        const auto byte = controls::TypedByte(character);
        // Back and Return while it is masked are the display's.
        if (!byte || *byte == 0 || *byte == 8 || box_.Locked() ||
            (*byte == 13 && box_.MaskReturn() && !box_.Multiline()))
            return;
        const Token typed{*byte, *byte == 13 && box_.MaskReturn()};
        kind_ = Versions::Kind::Typing;
        twin_.Insert({&typed, 1});
    }
    void InsertCC(std::uint8_t byte) {
        box_.InsertCC(byte);
        if (!box_.Locked())
            twin_.Insert({byte});
    }
    void Paste(const std::wstring& text) {
        box_.PasteText(text);
        if (!box_.Locked())
            twin_.Insert(MBEditCore::Parse(text));
    }
    void EraseBy(Key key) {
        box_.HandleKey(Press(key));
        if (box_.Locked())
            return;
        if (twin_.caret == twin_.anchor) {
            kind_ = key == Key::Back ? Versions::Kind::Backspace : Versions::Kind::Delete;
            if (key == Key::Back && twin_.caret > 0)
                --twin_.anchor;
            if (key == Key::Delete && twin_.caret < twin_.tokens.size())
                ++twin_.anchor;
        }
        twin_.Erase();
    }
    void StepAside(bool right) {
        const bool extend = source_.Flag();
        box_.HandleKey(Press(right ? Key::Right : Key::Left, extend));
        std::size_t to = right ? twin_.High() : twin_.Low();
        if (extend || twin_.caret == twin_.anchor)
            to = right ? std::min(twin_.caret + 1, twin_.tokens.size())
                       : twin_.caret - std::min<std::size_t>(twin_.caret, 1);
        twin_.Put(extend ? twin_.anchor : to, to);
    }
    void ToEnd(bool end) {
        const bool extend = source_.Flag();
        box_.HandleKey(Press(end ? Key::End : Key::Home, extend));
        const std::size_t to = end ? twin_.tokens.size() : 0;
        twin_.Put(extend ? twin_.anchor : to, to);
    }
    void Point(std::size_t offset, bool extend) {
        box_.PointAt(offset, extend);
        offset = std::min(offset, Width(twin_.tokens));
        const std::size_t below = twin_.Below(offset);
        const std::size_t above = twin_.Above(offset);
        const std::size_t to = offset - twin_.Offset(below) < twin_.Offset(above) - offset ? below : above;
        twin_.Put(extend ? twin_.anchor : to, to);
    }
    void PointAtToken(std::size_t offset) {
        box_.PointAtToken(offset);
        const std::size_t below = twin_.Below(offset);
        twin_.Put(below, std::min(below + 1, twin_.tokens.size()));
    }
    void SelectAll() {
        box_.HandleKey(Press(Key::A, false, true));
        twin_.Put(0, twin_.tokens.size());
    }
    void SetData(const Bytes& bytes) {
        box_.SetData(bytes);
        twin_.tokens.clear();
        for (const std::uint8_t byte : bytes)
            twin_.tokens.push_back({byte, false});
        twin_.Put(0, 0);
        versions_.Begin(twin_.tokens);
    }
    void ChangeSettings() {
        switch (source_.Below(4)) {
        case 0:
            twin_.limit = source_.Below(40);
            return box_.SetMaxLength(twin_.limit);
        case 1:
            return box_.SetMaskReturn(source_.Flag());
        case 2:
            return box_.SetMultiline(source_.Flag());
        default:
            return box_.SetLocked(source_.OneIn(4));
        }
    }

    void TakeBack() {
        const bool can = box_.Core().CanUndo();
        box_.HandleKey(Press(Key::Z, false, true));
        goes_ = can ? Goes::Back : Goes::Nowhere;
        Follow();
    }
    void DoAgain() {
        const bool can = box_.Core().CanRedo();
        box_.HandleKey(Press(Key::Y, false, true));
        goes_ = can ? Goes::Forth : Goes::Nowhere;
        Follow();
    }
    /// Where undo and redo lead is told by what was there before; only where the caret stands is taken from the box.
    void Follow() {
        twin_.tokens.clear();
        const auto& cells = box_.Core().Cells();
        const std::wstring text = box_.Text();
        for (std::size_t i = 0; i < cells.size(); i += static_cast<std::size_t>(cells[i].tokenLength))
            twin_.tokens.push_back({cells[i].value, text[i] == L'\r'});
        const std::size_t start = twin_.Below(box_.SelStart());
        const std::size_t end = twin_.Below(box_.SelStart() + box_.SelLength());
        const bool atStart = box_.Core().Caret() == box_.SelStart();
        twin_.Put(atStart ? end : start, atStart ? start : end);
    }

    Bytes Selected() const { return twin_.Data(twin_.Low(), twin_.High()); }
    void UseClipboard(std::size_t what) {
        if (what < 2 && twin_.caret != twin_.anchor)
            clipboard_ = Selected();
        if (what == 0)
            return box_.Copy();
        if (what == 1) {
            box_.Cut();
            if (!box_.Locked())
                twin_.Erase();
            return;
        }
        box_.Paste();
        if (!box_.Locked())
            twin_.Insert(clipboard_);
    }

    /// Somebody else edited the window: a part of the text is another one.
    void TakeText() {
        const std::wstring before = box_.Text();
        std::wstring after = before;
        const std::size_t at = std::min(source_.Below(32), after.size());
        after.replace(at, source_.Below(12), source_.Text(6));
        box_.TakeText(before, after);
        if (before == after)
            return;
        const auto tail = std::mismatch(before.rbegin(), before.rend(), after.rbegin(), after.rend());
        const auto head = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
        const auto begin = static_cast<std::size_t>(head.first - before.begin());
        const std::size_t most = std::min(before.size(), after.size()) - begin;
        const std::size_t same = std::min(static_cast<std::size_t>(tail.first - before.rbegin()), most);
        twin_.Put(twin_.Below(begin), twin_.Above(before.size() - same));
        const std::size_t from = twin_.Offset(twin_.Low());
        const std::size_t behind = before.size() - twin_.Offset(twin_.High());
        if (box_.Locked())
            return;
        if (after.size() - same == begin)
            twin_.Erase();
        else
            twin_.Insert(MBEditCore::Parse(after.substr(from, after.size() - behind - from)));
    }

    void Remember(int changes) {
        Require(changes <= 1, "one gesture is one change");
        if (goes_ == Goes::Back)
            versions_.Back(twin_.tokens);
        else if (goes_ == Goes::Forth)
            versions_.Forth(twin_.tokens);
        else if (changes > 0)
            versions_.Add(twin_.tokens, kind_);
    }

    void Check() const {
        const MBEditCore& core = box_.Core();
        Require(core.Text() == twin_.Text(), "the text is that of the bytes");
        Require(core.Caret() == twin_.Offset(twin_.caret), "the caret stands between tokens");
        Require(core.SelStart() == twin_.Offset(twin_.Low()), "the selection begins with a token");
        Require(core.SelStart() + core.SelLength() == twin_.Offset(twin_.High()), "the selection ends with a token");
        Require(core.Data() == twin_.Data(0, twin_.tokens.size()), "the value is the bytes");
        Require(core.SelectedData() == Selected(), "what is selected is a part of them");
        CheckCells();
        CheckRichText();
    }
    void CheckCells() const {
        const auto& cells = box_.Core().Cells();
        std::size_t at = 0;
        for (const Token& token : twin_.tokens) {
            const auto length = static_cast<std::int16_t>(token.Shown().size());
            for (std::int16_t within = 0; within < length; ++within, ++at)
                Require(at < cells.size() && cells[at] == controls::ShadowCell{token.byte, length},
                        "every character has the cell of its token");
        }
        Require(at == cells.size(), "there are as many cells as characters");
    }
    void CheckRichText() const {
        const auto read =
            ReadRichText(controls::RichText(box_.Text(), box_.Core().Cells(), {.face = L"A;{b}\\\u4E00"}));
        std::vector<RichCharacter> expected;
        for (const Token& token : twin_.tokens)
            for (const wchar_t c : token.Shown())
                expected.push_back({c, token.Shown().size() > 1 ? 2 : 1});
        Require(read == expected, "the window is given what the box shows");
    }

    /// What is kept with a form leads to the same box; anything else is refused or kept as well.
    void CheckKept(std::size_t property, const std::wstring& foreign) {
        MBEdit::PropertyList list = box_.Properties();
        MBEdit same(L"same");
        same.SetProperties(list);
        Require(same.Data() == box_.Data(), "a kept value comes back");
        list[property % list.size()].second = foreign;
        MBEdit other(L"other");
        try {
            other.SetProperties(list);
        } catch (const Error& error) {
            Require(error.Number() == error_number::kTypeMismatch, "what is no value is a type mismatch");
        }
        MBEdit again(L"again");
        again.SetProperties(other.Properties());
        Require(again.Properties() == other.Properties(), "what was taken is kept");
        const controls::Size size = other.MinimumSize(FixedFont());
        Require(size.width > 0 && size.height > 0, "a box takes some room");
    }

    Source& source_;
    sim::PortablePlatform platform_;
    controls::Form form_{platform_.boxes, platform_.pump};
    MBEdit& box_;
    Twin twin_;
    Versions versions_;
    Versions::Kind kind_ = Versions::Kind::Alone;
    Goes goes_ = Goes::Nowhere;
    Bytes clipboard_;
    int changes_ = 0;
};

} // namespace
} // namespace orv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orv::fuzz::Source source(data, size);
    orv::fuzz::Play(source).Run();
    return 0;
}
