#pragma once
// A form over recorded services, and a font whose characters are all of one width.
#include <gtest/gtest.h>

#include "controls/form.h"
#include "controls/simple_widgets.h"
#include "host/sim/portable_platform.h"

namespace orv::test {

class FixedFont : public controls::TextMeasure {
  public:
    explicit FixedFont(int percent = 100) : dpi_(96 * percent / 100) {}
    int Width(std::wstring_view text) const override { return static_cast<int>(text.size()) * 7 * dpi_ / 96; }
    int LineHeight() const override { return 16 * dpi_ / 96; }
    int Dpi() const override { return dpi_; }

  private:
    int dpi_;
};

struct FormFixture : testing::Test {
    sim::PortablePlatform platform;
    controls::Form form{platform.boxes, platform.pump};
    controls::Frame& root = form.Root();

    controls::KeyOutcome Press(controls::Key key, bool shift = false) {
        return form.RouteKey({.key = key, .character = 0, .shift = shift});
    }
    controls::KeyOutcome Ctrl(controls::Key key) { return form.RouteKey({.key = key, .character = 0, .ctrl = true}); }
    controls::KeyOutcome Alt(wchar_t letter) {
        return form.RouteKey({.key = controls::Key::None, .character = letter, .alt = true});
    }
    controls::KeyOutcome Type(wchar_t letter) {
        return form.RouteKey({.key = controls::Key::None, .character = letter});
    }
};

} // namespace orv::test
