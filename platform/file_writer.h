#pragma once
// The one way in which the product writes files: whoever reads sees the old file or the new one, whatever happens.
#include <optional>
#include <string>
#include <string_view>

#include "platform/system_file.h"

namespace orv::platform {

/// The system's form of a name.
FileName NameFrom(std::wstring_view name);

/// Until Commit the old file stands untouched, and so it does when this goes without one. Each call raises error 75
/// with the system's reason. Links are followed, rights and owner kept; a device or a pipe is written to as it is. A
/// file of several names, or one whose owner a new file could not have, is written over in place by Commit.
class FileWriter {
  public:
    explicit FileWriter(const FileName& name);
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;

    void Append(std::string_view bytes);
    void Commit();

  private:
    void Drain();
    void WriteOver();

    std::optional<EndingHeld> ending_; // ends last: behind the removal of the temporary
    FileTarget target_;
    SystemFile file_;
    std::string buffer_;
};

/// All at once.
void WriteWhole(const FileName& name, std::string_view bytes);

} // namespace orv::platform
