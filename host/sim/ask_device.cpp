#include "host/sim/ask_device.h"

#include <charconv>
#include <chrono>
#include <optional>

#include <asio.hpp>

#include "host/sim/answer_count.h"
#include "host/sim/utf8.h"

namespace orv::sim {
namespace {

using asio::ip::tcp;

template <typename Number>
bool ParseNumber(std::string_view text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

/// Blocking calls with one deadline for all of them.
class Conversation {
  public:
    explicit Conversation(int timeoutSeconds)
        : deadline_(std::chrono::steady_clock::now() + std::chrono::seconds(timeoutSeconds)), socket_(io_) {}

    void Connect(const std::string& host, std::uint16_t port) {
        asio::error_code bad;
        const asio::ip::address address = asio::ip::make_address(host == "localhost" ? "127.0.0.1" : host, bad);
        if (bad)
            throw AskError(Excerpt(host) + " is not a numeric address");
        asio::error_code failed = asio::error::would_block;
        socket_.async_connect({address, port}, [&](asio::error_code result) { failed = result; });
        Finish(failed, "no device answers at " + Excerpt(host) + ":" + std::to_string(port));
    }

    void Send(const std::string& text) {
        asio::error_code failed = asio::error::would_block;
        asio::async_write(socket_, asio::buffer(text), [&](asio::error_code result, std::size_t) { failed = result; });
        Finish(failed, "the device hung up");
    }

    ProtocolLine Receive() {
        asio::error_code failed = asio::error::would_block;
        std::size_t length = 0;
        asio::async_read_until(socket_, asio::dynamic_buffer(received_, kMaximumLine + 2), '\n',
                               [&](asio::error_code result, std::size_t count) {
                                   failed = result;
                                   length = count;
                               });
        Finish(failed, "the device hung up");
        const std::optional<ProtocolLine> line = ParseLine(std::string_view(received_).substr(0, length - 1));
        received_.erase(0, length);
        if (!received_.empty())
            throw AskError(ToUtf8(Describe(Breach::Unasked)));
        if (!line)
            throw AskError("the device's answer makes no sense");
        return *line;
    }

  private:
    /// Runs until the operation that ends in `failed` is over.
    void Finish(const asio::error_code& failed, const std::string& reason) {
        io_.restart();
        io_.run_until(deadline_);
        if (failed == asio::error::would_block) {
            asio::error_code ignored;
            socket_.close(ignored);
            // The handler still has its turn: it refers to the caller's variables.
            io_.restart();
            io_.run();
            throw AskError("the device does not answer in time");
        }
        if (failed)
            throw AskError(reason + " (" + failed.message() + ")");
    }

    std::chrono::steady_clock::time_point deadline_;
    asio::io_context io_;
    tcp::socket socket_;
    std::string received_;
};

} // namespace

std::optional<Question> ParseQuestion(std::string_view text) {
    Question question;
    const std::size_t colon = text.find(':');
    if (!ParseNumber(text.substr(0, colon), question.number))
        return {};
    if (colon != std::string_view::npos && !ParseNumber(text.substr(colon + 1), question.element))
        return {};
    return question;
}

std::vector<std::string> AskDevice(const std::string& host, std::uint16_t port, const std::vector<Question>& questions,
                                   int timeoutSeconds) {
    Conversation device(timeoutSeconds);
    device.Connect(host, port);
    std::vector<std::string> answers;
    for (const Question& question : questions) {
        device.Send(FormatLine("ASK", {std::to_wstring(question.number), std::to_wstring(question.element)}));
        const ProtocolLine line = device.Receive();
        if (line.verb != "VALUE" || line.fields.size() != 2)
            throw AskError("parameter " + std::to_string(question.number) + ":" + std::to_string(question.element) +
                           ": " + Excerpt(line.fields.empty() ? line.verb : ToUtf8(line.fields.back())));
        answers.push_back(ToUtf8(line.fields[1]));
    }
    device.Send(FormatLine("BYE", {}));
    device.Receive();
    return answers;
}

} // namespace orv::sim
