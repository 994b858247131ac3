#include "editor/code_page.h"

#include "text/texts.h"

namespace orv::editor {

using text::Id;
using text::Load;

CodePage::CodePage(Context& context) : Page(context, L"fraCode", Load(Id::PageCode)) {}

std::wstring CodePage::Caption(const std::wstring& nodeText) {
    return Load(Id::CaptionCode) + nodeText;
}

} // namespace orv::editor
