#pragma once
// The user's guide: which file it is, and how it is opened.
#include <string>

#include "device/device_state.h"

namespace orv::editor {

class Guide {
  public:
    /// `state` outlives the object.
    explicit Guide(device::DeviceState& state) : state_(state) {}

    /// Looks for the guide in the user's language, which may have changed since, and opens it. Shows what fails.
    void Open();
    /// Path of the guide without its extension, as the last look found it.
    const std::wstring& BasePath() const { return basePath_; }

  private:
    bool CheckHelpFile();
    bool IsAcrobatDocument(const std::wstring& path);
    void OpenFile();
    template <typename Action>
    bool Reported(const std::wstring& prefix, Action&& action);

    device::DeviceState& state_;
    std::wstring basePath_;
};

} // namespace orv::editor
