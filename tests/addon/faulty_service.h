#pragma once
// A MIB/SAP service that answers one of its requests as no service should.
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "device/host.h"

namespace orv::test {

enum class Misbehaviour {
    Refuses,       ///< for good
    NoAnswerOfUse, ///< "try again" from then on, to every request
    Silent,        ///< no answer, ever
    Lost,          ///< the connection goes
    Late,          ///< the answer comes when the client has been told to try again and has done so
    Twice,         ///< the answer comes again
    OutOfTurn,     ///< the answer to another request comes first
    Huge,          ///< the answer is a text of millions of characters
    Malformed,     ///< the answer is no text
    OddCode,       ///< an error whose number is none
    Raises,        ///< the request itself fails
};

class FaultyService final : public device::MibSapService {
  public:
    using Post = std::function<void(std::function<void()>)>;

    FaultyService(std::shared_ptr<device::MibSapService> to, Post post) : to_(std::move(to)), post_(std::move(post)) {}

    /// Request `k` from now (1 is the next) meets it.
    void Misbehave(std::int64_t k, Misbehaviour how) {
        at_ = count_ + k;
        how_ = how;
    }
    std::int64_t Count() const { return count_; }
    bool Happened() const { return at_ != 0 && count_ >= at_; }
    /// Name of the request that met it.
    const std::string& Victim() const { return victim_; }
    std::function<void()> onSilence;

    void Connect(std::int32_t address, std::shared_ptr<device::MibSapEvents> events) override;
    void Disconnect() override;
    void StartSession(const std::wstring& level, const std::wstring& password) override;
    void EndSession(const std::wstring& mode) override;
    void GetEntry(const std::wstring& entry) override;
    void SetNumericEntry(const std::wstring& entry, const std::wstring& decimal) override;
    void SetStringEntry(const std::wstring& entry, const std::wstring& text) override;

  private:
    class Relay;
    void Request(const char* name, const std::function<void()>& send);
    void Victimise(const std::function<void()>& send);
    void Fail(std::int32_t code);

    std::shared_ptr<device::MibSapService> to_;
    Post post_;
    std::shared_ptr<Relay> relay_;
    std::string victim_;
    std::int64_t count_ = 0;
    std::int64_t at_ = 0;
    Misbehaviour how_ = Misbehaviour::Refuses;
    bool useless_ = false;
};

} // namespace orv::test
