#pragma once
// The component in a container with a whole host behind it.
#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include "host/com/application_face.h"
#include "host/com/class_objects.h"
#include "host/sim/bench_host.h"
#include "tests/com/container.h"

namespace orv::tests {

/// Answers message boxes of this thread as they come; a box is left open for `patience` looks first.
class BoxAnswers {
  public:
    explicit BoxAnswers(int command);
    ~BoxAnswers();
    BoxAnswers(const BoxAnswers&) = delete;
    BoxAnswers& operator=(const BoxAnswers&) = delete;

    std::vector<std::wstring> texts;
    /// Runs while the first box is open, before it is answered.
    std::function<void()> meanwhile;
    /// Leave the box to others.
    bool onlyWatch = false;

  private:
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD);
    void Look();
    int command_;
    UINT_PTR timer_;
    HWND seen_ = nullptr;
};

/// Dispatches messages until `done` or the limit.
bool Within(const std::function<bool()>& done, DWORD milliseconds = 5000);

class Running : public testing::Test {
  protected:
    Running();
    ~Running() override;
    /// Registers the host, sets device 0 or a slave, enables, embeds and shows.
    void Start(Manners manners = {}, std::int16_t device = 0);
    ComPtr<IAddOn> AddOn() const { return Query<IAddOn>(container->control.Get()); }
    ComPtr<IAddOnGUI> Gui() const { return Query<IAddOnGUI>(container->control.Get()); }
    int Result() const;

    Component component;
    std::shared_ptr<sim::BenchHost> bench;
    host::ClassObjects classes;
    std::unique_ptr<Container> container;
};

} // namespace orv::tests
