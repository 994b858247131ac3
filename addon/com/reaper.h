#pragma once
// Destroys controls whose last reference went while their own code was still on the stack.

namespace orv::addon::com {

class Control;

/// Looks at the collected controls from the message loop, until none is left.
class Reaper {
  public:
    /// Destroys the control at once when nothing of it runs, else later.
    static void Dispose(Control& control);

  private:
    static void Collect(Control& control);
    static void Look();
    friend struct ReaperTimer;
};

} // namespace orv::addon::com
