#include "model/group.h"

#include "text/texts.h"

namespace orv::model {
namespace {

std::wstring Separator(std::int32_t multiple, bool display) {
    using text::Id;
    switch (multiple) {
    case kJoinedByOr:
        return display ? text::Load(Id::JoinOr) : L"|";
    case kJoinedByXor:
        return display ? text::Load(Id::JoinXor) : L"^";
    default:
        // To be seen: a group that nobody has decided on must not pass for a decided one.
        return L"?";
    }
}

} // namespace

bool Group::AppendTo(std::wstring& text, bool display) const {
    const std::wstring separator = Separator(Multiple(), display);
    const std::size_t begin = text.size();
    if (IsOptional())
        text += L'[';
    const std::size_t inner = text.size();
    for (std::size_t i = 0; i < codes_.size(); ++i) {
        if (i > 0)
            text += separator;
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
