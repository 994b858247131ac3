#pragma once
// Message boxes of the component while a script plays: told, and answered as the script says.
#include <deque>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "host/app/orvhost/script.h"
#include "host/app/orvhost/system.h"

namespace orv::host {

struct OpenBox {
    HWND window = nullptr;
    std::wstring title;
    std::wstring text;
};

/// Message boxes of this thread that are open now, in the order of the windows.
std::vector<OpenBox> OpenBoxes();

class BoxWatch {
  public:
    struct Expected {
        int line = 0;
        std::wstring part;
        BoxAnswer answer = BoxAnswer::Ok;
    };
    std::function<void(const std::wstring&)> say;
    std::function<void(const std::string&)> fail;

    void Expect(Expected box) { expected_.push_back(std::move(box)); }
    /// What the next dialog that asks for a file is given.
    void ExpectFile(std::wstring path) { files_.push_back(std::move(path)); }
    /// Gives an open dialog its file; one that nobody expected is a failure, and is cancelled.
    void AnswerFileDialog();
    /// Announces boxes that are new; answers whether one is open.
    bool Look();
    /// Answers the open boxes. One that nobody expected is a failure, and is told No or closed.
    void AnswerAll();
    bool ExpectationsLeft() const { return !expected_.empty(); }
    bool FilesLeft() const { return !files_.empty(); }
    const Expected& NextExpected() const { return expected_.front(); }

  private:
    void AnswerBox(const OpenBox& box);
    std::set<HWND> announced_;
    std::set<HWND> answered_;
    std::deque<Expected> expected_;
    std::deque<std::wstring> files_;
    HWND fileDialog_ = nullptr; ///< seen at the last look
    bool fileAnswered_ = false;
};

} // namespace orv::host
