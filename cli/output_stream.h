#pragma once
// A stream onto standard output that remembers why it failed.
#include <streambuf>
#include <string>

#include "platform/system_file.h"

namespace orv::cli {

class OutputBuffer : public std::streambuf {
  public:
    explicit OutputBuffer(platform::SystemFile file) : file_(std::move(file)) {}

    /// UTF-8; empty while all went well.
    const std::string& Failure() const { return failure_; }

  protected:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* bytes, std::streamsize count) override;
    int sync() override;

  private:
    bool Drain();

    platform::SystemFile file_;
    std::string held_;
    std::string failure_;
};

} // namespace orv::cli
