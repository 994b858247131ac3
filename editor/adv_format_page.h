#pragma once
// One advanced format: its transports, its frame, and its items.
#include "editor/fields.h"
#include "editor/page.h"

namespace orv::editor {

class AdvFormatPage : public Page {
  public:
    explicit AdvFormatPage(Context& context);
    std::wstring Caption(const std::wstring& nodeText) override;
    bool CommitPending() override { return true; }

  protected:
    void SetUp() override {}
    void Fill() override {}
};

} // namespace orv::editor
