#pragma once
// One code slot: whether it is used, its symbology and the options of that.
#include "editor/fields.h"
#include "editor/page.h"

namespace orv::editor {

class CodePage : public Page {
  public:
    explicit CodePage(Context& context);
    std::wstring Caption(const std::wstring& nodeText) override;
    bool CommitPending() override { return true; }

  protected:
    void SetUp() override {}
    void Fill() override {}
};

} // namespace orv::editor
