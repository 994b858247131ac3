#pragma once
#include <vector>

#include "platform/services.h"
#include "platform/win32/activation.h"
#include "platform/win32/modal.h"

namespace orv::platform::win32 {

/// Boxes of the thread that made it. The context and the hooks must outlive it.
class SystemMessageBoxes final : public MessageBoxes {
  public:
    SystemMessageBoxes(const ActivationContext& context, const ModalHooks& hooks);
    SystemMessageBoxes(const SystemMessageBoxes&) = delete;
    SystemMessageBoxes& operator=(const SystemMessageBoxes&) = delete;
    ~SystemMessageBoxes() override;

    Answer Show(const MessageBox& box) override;
    void ShowPlain(const wchar_t* text, const wchar_t* title) noexcept override;
    void Beep() override;

    /// Answers every open box No (or OK where that is all it offers), innermost first, as soon as messages are
    /// dispatched again. No box opens from now on.
    void Close() override;
    /// Boxes open at present.
    std::size_t OpenCount() const { return open_.size(); }

  private:
    class Watch;
    int Open(const wchar_t* text, const wchar_t* title, UINT style);

    const ActivationContext& context_;
    const ModalHooks& hooks_;
    std::vector<HWND> open_; ///< a null entry: its window is still being made
    bool closing_ = false;
};

} // namespace orv::platform::win32
