#pragma once
// A life in which everything is done once: each page is visited and edited, dialogs are opened, it is saved three ways.
#include <filesystem>
#include <functional>
#include <string>

#include "controls/dialog.h"
#include "tests/addon/session.h"

namespace orv::test {

/// Each step is one call of the host or one gesture of the user. A step whose widget is not there, because an earlier
/// one failed, is left out. What a gesture raises is told as the windows tell it.
class WholeLife {
  public:
    explicit WholeLife(Session& session);
    ~WholeLife();
    WholeLife(const WholeLife&) = delete;
    WholeLife& operator=(const WholeLife&) = delete;

    /// Everything from Initialize to Cancel; Terminate is the caller's.
    void Run();

    std::function<void(const std::string& step)> before;
    std::function<void(const std::string& step)> after;
    int Steps() const { return steps_; }
    /// Names of those that were left out.
    const std::string& LeftOut() const { return leftOut_; }

  private:
    void Begin();
    void AllCodes();
    void OneCode();
    void Groups();
    void Formats();
    void OneFormat();
    void Items();
    void Dialogs();
    void Saves();

    void Step(const std::string& name, const std::function<void()>& action);
    void Host(const std::string& name, const std::function<void()>& call);
    template <typename T>
    void Use(const wchar_t* name, const char* verb, const std::function<void(T&)>& gesture,
             int index = controls::Widget::kNoIndex);
    void Gesture(const std::function<void()>& gesture);
    void Select(const wchar_t* key);
    void Press(const wchar_t* name);
    void Choose(const wchar_t* combo, int entry);
    void Toggle(const wchar_t* check, int index = controls::Widget::kNoIndex);
    void Option(const wchar_t* name, int index = controls::Widget::kNoIndex);
    void Type(const wchar_t* name, const wchar_t* text, int index = controls::Widget::kNoIndex);
    void Number(const wchar_t* name, int by);
    void RunDialog(controls::Dialog& dialog);

    Session& session_;
    std::filesystem::path exported_;
    std::string leftOut_;
    int steps_ = 0;
};

} // namespace orv::test
