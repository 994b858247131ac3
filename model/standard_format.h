#pragma once
// The three strings that frame every reading while the standard format is in use.
#include <string>

#include "device/device_state.h"

namespace orv::model {

/// Any text is stored as it is; limits are the editor's.
class StandardFormat {
  public:
    const std::wstring& Header() const { return header_; }
    void Header(std::wstring text) { header_ = std::move(text); }
    const std::wstring& Terminator() const { return terminator_; }
    void Terminator(std::wstring text) { terminator_ = std::move(text); }
    const std::wstring& CodeSeparator() const { return codeSeparator_; }
    void CodeSeparator(std::wstring text) { codeSeparator_ = std::move(text); }

    /// Reads parameters 6, 7, 82 in this order. Always true; a failed read flies and leaves what was read.
    bool Load(device::DeviceState& state);
    /// Queues the same three in the running write-back cache.
    void Save(device::DeviceState& state) const;

  private:
    struct Field;
    static const Field kFields[3];

    std::wstring header_;
    std::wstring terminator_;
    std::wstring codeSeparator_;
};

} // namespace orv::model
