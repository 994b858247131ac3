#include "model/group.h"

#include "text/texts.h"

namespace orv::model {
namespace {

// An undecided join is to be seen: a group that nobody has decided on must not pass for a decided one.
wchar_t Sign(std::int32_t multiple) {
    return multiple == kJoinedByOr ? L'|' : multiple == kJoinedByXor ? L'^' : L'?';
}

std::wstring Word(std::int32_t multiple) {
    using text::Id;
    if (multiple == kJoinedByOr)
        return text::Load(Id::JoinOr);
    return multiple == kJoinedByXor ? text::Load(Id::JoinXor) : std::wstring(1, Sign(multiple));
}

} // namespace

bool Group::AppendTo(std::wstring& text, bool display) const {
    const std::wstring word = display ? Word(Multiple()) : std::wstring();
    const wchar_t sign = Sign(Multiple());
    const std::size_t begin = text.size();
    if (IsOptional())
        text += L'[';
    const std::size_t inner = text.size();
    for (std::size_t i = 0; i < codes_.size(); ++i) {
        if (i > 0 && display)
            text += word;
        else if (i > 0)
            text += sign;
        text += codes_[i];
    }
    if (text.size() == inner) {
        text.resize(begin);
        return false;
    }
    if (IsOptional())
        text += L']';
    return true;
}

std::wstring Group::Text(bool display) const {
    std::wstring text;
    AppendTo(text, display);
    return text;
}

} // namespace orv::model
