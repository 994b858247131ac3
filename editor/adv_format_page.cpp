#include "editor/adv_format_page.h"

#include "text/texts.h"

namespace orv::editor {

using text::Id;
using text::Load;

AdvFormatPage::AdvFormatPage(Context& context) : Page(context, L"fraAdvFormat", Load(Id::PageAdvFormat)) {}

std::wstring AdvFormatPage::Caption(const std::wstring& /*nodeText*/) {
    return Load(Id::CaptionAdvFormat) + std::to_wstring(Index());
}

} // namespace orv::editor
