#include "model/tree_labels.h"

namespace orv::model {

std::wstring NodeText(const CodeDef& code) {
    return code.Description();
}

std::wstring NodeText(const Group& group) {
    return std::to_wstring(group.Index()) + L" - " + group.Text(true);
}

std::wstring NodeText(const AdvancedFormat& format, std::int32_t position) {
    return std::to_wstring(position) + L" - " + format.GetLabel();
}

bool ShowsGroups(const OutFormatConfig& root) {
    return root.Codes().Combination() == kCombinationByExpression;
}

bool ShowsFormats(const OutFormatConfig& root) {
    return root.Advanced();
}

} // namespace orv::model
