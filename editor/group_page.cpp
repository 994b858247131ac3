#include "editor/group_page.h"

#include "text/texts.h"

namespace orv::editor {

using text::Id;
using text::Load;

GroupPage::GroupPage(Context& context) : Page(context, L"fraGroupDef", Load(Id::NodeGroups)) {}

std::wstring GroupPage::Caption(const std::wstring& nodeText) {
    return Load(Id::CaptionGroup) + nodeText;
}

} // namespace orv::editor
