#pragma once
// The groups of the combination expression, one tab each.
#include "editor/fields.h"
#include "editor/page.h"

namespace orv::editor {

class GroupPage : public Page {
  public:
    explicit GroupPage(Context& context);
    std::wstring Caption(const std::wstring& nodeText) override;
    bool CommitPending() override { return true; }

  protected:
    void SetUp() override {}
    void Fill() override {}
};

} // namespace orv::editor
