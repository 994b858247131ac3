#pragma once
#include "platform/services.h"
#include "platform/win32/activation.h"
#include "platform/win32/modal.h"

namespace orv::platform::win32 {

/// Raises the system's own code as the product's error where a start fails. The hooks must outlive it.
class SystemDesktop final : public Desktop {
  public:
    SystemDesktop(const ActivationContext& context, const ModalHooks& hooks) : context_(context), hooks_(hooks) {}

    bool FileExists(const std::wstring& path) override;
    Bytes ReadStart(const std::wstring& path, std::size_t count) override;
    bool RemoveFile(const std::wstring& path) override;
    void DuplicateFile(const std::wstring& from, const std::wstring& to) override;
    void StartProcess(const std::wstring& path) override;
    void OpenDocument(const std::wstring& path) override;
    std::wstring ChooseSaveFile(const SaveFileRequest& request) override;
    std::wstring ComponentFolder() override;
    std::wstring TemporaryFolder() override;
    Version ComponentVersion() override;

  private:
    const ActivationContext& context_;
    const ModalHooks& hooks_;
};

} // namespace orv::platform::win32
