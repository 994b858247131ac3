#include "model/tool_item.h"

#include "model/length_rule.h"

namespace orv::model {

const std::wstring& ToolItem::AllowedFormatLen(int format) const {
    if (!formats_ || format < 0 || format >= static_cast<int>(formats_->size()))
        throw Error(error_number::kSubscript);
    return (*formats_)[static_cast<std::size_t>(format)];
}

void ToolItem::GetDefaultFormatAndLen(std::int32_t& format, std::uint8_t& length) const {
    if (!formats_)
        return;
    for (std::size_t i = 0; i < formats_->size(); ++i) {
        if ((*formats_)[i].empty())
            continue;
        format = static_cast<std::int32_t>(i);
        length = LeadingNumber((*formats_)[i]);
        return;
    }
}

} // namespace orv::model
