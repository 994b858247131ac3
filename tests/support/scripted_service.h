#pragma once
// A MIB/SAP service that answers as it is told and remembers what it was asked.
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "device/host.h"

namespace orv::test {

/// Answers come in the order of `codes`, one a request: 0 is success, -1 no answer at all, else an error event.
class ScriptedService : public device::MibSapService {
  public:
    std::deque<int> codes;
    std::vector<std::wstring> requests;
    std::wstring response = L"42";
    std::function<void(std::function<void()>)> post; ///< answers at once without it

    void Connect(std::int32_t address, std::shared_ptr<device::MibSapEvents> events) override {
        events_ = std::move(events);
        Ask(L"connect " + std::to_wstring(address), [this] { events_->Connected(); });
    }
    void Disconnect() override { requests.push_back(L"disconnect"); }
    void StartSession(const std::wstring& level, const std::wstring& password) override {
        Ask(L"start " + level + L" " + password, [this] { events_->ResponseReceived(L"OK"); });
    }
    void EndSession(const std::wstring& mode) override {
        Ask(L"end " + mode, [this] { events_->ResponseReceived(L"OK"); });
    }
    void GetEntry(const std::wstring& entry) override {
        Ask(L"get " + entry, [this] { events_->ResponseReceived(response); });
    }
    void SetNumericEntry(const std::wstring& entry, const std::wstring& decimal) override {
        Ask(L"number " + entry + L"=" + decimal, [this] { events_->ResponseReceived(L"OK"); });
    }
    void SetStringEntry(const std::wstring& entry, const std::wstring& text) override {
        Ask(L"string " + entry + L"=" + text, [this] { events_->ResponseReceived(L"OK"); });
    }

  private:
    void Ask(std::wstring request, std::function<void()> good) {
        requests.push_back(std::move(request));
        const int code = codes.empty() ? 0 : codes.front();
        if (!codes.empty())
            codes.pop_front();
        if (code == -1)
            return;
        auto answer = code == 0 ? std::move(good) : [this, code] { events_->Error(code); };
        if (post)
            post(std::move(answer));
        else
            answer();
    }

    std::shared_ptr<device::MibSapEvents> events_;
};

} // namespace orv::test
