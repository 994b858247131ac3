#pragma once
// A device at its worst: answers late, twice, out of turn, of another kind, huge, or not at all.
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "device/host.h"
#include "fuzz/component.h"
#include "fuzz/source.h"

namespace orv::fuzz {

inline constexpr wchar_t kPassword[] = L"QMVRTK4826"; ///< of level 3

/// What a device has acknowledged, by whoever listens on the line.
class Witness {
  public:
    struct Set {
        std::wstring entry;
        std::wstring text;
    };
    std::vector<Set> acknowledged;
    std::int32_t lastError = 0;

    void Sent(std::optional<Set> set) {
        open_ = std::move(set);
        verdict_.reset();
    }
    /// 0 is success.
    void Answered(std::int32_t code) { verdict_ = code; }
    /// Something came that answers nothing: the request will be made again.
    void Misunderstood() { verdict_.reset(); }
    /// Whoever asked has seen the last of the answers.
    void Seen() {
        if (verdict_.value_or(0) != 0)
            lastError = *verdict_;
        const bool forgiven = open_ && open_->text.empty() && verdict_ == kForgiven;
        if (open_ && verdict_ && (*verdict_ == 0 || forgiven))
            acknowledged.push_back(*open_);
        open_.reset();
        verdict_.reset();
    }

  private:
    static constexpr std::int32_t kForgiven = 308; ///< where there was nothing to set

    std::optional<Set> open_;
    std::optional<std::int32_t> verdict_;
};

/// Answers as the input decides; a byte a request, 0 a good answer.
class UnreliableService final : public device::MibSapService {
  public:
    UnreliableService(Source& source, WakefulPump& pump, Witness& witness)
        : source_(source), pump_(pump), witness_(witness) {}

    /// The host does something while a request is under way.
    std::function<void(std::size_t)> interrupt;

    void Connect(std::int32_t, std::shared_ptr<device::MibSapEvents> events) override;
    void Disconnect() override;
    void StartSession(const std::wstring&, const std::wstring& password) override;
    void EndSession(const std::wstring&) override { Ask({}, Kind::Response); }
    void GetEntry(const std::wstring&) override { Ask({}, Kind::Response); }
    void SetNumericEntry(const std::wstring& entry, const std::wstring& decimal) override {
        Ask(Witness::Set{entry, decimal}, Kind::Response);
    }
    void SetStringEntry(const std::wstring& entry, const std::wstring& text) override {
        Ask(Witness::Set{entry, text}, Kind::Response);
    }

  private:
    enum class Kind { Connected, Response };
    using Event = std::function<void()>;

    Event Good(Kind kind);
    Event Bad(std::int32_t code);
    Event Odd();
    /// To whom an earlier connection belonged.
    Event Stranger();
    Event Interruption();
    std::int32_t Code();
    std::vector<Event> Answers(std::size_t choice, Kind kind);
    void Respond(const std::wstring& text);
    void Ask(std::optional<Witness::Set> set, Kind kind);
    static void Run(const std::vector<Event>& events);

    Source& source_;
    WakefulPump& pump_;
    Witness& witness_;
    std::shared_ptr<device::MibSapEvents> events_;
    std::shared_ptr<device::MibSapEvents> strangers_;
    std::vector<Event> late_;
};

} // namespace orv::fuzz
