#pragma once
// Values of a running device as its process holds them.
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace orv::sim {

struct Question {
    std::int32_t number = 0;
    std::int32_t element = 0;
};

/// "NUMBER" or "NUMBER:ELEMENT". Nothing when it is not of that form.
std::optional<Question> ParseQuestion(std::string_view text);

/// The device cannot be asked, or refuses; what() is one line.
class AskError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Connects, asks in order, disconnects; one UTF-8 text a question, byte arrays in hexadecimal. Blocks at most
/// `timeoutSeconds`. Raises AskError.
std::vector<std::string> AskDevice(const std::string& host, std::uint16_t port, const std::vector<Question>& questions,
                                   int timeoutSeconds = 10);

} // namespace orv::sim
